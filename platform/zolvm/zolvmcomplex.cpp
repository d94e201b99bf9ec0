// zolvmcomplex.cpp - kernels of the complex families. They are formulas in real functions of the
// same kind: no step of them cancels, so the norm of the error stays within a few units.
#include <utility>

#include "zolvm/zolvmelementary.h"
#include "zolvm/zolvmkernels.h"

ZOLVM_DECLARE_PATH(ZOLVM_PATH)

namespace {

namespace scalar = zolvm::scalar;
using zolvm::ruleNone;
using zolvm::rulePole;

template <class T>
constexpr T angleLeast = bound<T>(0x1p-100, 0x1p-500);
template <class T>
constexpr T angleMost = bound<T>(16384.0, trigonometricLimit);
template <class T>
constexpr T hyperbolicMost = bound<T>(80.0, 700.0);
template <class T>
constexpr T squareMost = bound<T>(40.0, 340.0); // where sinh may still be squared

// Flags are negative unless squares and products of the parts neither overflow nor vanish. Zeros
// are strange: on the branch cuts their signs decide.
template <class T>
ZOLVM_INLINE BitsOf<T> partsOff(Complex<T> z) {
    constexpr T least = bound<T>(0x1p-40, 0x1p-250);
    constexpr T most = bound<T>(0x1p40, 0x1p250);
    return offBand(z.re, least, most) | offBand(z.im, least, most);
}
// The same for functions that don't mind a zero part.
template <class T>
ZOLVM_INLINE BitsOf<T> sizeOff(Complex<T> z) {
    constexpr T most = bound<T>(0x1p40, 0x1p250);
    T const size = larger(vec_fabs(z.re), vec_fabs(z.im));
    return offBand(z.re, T(0), most) | offBand(z.im, T(0), most) |
           offRange(size, bound<T>(0x1p-40, 0x1p-250), most);
}
template <class T>
ZOLVM_INLINE BitsOf<T> anglesOff(T angle, T hyperbolic, T most) {
    return offBand(angle, angleLeast<T>, angleMost<T>) | offBand(hyperbolic, angleLeast<T>, most);
}

#define ZOLVM_FAMILY1(family, ...) ZOLVM_FAMILY(family, (Complex<T> z), __VA_ARGS__)

template <class T>
ZOLVM_INLINE Complex<T> exchanged(Complex<T> z) {
    return {z.im, z.re};
}
template <class T>
ZOLVM_INLINE Complex<T> conjugated(Complex<T> z) {
    return {z.re, -z.im};
}
// z times i, and its inverse.
template <class T>
ZOLVM_INLINE Complex<T> turned(Complex<T> z) {
    return {-z.im, z.re};
}
template <class T>
ZOLVM_INLINE Complex<T> turnedBack(Complex<T> z) {
    return {z.im, -z.re};
}

// ---- Roots, absolute values and products

ZOLVM_INLINE Pair squareOfNorm(Complex<double> z) {
    return exactProduct(z.re, z.re) + exactProduct(z.im, z.im);
}
template <Kind K, class T>
ZOLVM_INLINE T absOf(Complex<T> z) {
    ZOLVM_BY_KIND(rounded(squareRoot(squareOfNorm(z))), vec_sqrt(squareOf(z.re) + squareOf(z.im)));
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> sqrtOf(Complex<T> z) {
    T const along = vec_sqrt(T(0.5) * (vec_fabs(z.re) + absOf<K>(z)));
    T const across = vec_fabs(z.im) / (along + along);
    bool const left = z.re < 0;
    return {left ? across : along, vec_copysign(left ? along : across, z.im)};
}
ZOLVM_FAMILY1(Abs, scalar::abs, ruleNone, sizeOff(z), return absOf<K>(z);)
ZOLVM_FAMILY1(Arg, scalar::arg, ruleNone, partsOff(z), return atan2Of<K>(z.im, z.re);)
ZOLVM_FAMILY1(Sqrt, scalar::sqrt, ruleNone, sizeOff(z), return sqrtOf<K>(z);)

// Products in whole vectors of numbers, each as its parts by turns: the compiler would part and
// join them in many steps.
template <bool conjugate, class R>
ZOLVM_INLINE auto product(R const* z, R const* w) {
    using L = Lanes<R>;
    typename L::Vector const first = L::load(z);
    typename L::Vector const second = L::load(w);
    return [&]<int... i>(std::integer_sequence<int, i...>) ZOLVM_INLINE_CALL {
        auto const along = __builtin_shufflevector(second, second, (i & ~1)...) * first;
        auto const across = __builtin_shufflevector(second, second, (i | 1)...) *
                            __builtin_shufflevector(first, first, (i ^ 1)...);
        auto const re = conjugate ? along + across : along - across;
        auto const im = conjugate ? along - across : along + across;
        return __builtin_shufflevector(re, im, (i + (i & 1) * L::count)...);
    }
    (std::make_integer_sequence<int, L::count>{});
}
template <bool conjugate>
struct Product {
    static constexpr auto scalar = conjugate ? scalar::mulByConj : scalar::mul;
    static constexpr unsigned rules = ruleNone;
    template <Kind, class T>
    ZOLVM_INLINE static BitsOf<T> strange(Complex<T>, Complex<T>) {
        return 0;
    }
    // Infinite operands may come out as two NaNs; the C standard wants an infinity there.
    template <Kind, class T>
    ZOLVM_INLINE static BitsOf<T> spoilt(Complex<T> result) {
        constexpr T infinite = T(__builtin_inf());
        return offBand(result.re, T(0), infinite) & offBand(result.im, T(0), infinite);
    }
    // True if some part of a result is NaN.
    template <Kind, class C>
    ZOLVM_INLINE static bool lanes(C const* source1, C const* source2, C* dest, std::size_t count) {
        using R = decltype(dest->re);
        using L = Lanes<R>;
        R const* const z = &source1->re;
        R const* const w = &source2->re;
        R* const result = &dest->re;
        FlagLanes nan{};
        // Two at a time for one check: their sum is NaN if one of them is.
        for (std::size_t i = 0; i < 2 * count; i += 2 * L::count) {
            auto const one = product<conjugate>(z + i, w + i);
            auto const next = product<conjugate>(z + i + L::count, w + i + L::count);
            nan |= reinterpret_cast<FlagLanes>(one + next != one + next);
            L::store(result + i, one);
            L::store(result + i + L::count, next);
        }
        return anyNegative(nan);
    }
};
using Mul = Product<false>;
using MulByConj = Product<true>;

ZOLVM_FAMILY(Div, (Complex<T> z, Complex<T> w), scalar::div, zolvm::rulePoleByZero,
             sizeOff(w) | sizeOff(z), T const square = w.re * w.re + w.im * w.im;
             return Complex<T>{(z.re * w.re + z.im * w.im) / square,
                               (z.im * w.re - z.re * w.im) / square};)

// ---- Exponential and trigonometric functions

template <Kind K, class T>
ZOLVM_INLINE Complex<T> cisOf(T x, T size) {
    Two<T> const angle = sinCosOf<K>(x);
    return {size * angle.second, size * angle.first};
}
ZOLVM_FAMILY(CIS, (T x), scalar::cis, ruleNone, offBand(x, angleLeast<T>, angleMost<T>),
             return cisOf<K>(x, T(1));)
ZOLVM_FAMILY1(Exp, scalar::exp, ruleNone,
              offBand(z.re, T(0), hyperbolicMost<T>) | offBand(z.im, angleLeast<T>, angleMost<T>),
              return cisOf<K>(z.im, expOf<K>(z.re));)

// sinh and cosh are sin and cos, turned.
template <Kind K, class T>
ZOLVM_INLINE Complex<T> sinOf(Complex<T> z) {
    Two<T> const angle = sinCosOf<K>(z.re);
    Two<T> const hyperbolic = sinhCoshOf<K>(z.im);
    return {angle.first * hyperbolic.second, angle.second * hyperbolic.first};
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> cosOf(Complex<T> z) {
    Two<T> const angle = sinCosOf<K>(z.re);
    Two<T> const hyperbolic = sinhCoshOf<K>(z.im);
    return {angle.second * hyperbolic.second, -angle.first * hyperbolic.first};
}
// No denominator cancels, as both squares are positive.
template <Kind K, class T>
ZOLVM_INLINE Complex<T> tanOf(Complex<T> z) {
    if constexpr (K == Fine) {
        auto const [sine, cosine] = sinCosPair({z.re, 0.0});
        auto const [sinh, cosh] = sinhCoshPair(vec_fabs(z.im));
        Pair const bottom = cosine * cosine + sinh * sinh;
        return {rounded(sine * cosine / bottom), vec_copysign(rounded(sinh * cosh / bottom), z.im)};
    } else {
        auto const [sine, cosine] = sinCosOf<K>(z.re);
        auto const [sinh, cosh] = sinhCoshOf<K>(z.im);
        T const bottom = cosine * cosine + sinh * sinh;
        return {sine * cosine / bottom, sinh * cosh / bottom};
    }
}
ZOLVM_FAMILY1(Sin, scalar::sin, ruleNone, anglesOff(z.re, z.im, hyperbolicMost<T>),
              return sinOf<K>(z);)
ZOLVM_FAMILY1(Cos, scalar::cos, ruleNone, anglesOff(z.re, z.im, hyperbolicMost<T>),
              return cosOf<K>(z);)
ZOLVM_FAMILY1(Tan, scalar::tan, ruleNone, anglesOff(z.re, z.im, squareMost<T>), return tanOf<K>(z);)
ZOLVM_FAMILY1(Sinh, scalar::sinh, ruleNone, anglesOff(z.im, z.re, hyperbolicMost<T>),
              return exchanged(sinOf<K>(exchanged(z)));)
ZOLVM_FAMILY1(Cosh, scalar::cosh, ruleNone, anglesOff(z.im, z.re, hyperbolicMost<T>),
              return conjugated(cosOf<K>(exchanged(z)));)
ZOLVM_FAMILY1(Tanh, scalar::tanh, ruleNone, anglesOff(z.im, z.re, squareMost<T>),
              return exchanged(tanOf<K>(exchanged(z)));)

// ---- Logarithms and powers

// Logarithm as pairs. The square of the norm is exact enough to keep the digits near 1.
template <bool isLong>
ZOLVM_INLINE Complex<Pair> lnPair(Complex<double> z) {
    return {scaled(logPair<isLong>(squareOfNorm(z)), 0.5),
            atan2Pair<isLong>({z.im, 0.0}, {z.re, 0.0})};
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> lnOf(Complex<T> z) {
    if constexpr (K == Fine) {
        Complex<Pair> const log = lnPair<false>(z);
        return {rounded(log.re), rounded(log.im)};
    } else {
        Pair const square = squareOfNorm(z);
        return {0.5 * (vec_log(square.hi) + square.lo / square.hi), vec_atan2(z.im, z.re)};
    }
}
ZOLVM_FAMILY1(Ln, scalar::log, rulePole, partsOff(z), return lnOf<K>(z);)
ZOLVM_FAMILY1(Log10, scalar::log10, rulePole, partsOff(z), Complex<T> const log = lnOf<K>(z);
              return Complex<T>{log.re * T(log10E.hi), log.im* T(log10E.hi)};)

// A power by its logarithm: exponent of e and angle, the root of the exponential and both functions
// of the angle. The root is squared last, so that no part leaves the range before the result does.
// What is out of reach gives a zero, which counts as spoilt, and is done again.
ZOLVM_INLINE Complex<double> powerOf(double exponent, double angle, double root, Two<double> both) {
    bool const inReach = (vec_fabs(exponent) <= 1400) & (vec_fabs(angle) <= trigonometricLimit);
    double const kept = inReach ? root : 0.0;
    return {kept * both.second * kept, kept * both.first * kept};
}
template <class R>
ZOLVM_INLINE Complex<R> timesExponent(Complex<R> log, Complex<double> w) {
    return {log.re * w.re - log.im * w.im, log.re * w.im + log.im * w.re};
}
template <Kind K>
ZOLVM_INLINE Complex<double> powOf(Complex<double> z, Complex<double> w) {
    if constexpr (K == Fine) {
        Complex<Pair> const log = timesExponent(lnPair<true>(z), w);
        auto const [sine, cosine] = sinCosPair(log.im);
        return powerOf(log.re.hi, log.im.hi, rounded(expPair(scaled(log.re, 0.5))),
                       {rounded(sine), rounded(cosine)});
    } else {
        Complex<double> const log = timesExponent(lnOf<Vec>(z), w);
        return powerOf(log.re, log.im, vec_exp(0.5 * log.re), sinCosOf<Vec>(log.im));
    }
}
ZOLVM_FAMILY(PowOf, (Complex<T> z, Complex<T> w), scalar::pow, ruleNone,
             partsOff(z) | offBand(w.re, T(0), bound<T>(0x1p40, 0x1p100)) |
                 offBand(w.im, T(0), bound<T>(0x1p40, 0x1p100)),
             return powOf<K>(z, w);)
struct Pow : PowOf {
    template <Kind, class T>
    ZOLVM_INLINE static BitsOf<T> spoilt(Complex<T> result) {
        T const size = larger(vec_fabs(result.re), vec_fabs(result.im));
        return offRange(size, minNormal<T>, maxFinite<T>);
    }
};
using Powx = Pow;

// ---- Inverse trigonometric functions, by Kahan's formulas in the square roots of 1 - z and 1 + z,
// whose products have no differences.

template <Kind K, class T>
ZOLVM_INLINE Two<Complex<T>> rootsOf(Complex<T> z) {
    return {sqrtOf<K>(Complex<T>{1 - z.re, -z.im}), sqrtOf<K>(Complex<T>{1 + z.re, z.im})};
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> asinOf(Complex<T> z) {
    auto const [minus, plus] = rootsOf<K>(z);
    T const cosine = minus.re * plus.re - minus.im * plus.im;
    T const sine = minus.re * plus.im - minus.im * plus.re;
    return {atan2Of<K>(z.re, cosine), asinhOf<K>(sine)};
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> acosOf(Complex<T> z) {
    auto const [minus, plus] = rootsOf<K>(z);
    T const sine = plus.re * minus.im - plus.im * minus.re;
    return {2 * atan2Of<K>(minus.re, plus.re), asinhOf<K>(sine)};
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> acoshOf(Complex<T> z) {
    Complex<T> const acos = acosOf<K>(z);
    return {vec_fabs(acos.im), vec_copysign(acos.re, z.im)};
}
template <Kind K, class T>
ZOLVM_INLINE Complex<T> atanhOf(Complex<T> z) {
    T const x = vec_fabs(z.re);
    T const distance = (1 - x) * (1 - x) + z.im * z.im;
    T const size = T(0.25) * log1pOf<K>(4 * x / distance);
    return {vec_copysign(size, z.re),
            T(0.5) * atan2Of<K>(2 * z.im, (1 - x) * (1 + x) - z.im * z.im)};
}
ZOLVM_FAMILY1(Asin, scalar::asin, ruleNone, partsOff(z), return asinOf<K>(z);)
ZOLVM_FAMILY1(Acos, scalar::acos, ruleNone, partsOff(z), return acosOf<K>(z);)
ZOLVM_FAMILY1(Atanh, scalar::atanh, rulePole, partsOff(z), return atanhOf<K>(z);)
ZOLVM_FAMILY1(Asinh, scalar::asinh, ruleNone, partsOff(z), return turnedBack(asinOf<K>(turned(z)));)
ZOLVM_FAMILY1(Acosh, scalar::acosh, ruleNone, partsOff(z), return acoshOf<K>(z);)
ZOLVM_FAMILY1(Atan, scalar::atan, rulePole, partsOff(z), return turnedBack(atanhOf<K>(turned(z)));)

// ---- Exact operations

ZOLVM_EXACT(Conj, (T z), conjugated(z))
ZOLVM_EXACT(Add, (T z, T w), T{z.re + w.re, z.im + w.im})
ZOLVM_EXACT(Sub, (T z, T w), T{z.re - w.re, z.im - w.im})

} // namespace

namespace zolvm::ZOLVM_PATH {
ZOLVM_COMPLEX_FUNCTIONS(ZOLVM_DEFINE)
} // namespace zolvm::ZOLVM_PATH
