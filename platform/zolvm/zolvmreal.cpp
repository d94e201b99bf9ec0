// zolvmreal.cpp - kernels of the real families.
#include "zolvm/zolvmelementary.h"
#include "zolvm/zolvmkernels.h"
#include "zolvm/zolvmtable.h"

ZOLVM_DECLARE_PATH(ZOLVM_PATH)

namespace {

typedef double (*Scalar1)(double);
typedef double (*Scalar2)(double, double);

// What most families have in common.
struct Plain {
    static constexpr unsigned rules = zolvm::ruleNone;
};

// A family of one argument whose kernels are an elementary function; strange flags in terms of x.
// That the vector functions tell was tried out on every path, with denormals and without: single
// precision by one argument of a hundred, double precision by millions of random bits and all
// edges.
#define ZOLVM_FAMILY1(family, function, slow, statusRules, strangeFlags)                           \
    struct family : Plain {                                                                        \
        static constexpr Scalar1 scalar = slow;                                                    \
        static constexpr unsigned rules = statusRules;                                             \
        static constexpr bool tells = true;                                                        \
        template <Kind K, class T>                                                                 \
        ZOLVM_INLINE static BitsOf<T> strange(T x) {                                               \
            return strangeFlags;                                                                   \
        }                                                                                          \
        template <Kind K, class T>                                                                 \
        ZOLVM_INLINE static T at(T x) {                                                            \
            return function<K>(x);                                                                 \
        }                                                                                          \
    };

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

using zolvm::ruleAccurate;
using zolvm::ruleNone;
using zolvm::rulePole;
using zolvm::ruleUnderflows;

ZOLVM_FAMILY1(Acos, acosOf, ::acos, ruleAccurate, offBand(x, T(0), belowOne<T>))
ZOLVM_FAMILY1(Asin, asinOf, ::asin, ruleAccurate, offBand(x, oddLeast<K, T>, belowOne<T>))
ZOLVM_FAMILY1(Asinh, asinhOf, ::asinh, ruleNone, offBand(x, oddLeast<K, T>, squareMost<T>))
ZOLVM_FAMILY1(Atan, atanOf, ::atan, ruleAccurate,
              offBand(x, oddLeast<K, T>, bound<T>(0x1p100, 0x1p500)))
ZOLVM_FAMILY1(Atanh, atanhOf, ::atanh, rulePole,
              offBand(x, K == Fine ? T(0x1p-40) : T(0), belowOne<T>))
ZOLVM_FAMILY1(Cos, cosOf, ::cos, ruleAccurate, offBand(x, T(0), angleMost<T>))
ZOLVM_FAMILY1(Sin, sinOf, ::sin, ruleAccurate, offBand(x, oddLeast<K, T>, angleMost<T>))
ZOLVM_FAMILY1(Tan, tanOf, ::tan, ruleAccurate, offBand(x, oddLeast<K, T>, angleMost<T>))
ZOLVM_FAMILY1(Cosh, coshOf, ::cosh, ruleNone, offBand(x, T(0), bound<T>(88.0, 708.0)))
ZOLVM_FAMILY1(Sinh, sinhOf, ::sinh, ruleNone, offBand(x, oddLeast<K, T>, bound<T>(88.0, 708.0)))
ZOLVM_FAMILY1(Tanh, tanhOf, ::tanh, ruleNone, offBand(x, oddLeast<K, T>, maxFinite<T>))
ZOLVM_FAMILY1(Exp, expOf, ::exp, ruleUnderflows | ruleAccurate,
              offBand(x, T(0), bound<T>(87.3, 708.0)))
ZOLVM_FAMILY1(Expm1, expm1Of, ::expm1, ruleAccurate,
              offBand(x, oddLeast<K, T>, bound<T>(88.7, 709.0)))
ZOLVM_FAMILY1(Ln, lnOf, ::log, rulePole | ruleAccurate, offRange(x, minNormal<T>, maxFinite<T>))
ZOLVM_FAMILY1(Log10, log10Of, ::log10, rulePole, offRange(x, minNormal<T>, maxFinite<T>))
// In a sum with 1 tiny arguments vanish, which only the Fine kind minds.
ZOLVM_FAMILY1(Log1p, log1pOf, ::log1p, rulePole | ruleAccurate,
              offRange(1 + x, minNormal<T>, bound<T>(maxFinite<float>, 0x1p1000)) |
                  (K == Fine ? offBand(x, oddLeast<K, T>, maxFinite<T>) : 0))

struct Acosh : Plain {
    static constexpr Scalar1 scalar = ::acosh;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offRange(x, bound<T>(0x1.000002p0, 0x1.0000000000001p0), squareMost<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        return acoshOf<K>(x);
    }
};

// ---- Powers and roots

// Below this the cube of a cube root would lose its low part.
template <class T>
constexpr T cubeLeast = bound<T>(minNormal<float>, 0x1p-950);

// The cube root and what it lacks.
ZOLVM_INLINE Pair cbrtPair(double x) {
    double const root = vec_cbrt(x);
    Pair const square = exactProduct(root, root);
    Pair const cube = square * root;
    return quickSum(root, ((x - cube.hi) - cube.lo) / (3 * square.hi));
}

struct Cbrt : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::cbrt;
    static constexpr bool tells = true;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offBand(x, cubeLeast<T>, maxFinite<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            return rounded(cbrtPair(x));
        } else {
            return vec_cbrt(x);
        }
    }
};

