// zolvmdrive.h - how a kernel of one element becomes a function of arrays: blocks, padded tails,
// sources that are destinations, elements out of the ordinary, status and flags. It and all that
// stands on it is compiled for each code path, so everything is in an unnamed namespace.
//
// A family is a struct with some of these static members, T being float or double, parameters and
// results T or Complex<T>:
//   at<kind>(x) or at<kind>(x, y)   the value, right for ordinary arguments
//   strange<kind>(x) or (x, y)      negative flags for other arguments
//   spoilt<kind>(result)            negative flags for results that the kernel gets wrong
//   scalar, scalar2, rules          the function of one element for all others, that of a second
//                                   result, and what is to be known of it
//   estimated                       says that the Cheap kernel falls back on the Ieee one
//   lanes<kind>(source1, source2, dest, count)   a vector loop of its own over a multiple of the
//                                   tail's length; true if an element must be done again
#ifndef ZOLVM_ZOLVMDRIVE_H
#define ZOLVM_ZOLVMDRIVE_H

#include <cstddef>
#include <math.h>
#include <type_traits>

#include "zolvm/zolvmscalar.h"

#define ZOLVM_INLINE [[gnu::always_inline]] inline
#define ZOLVM_INLINE_CALL __attribute__((always_inline)) // of a lambda

namespace {

using zolvm::Complex;

enum Kind { Cheap, Vec, Wide, Fine, Ieee, Exact };

// Whether the path multiplies and adds with one rounding.
#ifdef __FMA__
constexpr bool fused = true;
#else
constexpr bool fused = false;
#endif

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
    ZOLVM_INLINE static E load(E const& x) { return x; }
    template <class N>
    ZOLVM_INLINE static void store(E& to, N x) {
        to = static_cast<E>(x);
    }
};
template <class E, class R>
struct ComplexElement {
    using Real = R;
    using Number = Complex<R>;
    ZOLVM_INLINE static Number load(E const& z) { return {z.re, z.im}; }
    // Part by part: a copy of the whole would not vectorise.
    template <class N>
    ZOLVM_INLINE static void store(E& to, N z) {
        to.re = static_cast<R>(z.re);
        to.im = static_cast<R>(z.im);
    }
};
template <>
struct Element<Zol32fc> : ComplexElement<Zol32fc, float> {};
template <>
struct Element<Zol64fc> : ComplexElement<Zol64fc, double> {};

ZOLVM_INLINE double widen(double x) { return x; }
template <class T>
ZOLVM_INLINE Complex<double> widen(Complex<T> z) {
    return {static_cast<double>(z.re), static_cast<double>(z.im)};
}

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

// Chooses the bound of the type.
template <class T>
constexpr T bound(double single, double twice) {
    return static_cast<T>(sizeof(T) == 4 ? single : twice);
}
template <class T>
constexpr T minNormal = bound<T>(0x1p-126, 0x1p-1022);
template <class T>
constexpr T maxFinite = bound<T>(0x1.fffffep127, 0x1.fffffffffffffp1023);

// The part of a complex result that says most about its status: one that is NaN, or the larger.
ZOLVM_INLINE double largest(double x) { return x; }
ZOLVM_INLINE double largest(Complex<double> z) {
    return z.re != z.re || __builtin_fabs(z.re) > __builtin_fabs(z.im) ? z.re : z.im;
}

// The vector loops compute both sides of each choice, so they may raise flags that no result
// deserves; these are the ones taken back. Inexact says nothing here and stays.
constexpr unsigned csrFlags = 0x1f;
constexpr unsigned csrMasks = 0x1f80;

// The compiler must not move calculations across these.
ZOLVM_INLINE unsigned readCsr() {
    asm volatile("" : : : "memory");
    return __builtin_ia32_stmxcsr();
}
ZOLVM_INLINE void writeCsr(unsigned csr) {
    __builtin_ia32_ldmxcsr(csr);
    asm volatile("" : : : "memory");
}

