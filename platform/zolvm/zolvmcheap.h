// zolvmcheap.h - exponential, logarithm, power, sine and cosine with as few terms as the
// enhanced-performance forms need: about 2^-12 in single and 2^-27 in double precision; reciprocals
// and square roots by estimates.
#ifndef ZOLVM_ZOLVMCHEAP_H
#define ZOLVM_ZOLVMCHEAP_H

#include "zolvm/zolvmfine.h"

namespace {

// What the reductions need of a type. The parts of pi are short enough for exact multiples where
// products are rounded.
template <class T>
struct Cheapness;
template <>
struct Cheapness<float> {
    static constexpr int mantissaBits = 23;
    static constexpr unsigned bias = 127;
    static constexpr unsigned sqrtHalf = 0x3f3504f3U; // bits of sqrt(1/2)
#ifdef __FMA__
    static constexpr double pi[] = {0x1.921fb40000000p+1, 0x1.4442d18469899p-23};
#else
    static constexpr double pi[] = {0x1.9200000000000p+1, 0x1.fb00000000000p-11,
                                    0x1.5110b4611a626p-21};
#endif
    static constexpr double exp[] = {0x1.fff61b895d428p-1, 0x1.fffe06161120ap-1,
                                     0x1.029269b7c9759p-1, 0x1.57638965b855cp-3};
    static constexpr double log[] = {0x1.ffd96775b1018p-1, -0x1.010bfbdcdf7bep-1,
                                     0x1.6ae4f603c5682p-2, -0x1.d14b1486150b9p-3};
    static constexpr double logOfPower[] = {
        0x1.0000113c72f3fp+0, -0x1.00012667a4211p-1, 0x1.552181e117a39p-2, -0x1.fe5e5524f704bp-3,
        0x1.a45c701699910p-3, -0x1.7c646a3aef0e8p-3, 0x1.dd80f514a6edbp-4};
    static constexpr double sine[] = {0x1.fff1cd8a0b6b7p-1, -0x1.53e2985b5e750p-3,
                                      0x1.f23eabf21e6c8p-8};
};
template <>
struct Cheapness<double> {
    static constexpr int mantissaBits = 52;
    static constexpr Bits bias = 1023;
    static constexpr Bits sqrtHalf = 0x3fe6a09e667f3bcdULL;
#ifdef __FMA__
    static constexpr double pi[] = {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
#else
    static constexpr double pi[] = {0x1.921fb54400000p+1, 0x1.0b4611a600000p-33,
                                    0x1.3198a2e037073p-68};
#endif
    static constexpr double exp[] = {
        0x1.0000000000000p+0, 0x1.000000a21653fp+0, 0x1.000000287f871p-1, 0x1.5554041b96acbp-3,
        0x1.5554accfdb593p-5, 0x1.126fb8fa71fe6p-7, 0x1.6d7543e4127b8p-10};
    static constexpr double log[] = {
        0x1.fffffffab3c37p-1, -0x1.fffff847a7034p-2, 0x1.55555d65bf746p-2, -0x1.000423b72b7d5p-2,
        0x1.999e867edab4ap-3, -0x1.5423b015df288p-3, 0x1.22cf0fbed0be2p-3, -0x1.0fb035e36d8d6p-3,
        0x1.0647858f47021p-3, -0x1.313359b9a714ep-4};
    static constexpr double logOfPower[] = {
        0x1.fffffffffbcb0p-1, -0x1.fffffffecae59p-2, 0x1.5555556e75120p-2, -0x1.0000015fdf390p-2,
        0x1.999982ba66962p-3, -0x1.555468681e9b4p-3, 0x1.2495b3ff17576p-3, -0x1.0022d10053211p-3,
        0x1.c6c74537edb73p-4, -0x1.94a481a90569fp-4, 0x1.72df5f43a0b36p-4, -0x1.7eaf366ddb3dfp-4,
        0x1.7450fbf77bc18p-4, -0x1.827a940e44864p-5};
    static constexpr double sine[] = {0x1.ffffffd2470dfp-1, -0x1.555547ea46776p-3,
                                      0x1.110e7a76a36f0p-7, -0x1.9f6420ac4b5c7p-13,
                                      0x1.5d36a2cc9c2dcp-19};
};

template <class T>
constexpr T integerShiftOf = bound<T>(0x1.8p23, 0x1.8p52);

// The coefficients of factor * polynomial(step * x).
template <int terms>
struct Coefficients {
    double values[terms];
};
template <int terms>
constexpr Coefficients<terms> stretched(double const (&coefficients)[terms], double factor,
                                        double step) {
    Coefficients<terms> result{};
    for (int i = 0; i < terms; ++i) {
        result.values[i] = coefficients[i] * factor;
        factor *= step;
    }
    return result;
}

// 2^k out of a sum whose last bits are k plus the bias of exponents.
template <class T>
ZOLVM_INLINE T powerIn(T shifted) {
    return __builtin_bit_cast(T, bitsOf(shifted) << Cheapness<T>::mantissaBits);
}

// e^x for |x| < 709 or 88. The remainder's error of 2^-18 or 2^-43 is too small to count.
template <class T>
ZOLVM_INLINE T cheapExp(T x) {
    using C = Cheapness<T>;
    constexpr T shift = integerShiftOf<T> + T(C::bias);
    T const shifted = timesPlus(x, T(log2E), shift);
    T const k = shifted - shift;
    return powerIn(shifted) * polynomial(C::exp, timesPlus(k, T(-(ln2.hi + ln2.lo)), x));
}

// A normal number as 2^exponent * (1 + fraction), the fraction between sqrt(1/2) - 1 and
// sqrt(2) - 1, the exponent in units that cost least.
template <class T>
struct Parts {
    T exponent;
    T fraction;
};
template <class T>
constexpr double exponentUnit = sizeof(T) == 4 ? 0x1p-23 : 1.0;
ZOLVM_INLINE Parts<float> partsOf(float x) {
    using C = Cheapness<float>;
    unsigned const exponent = (bitsOf(x) - C::sqrtHalf) & ~((1U << C::mantissaBits) - 1);
    return {static_cast<float>(static_cast<int>(exponent)),
            __builtin_bit_cast(float, bitsOf(x) - exponent) - 1};
}
ZOLVM_INLINE Parts<double> partsOf(double x) { // not every instruction set converts such integers
    using C = Cheapness<double>;
    constexpr Bits mantissa = (Bits(1) << C::mantissaBits) - 1;
    constexpr double shift = 0x1p52;
    Bits const moved = bitsOf(x) + (bitsOf(1.0) - C::sqrtHalf);
    return {__builtin_bit_cast(double, (moved >> C::mantissaBits) | bitsOf(shift)) -
                (shift + double(C::bias)),
            __builtin_bit_cast(double, (moved & mantissa) + C::sqrtHalf) - 1};
}

// Logarithm of a normal number.
template <class T>
ZOLVM_INLINE T cheapLog(T x) {
    Parts<T> const parts = partsOf(x);
    return timesPlus(parts.exponent, T(ln2.hi * exponentUnit<T>),
                     parts.fraction * polynomial(Cheapness<T>::log, parts.fraction));
}

// The binary logarithm and its inverse for powers, in units of the exponent, between bounds that
// keep the power normal.
template <class T>
ZOLVM_INLINE T cheapLog2(T x) {
    constexpr auto inUnits = stretched(Cheapness<T>::logOfPower, log2E / exponentUnit<T>, 1.0);
    Parts<T> const parts = partsOf(x);
    return timesPlus(parts.fraction, polynomial(inUnits.values, parts.fraction), parts.exponent);
}
template <class T>
constexpr T cheapExp2Most = T(bound<T>(125.5, 1021.5) / exponentUnit<T>);
template <class T>
ZOLVM_INLINE T cheapExp2(T x) {
    using C = Cheapness<T>;
    constexpr T shift = T((integerShiftOf<T> + T(C::bias)) / exponentUnit<T>);
    constexpr auto inUnits = stretched(C::exp, 1.0, (ln2.hi + ln2.lo) * exponentUnit<T>);
    T const shifted = x + shift;
    return powerIn(shifted) * polynomial(inUnits.values, x - (shifted - shift));
}

// sin(x + quarters * pi / 2) for a whole number of quarters.
template <int quarters, class T>
ZOLVM_INLINE T cheapSine(T x) {
    using C = Cheapness<T>;
    constexpr T perPi = T(0x1.45f306dc9c883p-2);
    constexpr T turns = T(0.5 * quarters);
    T shifted;
    T k;
    if constexpr (quarters == 0) {
        shifted = timesPlus(x, perPi, integerShiftOf<T>);
        k = shifted - integerShiftOf<T>;
    } else {
        shifted = timesPlus(x, perPi, turns) + integerShiftOf<T>;
        k = (shifted - integerShiftOf<T>)-turns;
    }
    T r = x;
    for (double const part : C::pi) {
        r = timesPlus(k, T(-part), r);
    }
    T const sine = r * polynomial(C::sine, r * r);
    return __builtin_bit_cast(T, bitsOf(sine) ^ (bitsOf(shifted) << (8 * sizeof(T) - 1)));
}

// sqrt(x) or its inverse for a normal x: an estimate from the bits of the number, a step of the
// third order with coefficients for its range of errors, and one of Newton's.
template <bool inverse>
ZOLVM_INLINE double cheapRoot(double x) {
    double const first = fromBits(0x5fe6ea50c7b537a9ULL - (bitsOf(x) >> 1));
    double const off = timesPlus(-x * first, first, 1.0);
    double const e =
        timesPlus(first * off, timesPlus(off, 0x1.80cae18cb4064p-2, 0x1.008f46e5192dep-1), first);
    double const root = x * e;
    double const start = inverse ? e : root;
    return timesPlus(0.5 * start, timesPlus(-root, e, 1.0), start);
}

// Whole vectors of real numbers.
#if defined(__AVX512F__)
constexpr int vectorBytes = 64;
#elif defined(__AVX__)
constexpr int vectorBytes = 32;
#else
constexpr int vectorBytes = 16;
#endif
template <class R>
struct Lanes {
    static constexpr int count = vectorBytes / sizeof(R);
    typedef R Vector __attribute__((vector_size(vectorBytes)));
    typedef R InMemory __attribute__((vector_size(vectorBytes), aligned(sizeof(R)), may_alias));

