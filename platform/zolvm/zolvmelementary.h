// zolvmelementary.h - elementary functions of a real number by kind of kernel: the C library's
// vector functions for Vec, in the precision of the argument, pairs of doubles for Fine, short
// polynomials for Cheap. What more than one family is made of; arguments are what the families call
// ordinary.
#ifndef ZOLVM_ZOLVMELEMENTARY_H
#define ZOLVM_ZOLVMELEMENTARY_H

#include "zolvm/zolvmcheap.h"

namespace {

#define ZOLVM_LIBM1(name)                                                                          \
    ZOLVM_INLINE float vec_##name(float x) { return ::name##f(x); }                                \
    ZOLVM_INLINE double vec_##name(double x) { return ::name(x); }
#define ZOLVM_LIBM2(name)                                                                          \
    ZOLVM_INLINE float vec_##name(float x, float y) { return ::name##f(x, y); }                    \
    ZOLVM_INLINE double vec_##name(double x, double y) { return ::name(x, y); }
// clang-format off
#define ZOLVM_LIBM                                                                                 \
    ZOLVM_LIBM1(acos) ZOLVM_LIBM1(acosh) ZOLVM_LIBM1(asin) ZOLVM_LIBM1(asinh) ZOLVM_LIBM1(atan)    \
    ZOLVM_LIBM1(atanh) ZOLVM_LIBM1(cbrt) ZOLVM_LIBM1(cos) ZOLVM_LIBM1(cosh) ZOLVM_LIBM1(erf)       \
    ZOLVM_LIBM1(erfc) ZOLVM_LIBM1(exp) ZOLVM_LIBM1(expm1) ZOLVM_LIBM1(fabs) ZOLVM_LIBM1(log)       \
    ZOLVM_LIBM1(log10) ZOLVM_LIBM1(log1p) ZOLVM_LIBM1(sin) ZOLVM_LIBM1(sinh) ZOLVM_LIBM1(sqrt)     \
    ZOLVM_LIBM1(tan) ZOLVM_LIBM1(tanh) ZOLVM_LIBM2(atan2) ZOLVM_LIBM2(copysign) ZOLVM_LIBM2(hypot) \
    ZOLVM_LIBM2(pow)
// clang-format on
ZOLVM_LIBM

template <class T>
ZOLVM_INLINE T squareOf(T x) {
    return x * x;
}
template <class T>
ZOLVM_INLINE T smaller(T x, T y) {
    return x < y ? x : y;
}
template <class T>
ZOLVM_INLINE T larger(T x, T y) {
    return x > y ? x : y;
}

// Bodies of functions by kind.
#define ZOLVM_BY_KIND(fine, vec)                                                                   \
    if constexpr (K == Fine) {                                                                     \
        return fine;                                                                               \
    } else {                                                                                       \
        return vec;                                                                                \
    }
#define ZOLVM_BY_KIND_CHEAP(fine, vec, cheap)                                                      \
    if constexpr (K == Cheap) {                                                                    \
        return cheap;                                                                              \
    } else                                                                                         \
        ZOLVM_BY_KIND(fine, vec)

// ---- Cube root, square root of 1 - x^2

// The cube root and what it lacks.
ZOLVM_INLINE Pair cbrtPair(double x) {
    double const root = vec_cbrt(x);
    Pair const square = exactProduct(root, root);
    Pair const cube = square * root;
    return quickSum(root, ((x - cube.hi) - cube.lo) / (3 * square.hi));
}
ZOLVM_INLINE Pair besideOne(double x) { return squareRoot(exactSum(1.0, -x) * exactSum(1.0, x)); }

// ---- Exponential, trigonometric and hyperbolic functions and their inverses

template <Kind K, class T>
ZOLVM_INLINE T expOf(T x) {
    ZOLVM_BY_KIND_CHEAP(rounded(expPair({x, 0.0})), vec_exp(x), cheapExp(x));
}
template <Kind K, class T>
ZOLVM_INLINE T log1pOf(T x) {
    ZOLVM_BY_KIND(rounded(logPair(exactSum(1.0, x))), vec_log1p(x));
}
template <Kind K, class T>
ZOLVM_INLINE T atan2Of(T y, T x) {
    ZOLVM_BY_KIND(rounded(atan2Pair({y, 0.0}, {x, 0.0})), vec_atan2(y, x));
}

ZOLVM_INLINE Pair asinhPair(double x) {
    double const away = vec_fabs(x);
    // Below 2^-20 two terms of the series are enough, and the logarithm would lose digits.
    Pair const series = quickSum(away, away * away * away * (-1.0 / 6));
    Pair const square = exactProduct(away, away);
    Pair const log = logPair(squareRoot(square + 1.0) + away);
    Pair const result = choose(away < 0x1p-20, series, log);
    return choose(x < 0, -result, result);
}
template <Kind K, class T>
ZOLVM_INLINE T asinhOf(T x) {
    ZOLVM_BY_KIND(rounded(asinhPair(x)), vec_asinh(x));
}

template <Kind K, class T>
ZOLVM_INLINE Two<T> sinCosOf(T x) {
    if constexpr (K == Fine) {
        Two<Pair> const both = sinCosPair({x, 0.0});
        return {rounded(both.first), rounded(both.second)};
    } else if constexpr (K == Cheap) {
        return {cheapSine<0>(x), cheapSine<1>(x)};
    } else {
        // The zero keeps the compiler from making one scalar call of the two.
        return {vec_sin(x), vec_cos(x + T(0))};
    }
}

// sinh(|x|) and cosh(|x|).
ZOLVM_INLINE Two<Pair> sinhCoshPair(double away) {
    Pair const minus1 = expm1Pair({away, 0.0});
    Pair const power = minus1 + 1.0;
    // Beyond 2^60 the other exponential no longer counts, and large numbers don't split.
    bool const large = power.hi > 0x1p60;
    Pair const inverse = Pair{1.0, 0.0} / choose(large, {0x1p60, 0.0}, power);
    Pair const part = choose(large, {0x1p60, 0.0}, minus1) * inverse;
    return {scaled(minus1 + part, 0.5), scaled(power + inverse, 0.5)};
}
template <Kind K, class T>
ZOLVM_INLINE Two<T> sinhCoshOf(T x) {
    if constexpr (K == Fine) {
        Two<Pair> const both = sinhCoshPair(vec_fabs(x));
        return {vec_copysign(rounded(both.first), x), rounded(both.second)};
    } else {
        T const minus1 = vec_expm1(vec_fabs(x));
        T const part = minus1 / (minus1 + 1);
        return {vec_copysign(T(0.5) * (minus1 + part), x), 1 + T(0.5) * (minus1 * part)};
    }
}

// ---- Inverse error functions

// Quantile of the normal distribution for a probability that is 1/2 + middle; logOfTail is the
// logarithm of the probability of the nearer end. The rational functions are those of Wichura's
// algorithm AS 241.
template <class T>
ZOLVM_INLINE T normalQuantileOfLog(T middle, T logOfTail) {
    struct Rational {
        double top[8];
        double bottom[8];
    };
    constexpr Rational near = {
        {3.3871328727963666080e0, 1.3314166789178437745e+2, 1.9715909503065514427e+3,
         1.3731693765509461125e+4, 4.5921953931549871457e+4, 6.7265770927008700853e+4,
         3.3430575583588128105e+4, 2.5090809287301226727e+3},
        {1.0, 4.2313330701600911252e+1, 6.8718700749205790830e+2, 5.3941960214247511077e+3,
         2.1213794301586595867e+4, 3.9307895800092710610e+4, 2.8729085735721942674e+4,
         5.2264952788528545610e+3}};
    constexpr Rational middling = {
        {1.42343711074968357734e0, 4.63033784615654529590e0, 5.76949722146069140550e0,
         3.64784832476320460504e0, 1.27045825245236838258e0, 2.41780725177450611770e-1,
         2.27238449892691845833e-2, 7.74545014278341407640e-4},
        {1.0, 2.05319162663775882187e0, 1.67638483018380384940e0, 6.89767334985100004550e-1,
         1.48103976427480074590e-1, 1.51986665636164571966e-2, 5.47593808499534494600e-4,
         1.05075007164441684324e-9}};
    constexpr Rational far = {
        {6.65790464350110377720e0, 5.46378491116411436990e0, 1.78482653991729133580e0,
         2.96560571828504891230e-1, 2.65321895265761230930e-2, 1.24266094738807843860e-3,
         2.71155556874348757815e-5, 2.01033439929228813265e-7},
        {1.0, 5.99832206555887937690e-1, 1.36929880922735805310e-1, 1.48753612908506148525e-2,
         7.86869131145613259100e-4, 1.84631831751005468180e-5, 1.42151175831644588870e-7,
         2.04426310338993978564e-15}};
    bool const isNear = vec_fabs(middle) <= T(0.425);
    T const r = vec_sqrt(-logOfTail);
    bool const isFar = r > 5;
    T const at = isNear ? T(0.180625) - middle * middle : isFar ? r - 5 : r - T(1.6);
    // One rational function with chosen coefficients costs less than three.
    T top = 0;
    T bottom = 0;
#pragma GCC unroll 8
    for (int i = 7; i >= 0; --i) {
        T const over = isNear ? T(near.top[i]) : isFar ? T(far.top[i]) : T(middling.top[i]);
        T const under = isNear  ? T(near.bottom[i])
                        : isFar ? T(far.bottom[i])
                                : T(middling.bottom[i]);
        top = top * at + over;
        bottom = bottom * at + under;
    }
    return isNear ? middle * (top / bottom) : vec_copysign(top / bottom, middle);
}
template <class T>
ZOLVM_INLINE T normalQuantile(T middle, T tail) {
    return normalQuantileOfLog(middle, vec_log(tail));
}

// One step of Newton's from x towards the inverse of erf at y, where rest = 1 - |y|; both are
// exact, and the result is nearly so.
ZOLVM_INLINE Pair erfInvStep(double x, Pair y, Pair rest) {
    double const away = vec_fabs(x);
    Pair const power = expPair(-exactProduct(away, away));
    Pair const inside = choose(y.hi < 0, -y, y) - erfNearZero({smaller(away, erfSplit), 0.0});
    Pair const outside = power * erfcxPair({away, 0.0}) - rest;
    double const error = rounded(choose(away < erfSplit, inside, outside));
    Pair const result = quickSum(away, error * halfSqrtPi.hi / power.hi);
    return choose(x < 0, -result, result);
}

} // namespace

#endif