struct InvCbrt : Cbrt {
    static constexpr Scalar1 scalar = zolvm::scalar::invCbrt;
    static constexpr bool tells = false;
    static constexpr unsigned rules = rulePole;
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            return rounded(Pair{1.0, 0.0} / cbrtPair(x));
        } else {
            return 1 / vec_cbrt(x);
        }
    }
};

struct Pow2o3 : Cbrt {
    static constexpr Scalar1 scalar = zolvm::scalar::pow2o3;
    static constexpr bool tells = false;
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            Pair const root = cbrtPair(x);
            return rounded(root * root);
        } else {
            T const root = vec_cbrt(x);
            return root * root;
        }
    }
};

struct Pow3o2 : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::pow3o2;
    static constexpr unsigned rules = ruleUnderflows;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offRange(x, bound<T>(0x1p-84, 0x1p-600), bound<T>(0x1p85, 0x1p682));
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            return rounded(squareRoot({x, 0.0}) * x);
        } else {
            return x * vec_sqrt(x);
        }
    }
};

struct Sqrt {
    template <Kind, class T>
    ZOLVM_INLINE static T at(T x) {
        return vec_sqrt(x);
    }
};

struct InvSqrt : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::invSqrt;
    static constexpr unsigned rules = rulePole;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offRange(x, bound<T>(minNormal<float>, 0x1p-900), maxFinite<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            return rounded(Pair{1.0, 0.0} / squareRoot({x, 0.0}));
        } else {
            return 1 / vec_sqrt(x);
        }
    }
};

struct Inv {
    template <Kind, class T>
    ZOLVM_INLINE static T at(T x) {
        return 1 / x;
    }
};
struct Div {
    template <Kind, class T>
    ZOLVM_INLINE static T at(T x, T y) {
        return x / y;
    }
};

struct Hypot : Plain {
    static constexpr Scalar2 scalar = ::hypot;
    static constexpr unsigned rules = ruleAccurate;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x, T y) {
        constexpr T most = bound<T>(0x1p60, 0x1p500);
        T const size = larger(vec_fabs(x), vec_fabs(y));
        return offBand(x, T(0), most) | offBand(y, T(0), most) |
               offRange(size, bound<T>(0x1p-60, 0x1p-400), most);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x, T y) {
        if constexpr (K == Fine) {
            return rounded(squareRoot(exactProduct(x, x) + exactProduct(y, y)));
        } else {
            return vec_hypot(x, y);
        }
    }
};

struct Pow : Plain {
    static constexpr Scalar2 scalar = ::pow;
    static constexpr bool tells = true;
    static constexpr unsigned rules = zolvm::rulePoleAtZero | ruleUnderflows | ruleAccurate;
    static constexpr double mostExponent = 709.2;   // of e
    static constexpr double leastExponent = -708.2; // their powers count as spoilt
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x, T y) {
        BitsOf<T> const base = offRange(x, minNormal<T>, maxFinite<T>);
        if constexpr (K == Cheap) {
            return base | offBand(y * cheapLog2(x), T(0), cheapExp2Most<T>);
        } else {
            return base | offBand(y, T(0), maxFinite<T>);
        }
    }
    template <Kind K, class T>
    requires(K != Cheap) ZOLVM_INLINE static BitsOf<T> spoilt(T result) {
        return offRange(result, bound<T>(0x1p-124, 3e-308), bound<T>(0x1p126, 0.9e308));
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x, T y) {
        if constexpr (K == Fine) {
            Pair const exponent = logPair<true>({x, 0.0}) * y;
            double const most = smaller(exponent.hi, mostExponent);
            double const held = larger(most, leastExponent);
            return rounded(expPair({held, held == exponent.hi ? exponent.lo : 0.0}));
        } else if constexpr (K == Cheap) {
            return cheapExp2(y * cheapLog2(x));
        } else {
            return vec_pow(x, y);
        }
    }
};
using Powx = Pow;

