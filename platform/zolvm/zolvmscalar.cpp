// zolvmscalar.cpp - functions of one element on the C library's scalar functions. Compiled for the
// baseline and with strict floating-point rules, once for all code paths.
#include "zolvm/zolvmscalar.h"

#include <cfloat>
#include <cmath>
#include <complex>

namespace zolvm {

ZolStatus elementStatus(unsigned rules, double first, double second, double result,
                        double minNormal) {
    bool const finite = std::isfinite(first) && std::isfinite(second);
    if (std::isnan(result)) {
        return std::isnan(first) || std::isnan(second) ? zolStsNoErr : zolStsDomain;
    }
    if (std::isinf(result) && finite) {
        bool const pole = (rules & rulePole) != 0 ||
                          ((rules & rulePoleAtZero) != 0 && first == 0) ||
                          ((rules & rulePoleByZero) != 0 && second == 0);
        return pole ? zolStsSingularity : zolStsOverflow;
    }
    bool const tiny = std::fabs(result) < minNormal;
    return tiny && finite && first != 0 && (rules & ruleUnderflows) != 0 ? zolStsUnderflow
                                                                         : zolStsNoErr;
}

namespace scalar {
namespace {

using Complex = std::complex<double>;

Complex in(Zol64fc z) { return {z.re, z.im}; }
Zol64fc out(Complex z) { return {z.real(), z.imag()}; }

constexpr double halfSqrtPi = 0x1.c5bf891b4ef6bp-1;       // sqrt(pi) / 2
constexpr double halfSqrtPiRest = -0x1.618f13eb7ca89p-55; // what its rounding leaves
constexpr double sqrt2 = 0x1.6a09e667f3bcdp0;
constexpr double sqrtHalf = 0x1.6a09e667f3bcdp-1;
constexpr double sqrtHalfRest = -0x1.bdd3413b26456p-55;
// A cube root as (value + rest) * scale.
struct Root {
    double value;
    double rest;
    double scale;
};
Root cubeRoot(double x) {
    bool const tiny = std::fabs(x) < 0x1p-900;
    double const scaled = tiny ? x * 0x1p216 : x;
    double const scale = tiny ? 0x1p-72 : 1.0;
    double const root = std::cbrt(scaled);
    if (root == 0 || !std::isfinite(root)) {
        return {root, root, scale}; // whose sum is itself, with its sign
    }
    double const square = root * root;
    double const squareRest = std::fma(root, root, -square);
    double const error = std::fma(square, root, -scaled) + squareRest * root;
    return {root, -error / (3 * square), scale};
}

double polynomial(double const (&coefficients)[8], double x) {
    double sum = coefficients[7];
    for (int i = 6; i >= 0; --i) {
        sum = sum * x + coefficients[i];
    }
    return sum;
}

// x with erfc(x) = q for a small q: the rational functions of Wichura's AS 241 for the normal
// quantile, whose tail argument is q / 2.
double tailQuantile(double q) {
    static double const middleTop[] = {1.42343711074968357734e0,  4.63033784615654529590e0,
                                       5.76949722146069140550e0,  3.64784832476320460504e0,
                                       1.27045825245236838258e0,  2.41780725177450611770e-1,
                                       2.27238449892691845833e-2, 7.74545014278341407640e-4};
    static double const middleBottom[] = {1.0,
                                          2.05319162663775882187e0,
                                          1.67638483018380384940e0,
                                          6.89767334985100004550e-1,
                                          1.48103976427480074590e-1,
                                          1.51986665636164571966e-2,
                                          5.47593808499534494600e-4,
                                          1.05075007164441684324e-9};
    static double const farTop[] = {6.65790464350110377720e0,  5.46378491116411436990e0,
                                    1.78482653991729133580e0,  2.96560571828504891230e-1,
                                    2.65321895265761230930e-2, 1.24266094738807843860e-3,
                                    2.71155556874348757815e-5, 2.01033439929228813265e-7};
    static double const farBottom[] = {1.0,
                                       5.99832206555887937690e-1,
                                       1.36929880922735805310e-1,
                                       1.48753612908506148525e-2,
                                       7.86869131145613259100e-4,
                                       1.84631831751005468180e-5,
                                       1.42151175831644588870e-7,
                                       2.04426310338993978564e-15};
    double const r = std::sqrt(-std::log(0.5 * q));
    double const z = r <= 5 ? polynomial(middleTop, r - 1.6) / polynomial(middleBottom, r - 1.6)
                            : polynomial(farTop, r - 5) / polynomial(farBottom, r - 5);
    return z * sqrtHalf;
}

} // namespace

double cbrt(double x) {
    Root const root = cubeRoot(x);
    return (root.value + root.rest) * root.scale;
}

double cdfNorm(double x) {
    // The argument -x / sqrt(2) in two parts: its rounding would cost up to ten bits of the tail.
    double const z = -x * sqrtHalf;
    double const rest = std::fma(-x, sqrtHalf, -z) - x * sqrtHalfRest;
    double const value = 0.5 * std::erfc(z);
    return z > 1 && std::isfinite(z) ? value - value * 2 * rest * (z + 0.5 / z) : value;
}

double erfInv(double y) {
    double const size = std::fabs(y);
    if (size == 0 || !(size < 1)) {
        return size > 1 ? std::sqrt(-size) : size == 1 ? std::copysign(HUGE_VAL, y) : y;
    }
    if (size < 0x1p-30) {
        return std::fma(y, halfSqrtPi, y * halfSqrtPiRest);
    }
    double x = size > 0.5 ? tailQuantile(1 - size) : size * halfSqrtPi;
    for (int step = 0; step < 4; ++step) {
        double const error = size > 0.5 ? (1 - size) - std::erfc(x) : std::erf(x) - size;
        double const delta = error * halfSqrtPi * std::exp(x * x);
        x -= delta / (1 + x * delta);
    }
    return std::copysign(x, y);
}

double erfcInv(double q) {
    if (q > 0 && q < 0.5) {
        double x = tailQuantile(q);
        for (int step = 0; step < 2 && q > DBL_MIN; ++step) {
            double const delta = (q - std::erfc(x)) * halfSqrtPi * std::exp(x * x);
            x -= delta / (1 + x * delta);
        }
        return x;
    }
    if (q == 0 || q == 2) {
        return q == 0 ? HUGE_VAL : -HUGE_VAL;
    }
    return erfInv(1 - q);
}

double cdfNormInv(double p) {
    return p < 0.25 ? -sqrt2 * erfcInv(2 * p) : sqrt2 * erfInv(2 * p - 1);
}
double invCbrt(double x) {
    Root const root = cubeRoot(x);
    double const y = 1 / root.value;
    if (y == 0 || !std::isfinite(y)) {
        return y;
    }
    double const error = std::fma(root.value, y, -1.0) + root.rest * y;
    return (y - y * error) / root.scale;
}
double invSqrt(double x) {
    double const root = std::sqrt(x);
    double const y = 1 / root;
    if (!(x > 0) || std::isinf(x)) {
        return y;
    }
    double const error = std::fma(root, y, -1.0) * root + std::fma(-root, root, x) * 0.5 * y;
    return y - y * error / root;
}
double pow2o3(double x) {
    Root const root = cubeRoot(x);
    return std::fma(root.value, root.value, 2 * root.value * root.rest) * root.scale * root.scale;
}
double pow3o2(double x) { return x == HUGE_VAL ? x : std::pow(x, 1.5); }

Zol64fc acos(Zol64fc z) { return out(std::acos(in(z))); }
Zol64fc acosh(Zol64fc z) { return out(std::acosh(in(z))); }
Zol64fc asin(Zol64fc z) { return out(std::asin(in(z))); }
Zol64fc asinh(Zol64fc z) { return out(std::asinh(in(z))); }
Zol64fc atan(Zol64fc z) { return out(std::atan(in(z))); }
Zol64fc atanh(Zol64fc z) { return out(std::atanh(in(z))); }
Zol64fc cos(Zol64fc z) { return out(std::cos(in(z))); }
Zol64fc cosh(Zol64fc z) { return out(std::cosh(in(z))); }
Zol64fc exp(Zol64fc z) { return out(std::exp(in(z))); }
Zol64fc ln(Zol64fc z) { return out(std::log(in(z))); }
Zol64fc log10(Zol64fc z) {
    constexpr double log10E = 0.43429448190325181667;
    Complex const log = std::log(in(z));
    return {std::isinf(log.real()) ? log.real() : log.real() * log10E, log.imag() * log10E};
}
Zol64fc sin(Zol64fc z) { return out(std::sin(in(z))); }
Zol64fc sinh(Zol64fc z) { return out(std::sinh(in(z))); }
Zol64fc sqrt(Zol64fc z) { return out(std::sqrt(in(z))); }
Zol64fc tan(Zol64fc z) { return out(std::tan(in(z))); }
Zol64fc tanh(Zol64fc z) { return out(std::tanh(in(z))); }
Zol64fc div(Zol64fc z, Zol64fc w) { return out(in(z) / in(w)); }
Zol64fc mul(Zol64fc z, Zol64fc w) { return out(in(z)*in(w)); }
Zol64fc mulByConj(Zol64fc z, Zol64fc w) { return out(in(z)*std::conj(in(w))); }
Zol64fc pow(Zol64fc z, Zol64fc w) {
    if (w.re == 0 && w.im == 0) {
        return {1, 0};
    }
    if (z.re == 0 && z.im == 0 && w.re > 0 && std::isfinite(w.im)) {
        return {0, 0};
    }
    return out(std::pow(in(z), in(w)));
}
double abs(Zol64fc z) { return std::hypot(z.re, z.im); }
double arg(Zol64fc z) { return std::atan2(z.im, z.re); }
Zol64fc cis(double x) { return {std::cos(x), std::sin(x)}; }

} // namespace scalar
} // namespace zolvm
