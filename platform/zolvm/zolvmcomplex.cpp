// zolvmcomplex.cpp - kernels of the complex families. They are formulas in real functions of the
// same kind: no step of them cancels, so the norm of the error stays within a few units.
#include <utility>

#include "zolvm/zolvmelementary.h"
#include "zolvm/zolvmkernels.h"
#include "zolvm/zolvmtable.h"

ZOLVM_DECLARE_PATH(ZOLVM_PATH)

namespace {

namespace scalar = zolvm::scalar;

typedef Zol64fc (*Scalar1)(Zol64fc);
typedef Zol64fc (*Scalar2)(Zol64fc, Zol64fc);

struct Plain {
    static constexpr unsigned rules = zolvm::ruleNone;
};

// Flags are negative unless squares and products of the parts neither overflow nor vanish. Zeros
// are strange: on the branch cuts their signs decide.
template <class R>
ZOLVM_INLINE BitsOf<R> partsOff(Complex<R> z) {
    constexpr R least = bound<R>(0x1p-40, 0x1p-250);
    constexpr R most = bound<R>(0x1p40, 0x1p250);
    return offBand(z.re, least, most) | offBand(z.im, least, most);
}
// The same for functions that don't mind a zero part.
template <class R>
ZOLVM_INLINE BitsOf<R> sizeOff(Complex<R> z) {
    constexpr R most = bound<R>(0x1p40, 0x1p250);
    R const size = larger(vec_fabs(z.re), vec_fabs(z.im));
    return offBand(z.re, R(0), most) | offBand(z.im, R(0), most) |
           offRange(size, bound<R>(0x1p-40, 0x1p-250), most);
}
template <class R>
ZOLVM_INLINE BitsOf<R> anglesOff(R angle, R hyperbolic, R most) {
    constexpr R least = bound<R>(0x1p-100, 0x1p-500);
    return offBand(angle, least, bound<R>(16384.0, trigonometricLimit)) |
           offBand(hyperbolic, least, most);
}

// A family of one argument: its value for Complex<R> z by kind K.
#define ZOLVM_COMPLEX1(family, slow, statusRules, strangeFlags, ...)                               \
    struct family : Plain {                                                                        \
        static constexpr Scalar1 scalar = slow;                                                    \
        static constexpr unsigned rules = statusRules;                                             \
        template <Kind, class R>                                                                   \
        ZOLVM_INLINE static BitsOf<R> strange(Complex<R> z) {                                      \
            return strangeFlags;                                                                   \
        }                                                                                          \
        template <Kind K, class R>                                                                 \
        ZOLVM_INLINE static Complex<R> at(Complex<R> z) __VA_ARGS__                                \
    };

// ---- Roots, absolute values and products

// Square root of the norm's square.
template <Kind K, class R>
ZOLVM_INLINE R absOf(Complex<R> z) {
    if constexpr (K == Fine) {
        return rounded(squareRoot(exactProduct(z.re, z.re) + exactProduct(z.im, z.im)));
    } else {
        return vec_sqrt(z.re * z.re + z.im * z.im);
    }
}

template <Kind K, class R>
ZOLVM_INLINE Complex<R> sqrtOf(Complex<R> z) {
    R const along = vec_sqrt(R(0.5) * (vec_fabs(z.re) + absOf<K>(z)));
    R const across = vec_fabs(z.im) / (along + along);
    bool const left = z.re < 0;
    return {left ? across : along, vec_copysign(left ? along : across, z.im)};
}
ZOLVM_COMPLEX1(Sqrt, scalar::sqrt, zolvm::ruleNone, sizeOff(z), { return sqrtOf<K>(z); })

struct Abs : Plain {
    static constexpr double (*scalar)(Zol64fc) = scalar::abs;
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> strange(Complex<R> z) {
        return sizeOff(z);
    }
    template <Kind K, class R>
    ZOLVM_INLINE static R at(Complex<R> z) {
        return absOf<K>(z);
    }
};

struct Arg : Plain {
    static constexpr double (*scalar)(Zol64fc) = scalar::arg;
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> strange(Complex<R> z) {
        return partsOff(z);
    }
    template <Kind K, class R>
    ZOLVM_INLINE static R at(Complex<R> z) {
        return atan2Of<K>(z.im, z.re);
    }
};

// Whole vectors of numbers, each as its parts by turns. The compiler would part and join them in
// many steps.
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
    using Indices = std::make_integer_sequence<int, count>;
    typedef R Vector __attribute__((vector_size(vectorBytes)));
    typedef R InMemory __attribute__((vector_size(vectorBytes), aligned(sizeof(R)), may_alias));