// ---- Angles

struct Atan2 : Plain {
    static constexpr Scalar2 scalar = ::atan2;
    static constexpr bool tells = true;
    static constexpr unsigned rules = ruleAccurate;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T y, T x) {
        constexpr T least = bound<T>(0x1p-60, 0x1p-500);
        constexpr T most = bound<T>(0x1p60, 0x1p500);
        return offBand(y, least, most) | offBand(x, least, most);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T y, T x) {
        return atan2Of<K>(y, x);
    }
};

struct SinCos : Sin {
    static constexpr Scalar1 scalar = ::sin;
    static constexpr Scalar1 scalar2 = ::cos;
    template <Kind K, class T>
    ZOLVM_INLINE static Two<T> at(T x) {
        return sinCosOf<K>(x);
    }
};

// ---- Error functions

struct Erf : Plain {
    static constexpr Scalar1 scalar = ::erf;
    static constexpr bool tells = true;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offBand(x, oddLeast<K, T>, maxFinite<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            double const away = smaller(vec_fabs(x), 6.0); // from here on it is 1
            Pair const inside = erfNearZero({smaller(away, erfSplit), 0.0});
            Pair const outside = -erfcTail({away, 0.0}) + 1.0;
            return vec_copysign(rounded(choose(away < erfSplit, inside, outside)), x);
        } else {
            return vec_erf(x);
        }
    }
};

struct Erfc : Plain {
    static constexpr Scalar1 scalar = ::erfc;
    static constexpr unsigned rules = ruleUnderflows;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offBand(x, T(0), bound<T>(9.19, 26.543));
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            return rounded(erfcPair({x, 0.0}));
        } else {
            return vec_erfc(x);
        }
    }
};

// x times -sqrt(1/2). The low part counts where erfc falls steeply; the only form in single
// precision is one of few digits and does without.
ZOLVM_INLINE Two<double> downscaled(double x) {
    Pair const z = sqrtHalf * -x;
    return {z.hi, z.lo};
}
ZOLVM_INLINE Two<float> downscaled(float x) { return {x * static_cast<float>(-sqrtHalf.hi), 0.0F}; }

struct CdfNorm : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::cdfNorm;
    static constexpr unsigned rules = ruleUnderflows;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T x) {
        return offBand(x, T(0), bound<T>(12.94, 37.519));
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T x) {
        if constexpr (K == Fine) {
            return 0.5 * rounded(erfcPair(sqrtHalf * -x));
        } else {
            Two<T> const z = downscaled(x);
            T const half = T(0.5) * vec_erfc(z.first);
            // The logarithm of erfc falls by about 2 z + 1 / z.
            T const away = larger(z.first, T(1));
            T const slope = z.first > 1 ? 2 * away + 1 / away : T(0);
            return half - half * (z.second * slope);
        }
    }
};

// Quantile of the normal distribution for a probability that is 1/2 + middle; tail is the
// probability of the nearer end. The rational functions are those of Wichura's algorithm AS 241.
template <class T>
ZOLVM_INLINE T normalQuantile(T middle, T tail) {
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
    T const r = vec_sqrt(-vec_log(tail));
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

// One step of Newton's from x towards the inverse of erf at y, where rest = 1 - |y|; both are
// exact, and the result is nearly so.
ZOLVM_INLINE Pair erfInvStep(double x, Pair y, Pair rest) {
    constexpr double halfSqrtPi = 0x1.c5bf891b4ef6bp-1;
    double const away = vec_fabs(x);
    Pair const power = expPair(-exactProduct(away, away));
    Pair const inside = choose(y.hi < 0, -y, y) - erfNearZero({smaller(away, erfSplit), 0.0});
    Pair const outside = power * erfcxPair({away, 0.0}) - rest;
    double const error = rounded(choose(away < erfSplit, inside, outside));
    Pair const result = quickSum(away, error * halfSqrtPi / power.hi);
    return choose(x < 0, -result, result);
}

struct ErfInv : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::erfInv;
    static constexpr unsigned rules = rulePole;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T y) {
        return offBand(y, K == Fine ? T(0x1p-500) : T(0), belowOne<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T y) {
        T const rest = 1 - vec_fabs(y);
        T const x = T(sqrtHalf.hi) * normalQuantile(T(0.5) * y, T(0.5) * rest);
        if constexpr (K == Fine) {
            return rounded(erfInvStep(x, {y, 0.0}, exactSum(1.0, -vec_fabs(y))));
        } else {
            return x;
        }
    }
};

