// zolvmscalar.h - one element at a time, for the elements that the kernels' vector loops leave out
// (specials, domain edges, results near overflow and underflow), and the status that such an
// element gives.
#ifndef ZOLVM_ZOLVMSCALAR_H
#define ZOLVM_ZOLVMSCALAR_H

#include "zolvm.h"

namespace zolvm {

template <class T>
struct Complex {
    T re;
    T im;
};

// What an infinite or tiny result of a function means for the status, and what else a family says
// of itself.
enum Rule : unsigned {
    ruleNone = 0,
    rulePole = 1,       // an infinity out of finite arguments is always a singularity
    rulePoleAtZero = 2, // it is one if the first argument is zero, otherwise an overflow
    rulePoleByZero = 4, // it is one if the second argument is zero, otherwise an overflow
    ruleUnderflows = 8, // a result below the normal numbers is an underflow
    ruleAccurate = 16,  // the function of one element errs by less than a unit
    ruleTells = 32,     // the C library's vector function raises a flag of the processor wherever
                        // it is not right or the status is not 0
};

// Status of a real result, 0 if the element is an ordinary one. The second argument is the first
// where the function has none; minNormal is that of the result's type.
ZolStatus elementStatus(unsigned rules, double first, double second, double result,
                        double minNormal);

// The functions that the C library has not, or not for every argument.
namespace scalar {

double cbrt(double x);
double cdfNorm(double x);
double cdfNormInv(double p);
double erfInv(double y);
double erfcInv(double q);
double invCbrt(double x);
double invSqrt(double x);
double pow2o3(double x);
double pow3o2(double x);

// clang-format off
#define ZOLVM_COMPLEX_SCALARS(DECL)                                                                \
    DECL(acos) DECL(acosh) DECL(asin) DECL(asinh) DECL(atan) DECL(atanh) DECL(cos) DECL(cosh)      \
    DECL(exp) DECL(log) DECL(sin) DECL(sinh) DECL(sqrt) DECL(tan) DECL(tanh)
// clang-format on
#define ZOLVM_DECLARE_SCALAR(name) Complex<double> name(Complex<double> z);
ZOLVM_COMPLEX_SCALARS(ZOLVM_DECLARE_SCALAR)
Complex<double> log10(Complex<double> z);
Complex<double> div(Complex<double> z, Complex<double> w);
Complex<double> mul(Complex<double> z, Complex<double> w);
Complex<double> mulByConj(Complex<double> z, Complex<double> w);
Complex<double> pow(Complex<double> z, Complex<double> w);
double abs(Complex<double> z);
double arg(Complex<double> z);
Complex<double> cis(double x);

} // namespace scalar
} // namespace zolvm

#endif