    template <int... i>
    ZOLVM_INLINE static Vector realParts(Vector z, std::integer_sequence<int, i...>) {
        return __builtin_shufflevector(z, z, (i & ~1)...);
    }
    template <int... i>
    ZOLVM_INLINE static Vector imaginaryParts(Vector z, std::integer_sequence<int, i...>) {
        return __builtin_shufflevector(z, z, (i | 1)...);
    }
    template <int... i>
    ZOLVM_INLINE static Vector exchanged(Vector z, std::integer_sequence<int, i...>) {
        return __builtin_shufflevector(z, z, (i ^ 1)...);
    }
    // Real parts of the first, imaginary parts of the second.
    template <int... i>
    ZOLVM_INLINE static Vector joined(Vector z, Vector w, std::integer_sequence<int, i...>) {
        return __builtin_shufflevector(z, w, (i + (i & 1) * count)...);
    }
};

struct Mul : Plain {
    static constexpr Scalar2 scalar = scalar::mul;
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> strange(Complex<R>, Complex<R>) {
        return 0;
    }
    // Infinite operands may come out as two NaNs; the C standard wants an infinity there.
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> spoilt(Complex<R> result) {
        constexpr R infinite = R(__builtin_inf());
        return offBand(result.re, R(0), infinite) & offBand(result.im, R(0), infinite);
    }
    // True if some part of a result is NaN.
    template <class R>
    static bool vectors(R const* z, R const* w, R* result, std::size_t parts) {
        return products<false>(z, w, result, parts);
    }

protected:
    template <bool conjugate, class R>
    ZOLVM_INLINE static typename Lanes<R>::Vector product(R const* z, R const* w) {
        using L = Lanes<R>;
        typename L::Indices const all;
        typename L::Vector first = *reinterpret_cast<typename L::InMemory const*>(z);
        typename L::Vector second = *reinterpret_cast<typename L::InMemory const*>(w);
        // Loaded once: the compiler would load anew for each use, and loads are what is scarce.
        asm("" : "+v"(first), "+v"(second));
        typename L::Vector const along = L::realParts(second, all) * first;
        typename L::Vector const across =
            L::imaginaryParts(second, all) * L::exchanged(first, all);
        return conjugate ? L::joined(along + across, along - across, all)
                         : L::joined(along - across, along + across, all);
    }
    template <bool conjugate, class R>
    ZOLVM_INLINE static bool products(R const* z, R const* w, R* result, std::size_t parts) {
        using L = Lanes<R>;
        using InMemory = typename L::InMemory;
        auto nan = typename L::Vector{} != typename L::Vector{};
        // Two at a time for one check: their sum is NaN if one of them is.
        for (std::size_t i = 0; i < parts; i += 2 * L::count) {
            auto const one = product<conjugate>(z + i, w + i);
            auto const next = product<conjugate>(z + i + L::count, w + i + L::count);
            nan |= one + next != one + next;
            *reinterpret_cast<InMemory*>(result + i) = one;
            *reinterpret_cast<InMemory*>(result + i + L::count) = next;
        }
        BitsOf<R> any = 0;
        for (int i = 0; i < L::count; ++i) {
            any |= static_cast<BitsOf<R>>(nan[i]);
        }
        return any != 0;
    }
};
struct MulByConj : Mul {
    static constexpr Scalar2 scalar = scalar::mulByConj;
    template <class R>
    static bool vectors(R const* z, R const* w, R* result, std::size_t parts) {
        return products<true>(z, w, result, parts);
    }
};

struct Div : Plain {
    static constexpr Scalar2 scalar = scalar::div;
    static constexpr unsigned rules = zolvm::rulePoleByZero;
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> strange(Complex<R> z, Complex<R> w) {
        return sizeOff(w) | sizeOff(z);
    }
    template <Kind, class R>
    ZOLVM_INLINE static Complex<R> at(Complex<R> z, Complex<R> w) {
        R const square = w.re * w.re + w.im * w.im;
        return {(z.re * w.re + z.im * w.im) / square, (z.im * w.re - z.re * w.im) / square};
    }
};

// ---- Exponential and trigonometric functions

