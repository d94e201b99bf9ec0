// zolvmscalar.cpp - functions of one element on the C library's scalar functions. Compiled for the
// baseline and with strict floating-point rules, once for all code paths.
#include "zolvm/zolvmscalar.h"

#include <cmath>
#include <complex>

#include "zolvm/zolvmelementary.h"

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

// Zeros, infinities and NaNs go through plain operations, which raise no flag for nothing.
bool hasDigits(double x) { return std::isfinite(x) && x != 0; }

// The cube root of such a number, times 2^100 so that its low part does not vanish. The number is
// scaled, so that the root's cube stays in range.
Pair cubeRoot(double x) {
    return std::fabs(x) < 1 ? cbrtPair(x * 0x1p300) : scaled(cbrtPair(x * 0x1p-300), 0x1p200);
}

// x with erfc(x) = factor * p for a p that may be denormal, while the product or its half may be
// none: a quantile and a step of Newton's. Both sides of it are multiplied by e^(x^2), which 2^600
// out of the product keeps in range.
Pair tailOf(double p, double factor) {
    double const x = sqrtHalf.hi * normalQuantileOfLog(0.5 * (1 - factor * p),
                                                       std::log(p) + std::log(0.5 * factor));
    Pair const power = expPair(exactProduct(x, x) - ln2 * 600.0) * (p * (factor * 0x1p600));
    return quickSum(x, (erfcxPair({x, 0.0}) - power).hi * halfSqrtPi.hi);
}

using Z = Complex<double>;

std::complex<double> in(Z z) { return {z.re, z.im}; }
Z out(std::complex<double> z) { return {z.real(), z.imag()}; }

} // namespace

double cbrt(double x) { return hasDigits(x) ? rounded(cubeRoot(x)) * 0x1p-100 : x; }
double invCbrt(double x) {
    return hasDigits(x) ? rounded(Pair{1.0, 0.0} / cubeRoot(x)) * 0x1p100 : 1 / x;
}
double pow2o3(double x) { return hasDigits(x) ? rounded(squareOf(cubeRoot(x))) * 0x1p-200 : x * x; }
double pow3o2(double x) { return x == HUGE_VAL ? x : std::pow(x, 1.5); }
double invSqrt(double x) {
    return x > 0 && x < 1 ? rounded(Pair{1.0, 0.0} / squareRoot({x * 0x1p600, 0.0})) * 0x1p300
                          : 1 / std::sqrt(x);
}

double cdfNorm(double x) {
    // The argument -x / sqrt(2) in two parts: its rounding would cost up to ten bits of the tail.
    double const z = -x * sqrtHalf.hi;
    double const rest = std::fma(-x, sqrtHalf.hi, -z) - x * sqrtHalf.lo;
    double const value = 0.5 * std::erfc(z);
    return z > 1 && std::isfinite(z) ? value - value * 2 * rest * (z + 0.5 / z) : value;
}
// Inside the domains of the inverse functions only arguments next to zero come here.
double erfInv(double y) {
    double const size = std::fabs(y);
    return size == 0   ? y
           : size < 1  ? std::fma(y, halfSqrtPi.hi, y * halfSqrtPi.lo)
           : size == 1 ? std::copysign(HUGE_VAL, y)
                       : std::sqrt(-size);
}
double erfcInv(double q) {
    return q > 0 && q < 1 ? rounded(tailOf(q, 1)) : q < 0 ? std::sqrt(q) : erfInv(1 - q);
}
double cdfNormInv(double p) {
    return p > 0 && p < 0.5 ? rounded(tailOf(p, 2) * scaled(sqrtHalf, -2.0))
           : p < 0          ? std::sqrt(p)
                            : erfInv(2 * p - 1);
}

#define ZOLVM_DEFINE_SCALAR(name)                                                                  \
    Z name(Z z) { return out(std::name(in(z))); }
ZOLVM_COMPLEX_SCALARS(ZOLVM_DEFINE_SCALAR)
Z log10(Z z) {
    std::complex<double> const log = std::log(in(z));
    return {std::isinf(log.real()) ? log.real() : log.real() * log10E.hi, log.imag() * log10E.hi};
}
Z div(Z z, Z w) { return out(in(z) / in(w)); }
Z mul(Z z, Z w) { return out(in(z)*in(w)); }
Z mulByConj(Z z, Z w) { return out(in(z)*std::conj(in(w))); }
Z pow(Z z, Z w) {
    if (w.re == 0 && w.im == 0) {
        return {1, 0};
    }
    if (z.re == 0 && z.im == 0 && w.re > 0 && std::isfinite(w.im)) {
        return {0, 0};
    }
    return out(std::pow(in(z), in(w)));
}
double abs(Z z) { return std::hypot(z.re, z.im); }
double arg(Z z) { return std::atan2(z.im, z.re); }
Z cis(double x) { return {std::cos(x), std::sin(x)}; }

} // namespace scalar
} // namespace zolvm
