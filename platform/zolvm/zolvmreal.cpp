// zolvmreal.cpp - kernels of the real families.
#include "zolvm/zolvmelementary.h"
#include "zolvm/zolvmkernels.h"

ZOLVM_DECLARE_PATH(ZOLVM_PATH)

namespace {

namespace scalar = zolvm::scalar;
using zolvm::ruleAccurate;
using zolvm::ruleNone;
using zolvm::rulePole;
using zolvm::ruleTells;
using zolvm::ruleUnderflows;

// Families of one argument and of two. That the vector functions tell was tried out on every path,
// with denormals and without: single precision by one argument of a hundred, double precision by
// millions of random bits and all edges.
#define ZOLVM_FAMILY1(family, slow, ...)                                                           \
    ZOLVM_FAMILY(family, (T x), static_cast<double (*)(double)>(slow), __VA_ARGS__)
#define ZOLVM_FAMILY2(family, slow, ...)                                                           \
    ZOLVM_FAMILY(family, (T x, T y), static_cast<double (*)(double, double)>(slow), __VA_ARGS__)

// Smallest argument of the odd functions of the Fine kind: a zero would lose its sign and the low
// parts of tiny numbers their digits. The vector functions keep both.
template <Kind K, class T>
constexpr T oddLeast = K == Fine ? bound<T>(0, 0x1p-500) : T(0);
template <class T>
constexpr T angleMost = bound<T>(16384.0, trigonometricLimit);
// The largest number below 1.
template <class T>
constexpr T belowOne = bound<T>(0x1.fffffep-1, 0x1.fffffffffffffp-1);
template <class T>
constexpr T squareMost = bound<T>(maxFinite<float>, 1.2e154);

ZOLVM_FAMILY1(Acos, ::acos, ruleAccurate | ruleTells, offBand(x, T(0), belowOne<T>),
              ZOLVM_BY_KIND(rounded(atan2Pair(besideOne(x), {x, 0.0})), vec_acos(x));)
ZOLVM_FAMILY1(Asin, ::asin, ruleAccurate | ruleTells, offBand(x, oddLeast<K, T>, belowOne<T>),
              ZOLVM_BY_KIND(rounded(atan2Pair({x, 0.0}, besideOne(x))), vec_asin(x));)
ZOLVM_FAMILY1(Atan, ::atan, ruleAccurate | ruleTells,
              offBand(x, oddLeast<K, T>, bound<T>(0x1p100, 0x1p500)),
              ZOLVM_BY_KIND(rounded(atan2Pair({x, 0.0}, {1.0, 0.0})), vec_atan(x));)
ZOLVM_FAMILY1(Cos, ::cos, ruleAccurate | ruleTells, offBand(x, T(0), angleMost<T>),
              ZOLVM_BY_KIND_CHEAP(rounded(sinCosPair({x, 0.0}).second), vec_cos(x),
                                  cheapSine<1>(x));)
ZOLVM_FAMILY1(Sin, ::sin, ruleAccurate | ruleTells, offBand(x, oddLeast<K, T>, angleMost<T>),
              ZOLVM_BY_KIND_CHEAP(rounded(sinCosPair({x, 0.0}).first), vec_sin(x),
                                  cheapSine<0>(x));)
struct SinCos : Sin {
    static constexpr double (*scalar2)(double) = ::cos;
    template <Kind K, class T>
    ZOLVM_INLINE static Two<T> at(T x) {
        return sinCosOf<K>(x);
    }
};
ZOLVM_INLINE Pair quotientOf(Two<Pair> pairs) { return pairs.first / pairs.second; }
ZOLVM_FAMILY1(Tan, ::tan, ruleAccurate | ruleTells, offBand(x, oddLeast<K, T>, angleMost<T>),
              ZOLVM_BY_KIND_CHEAP(rounded(quotientOf(sinCosPair({x, 0.0}))), vec_tan(x),
                                  cheapSine<0>(x) / cheapSine<1>(x));)
ZOLVM_FAMILY2(Atan2, ::atan2, ruleAccurate | ruleTells,
              offBand(x, bound<T>(0x1p-60, 0x1p-500), bound<T>(0x1p60, 0x1p500)) |
                  offBand(y, bound<T>(0x1p-60, 0x1p-500), bound<T>(0x1p60, 0x1p500)),
              return atan2Of<K>(x, y);)

ZOLVM_FAMILY1(Acosh, ::acosh, ruleNone,
              offRange(x, bound<T>(0x1.000002p0, 0x1.0000000000001p0), squareMost<T>),
              ZOLVM_BY_KIND(rounded(logPair(squareRoot(exactSum(x, -1.0) * exactSum(x, 1.0)) + x)),
                            vec_acosh(x));)
ZOLVM_FAMILY1(Asinh, ::asinh, ruleTells, offBand(x, oddLeast<K, T>, squareMost<T>),
              return asinhOf<K>(x);)
ZOLVM_FAMILY1(Atanh, ::atanh, rulePole | ruleTells,
              offBand(x, K == Fine ? T(0x1p-40) : T(0), belowOne<T>),
              ZOLVM_BY_KIND(0.5 * rounded(logPair(exactSum(1.0, x) / exactSum(1.0, -x))),
                            vec_atanh(x));)
ZOLVM_FAMILY1(Cosh, ::cosh, ruleTells, offBand(x, T(0), bound<T>(88.0, 708.0)),
              ZOLVM_BY_KIND(rounded(sinhCoshPair(vec_fabs(x)).second), vec_cosh(x));)
ZOLVM_FAMILY1(Sinh, ::sinh, ruleTells, offBand(x, oddLeast<K, T>, bound<T>(88.0, 708.0)),
              ZOLVM_BY_KIND(vec_copysign(rounded(sinhCoshPair(vec_fabs(x)).first), x),
                            vec_sinh(x));)
// From 10 on the result is 1.
ZOLVM_INLINE double fineTanh(double x) {
    Pair const minus1 = expm1Pair({smaller(2.0 * vec_fabs(x), 50.0), 0.0});
    return vec_copysign(rounded(minus1 / (minus1 + 2.0)), x);
}
ZOLVM_FAMILY1(Tanh, ::tanh, ruleTells, offBand(x, oddLeast<K, T>, maxFinite<T>),
              ZOLVM_BY_KIND(fineTanh(x), vec_tanh(x));)

ZOLVM_FAMILY1(Exp, ::exp, ruleUnderflows | ruleAccurate | ruleTells,
              offBand(x, T(0), bound<T>(87.3, 708.0)), return expOf<K>(x);)
ZOLVM_FAMILY1(Expm1, ::expm1, ruleAccurate | ruleTells,
              offBand(x, oddLeast<K, T>, bound<T>(88.7, 709.0)),
              ZOLVM_BY_KIND(rounded(expm1Pair({larger(x, -60.0), 0.0})), vec_expm1(x));)
ZOLVM_FAMILY1(Ln, ::log, rulePole | ruleAccurate | ruleTells,
              offRange(x, minNormal<T>, maxFinite<T>),
              ZOLVM_BY_KIND_CHEAP(rounded(logPair({x, 0.0})), vec_log(x), cheapLog(x));)
ZOLVM_FAMILY1(Log10, ::log10, rulePole | ruleTells, offRange(x, minNormal<T>, maxFinite<T>),
              ZOLVM_BY_KIND_CHEAP(rounded(logPair({x, 0.0}) * log10E), vec_log10(x),
                                  cheapLog(x) * T(log10E.hi));)
// In a sum with 1 tiny arguments vanish, which only the Fine kind minds.
ZOLVM_FAMILY1(Log1p, ::log1p, rulePole | ruleAccurate | ruleTells,
              offRange(1 + x, minNormal<T>, bound<T>(maxFinite<float>, 0x1p1000)) |
                  (K == Fine ? offBand(x, oddLeast<K, T>, maxFinite<T>) : 0),
              return log1pOf<K>(x);)

// ---- Powers and roots

// Below the least the cube of a cube root would lose its low part, above the most overflow.
template <class T>
constexpr T cubeLeast = bound<T>(minNormal<float>, 0x1p-950);
template <class T>
constexpr T cubeMost = bound<T>(maxFinite<float>, 0x1p1020);
ZOLVM_FAMILY1(Cbrt, scalar::cbrt, ruleTells, offBand(x, cubeLeast<T>, cubeMost<T>),
              ZOLVM_BY_KIND(rounded(cbrtPair(x)), vec_cbrt(x));)
ZOLVM_FAMILY1(InvCbrt, scalar::invCbrt, rulePole, offBand(x, cubeLeast<T>, cubeMost<T>),
              ZOLVM_BY_KIND(rounded(Pair{1.0, 0.0} / cbrtPair(x)), 1 / vec_cbrt(x));)
ZOLVM_FAMILY1(Pow2o3, scalar::pow2o3, ruleNone, offBand(x, cubeLeast<T>, cubeMost<T>),
              ZOLVM_BY_KIND(rounded(squareOf(cbrtPair(x))), squareOf(vec_cbrt(x)));)
ZOLVM_FAMILY1(Pow3o2, scalar::pow3o2, ruleUnderflows,
              offRange(x, bound<T>(0x1p-84, 0x1p-600), bound<T>(0x1p85, 0x1p682)),
              ZOLVM_BY_KIND(rounded(squareRoot({x, 0.0}) * x), vec_sqrt(x) * x);)

// Operations of the processor. Their Cheap forms are estimates of 1 / y or 1 / sqrt(y), in single
// precision the processor's, y being the last source.
template <class T>
constexpr T rootMost = bound<T>(maxFinite<float>, 0x1p1020); // a root's high half is squared
template <bool root, bool factor>
struct Estimated {
    static constexpr bool estimated = true;
    template <Kind, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T y) {
        return root ? offRange(y, bound<T>(minNormal<float>, 0x1p-900), rootMost<T>)
                    : offBand(y, minNormal<T>, T(estimateMost<root>));
    }
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T, T y) {
        return strange<K>(y);
    }
    template <Kind K>
    requires(K == Cheap) static bool lanes(float const* x, float const* y, float* result,
                                           std::size_t count) {
        return estimates<root, factor>(x, y, result, count);
    }
};
ZOLVM_EXACT(InvOf, (T x), 1 / x)
struct Inv : InvOf, Estimated<false, false> {};
ZOLVM_EXACT(DivOf, (T x, T y), x / y)
struct Div : DivOf, Estimated<false, true> {};
struct Sqrt : Estimated<true, true> {
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Cheap && fused) { // its steps cost more than the root otherwise
            return cheapRoot<false>(x);
        } else {
            return vec_sqrt(x);
        }
    }
};
struct InvSqrt : Estimated<true, false> {
    static constexpr auto scalar = scalar::invSqrt;
    static constexpr unsigned rules = rulePole;
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        ZOLVM_BY_KIND_CHEAP(rounded(Pair{1.0, 0.0} / squareRoot({x, 0.0})), 1 / vec_sqrt(x),
                            cheapRoot<true>(x));
    }
};