ZOLVM_COMPLEX1(Exp, scalar::exp, zolvm::ruleNone,
               offBand(z.re, R(0), bound<R>(80.0, 700.0)) |
                   offBand(z.im, bound<R>(0x1p-100, 0x1p-500),
                           bound<R>(16384.0, trigonometricLimit)),
               {
                   R const size = expOf<K>(z.re);
                   Two<R> const angle = sinCosOf<K>(z.im);
                   return {size * angle.second, size * angle.first};
               })

struct CIS : Plain {
    static constexpr Zol64fc (*scalar)(double) = scalar::cis;
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> strange(R x) {
        return offBand(x, bound<R>(0x1p-100, 0x1p-500), bound<R>(16384.0, trigonometricLimit));
    }
    template <Kind K, class R>
    ZOLVM_INLINE static Complex<R> at(R x) {
        Two<R> const angle = sinCosOf<K>(x);
        return {angle.second, angle.first};
    }
};

// sin(x + iy) and cos(x + iy); sinh and cosh are theirs, turned.
template <Kind K, class R>
ZOLVM_INLINE Complex<R> sinOf2(R x, R y) {
    Two<R> const angle = sinCosOf<K>(x);
    Two<R> const hyperbolic = sinhCoshOf<K>(y);
    return {angle.first * hyperbolic.second, angle.second * hyperbolic.first};
}
template <Kind K, class R>
ZOLVM_INLINE Complex<R> cosOf2(R x, R y) {
    Two<R> const angle = sinCosOf<K>(x);
    Two<R> const hyperbolic = sinhCoshOf<K>(y);
    return {angle.second * hyperbolic.second, -angle.first * hyperbolic.first};
}
// tan(x + iy): no denominator cancels, as both squares are positive.
template <Kind K, class R>
ZOLVM_INLINE Complex<R> tanOf2(R x, R y) {
    if constexpr (K == Fine) {
        SineCosine const angle = sinCosPair({x, 0.0});
        Hyperbolic<Pair> const away = sinhCoshPair(vec_fabs(y));
        Pair const bottom = angle.cosine * angle.cosine + away.sine * away.sine;
        return {rounded(angle.sine * angle.cosine / bottom),
                vec_copysign(rounded(away.sine * away.cosine / bottom), y)};
    } else {
        Two<R> const angle = sinCosOf<K>(x);
        Two<R> const hyperbolic = sinhCoshOf<K>(y);
        R const bottom = angle.second * angle.second + hyperbolic.first * hyperbolic.first;
        return {angle.first * angle.second / bottom, hyperbolic.first * hyperbolic.second / bottom};
    }
}

template <class R>
constexpr R hyperbolicMost = bound<R>(80.0, 700.0);
template <class R>
constexpr R squareMost = bound<R>(40.0, 340.0); // where sinh may still be squared

ZOLVM_COMPLEX1(Sin, scalar::sin, zolvm::ruleNone, anglesOff(z.re, z.im, hyperbolicMost<R>),
               { return sinOf2<K>(z.re, z.im); })
ZOLVM_COMPLEX1(Cos, scalar::cos, zolvm::ruleNone, anglesOff(z.re, z.im, hyperbolicMost<R>),
               { return cosOf2<K>(z.re, z.im); })
ZOLVM_COMPLEX1(Tan, scalar::tan, zolvm::ruleNone, anglesOff(z.re, z.im, squareMost<R>),
               { return tanOf2<K>(z.re, z.im); })
ZOLVM_COMPLEX1(Sinh, scalar::sinh, zolvm::ruleNone, anglesOff(z.im, z.re, hyperbolicMost<R>), {
    Complex<R> const turned = sinOf2<K>(z.im, z.re);
    return {turned.im, turned.re};
})
ZOLVM_COMPLEX1(Cosh, scalar::cosh, zolvm::ruleNone, anglesOff(z.im, z.re, hyperbolicMost<R>), {
    Complex<R> const turned = cosOf2<K>(z.im, z.re);
    return {turned.re, -turned.im};
})
ZOLVM_COMPLEX1(Tanh, scalar::tanh, zolvm::ruleNone, anglesOff(z.im, z.re, squareMost<R>), {
    Complex<R> const turned = tanOf2<K>(z.im, z.re);
    return {turned.im, turned.re};
})

// ---- Logarithms and powers