struct ErfcInv : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::erfcInv;
    static constexpr unsigned rules = rulePole;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T q) {
        return offRange(q, minNormal<T>, 2 * belowOne<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T q) {
        T const tail = smaller(q, 2 - q);
        T const x = T(sqrtHalf.hi) * normalQuantile(T(0.5) * (1 - q), T(0.5) * tail);
        if constexpr (K == Fine) {
            Pair const rest = choose(q < 1, {q, 0.0}, exactSum(2.0, -q));
            return rounded(erfInvStep(x, exactSum(1.0, -q), rest));
        } else {
            return x;
        }
    }
};

struct CdfNormInv : Plain {
    static constexpr Scalar1 scalar = zolvm::scalar::cdfNormInv;
    static constexpr unsigned rules = rulePole;
    template <Kind K, class T>
    ZOLVM_INLINE static BitsOf<T> strange(T p) {
        return offRange(p, minNormal<T>, belowOne<T>);
    }
    template <Kind K, class T>
    ZOLVM_INLINE static T at(T p) {
        T const tail = smaller(p, 1 - p);
        T const quantile = normalQuantile(p - T(0.5), tail);
        if constexpr (K == Fine) {
            Pair const rest = choose(p < 0.5, {2 * p, 0.0}, exactSum(2.0, -2 * p));
            Pair const x = erfInvStep(quantile * sqrtHalf.hi, exactSum(2 * p, -1.0), rest);
            return rounded(x * scaled(sqrtHalf, 2.0));
        } else {
            return quantile;
        }
    }
};

// ---- Exact operations

#define ZOLVM_EXACT1(family, result)                                                               \
    struct family {                                                                                \
        template <Kind, class T>                                                                   \
        ZOLVM_INLINE static T at(T x) {                                                            \
            return result;                                                                         \
        }                                                                                          \
    };
#define ZOLVM_EXACT2(family, result)                                                               \
    struct family {                                                                                \
        template <Kind, class T>                                                                   \
        ZOLVM_INLINE static T at(T x, T y) {                                                       \
            return result;                                                                         \
        }                                                                                          \
    };

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

ZOLVM_EXACT1(Abs, vec_fabs(x))
ZOLVM_EXACT1(Sqr, x* x)
ZOLVM_EXACT1(Ceil, raised(x))
ZOLVM_EXACT1(Floor, -raised(-x))
ZOLVM_EXACT1(Frac, fraction(x))
ZOLVM_EXACT1(NearbyInt, toInteger(x))
ZOLVM_EXACT1(Rint, toInteger(x))
ZOLVM_EXACT1(Round, halfAway(x))
ZOLVM_EXACT1(Trunc, truncated(x))
ZOLVM_EXACT2(Add, x + y)
ZOLVM_EXACT2(Mul, x* y)
ZOLVM_EXACT2(Sub, x - y)

struct Modf {
    template <Kind, class T>
    ZOLVM_INLINE static Two<T> at(T x) {
        return {truncated(x), fraction(x)};
    }
};

} // namespace

namespace zolvm::ZOLVM_PATH {
#define ZOLVM_REAL_SIX(shape, family, a11, a21, a24, a26, a50, a53)                                \
    ZOLVM_DEFINE_SIX(shape, family, 32f, 64f, float, float, double, double, a11, a21, a24, a26,    \
                     a50, a53)
#define ZOLVM_REAL_BEST(shape, family, a24, a53)                                                   \
    ZOLVM_DEFINE_##shape(zols##family##_32f_A24, float, float, family, a24)                        \
        ZOLVM_DEFINE_##shape(zols##family##_64f_A53, double, double, family, a53)
#define ZOLVM_REAL_PLAIN(shape, family, single, twice)                                             \
    ZOLVM_DEFINE_##shape(zols##family##_32f, float, float, family, single)                         \
        ZOLVM_DEFINE_##shape(zols##family##_64f, double, double, family, twice)
ZOLVM_REAL_TABLE(ZOLVM_REAL_SIX, ZOLVM_REAL_BEST, ZOLVM_REAL_PLAIN)
} // namespace zolvm::ZOLVM_PATH