// Gives true if there was one that tells of a strange argument; a denormal number is none.
ZOLVM_INLINE bool takeBackFlags(unsigned before) {
    constexpr unsigned denormal = 0x02;
    unsigned const raised = readCsr() & ~before & csrFlags;
    if (raised != 0) {
        writeCsr(readCsr() & ~raised);
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
    static constexpr bool isReal = std::is_same_v<Number, typename From::Real>;
    static constexpr bool estimated = K == Cheap && requires { F::estimated; };
    static constexpr bool isIeee = K == Ieee || estimated;
    // Whether some elements may have to be done again.
    static constexpr bool choosy = K != Exact && K != Ieee;
    // Then the loop does nothing but call, and arguments are looked at when flags are up.
    static constexpr bool tells = K == Vec && requires {
        requires(F::rules & zolvm::ruleTells) != 0;
    };
#ifdef __AVX__
    // A vector function keeps no register for its caller. Where a vector is long, a loop around it
    // is faster without the check, and that gets a loop of its own.
    static constexpr bool checkedApart = (K == Vec || K == Wide) && isReal;
#else
    static constexpr bool checkedApart = false;
#endif
    // Without fused multiply-add the Fine kind costs more than the C library's scalar functions,
    // where those are accurate enough.
    static constexpr bool byElement = !fused && K == Fine && results == 1 && isReal && requires {
        requires(F::rules & zolvm::ruleAccurate) != 0;
    };

    // Calls with as many arguments as there are sources.
    template <class Call, class N>
    ZOLVM_INLINE static auto with(Call call, N x, [[maybe_unused]] N y) {
        if constexpr (sources == 2) {
            return call(x, y);
        } else {
            return call(x);
        }
    }
    ZOLVM_INLINE static auto value(Number x, Number y) {
        if constexpr (K == Wide) {
            return with([](auto... z) ZOLVM_INLINE_CALL { return F::template at<Vec>(z...); },
                        widen(x), widen(y));
        } else {
            return with([](auto... z) ZOLVM_INLINE_CALL { return F::template at<K>(z...); }, x, y);
        }
    }
    ZOLVM_INLINE static Flags strange(Number x, Number y) {
        return with([](auto... z) ZOLVM_INLINE_CALL { return F::template strange<K>(z...); }, x, y);
    }
    static constexpr bool canSpoil = requires(typename To::Number result) {
        F::template spoilt<K>(result);
    };
    ZOLVM_INLINE static Flags spoilt([[maybe_unused]] D const& result) {
        if constexpr (canSpoil) {
            return F::template spoilt<K>(To::load(result));
        } else {
            return 0;
        }
    }

    // The vector loop over a multiple of the tail's length; no destination is a source. Gives true
    // if it met an element that must be done again; others are computed all the same, and what
    // flags that leaves is taken back.
    template <bool computes, bool checks>
    [[gnu::noinline, gnu::noclone]] static bool
    loop(S const* __restrict source1, S const* __restrict source2, D* __restrict dest1,
         [[maybe_unused]] D* __restrict dest2, std::size_t count) {
        Flags left = 0;
        for (std::size_t i = 0; i < count / tailLength * tailLength; ++i) {
            Number const x = From::load(source1[i]);
            Number const y = sources == 2 ? From::load(source2[i]) : x;
            if constexpr (checks) {
                left |= strange(x, y);
            }
            if constexpr (computes && results == 2) {
                auto const both = value(x, y);
                To::store(dest1[i], both.first);
                To::store(dest2[i], both.second);
            } else if constexpr (computes) {
                To::store(dest1[i], value(x, y));
            }
            if constexpr (checks) {
                left |= spoilt(dest1[i]);
            }
        }
        return isNegative(left);
    }
    static bool whole(S const* source1, S const* source2, D* dest1, D* dest2, std::size_t count) {
        if constexpr (requires { F::template lanes<K>(source1, source2, dest1, count); }) {
            return F::template lanes<K>(source1, source2, dest1, count);
        } else if constexpr (!choosy || tells) {
            return loop<true, false>(source1, source2, dest1, dest2, count);
        } else if constexpr (checkedApart) {
            bool const left = !canSpoil && loop<false, true>(source1, source2, dest1, dest2, count);
            loop<true, false>(source1, source2, dest1, dest2, count);
            return canSpoil ? loop<false, true>(source1, source2, dest1, dest2, count) : left;
        } else {
            return loop<true, true>(source1, source2, dest1, dest2, count);
        }
    }

    // The last elements, fewer than a tail's length, by way of arrays that are filled up.
    static bool tail(S const* source1, S const* source2, D* dest1, D* dest2, std::size_t count) {
        S full1[tailLength];
        S full2[tailLength];
        D result1[tailLength];
        D result2[tailLength];
        for (std::size_t i = 0; i < tailLength; ++i) {
            full1[i] = source1[i < count ? i : 0];
            full2[i] = source2[i < count ? i : 0];
        }
        bool const left = whole(full1, full2, result1, result2, tailLength);
        __builtin_memcpy(dest1, result1, count * sizeof(D));
        if constexpr (results == 2) {
            __builtin_memcpy(dest2, result2, count * sizeof(D));
        }
        return left;
    }

    static bool block(S const* source1, S const* source2, D* dest1, D* dest2, std::size_t count) {
        std::size_t const done = count / tailLength * tailLength;
        bool left = done != 0 && whole(source1, source2, dest1, dest2, done);
        if (done != count) {
            left |= tail(source1 + done, source2 + done, dest1 + done, dest2 + done, count - done);
        }
        return left;
    }

    // The Ieee kernel for strange elements. It goes over all: their flags are what the status is
    // made of.
    [[gnu::noinline]] static void replace(S const* source1, S const* source2, D* dest1,
                                          std::size_t count) {
        D exact[blockLength];
        Driver<F, Ieee, S, D, sources, results>::block(source1, source2, exact, exact, count);
        for (std::size_t i = 0; i < count; ++i) {
            dest1[i] = isNegative(strange(source1[i], source2[i])) ? exact[i] : dest1[i];
        }
    }
    // Does the elements again that the vector loop has to leave; gives the first status that isn't
    // 0, status itself before all.
    [[gnu::noinline]] static ZolStatus repair(S const* source1, S const* source2, D* dest1,
                                              [[maybe_unused]] D* dest2, std::size_t count,
                                              ZolStatus status) {
        for (std::size_t i = 0; i < count; ++i) {
            Number const x = From::load(source1[i]);
            Number const y = From::load(source2[i]);
            if (!byElement && !isNegative(strange(x, y) | spoilt(dest1[i]))) {
                continue;
            }
            To::store(dest1[i], with(F::scalar, widen(x), widen(y)));
            if constexpr (results == 2) {
                To::store(dest2[i], F::scalar2(widen(x)));
            }
            double const result = largest(widen(To::load(dest1[i])));
            constexpr double least = static_cast<double>(minNormal<typename To::Real>);
            if (status == zolStsNoErr && isNegative(offBand(result, least, maxFinite<double>))) {
                status = zolvm::elementStatus(F::rules, largest(widen(x)), largest(widen(y)),
                                              result, least);
            }
        }
        return status;
    }

    // The vector unit's control and flags during a call. Where new flags have a meaning, old ones
    // are put aside. What the vector loops raise for nothing must not trap where the caller has
    // traps; other elements are done with the caller's masks.
    class Modes {
    public:
        ZOLVM_INLINE Modes()
            : callers(K == Exact ? 0 : readCsr()), aside(isIeee || tells ? callers & csrFlags : 0),
              ours((callers & ~aside) | (choosy ? csrMasks : 0)), flags(ours) {
            if (ours != callers) {
                writeCsr(ours);
            }
        }
        // True if the vector loop has met what its flags tell of.
        ZOLVM_INLINE bool takeBack() { return takeBackFlags(flags); }
        ZOLVM_INLINE void beginAgain() { writeCsr((flags & ~csrMasks) | (callers & csrMasks)); }
        ZOLVM_INLINE void endAgain() { // keeps what the elements done again have raised
            unsigned const now = readCsr() | csrMasks;
            writeCsr(now);
            if constexpr (tells) {
                aside |= now & csrFlags;
                takeBackFlags(flags);
            } else {
                flags = now;
            }
        }
        ZOLVM_INLINE ZolStatus ieee() const { return ieeeStatus(estimated ? flags : readCsr()); }
        // Whether the caller had another word, and back to it with all flags that are to stay.
        ZOLVM_INLINE bool differ() const { return ours != callers || aside != 0; }
        ZOLVM_INLINE void giveBack() {
            unsigned const now = readCsr() | aside;
            writeCsr((now & ~csrMasks) | (callers & csrMasks));
        }

    private:
        unsigned callers; // as the function found it
        unsigned aside;   // old flags, and new ones that are no longer up
        unsigned ours;    // as the first loop found it
        unsigned flags;   // as the next loop finds it
    };

    ZOLVM_INLINE static S const* copied(S* copy, S const* from, std::size_t count) {
        return static_cast<S*>(__builtin_memcpy(copy, from, count * sizeof(S)));
    }

    static ZolStatus run(S const* source1, S const* source2, D* dest1, D* dest2, int length) {
        if (source1 == nullptr || source2 == nullptr || dest1 == nullptr || dest2 == nullptr) {
            return zolStsNullPtrErr;
        }
        if (length < 1) {
            return zolStsSizeErr;
        }
        ZolStatus status = zolStsNoErr;
        Modes modes;
        void const* const starts[] = {source1, source2};
        bool const inPlace =
            starts[0] == dest1 || starts[0] == dest2 || starts[1] == dest1 || starts[1] == dest2;
        std::size_t const total = static_cast<std::size_t>(length);
        for (std::size_t done = 0; done < total; done += blockLength) {
            std::size_t const count = total - done < blockLength ? total - done : blockLength;
            S const* from1 = source1 + done;
            S const* from2 = source2 + done;
            D* const to1 = dest1 + done;
            D* const to2 = dest2 + done;
            S copy1[blockLength];
            S copy2[sources == 2 ? blockLength : 1];
            if (inPlace) {
                from1 = copied(copy1, from1, count);
                from2 = sources == 1 ? from1 : copied(copy2, from2, count);
            }
            bool const left = byElement || block(from1, from2, to1, to2, count);
            if constexpr (choosy) {
                bool const raised = modes.takeBack();
                if (tells ? raised : estimated ? left || raised : left) {
                    modes.beginAgain();
                    if constexpr (estimated) {
                        replace(from1, from2, to1, count);
                    } else {
                        status = repair(from1, from2, to1, to2, count, status);
                    }
                    modes.endAgain();
                }
            }
        }
        if constexpr (isIeee) {
            status = modes.ieee();
        }
        if (modes.differ()) {
            modes.giveBack();
        }
        return status;
    }
};

// The library's functions by call shape.
template <class F, Kind K, class S, class D>
ZolStatus run(S const* source, D* dest, int length) {
    return Driver<F, K, S, D, 1, 1>::run(source, source, dest, dest, length);
}
template <class F, Kind K, class S, class D>
ZolStatus run(S const* source, D* dest1, D* dest2, int length) {
    return Driver<F, K, S, D, 1, 2>::run(source, source, dest1, dest2, length);
}
template <class F, Kind K, class S, class D>
ZolStatus run(S const* source1, S const* source2, D* dest, int length) {
    return Driver<F, K, S, D, 2, 1>::run(source1, source2, dest, dest, length);
}
// A second operand by value is spread over a block, and the block serves all of the array.
template <class F, Kind K, class S, class D>
ZolStatus run(S const* source, S operand, D* dest, int length) {
    if (source == nullptr || dest == nullptr) {
        return zolStsNullPtrErr;
    }
    if (length < 1) {
        return zolStsSizeErr;
    }
    using Both = Driver<F, K, S, D, 2, 1>;
    constexpr int block = static_cast<int>(Both::blockLength);
    S spread[block];
    for (int i = 0; i < block && i < length; ++i) {
        spread[i] = operand;
    }
    ZolStatus status = zolStsNoErr;
    for (int done = 0; done < length; done += block) {
        int const count = length - done < block ? length - done : block;
        ZolStatus const found = Both::run(source + done, spread, dest + done, dest + done, count);
        status = status == zolStsNoErr ? found : status;
    }
    return status;
}

} // namespace