ZOLVM_FAMILY2(Hypot, ::hypot, ruleAccurate,
              offBand(x, T(0), bound<T>(0x1p60, 0x1p500)) |
                  offBand(y, T(0), bound<T>(0x1p60, 0x1p500)) |
                  offRange(larger(vec_fabs(x), vec_fabs(y)), bound<T>(0x1p-60, 0x1p-400),
                           bound<T>(0x1p60, 0x1p500)),
              ZOLVM_BY_KIND(rounded(squareRoot(exactProduct(x, x) + exactProduct(y, y))),
                            vec_hypot(x, y));)

// The power of e is kept in range; where that changes it, the result counts as spoilt.
ZOLVM_INLINE double finePow(double x, double y) {
    Pair const exponent = logPair<true>({x, 0.0}) * y;
    double const held = larger(smaller(exponent.hi, 709.2), -708.2);
    return rounded(expPair({held, held == exponent.hi ? exponent.lo : 0.0}));
}
ZOLVM_FAMILY2(PowOf, ::pow, zolvm::rulePoleAtZero | ruleUnderflows | ruleAccurate | ruleTells,
              offRange(x, minNormal<T>, maxFinite<T>) |
                  (K == Cheap ? offBand(y * cheapLog2(x), T(0), cheapExp2Most<T>)
                              : offBand(y, T(0), maxFinite<T>)),
              ZOLVM_BY_KIND_CHEAP(finePow(x, y), vec_pow(x, y), cheapExp2(cheapLog2(x) * y));)
