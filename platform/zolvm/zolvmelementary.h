// zolvmelementary.h - the elementary functions of a real number by kind of kernel: the C library's
// vector functions for Vec, in the precision of the argument, pairs of doubles for Fine, short
// polynomials for Cheap, where there are such. Shared by
// the real and the complex families; arguments are what the families call ordinary.
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
ZOLVM_LIBM1(acos)
ZOLVM_LIBM1(acosh)
ZOLVM_LIBM1(asin)
ZOLVM_LIBM1(asinh)
ZOLVM_LIBM1(atan)
ZOLVM_LIBM1(atanh)
ZOLVM_LIBM1(cbrt)
ZOLVM_LIBM1(cos)
ZOLVM_LIBM1(cosh)
ZOLVM_LIBM1(erf)
ZOLVM_LIBM1(erfc)
ZOLVM_LIBM1(exp)
ZOLVM_LIBM1(expm1)
ZOLVM_LIBM1(fabs)
ZOLVM_LIBM1(log)
ZOLVM_LIBM1(log10)
ZOLVM_LIBM1(log1p)
ZOLVM_LIBM1(sin)
ZOLVM_LIBM1(sinh)
ZOLVM_LIBM1(sqrt)
ZOLVM_LIBM1(tan)
ZOLVM_LIBM1(tanh)
ZOLVM_LIBM2(atan2)
ZOLVM_LIBM2(copysign)
ZOLVM_LIBM2(hypot)
ZOLVM_LIBM2(pow)

