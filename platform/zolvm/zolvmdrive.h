// zolvmdrive.h - how a kernel of one element becomes a function of arrays: blocks, padded tails,
// sources that are destinations, elements out of the ordinary, status and flags. Included by the
// kernel sources alone, so everything is in an unnamed namespace.
//
// A family is a struct with some of these static members, T being float or double and Number
// either of them or a Complex of them:
//   at<kind>(x) or at<kind>(x, y)   the value, right for ordinary arguments
//   strange<kind>(x) or (x, y)      negative flags for other arguments
//   tells                           the C library's vector function raises a flag of the processor
//                                   wherever it is not right or the status is not 0
//   spoilt<kind>(result)            negative flags for results that the kernel gets wrong
//   scalar, rules                   the function of one element for all others, its status rules
#ifndef ZOLVM_ZOLVMDRIVE_H
#define ZOLVM_ZOLVMDRIVE_H

#include <cstddef>
#include <math.h>
#include <type_traits>

#include "zolvm/zolvmscalar.h"

#define ZOLVM_INLINE [[gnu::always_inline]] inline

namespace {

enum Kind { Cheap, Vec, Wide, Fine, Ieee, Exact };

template <class T>
struct Complex {
    T re;
    T im;
};
template <class T>
struct Two {
    T first;
    T second;
};

// How the loops see an element of an array: its real type, its number, how to load and store it.
template <class E>
struct Element {
    using Real = E;
    using Number = E;
    using WideNumber = double;
    using Interface = double; // of the functions of one element
    ZOLVM_INLINE static E load(E const& x) { return x; }
    ZOLVM_INLINE static double widen(E x) { return static_cast<double>(x); }
    template <class N>
    ZOLVM_INLINE static E narrow(N x) {
        return static_cast<E>(x);
    }
    ZOLVM_INLINE static void store(E& to, E x) { to = x; }
};
template <class E, class R>
struct ComplexElement {
    using Real = R;
    using Number = Complex<R>;
    using WideNumber = Complex<double>;
    using Interface = Zol64fc;
    ZOLVM_INLINE static Number load(E const& z) { return {z.re, z.im}; }
    ZOLVM_INLINE static WideNumber widen(Number z) {
        return {static_cast<double>(z.re), static_cast<double>(z.im)};
    }
    template <class C>
    ZOLVM_INLINE static Number narrow(C z) {
        return {static_cast<R>(z.re), static_cast<R>(z.im)};
    }
    // Part by part: a copy of the whole would not vectorise.
    ZOLVM_INLINE static void store(E& to, Number z) {
        to.re = z.re;
        to.im = z.im;
    }
};
template <>
struct Element<Zol32fc> : ComplexElement<Zol32fc, float> {};
template <>
struct Element<Zol64fc> : ComplexElement<Zol64fc, double> {};

// The bits of a real type as an integer. Flags are such integers, and the sign bit is what they
// say: comparing integers by subtraction costs less in a loop than comparing numbers, and every
// instruction set can do it.
template <class T>
using BitsOf = std::conditional_t<sizeof(T) == 4, unsigned, unsigned long long>;
template <class T>
ZOLVM_INLINE BitsOf<T> bitsOf(T x) {
    return __builtin_bit_cast(BitsOf<T>, x);
}
template <class B>
ZOLVM_INLINE bool isNegative(B flags) {
    return (flags >> (8 * sizeof(B) - 1)) != 0;
}

// Negative unless least <= |x| <= most.
template <class T>
ZOLVM_INLINE BitsOf<T> offBand(T x, T least, T most) {
    BitsOf<T> const size = bitsOf(x) & (~BitsOf<T>(0) >> 1);
    BitsOf<T> const above = bitsOf(most) - size;
    return least == 0 ? above : above | (size - bitsOf(least));
}
// Negative unless least <= x <= most, for a positive least. The bits of negative numbers are below
// or above both.
template <class T>
ZOLVM_INLINE BitsOf<T> offRange(T x, T least, T most) {
    return (bitsOf(most) - bitsOf(x)) | (bitsOf(x) - bitsOf(least));
}

template <class T>
constexpr T minNormal = sizeof(T) == 4 ? T(0x1p-126) : T(0x1p-1022);
template <class T>
constexpr T maxFinite = sizeof(T) == 4 ? T(0x1.fffffep127) : T(0x1.fffffffffffffp1023);

// Chooses the bound of the type.
template <class T>
constexpr T bound(double single, double twice) {
    return static_cast<T>(sizeof(T) == 4 ? single : twice);
}

constexpr std::size_t tailLength = 16; // the longest vector of any path, in elements

// Everything that a family and a kind decide at compile time.
template <class F, Kind K, class S, class D, int sources, int results>
struct Driver {
    using From = Element<S>;
    using To = Element<D>;
    using Number = typename From::Number;
    using Flags = BitsOf<typename From::Real>;