struct Pow : PowOf {
    template <Kind K, class T>
    requires(K != Cheap) ZOLVM_INLINE static BitsOf<T> spoilt(T result) {
        return offRange(result, bound<T>(0x1p-124, 3e-308), bound<T>(0x1p126, 0.9e308));
    }
};
using Powx = Pow;

// ---- Error functions

ZOLVM_INLINE double fineErf(double x) {
    double const away = smaller(vec_fabs(x), 6.0); // from here on it is 1
    Pair const inside = erfNearZero({smaller(away, erfSplit), 0.0});
    Pair const outside = -erfcTail({away, 0.0}) + 1.0;
    return vec_copysign(rounded(choose(away < erfSplit, inside, outside)), x);
}
ZOLVM_FAMILY1(Erf, ::erf, ruleTells, offBand(x, oddLeast<K, T>, maxFinite<T>),
              ZOLVM_BY_KIND(fineErf(x), vec_erf(x));)
ZOLVM_FAMILY1(Erfc, ::erfc, ruleUnderflows, offBand(x, T(0), bound<T>(9.19, 26.543)),
              ZOLVM_BY_KIND(rounded(erfcPair({x, 0.0})), vec_erfc(x));)

// x times -sqrt(1/2). The low part counts where erfc falls steeply; the only form in single
// precision is one of few digits and does without.
ZOLVM_INLINE Pair downscaled(double x) { return sqrtHalf * -x; }
ZOLVM_INLINE Two<float> downscaled(float x) { return {x * static_cast<float>(-sqrtHalf.hi), 0.0F}; }