// Logarithm as pairs. The square of the norm is exact enough to keep the digits near 1.
struct LogPair {
    Pair re;
    Pair im;
};
ZOLVM_INLINE Pair squareOfNorm(Complex<double> z) {
    return exactProduct(z.re, z.re) + exactProduct(z.im, z.im);
}
template <bool isLong>
ZOLVM_INLINE LogPair lnPair(Complex<double> z) {
    return {scaled(logPair<isLong>(squareOfNorm(z)), 0.5),
            atan2Pair<isLong>({z.im, 0.0}, {z.re, 0.0})};
}
template <Kind K, class R>
ZOLVM_INLINE Complex<R> lnOf2(Complex<R> z) {
    if constexpr (K == Fine) {
        LogPair const log = lnPair<false>(z);
        return {rounded(log.re), rounded(log.im)};
    } else {
        Pair const square = squareOfNorm(z);
        return {0.5 * (vec_log(square.hi) + square.lo / square.hi), vec_atan2(z.im, z.re)};
    }
}
ZOLVM_COMPLEX1(Ln, scalar::ln, zolvm::rulePole, partsOff(z), { return lnOf2<K>(z); })
ZOLVM_COMPLEX1(Log10, scalar::log10, zolvm::rulePole, partsOff(z), {
    Complex<R> const log = lnOf2<K>(z);
    return {log.re * R(log10E.hi), log.im * R(log10E.hi)};
})

struct Pow : Plain {
    static constexpr Scalar2 scalar = scalar::pow;
    // Of e; the root of the power is taken and squared, so that no part of it leaves the range
    // before the result does.
    static constexpr double mostExponent = 1400;
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> strange(Complex<R> z, Complex<R> w) {
        constexpr R most = bound<R>(0x1p40, 0x1p100);
        return partsOff(z) | offBand(w.re, R(0), most) | offBand(w.im, R(0), most);
    }
    template <Kind, class R>
    ZOLVM_INLINE static BitsOf<R> spoilt(Complex<R> result) {
        R const size = larger(vec_fabs(result.re), vec_fabs(result.im));
        return offRange(size, minNormal<R>, maxFinite<R>);
    }
    template <Kind K, class R>
    ZOLVM_INLINE static Complex<R> at(Complex<R> z, Complex<R> w) {
        double root;
        Two<double> angle;
        bool inReach;
        if constexpr (K == Fine) {
            LogPair const log = lnPair<true>(z);
            Pair const re = log.re * w.re - log.im * w.im;
            Pair const im = log.re * w.im + log.im * w.re;
            inReach = isInReach(re.hi, im.hi);
            root = rounded(expPair(scaled(re, 0.5)));
            SineCosine const both = sinCosPair(im);
            angle = {rounded(both.sine), rounded(both.cosine)};
        } else {
            Complex<double> const log = lnOf2<Vec>(z);
            double const re = log.re * w.re - log.im * w.im;
            double const im = log.re * w.im + log.im * w.re;
            inReach = isInReach(re, im);
            root = vec_exp(0.5 * re);
            angle = sinCosOf<Vec>(im);
        }
        // A zero counts as spoilt, and the element is done again.
        double const kept = inReach ? root : 0.0;
        return {kept * angle.second * kept, kept * angle.first * kept};
    }

private:
    ZOLVM_INLINE static bool isInReach(double exponent, double angle) {
        return (vec_fabs(exponent) <= mostExponent) & (vec_fabs(angle) <= trigonometricLimit);
    }
};
using Powx = Pow;

// ---- Inverse trigonometric functions, by Kahan's formulas in the square roots of 1 - z and 1 + z,
// whose products have no differences.