    // As many elements as leave room for others in the innermost cache.
    static constexpr std::size_t blockLength = 8192 / sizeof(S);
    // Whether some elements may have to be done again.
    static constexpr bool choosy = K != Exact && K != Ieee;
    // Then the loop does nothing but call, and arguments are looked at when flags are up.
    static constexpr bool tells = K == Vec && requires { requires F::tells; };
        // A vector function keeps no register for its caller. Where a vector is long, a loop around
        // it is faster without the check, and the arguments get a loop of their own.
#ifdef __AVX__
    static constexpr bool checkedApart =
        (K == Vec || K == Wide) && !tells && std::is_same_v<Number, typename From::Real>;
#else
    static constexpr bool checkedApart = false;
#endif

    // Without fused multiply-add the Fine kind costs more than the C library's scalar functions,
    // where those are accurate enough.
#ifdef __FMA__
    static constexpr bool byElement = false;
#else
    static constexpr bool byElement = K == Fine && results == 1 &&
                                      std::is_same_v<Number, typename From::Real> &&
                                      std::is_same_v<S, D> && requires {
        requires(F::rules & zolvm::ruleAccurate) != 0;
    };
#endif

    ZOLVM_INLINE static auto value(Number x, [[maybe_unused]] Number y) {
        if constexpr (K == Wide && sources == 2) {
            return F::template at<Vec>(From::widen(x), From::widen(y));
        } else if constexpr (K == Wide) {
            return F::template at<Vec>(From::widen(x));
        } else if constexpr (sources == 2) {
            return F::template at<K>(x, y);
        } else {
            return F::template at<K>(x);
        }
    }

    ZOLVM_INLINE static Flags strange(Number x, [[maybe_unused]] Number y) {
        if constexpr (sources == 2) {
            return F::template strange<K>(x, y);
        } else {
            return F::template strange<K>(x);
        }
    }

    static constexpr bool canSpoil = requires(typename To::Number result) {
        F::template spoilt<K>(result);
    };
    ZOLVM_INLINE static Flags spoilt([[maybe_unused]] typename To::Number result) {
        if constexpr (canSpoil) {
            return F::template spoilt<K>(result);
        } else {
            return 0;
        }
    }