// A family: parameters, what does single elements, its rules, flags of strange arguments, and the
// body of the kernel of kind K for a T.
#define ZOLVM_FAMILY(family, parameters, slow, statusRules, strangeFlags, ...)                     \
    struct family {                                                                                \
        static constexpr auto scalar = slow;                                                       \
        static constexpr unsigned rules = statusRules;                                             \
        template <Kind K, class T>                                                                 \
        ZOLVM_INLINE static BitsOf<T> strange parameters {                                         \
            return strangeFlags;                                                                   \
        }                                                                                          \
        template <Kind K, class T>                                                                 \
        ZOLVM_INLINE static auto at parameters {                                                   \
            __VA_ARGS__                                                                            \
        }                                                                                          \
    };
// A family of a value alone, which is right for every argument.
#define ZOLVM_EXACT(family, parameters, ...)                                                       \
    struct family {                                                                                \
        template <Kind, class T>                                                                   \
        ZOLVM_INLINE static auto at parameters {                                                   \
            return __VA_ARGS__;                                                                    \
        }                                                                                          \
    };

// The library's function of a row.
#define ZOLVM_DEFINE(shape, name, S, D, family, kind)                                              \
    ZolStatus name ZOLVM_PARAMETERS_##shape(S, D) {                                                \
        return run<family, kind> ZOLVM_ARGUMENTS_##shape;                                          \
    }

#endif