    // Once: the compiler would load anew for each use, and loads are what is scarce.
    ZOLVM_INLINE static Vector load(R const* from) {
        Vector loaded = *reinterpret_cast<InMemory const*>(from);
        asm("" : "+v"(loaded));
        return loaded;
    }
    ZOLVM_INLINE static void store(R* to, Vector x) { *reinterpret_cast<InMemory*>(to) = x; }
};

typedef unsigned FlagLanes __attribute__((vector_size(vectorBytes)));
ZOLVM_INLINE bool anyNegative(FlagLanes x) {
#if defined(__AVX512F__)
    typedef int Integers __attribute__((vector_size(vectorBytes)));
    return __builtin_ia32_cvtd2mask512(reinterpret_cast<Integers>(x)) != 0;
#elif defined(__AVX__)
    return __builtin_ia32_movmskps256(reinterpret_cast<Lanes<float>::Vector>(x)) != 0;
#else
    return __builtin_ia32_movmskps(reinterpret_cast<Lanes<float>::Vector>(x)) != 0;
#endif
}

// The processor's estimates of 1 / x or 1 / sqrt(x), right to some 2^-12.
template <bool root>
ZOLVM_INLINE Lanes<float>::Vector estimate(Lanes<float>::Vector x) {
#if defined(__AVX512F__)
    return root ? __builtin_ia32_rsqrt14ps512_mask(x, x, 0xffff)
                : __builtin_ia32_rcp14ps512_mask(x, x, 0xffff);
#elif defined(__AVX__)
    return root ? __builtin_ia32_rsqrtps256(x) : __builtin_ia32_rcpps256(x);
#else
    return root ? __builtin_ia32_rsqrtps(x) : __builtin_ia32_rcpps(x);
#endif
}
// For other numbers an estimate is none, or no normal number.
template <bool root>
constexpr float estimateMost = root ? maxFinite<float> : 0x1.ff8p125F;
// They are the result, or factors of the other source. True if there is one for a number below the
// normal ones, above the most, or without a root.
template <bool root, bool factor>
ZOLVM_INLINE bool estimates(float const* x, float const* y, float* result, std::size_t count) {
    using L = Lanes<float>;
    FlagLanes left{};
    for (std::size_t i = 0; i < count; i += L::count) {
        L::Vector const of = L::load(y + i);
        L::Vector const estimated = estimate<root>(of);
        FlagLanes const size = reinterpret_cast<FlagLanes>(of) & (root ? ~0U : ~0U >> 1);
        left |= (bitsOf(estimateMost<root>) - size) | (size - bitsOf(minNormal<float>));
        L::store(result + i, factor ? estimated * L::load(x + i) : estimated);
    }
    return anyNegative(left);
}

} // namespace

#endif