    // The vector loop: count is a multiple of the tail's length, no destination is a source. Gives
    // true if it met an element that must be done again; others are computed all the same, and what
    // flags that leaves is taken back.
    [[gnu::noinline, gnu::noclone]] static bool
    loop(S const* __restrict source1, S const* __restrict source2, D* __restrict dest1,
         [[maybe_unused]] D* __restrict dest2, std::size_t count) {
        Flags left = 0;
        for (std::size_t i = 0; i < count / tailLength * tailLength; ++i) {
            Number const x = From::load(source1[i]);
            Number const y = sources == 2 ? From::load(source2[i]) : x;
            if constexpr (choosy && !checkedApart && !tells) {
                left |= strange(x, y);
            }
            if constexpr (results == 2) {
                auto const both = value(x, y);
                To::store(dest1[i], To::narrow(both.first));
                To::store(dest2[i], To::narrow(both.second));
            } else {
                typename To::Number const result = To::narrow(value(x, y));
                if constexpr (!checkedApart && !tells) {
                    left |= spoilt(result);
                }
                To::store(dest1[i], result);
            }
        }
        return isNegative(left);
    }
    static bool anyStrange(S const* __restrict source1, S const* __restrict source2,
                           std::size_t count) {
        Flags left = 0;
#pragma GCC unroll 4
        for (std::size_t i = 0; i < count / tailLength * tailLength; ++i) {
            Number const x = From::load(source1[i]);
            left |= strange(x, sources == 2 ? From::load(source2[i]) : x);
        }
        return isNegative(left);
    }
    static bool anySpoilt([[maybe_unused]] D const* results1, [[maybe_unused]] std::size_t count) {
        Flags left = 0;
        if constexpr (canSpoil) {
            for (std::size_t i = 0; i < count / tailLength * tailLength; ++i) {
                left |= spoilt(results1[i]);
            }
        }
        return isNegative(left);
    }
    [[gnu::noinline]] static bool pass(S const* source1, S const* source2, D* dest1, D* dest2,
                                       std::size_t count) {
        if constexpr (byElement) {
            // By a pointer that the compiler can't see through: it would take a vector function.
            auto* const volatile hidden = F::scalar;
            auto* const function = hidden;
            Flags left = 0;
            for (std::size_t i = 0; i < count; ++i) {
                if constexpr (sources == 2) {
                    dest1[i] = function(source1[i], source2[i]);
                } else {
                    dest1[i] = function(source1[i]);
                }
                left |= strange(source1[i], source2[i]) | spoilt(dest1[i]);
            }
            return isNegative(left);
        } else if constexpr (requires { &F::template vectors<typename From::Real>; }) {
            return F::vectors(&source1->re, &source2->re, &dest1->re, 2 * count);
        } else if constexpr (checkedApart) {
            bool const strangers = anyStrange(source1, source2, count);
            loop(source1, source2, dest1, dest2, count);
            return anySpoilt(dest1, count) || strangers;
        } else {
            return loop(source1, source2, dest1, dest2, count);
        }
    }

    // The last elements, fewer than a tail's length, by way of arrays that are filled up.
    static bool tail(S const* source1, S const* source2, D* dest1, D* dest2, std::size_t count) {
        S full1[tailLength];
        S full2[tailLength];
        D result1[tailLength];
        D result2[tailLength];
        __builtin_memcpy(full1, source1, count * sizeof(S));
        __builtin_memcpy(full2, source2, count * sizeof(S));
        for (std::size_t i = count; i < tailLength; ++i) {
            full1[i] = full1[0];
            full2[i] = full2[0];
        }
        bool const left = pass(full1, full2, result1, result2, tailLength);
        __builtin_memcpy(dest1, result1, count * sizeof(D));
        if constexpr (results == 2) {
            __builtin_memcpy(dest2, result2, count * sizeof(D));
        }
        return left;
    }

    static D store(auto value) {
        if constexpr (requires { value.re; }) {
            return {static_cast<typename To::Real>(value.re),
                    static_cast<typename To::Real>(value.im)};
        } else {
            return static_cast<D>(value);
        }
    }

    // One element by the function of one element; keeps the first status that isn't 0.
    static void single(S source1, S source2, D* dest1, [[maybe_unused]] D* dest2,
                       ZolStatus* status) {
        typename From::Interface const x = interface(source1);
        typename From::Interface const y = interface(source2);
        ZolStatus found;
        if constexpr (results == 2) {
            *dest1 = store(F::scalar(x));
            *dest2 = store(F::scalar2(x));
            found = statusOf(x, x, *dest1);
        } else if constexpr (sources == 2) {
            *dest1 = store(F::scalar(x, y));
            found = statusOf(x, y, *dest1);
        } else {
            *dest1 = store(F::scalar(x));
            found = statusOf(x, one(x), *dest1);
        }
        *status = *status == zolStsNoErr ? found : *status;
    }

    // The elements that the vector loop has to leave.
    [[gnu::noinline]] static void repair(S const* source1, S const* source2, D* dest1, D* dest2,
                                         std::size_t count, ZolStatus* status) {
        for (std::size_t i = 0; i < count; ++i) {
            Number const x = From::load(source1[i]);
            Number const y = sources == 2 ? From::load(source2[i]) : x;
            Flags const flags = strange(x, y);
            if (isNegative(flags | (canSpoil ? spoilt(To::load(dest1[i])) : 0))) {
                single(source1[i], source2[i], &dest1[i], &dest2[i], status);
            }
        }
    }

