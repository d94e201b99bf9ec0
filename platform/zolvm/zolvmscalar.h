// zolvmscalar.h - one element at a time, right for every argument: what the kernels fall back on
// for the rare elements that their vector loops leave out (specials, domain edges, results near
// overflow and underflow), and the status that such an element gives.
#ifndef ZOLVM_ZOLVMSCALAR_H
#define ZOLVM_ZOLVMSCALAR_H

#include "zolvm.h"

namespace zolvm {

// What an infinite or tiny result of a function means for the status.
enum Rule : unsigned {
    ruleNone = 0,
    rulePole = 1,       // an infinity out of finite arguments is always a singularity
    rulePoleAtZero = 2, // it is one if the first argument is zero, otherwise an overflow
    rulePoleByZero = 4, // it is one if the second argument is zero, otherwise an overflow
    ruleUnderflows = 8, // a result below the normal numbers is an underflow
    ruleAccurate = 16,  // the function of one element errs by less than a unit
};

// Status of a real result, 0 if the element is an ordinary one. The second argument is 1 where
// the function has none; minNormal is that of the result's type.
ZolStatus elementStatus(unsigned rules, double first, double second, double result,
                        double minNormal);

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

Zol64fc acos(Zol64fc z);
Zol64fc acosh(Zol64fc z);
Zol64fc asin(Zol64fc z);
Zol64fc asinh(Zol64fc z);
Zol64fc atan(Zol64fc z);
Zol64fc atanh(Zol64fc z);
Zol64fc cos(Zol64fc z);
Zol64fc cosh(Zol64fc z);
Zol64fc exp(Zol64fc z);
Zol64fc ln(Zol64fc z);
Zol64fc log10(Zol64fc z);
Zol64fc sin(Zol64fc z);
Zol64fc sinh(Zol64fc z);
Zol64fc sqrt(Zol64fc z);
Zol64fc tan(Zol64fc z);
Zol64fc tanh(Zol64fc z);
Zol64fc div(Zol64fc z, Zol64fc w);
Zol64fc mul(Zol64fc z, Zol64fc w);
Zol64fc mulByConj(Zol64fc z, Zol64fc w);
Zol64fc pow(Zol64fc z, Zol64fc w);
double abs(Zol64fc z);
double arg(Zol64fc z);
Zol64fc cis(double x);

} // namespace scalar
} // namespace zolvm

#endif