template <class T>
ZOLVM_INLINE T smaller(T x, T y) {
    return x < y ? x : y;
}
template <class T>
ZOLVM_INLINE T larger(T x, T y) {
    return x > y ? x : y;
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

// sinh(|x|) and cosh(|x|).
template <class T>
struct Hyperbolic {
    T sine;
    T cosine;
};
ZOLVM_INLINE Hyperbolic<Pair> sinhCoshPair(double away) {
    Pair const minus1 = expm1Pair({away, 0.0});
    Pair const power = minus1 + 1.0;
    // Beyond 2^60 the other exponential no longer counts, and large numbers don't split.
    bool const large = power.hi > 0x1p60;
    Pair const inverse = Pair{1.0, 0.0} / choose(large, {0x1p60, 0.0}, power);
    Pair const part = choose(large, {0x1p60, 0.0}, minus1) * inverse;
    return {scaled(minus1 + part, 0.5), scaled(power + inverse, 0.5)};
}

#define ZOLVM_ELEMENTARY(name, vector, pair)                                                       \
    template <Kind K, class T>                                                                     \
    ZOLVM_INLINE T name(T x) {                                                                     \
        if constexpr (K == Fine) {                                                                 \
            return rounded(pair);                                                                  \
        } else {                                                                                   \
            return vector;                                                                         \
        }                                                                                          \
    }
// Those with a form of few digits.
#define ZOLVM_ELEMENTARY_CHEAP(name, vector, pair, cheap)                                          \
    template <Kind K, class T>                                                                     \
    ZOLVM_INLINE T name(T x) {                                                                     \
        if constexpr (K == Fine) {                                                                 \
            return rounded(pair);                                                                  \
        } else if constexpr (K == Cheap) {                                                         \
            return cheap;                                                                          \
        } else {                                                                                   \
            return vector;                                                                         \
        }                                                                                          \
    }
ZOLVM_ELEMENTARY(acosOf, vec_acos(x),
                 atan2Pair(squareRoot(exactSum(1.0, -x) * exactSum(1.0, x)), {x, 0.0}))
ZOLVM_ELEMENTARY(asinOf, vec_asin(x),
                 atan2Pair({x, 0.0}, squareRoot(exactSum(1.0, -x) * exactSum(1.0, x))))
ZOLVM_ELEMENTARY(atanOf, vec_atan(x), atan2Pair({x, 0.0}, {1.0, 0.0}))
ZOLVM_ELEMENTARY(acoshOf, vec_acosh(x),
                 logPair(squareRoot(exactSum(x, -1.0) * exactSum(x, 1.0)) + x))
ZOLVM_ELEMENTARY(asinhOf, vec_asinh(x), asinhPair(x))
ZOLVM_ELEMENTARY(atanhOf, vec_atanh(x), scaled(logPair(exactSum(1.0, x) / exactSum(1.0, -x)), 0.5))
ZOLVM_ELEMENTARY_CHEAP(cosOf, vec_cos(x), sinCosPair({x, 0.0}).cosine, cheapSine<1>(x))
ZOLVM_ELEMENTARY_CHEAP(sinOf, vec_sin(x), sinCosPair({x, 0.0}).sine, cheapSine<0>(x))
ZOLVM_ELEMENTARY_CHEAP(expOf, vec_exp(x), expPair({x, 0.0}), cheapExp(x))
ZOLVM_ELEMENTARY(expm1Of, vec_expm1(x), expm1Pair({larger(x, -60.0), 0.0}))
ZOLVM_ELEMENTARY_CHEAP(lnOf, vec_log(x), logPair({x, 0.0}), cheapLog(x))
ZOLVM_ELEMENTARY(log1pOf, vec_log1p(x), logPair(exactSum(1.0, x)))
ZOLVM_ELEMENTARY_CHEAP(log10Of, vec_log10(x), logPair({x, 0.0}) * log10E,
                       cheapLog(x) * T(log10E.hi))
ZOLVM_ELEMENTARY(coshOf, vec_cosh(x), sinhCoshPair(vec_fabs(x)).cosine)

template <Kind K, class T>
ZOLVM_INLINE T sinhOf(T x) {
    if constexpr (K == Fine) {
        return vec_copysign(rounded(sinhCoshPair(vec_fabs(x)).sine), x);
    } else {
        return vec_sinh(x);
    }
}
template <Kind K, class T>
ZOLVM_INLINE T tanhOf(T x) {
    if constexpr (K == Fine) {
        // From 20 on the result is 1.
        Pair const minus1 = expm1Pair({smaller(2.0 * vec_fabs(x), 50.0), 0.0});
        return vec_copysign(rounded(minus1 / (minus1 + 2.0)), x);
    } else {
        return vec_tanh(x);
    }
}
template <Kind K, class T>
ZOLVM_INLINE T tanOf(T x) {
    if constexpr (K == Fine) {
        SineCosine const both = sinCosPair({x, 0.0});
        return rounded(both.sine / both.cosine);
    } else if constexpr (K == Cheap) {
        return cheapSine<0>(x) / cheapSine<1>(x);
    } else {
        return vec_tan(x);
    }
}
template <Kind K, class T>
ZOLVM_INLINE T atan2Of(T y, T x) {
    if constexpr (K == Fine) {
        return rounded(atan2Pair({y, 0.0}, {x, 0.0}));
    } else {
        return vec_atan2(y, x);
    }
}

template <Kind K, class T>
ZOLVM_INLINE Two<T> sinCosOf(T x) {
    if constexpr (K == Fine) {
        SineCosine const both = sinCosPair({x, 0.0});
        return {rounded(both.sine), rounded(both.cosine)};
    } else if constexpr (K == Cheap) {
        return {cheapSine<0>(x), cheapSine<1>(x)};
    } else {
        // The zero keeps the compiler from making one scalar call of the two.
        return {vec_sin(x), vec_cos(x + T(0))};
    }
}
template <Kind K, class T>
ZOLVM_INLINE Two<T> sinhCoshOf(T x) {
    if constexpr (K == Fine) {
        Hyperbolic<Pair> const both = sinhCoshPair(vec_fabs(x));
        return {vec_copysign(rounded(both.sine), x), rounded(both.cosine)};
    } else {
        T const minus1 = vec_expm1(vec_fabs(x));
        T const part = minus1 / (minus1 + 1);
        return {vec_copysign(T(0.5) * (minus1 + part), x), 1 + T(0.5) * (minus1 * part)};
    }
}

} // namespace

#endif