    static ZolStatus run(S const* source1, S const* source2, D* dest1, D* dest2, int length);

private:
    static auto interface(S source) {
        if constexpr (requires { source.re; }) {
            return Zol64fc{static_cast<double>(source.re), static_cast<double>(source.im)};
        } else {
            return static_cast<double>(source);
        }
    }
    static auto one(auto x) {
        if constexpr (requires { x.re; }) {
            return Zol64fc{1, 0};
        } else {
            return 1.0;
        }
    }
    static double largest(double x) { return x; }
    static double largest(Zol64fc z) {
        bool const first = z.re != z.re || __builtin_fabs(z.re) > __builtin_fabs(z.im);
        return first ? z.re : z.im;
    }
    static ZolStatus statusOf(auto x, auto y, D result) {
        double value;
        if constexpr (requires { result.re; }) {
            value =
                largest(Zol64fc{static_cast<double>(result.re), static_cast<double>(result.im)});
        } else {
            value = static_cast<double>(result);
        }
        return zolvm::elementStatus(F::rules, largest(x), largest(y), value,
                                    static_cast<double>(minNormal<typename To::Real>));
    }
};

// The vector loops compute both sides of each choice, so they may raise flags that no result
// deserves; these are the ones taken back. Inexact says nothing here and stays.
constexpr unsigned csrFlags = 0x1f;
constexpr unsigned csrMasks = 0x1f80;

// Gives true if there was one that tells of a strange argument; a denormal number is none.
ZOLVM_INLINE bool takeBackFlags(unsigned before) {
    constexpr unsigned denormal = 0x02;
    unsigned const raised = __builtin_ia32_stmxcsr() & ~before & csrFlags;
    if (raised != 0) {
        __builtin_ia32_ldmxcsr(__builtin_ia32_stmxcsr() & ~raised);
    }
    return (raised & ~denormal) != 0;
}

// The operations of the processor tell by their flags what they met.
ZOLVM_INLINE ZolStatus ieeeStatus(unsigned csr) {
    constexpr unsigned invalid = 0x01;
    constexpr unsigned zeroDivide = 0x04;
    constexpr unsigned overflow = 0x08;
    constexpr unsigned underflow = 0x10;
    return (csr & invalid) != 0      ? zolStsDomain
           : (csr & zeroDivide) != 0 ? zolStsSingularity
           : (csr & overflow) != 0   ? zolStsOverflow
           : (csr & underflow) != 0  ? zolStsUnderflow
                                     : zolStsNoErr;
}

template <class F, Kind K, class S, class D, int sources, int results>
ZolStatus Driver<F, K, S, D, sources, results>::run(S const* source1, S const* source2, D* dest1,
                                                    D* dest2, int length) {
    if (source1 == nullptr || source2 == nullptr || dest1 == nullptr || dest2 == nullptr) {
        return zolStsNullPtrErr;
    }
    if (length < 1) {
        return zolStsSizeErr;
    }
    ZolStatus status = zolStsNoErr;
    // Where new flags have a meaning, old ones are put aside. What the vector loops raise for
    // nothing must not trap where the caller has traps; single elements are done with the caller's
    // masks.
    unsigned const callers = K == Exact ? 0 : __builtin_ia32_stmxcsr();
    unsigned aside = K == Ieee || tells ? callers & csrFlags : 0;
    unsigned const ours = (callers & ~aside) | (choosy ? csrMasks : 0);
    if (ours != callers) {
        __builtin_ia32_ldmxcsr(ours);
    }
    unsigned flags = ours;
    void const* const starts[] = {source1, source2};
    bool const inPlace = starts[0] == dest1 || starts[0] == dest2 ||
                         (sources == 2 && (starts[1] == dest1 || starts[1] == dest2));
    std::size_t const total = static_cast<std::size_t>(length);
    for (std::size_t done = 0; done < total; done += blockLength) {
        std::size_t const count = total - done < blockLength ? total - done : blockLength;
        std::size_t const whole = count / tailLength * tailLength;
        S const* from1 = source1 + done;
        S const* from2 = sources == 2 ? source2 + done : from1;
        D* const to1 = dest1 + done;
        D* const to2 = results == 2 ? dest2 + done : to1;
        S copy1[blockLength];
        S copy2[sources == 2 ? blockLength : 1];
        if (inPlace) {
            __builtin_memcpy(copy1, from1, count * sizeof(S));
            from1 = copy1;
            if constexpr (sources == 2) {
                __builtin_memcpy(copy2, from2, count * sizeof(S));
                from2 = copy2;
            } else {
                from2 = copy1;
            }
        }
        bool left = whole != 0 && pass(from1, from2, to1, to2, whole);
        if (whole != count) {
            left |= tail(from1 + whole, from2 + whole, to1 + whole, to2 + whole, count - whole);
        }
        if constexpr (choosy) {
            bool const raised = takeBackFlags(flags);
            if (tells ? raised : left) {
                __builtin_ia32_ldmxcsr((flags & ~csrMasks) | (callers & csrMasks));
                repair(from1, from2, to1, to2, count, &status);
                unsigned const now = __builtin_ia32_stmxcsr() | csrMasks;
                __builtin_ia32_ldmxcsr(now);
                if constexpr (tells) {
                    aside |= now & csrFlags;
                    takeBackFlags(flags);
                } else {
                    flags = now;
                }
            }
        }
    }
    if constexpr (K == Ieee) {
        status = ieeeStatus(__builtin_ia32_stmxcsr());
    }
    if (ours != callers || aside != 0) {
        unsigned const now = __builtin_ia32_stmxcsr() | aside;
        __builtin_ia32_ldmxcsr((now & ~csrMasks) | (callers & csrMasks));
    }
    return status;
}

// A second operand by value is spread over a block, and the block serves all of the array.
template <class F, Kind K, class S, class D>
ZolStatus runScalar(S const* source, S operand, D* dest, int length) {
    if (source == nullptr || dest == nullptr) {
        return zolStsNullPtrErr;
    }
    if (length < 1) {
        return zolStsSizeErr;
    }
    constexpr int block = static_cast<int>(Driver<F, K, S, D, 2, 1>::blockLength);
    S spread[block];
    for (int i = 0; i < block && i < length; ++i) {
        spread[i] = operand;
    }
    ZolStatus status = zolStsNoErr;
    for (int done = 0; done < length; done += block) {
        int const count = length - done < block ? length - done : block;
        ZolStatus const found =
            Driver<F, K, S, D, 2, 1>::run(source + done, spread, dest + done, dest + done, count);
        status = status == zolStsNoErr ? found : status;
    }
    return status;
}

} // namespace