ZOLVM_FAMILY1(
    CdfNorm, scalar::cdfNorm, ruleUnderflows, offBand(x, T(0), bound<T>(12.94, 37.519)),
    auto const [z, rest] = downscaled(x);
    if constexpr (K == Fine) {
        return 0.5 * rounded(erfcPair({z, rest}));
    } else {
        T const half = T(0.5) * vec_erfc(z);
        // The logarithm of erfc falls by about 2 z + 1 / z.
        T const away = larger(z, T(1));
        T const slope = z > 1 ? 2 * away + 1 / away : T(0);
        return half - half * (rest * slope);
    })

ZOLVM_FAMILY1(ErfInv, scalar::erfInv, rulePole, offBand(x, oddLeast<K, T>, belowOne<T>),
              T const rest = 1 - vec_fabs(x);
              T const first = T(sqrtHalf.hi) * normalQuantile(T(0.5) * x, T(0.5) * rest);
              ZOLVM_BY_KIND(rounded(erfInvStep(first, {x, 0.0}, exactSum(1.0, -vec_fabs(x)))),
                            first);)
ZOLVM_FAMILY1(ErfcInv, scalar::erfcInv, rulePole, offRange(x, 2 * minNormal<T>, 2 * belowOne<T>),
              T const tail = smaller(x, 2 - x);
              T const first = T(sqrtHalf.hi) * normalQuantile(T(0.5) * (1 - x), T(0.5) * tail);
              ZOLVM_BY_KIND(rounded(erfInvStep(first, exactSum(1.0, -x),
                                               choose(x < 1, {x, 0.0}, exactSum(2.0, -x)))),
                            first);)
ZOLVM_FAMILY1(CdfNormInv, scalar::cdfNormInv, rulePole, offRange(x, minNormal<T>, belowOne<T>),
              T const first = normalQuantile(x - T(0.5), smaller(x, 1 - x));
              ZOLVM_BY_KIND(rounded(erfInvStep(first * sqrtHalf.hi, exactSum(2 * x, -1.0),
                                               choose(x < 0.5, {2 * x, 0.0},
                                                      exactSum(2.0, -2 * x))) *
                                    scaled(sqrtHalf, 2.0)),
                            first);)

// ---- Exact operations

// The integer next to x by the rounding in force. Adding a number of as many digits as the type
// holds pushes the fraction out; all numbers from there on are integers.
template <class T>
ZOLVM_INLINE T toInteger(T x) {
    constexpr T push = bound<T>(0x1p23, 0x1p52);
    T const rounded = (vec_fabs(x) + push) - push;
    return vec_fabs(x) < push ? vec_copysign(rounded, x) : x;
}
template <class T>
ZOLVM_INLINE T truncated(T x) {
    T const away = vec_fabs(toInteger(x));
    return vec_copysign(away > vec_fabs(x) ? away - 1 : away, x);
}
template <class T>
ZOLVM_INLINE T raised(T x) {
    T const near = toInteger(x);
    return vec_copysign(near < x ? near + 1 : near, x);
}
template <class T>
ZOLVM_INLINE T halfAway(T x) {
    T const down = vec_fabs(truncated(x));
    return vec_copysign(vec_fabs(x) - down >= T(0.5) ? down + 1 : down, x);
}
// Also for infinities, whose fraction is zero.
template <class T>
ZOLVM_INLINE T fraction(T x) {
    T const whole = truncated(x);
    return vec_copysign(whole == x ? T(0) : x - whole, x);
}

ZOLVM_EXACT(Abs, (T x), vec_fabs(x))
ZOLVM_EXACT(Sqr, (T x), squareOf(x))
ZOLVM_EXACT(Ceil, (T x), raised(x))
ZOLVM_EXACT(Floor, (T x), -raised(-x))
ZOLVM_EXACT(Frac, (T x), fraction(x))
ZOLVM_EXACT(NearbyInt, (T x), toInteger(x))
ZOLVM_EXACT(Rint, (T x), toInteger(x))
ZOLVM_EXACT(Round, (T x), halfAway(x))
ZOLVM_EXACT(Trunc, (T x), truncated(x))
ZOLVM_EXACT(Modf, (T x), Two<T>{truncated(x), fraction(x)})
ZOLVM_EXACT(Add, (T x, T y), x + y)
ZOLVM_EXACT(Mul, (T x, T y), x* y)
ZOLVM_EXACT(Sub, (T x, T y), x - y)

} // namespace

namespace zolvm::ZOLVM_PATH {
ZOLVM_REAL_FUNCTIONS(ZOLVM_DEFINE)
} // namespace zolvm::ZOLVM_PATH
