// zolvmdrive.h - how a kernel of one element becomes a function of arrays: blocks, padded tails,
// sources that are destinations, elements out of the ordinary, status and flags. Included by the
// kernel sources alone, so everything is in an unnamed namespace.
//
// A family is a struct with some of these static members, T being float or double and Number
// either of them or a Complex of them:
//   at<kind>(x) or at<kind>(x, y)   the value, right where ordinary(x) or ordinary(x, y) holds
//   ordinary(x), good(result)       which elements the vector loop may keep
//   scalar, rules                   the function of one element for all others, its status rules
//   safe                            an ordinary argument to put in the place of others
#ifndef ZOLVM_ZOLVMDRIVE_H
#define ZOLVM_ZOLVMDRIVE_H

#include <cstddef>
#include <math.h>

#include "zolvm/zolvmscalar.h"

#define ZOLVM_INLINE [[gnu::always_inline]] inline

namespace {

enum Kind { Cheap, Vec, Wide, Fine, Exact, Slow };

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

// Flags of the width of a real type keep the loops free of packing. They are chosen as numbers of
// the type, since SSE2 has no choice between wide integers.
template <class T>
struct Width;
template <>
struct Width<float> {
    using Flag = int;
};
template <>
struct Width<double> {
    using Flag = long long;
};
template <class T>
ZOLVM_INLINE typename Width<T>::Flag unless(bool condition) {
    return __builtin_bit_cast(typename Width<T>::Flag, condition ? T(0) : T(1));
}

template <class T>
constexpr T minNormal = sizeof(T) == 4 ? T(0x1p-126) : T(0x1p-1022);
template <class T>
constexpr T maxFinite = sizeof(T) == 4 ? T(0x1.fffffep127) : T(0x1.fffffffffffffp1023);

// A conjunction without the branches of &&, which would keep a loop from being vectorised. T is
// the type that the loop works in: SSE2 can choose between its numbers, not between wide integers.
template <class T, class... C>
ZOLVM_INLINE bool all(C... conditions) {
#ifdef __SSE4_1__
    return (conditions & ...);
#else
    T kept = 1;
    ((kept = conditions ? kept : T(0)), ...);
    return kept != 0;
#endif
}

// Chooses the bound of the type.
template <class T>
constexpr T bound(double single, double twice) {
    return static_cast<T>(sizeof(T) == 4 ? single : twice);
}

// An ordinary argument of any type, in the place of one that isn't.
template <class F, class N>
struct Safe {
    static constexpr N value = static_cast<N>(F::safe);
};
template <class F, class R>
struct Safe<F, Complex<R>> {
    static constexpr Complex<R> value{static_cast<R>(F::safe), static_cast<R>(F::safe)};
};

template <class R>
ZOLVM_INLINE R pick(bool condition, R yes, R no) {
    return condition ? yes : no;
}
template <class R>
ZOLVM_INLINE Complex<R> pick(bool condition, Complex<R> yes, Complex<R> no) {
    return {condition ? yes.re : no.re, condition ? yes.im : no.im};
}

constexpr std::size_t blockLength = 256;
constexpr std::size_t tailLength = 16; // the longest vector of any path, in elements

// Everything that a family and a kind decide at compile time.
template <class F, Kind K, class S, class D, int sources, int results>
struct Driver {
    using From = Element<S>;
    using To = Element<D>;
    using Number = typename From::Number;
    using Flag = typename Width<typename From::Real>::Flag;

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

    ZOLVM_INLINE static bool ordinary(Number x, [[maybe_unused]] Number y) {
        if constexpr (K == Slow) {
            return false;
        } else if constexpr (sources == 2) {
            return F::ordinary(x, y);
        } else {
            return F::ordinary(x);
        }
    }

    ZOLVM_INLINE static bool good([[maybe_unused]] typename To::Number result) {
        if constexpr (requires { F::good(result); }) {
            return F::good(result);
        } else {
            return true;
        }
    }

    // The vector loop: count is a multiple of the tail's length, no destination is a source.
    // True if it met an element that must be done again.
    [[gnu::noinline, gnu::noclone]] static bool
    loop(S const* __restrict source1, S const* __restrict source2, D* __restrict dest1,
         [[maybe_unused]] D* __restrict dest2, std::size_t count) {
        [[maybe_unused]] Flag left = 0;
        for (std::size_t i = 0; i < count / tailLength * tailLength; ++i) {
            Number x = From::load(source1[i]);
            Number y = sources == 2 ? From::load(source2[i]) : x;
            if constexpr (K != Exact) {
                bool const keep = ordinary(x, y);
                left |= unless<typename From::Real>(keep);
                x = pick(keep, x, Safe<F, Number>::value);
                y = pick(keep, y, Safe<F, Number>::value);
            }
            if constexpr (results == 2) {
                auto const both = value(x, y);
                To::store(dest1[i], To::narrow(both.first));
                To::store(dest2[i], To::narrow(both.second));
            } else {
                typename To::Number const result = To::narrow(value(x, y));
                if constexpr (K != Exact) {
                    left |= unless<typename From::Real>(good(result));
                }
                To::store(dest1[i], result);
            }
        }
        return left != 0;
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
        bool const left = loop(full1, full2, result1, result2, tailLength);
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
            if (!ordinary(x, y) || !good(To::load(dest1[i]))) {
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

ZOLVM_INLINE void takeBackFlags(unsigned before) {
    unsigned const now = __builtin_ia32_stmxcsr();
    if ((now & ~before & csrFlags) != 0) {
        __builtin_ia32_ldmxcsr((now & ~csrFlags) | (before & csrFlags));
    }
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
    unsigned flags = K == Exact ? 0 : __builtin_ia32_stmxcsr();
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
        bool left = true;
        if constexpr (K != Slow) {
            left = whole != 0 && loop(from1, from2, to1, to2, whole);
            if (whole != count) {
                left |= tail(from1 + whole, from2 + whole, to1 + whole, to2 + whole, count - whole);
            }
        }
        if constexpr (K != Exact) {
            takeBackFlags(flags);
            if (left) {
                repair(from1, from2, to1, to2, count, &status);
                flags = __builtin_ia32_stmxcsr();
            }
        }
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
    int const block = static_cast<int>(blockLength);
    S spread[blockLength];
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