// Definitions of the path's functions, by the call shapes of the table.
#define ZOLVM_DEFINE_UNARY(name, S, D, family, kind)                                               \
    ZolStatus name(S const* pSrc, D* pDst, int len) {                                              \
        return Driver<family, kind, S, D, 1, 1>::run(pSrc, pSrc, pDst, pDst, len);                 \
    }
#define ZOLVM_DEFINE_BINARY(name, S, D, family, kind)                                              \
    ZolStatus name(S const* pSrc1, S const* pSrc2, D* pDst, int len) {                             \
        return Driver<family, kind, S, D, 2, 1>::run(pSrc1, pSrc2, pDst, pDst, len);               \
    }
#define ZOLVM_DEFINE_SCALAR(name, S, D, family, kind)                                              \
    ZolStatus name(S const* pSrc, S value, D* pDst, int len) {                                     \
        return runScalar<family, kind, S, D>(pSrc, value, pDst, len);                              \
    }
#define ZOLVM_DEFINE_TWO_RESULTS(name, S, D, family, kind)                                         \
    ZolStatus name(S const* pSrc, D* pDst1, D* pDst2, int len) {                                   \
        return Driver<family, kind, S, D, 1, 2>::run(pSrc, pSrc, pDst1, pDst2, len);               \
    }

#define ZOLVM_DEFINE_SIX(shape, family, types, types2, S1, D1, S2, D2, a11, a21, a24, a26, a50,    \
                         a53)                                                                      \
    ZOLVM_DEFINE_##shape(zols##family##_##types##_A11, S1, D1, family, a11)                        \
        ZOLVM_DEFINE_##shape(zols##family##_##types##_A21, S1, D1, family, a21)                    \
            ZOLVM_DEFINE_##shape(zols##family##_##types##_A24, S1, D1, family, a24)                \
                ZOLVM_DEFINE_##shape(zols##family##_##types2##_A26, S2, D2, family, a26)           \
                    ZOLVM_DEFINE_##shape(zols##family##_##types2##_A50, S2, D2, family, a50)       \
                        ZOLVM_DEFINE_##shape(zols##family##_##types2##_A53, S2, D2, family, a53)

#endif