template <class R>
struct Roots {
    Complex<R> minus; // of 1 - z
    Complex<R> plus;  // of 1 + z
};
template <Kind K, class R>
ZOLVM_INLINE Roots<R> rootsOf(Complex<R> z) {
    return {sqrtOf<K>(Complex<R>{1 - z.re, -z.im}), sqrtOf<K>(Complex<R>{1 + z.re, z.im})};
}
template <Kind K, class R>
ZOLVM_INLINE Complex<R> asinOf2(Complex<R> z) {
    Roots<R> const root = rootsOf<K>(z);
    R const cosine = root.minus.re * root.plus.re - root.minus.im * root.plus.im;
    R const sine = root.minus.re * root.plus.im - root.minus.im * root.plus.re;
    return {atan2Of<K>(z.re, cosine), asinhOf<K>(sine)};
}
template <Kind K, class R>
ZOLVM_INLINE Complex<R> acosOf2(Complex<R> z) {
    Roots<R> const root = rootsOf<K>(z);
    R const sine = root.plus.re * root.minus.im - root.plus.im * root.minus.re;
    return {2 * atan2Of<K>(root.minus.re, root.plus.re), asinhOf<K>(sine)};
}
template <Kind K, class R>
ZOLVM_INLINE Complex<R> atanhOf2(Complex<R> z) {
    R const x = vec_fabs(z.re);
    R const distance = (1 - x) * (1 - x) + z.im * z.im;
    R const size = R(0.25) * log1pOf<K>(4 * x / distance);
    return {vec_copysign(size, z.re),
            R(0.5) * atan2Of<K>(2 * z.im, (1 - x) * (1 + x) - z.im * z.im)};
}

ZOLVM_COMPLEX1(Asin, scalar::asin, zolvm::ruleNone, partsOff(z), { return asinOf2<K>(z); })
ZOLVM_COMPLEX1(Acos, scalar::acos, zolvm::ruleNone, partsOff(z), { return acosOf2<K>(z); })
ZOLVM_COMPLEX1(Atanh, scalar::atanh, zolvm::rulePole, partsOff(z), { return atanhOf2<K>(z); })
ZOLVM_COMPLEX1(Asinh, scalar::asinh, zolvm::ruleNone, partsOff(z), {
    Complex<R> const turned = asinOf2<K>(Complex<R>{-z.im, z.re});
    return {turned.im, -turned.re};
})
ZOLVM_COMPLEX1(Acosh, scalar::acosh, zolvm::ruleNone, partsOff(z), {
    Complex<R> const turned = acosOf2<K>(z);
    return {vec_fabs(turned.im), vec_copysign(turned.re, z.im)};
})
ZOLVM_COMPLEX1(Atan, scalar::atan, zolvm::rulePole, partsOff(z), {
    Complex<R> const turned = atanhOf2<K>(Complex<R>{-z.im, z.re});
    return {turned.im, -turned.re};
})

// ---- Exact operations

struct Conj {
    template <Kind, class N>
    ZOLVM_INLINE static N at(N z) {
        return {z.re, -z.im};
    }
};
struct Add {
    template <Kind, class N>
    ZOLVM_INLINE static N at(N z, N w) {
        return {z.re + w.re, z.im + w.im};
    }
};
struct Sub {
    template <Kind, class N>
    ZOLVM_INLINE static N at(N z, N w) {
        return {z.re - w.re, z.im - w.im};
    }
};

} // namespace

namespace zolvm::ZOLVM_PATH {
#define ZOLVM_COMPLEX_SIX(shape, family, a11, a21, a24, a26, a50, a53)                             \
    ZOLVM_DEFINE_SIX(shape, family, 32fc, 64fc, Zol32fc, Zol32fc, Zol64fc, Zol64fc, a11, a21, a24, \
                     a26, a50, a53)
#define ZOLVM_COMPLEX_TO_REAL(shape, family, a11, a21, a24, a26, a50, a53)                         \
    ZOLVM_DEFINE_SIX(shape, family, 32fc, 64fc, Zol32fc, float, Zol64fc, double, a11, a21, a24,    \
                     a26, a50, a53)
#define ZOLVM_COMPLEX_FROM_REAL(shape, family, a11, a21, a24, a26, a50, a53)                       \
    ZOLVM_DEFINE_SIX(shape, family, 32fc, 64fc, float, Zol32fc, double, Zol64fc, a11, a21, a24,    \
                     a26, a50, a53)
#define ZOLVM_COMPLEX_BEST(shape, family, a24, a53)                                                \
    ZOLVM_DEFINE_##shape(zols##family##_32fc_A24, Zol32fc, Zol32fc, family, a24)                   \
        ZOLVM_DEFINE_##shape(zols##family##_64fc_A53, Zol64fc, Zol64fc, family, a53)
ZOLVM_COMPLEX_TABLE(ZOLVM_COMPLEX_SIX, ZOLVM_COMPLEX_BEST, ZOLVM_COMPLEX_TO_REAL,
                    ZOLVM_COMPLEX_FROM_REAL)
} // namespace zolvm::ZOLVM_PATH
