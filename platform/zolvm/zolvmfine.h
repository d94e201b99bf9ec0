// zolvmfine.h - the elementary functions with more than double precision: arguments and results are
// pairs of doubles, the second carrying what the rounding of the first leaves. No tables and no
// branches, so that loops over them vectorise.
//
// Relative errors are about 2^-65 for the long forms, 2^-57 for the others:
// a result whose parts are added once more is within 0.6 units in the last place.
#ifndef ZOLVM_ZOLVMFINE_H
#define ZOLVM_ZOLVMFINE_H

#include "zolvm/zolvmdrive.h"

namespace {

using Bits = unsigned long long;

struct Pair {
    double hi;
    double lo;
};

ZOLVM_INLINE double fromBits(Bits x) { return __builtin_bit_cast(double, x); }

// a + b exactly; the quick form needs |a| >= |b| or a == 0.
ZOLVM_INLINE Pair quickSum(double a, double b) {
    double const sum = a + b;
    return {sum, b - (sum - a)};
}
ZOLVM_INLINE Pair exactSum(double a, double b) {
    double const sum = a + b;
    double const part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// a * b exactly, for products that neither overflow nor lose digits to underflow.
ZOLVM_INLINE Pair exactProduct(double a, double b) {
    double const product = a * b;
#ifdef __FMA__
    return {product, __builtin_fma(a, b, -product)};
#else
    constexpr double splitter = 0x1p27 + 1;
    double const aScaled = a * splitter;
    double const bScaled = b * splitter;
    double const aHigh = aScaled - (aScaled - a);
    double const bHigh = bScaled - (bScaled - b);
    double const aLow = a - aHigh;
    double const bLow = b - bHigh;
    return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
#endif
}

// What dividend - quotient * divisor leaves, for a quotient rounded from dividend / divisor.
ZOLVM_INLINE double remainder(double dividend, double quotient, double divisor) {
    Pair const product = exactProduct(quotient, divisor);
    return (dividend - product.hi) - product.lo;
}

ZOLVM_INLINE Pair operator-(Pair a) { return {-a.hi, -a.lo}; }
ZOLVM_INLINE Pair operator+(Pair a, Pair b) {
    Pair const sum = exactSum(a.hi, b.hi);
    return quickSum(sum.hi, sum.lo + (a.lo + b.lo));
}
ZOLVM_INLINE Pair operator+(Pair a, double b) {
    Pair const sum = exactSum(a.hi, b);
    return quickSum(sum.hi, sum.lo + a.lo);
}
ZOLVM_INLINE Pair operator-(Pair a, Pair b) { return a + -b; }
ZOLVM_INLINE Pair operator*(Pair a, Pair b) {
    Pair const product = exactProduct(a.hi, b.hi);
    return quickSum(product.hi, product.lo + (a.hi * b.lo + a.lo * b.hi));
}
ZOLVM_INLINE Pair operator*(Pair a, double b) {
    Pair const product = exactProduct(a.hi, b);
    return quickSum(product.hi, product.lo + a.lo * b);
}
ZOLVM_INLINE Pair operator/(Pair a, Pair b) {
    double const quotient = a.hi / b.hi;
    double const rest = remainder(a.hi, quotient, b.hi) + (a.lo - quotient * b.lo);
    return quickSum(quotient, rest / b.hi);
}
// Times a power of two.
ZOLVM_INLINE Pair scaled(Pair a, double power) { return {a.hi * power, a.lo * power}; }
ZOLVM_INLINE Pair squareRoot(Pair a) {
    double const root = __builtin_sqrt(a.hi);
    return quickSum(root, (remainder(a.hi, root, root) + a.lo) / (root + root));
}
ZOLVM_INLINE Pair choose(bool condition, Pair yes, Pair no) {
    return {condition ? yes.hi : no.hi, condition ? yes.lo : no.lo};
}
ZOLVM_INLINE double rounded(Pair a) { return a.hi + a.lo; }

// a * b + c, rounded once where the processor can.
template <class T>
ZOLVM_INLINE T timesPlus(T a, T b, T c) {
#ifdef __FMA__
    if constexpr (sizeof(T) == 4) {
        return __builtin_fmaf(a, b, c);
    } else {
        return __builtin_fma(a, b, c);
    }
#else
    return a * b + c;
#endif
}

// In a long one even and odd powers go apart: two chains of half the length side by side.
template <class T, int terms>
ZOLVM_INLINE T polynomial(double const (&coefficients)[terms], T x) {
    constexpr int chains = terms < (sizeof(T) == 4 ? 7 : 8) ? 1 : 2;
    T const step = chains == 1 ? x : x * x;
    T sums[2] = {};
#pragma GCC unroll 32
    for (int i = terms - 1; i >= 0; --i) {
        T const coefficient = static_cast<T>(coefficients[i]);
        T& sum = sums[i % chains];
        sum = i + chains >= terms ? coefficient : timesPlus(sum, step, coefficient);
    }
    return chains == 1 ? sums[0] : timesPlus(sums[1], x, sums[0]);
}

constexpr Pair ln2{0x1.62e42fefa3800p-1, 0x1.ef35793c76730p-45}; // the first part has 42 bits
constexpr Pair pi{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
constexpr Pair log10E{0x1.bcb7b1526e50ep-2, 0x1.95355baaafad3p-57};
constexpr Pair halfSqrtPi{0x1.c5bf891b4ef6bp-1, -0x1.618f13eb7ca89p-55}; // sqrt(pi) / 2
constexpr Pair sqrtHalf{0x1.6a09e667f3bcdp-1, -0x1.bdd3413b26456p-55};
constexpr double log2E = 0x1.71547652b82fep+0;

// Added to a small number it rounds it to an integer, which then stands in the last bits.
constexpr double integerShift = 0x1.8p52;

// e^x = power * (1 + tail) for |x| < 709.
struct Exponential {
    double power;
    Pair tail;
};

// expm1(r) = r + r^2 / 2 + r^3 * polynomial, on |r| <= ln(2) / 2
constexpr double expTail[] = {0x1.5555555555555p-3,  0x1.5555555555555p-5,  0x1.1111111111111p-7,
                              0x1.6c16c16c16c17p-10, 0x1.a01a01a01969bp-13, 0x1.a01a01a019b5bp-16,
                              0x1.71de3a5aaefb9p-19, 0x1.27e4fb7a2b228p-22, 0x1.ae642c5c1fa33p-26,
                              0x1.1eed79ee9ba6ap-29, 0x1.61bff1c64f494p-33, 0x1.9432d76be2661p-37};

ZOLVM_INLINE Exponential exponential(Pair x) {
    double const shifted = x.hi * log2E + integerShift;
    double const k = shifted - integerShift;
    Pair const r = exactSum(x.hi - k * ln2.hi, x.lo - k * ln2.lo);
    Pair const half = exactProduct(r.hi, 0.5 * r.hi);
    double const rest = r.hi * r.hi * r.hi * polynomial(expTail, r.hi) + r.hi * r.lo;
    Pair const top = quickSum(r.hi, half.hi);
    return {fromBits((bitsOf(shifted) + 1023) << 52),
            quickSum(top.hi, top.lo + (half.lo + (r.lo + rest)))};
}
ZOLVM_INLINE Pair expPair(Pair x) {
    Exponential const e = exponential(x);
    return scaled(quickSum(1.0, e.tail.hi) + Pair{0.0, e.tail.lo}, e.power);
}
// e^x - 1. The power's 1 is subtracted before the tail comes in, so small results keep their
// digits.
ZOLVM_INLINE Pair expm1Pair(Pair x) {
    Exponential const e = exponential(x);
    Pair const whole = exactSum(e.power, -1.0);
    return whole + scaled(e.tail, e.power);
}

// 2 atanh(s) = 2 s + s^3 * (2/3 + s^2 * polynomial), on |s| <= 3 - 2 sqrt(2)
constexpr double logTail[] = {0x1.999999999999ap-2, 0x1.2492492492491p-2, 0x1.c71c71c71cfe7p-3,
                              0x1.745d1745124c7p-3, 0x1.3b13b1bd0ead0p-3, 0x1.1110df7e2b9b8p-3,
                              0x1.e1f80a4c22cd4p-4, 0x1.ac4927065cf5ap-4, 0x1.b8e0c07ef591ap-4};
constexpr Pair twoThirds{0x1.5555555555555p-1, 0x1.5555555555555p-55};

// m = 1 + f with f in [sqrt(1/2) - 1, sqrt(2) - 1] and what m lacks: the logarithm as
// f - f^2 / 2 and a rest that is small enough for plain numbers.
ZOLVM_INLINE Pair logNearOne(double m, double mLow) {
    double const f = m - 1.0;
    double const s = f / (m + 1.0);
    double const t = s * s;
    Pair const half = exactProduct(f, 0.5 * f);
    double const rest = s * (half.hi + t * (twoThirds.hi + t * polynomial(logTail, t)));
    Pair const top = quickSum(f, -half.hi);
    return quickSum(top.hi, top.lo + ((rest - half.lo) + mLow * (1.0 - 2.0 * s * (1.0 - s))));
}
// The same to about 2^-65, for logarithms that are multiplied before they are rounded.
ZOLVM_INLINE Pair logNearOneLong(double m, double mLow) {
    double const d = m + 1.0;
    Pair const s = exactSum(m - 1.0, mLow) / Pair{d, (m - (d - 1.0)) + mLow};
    Pair const t = s * s;
    Pair const inner = quickSum(twoThirds.hi, t.hi * polynomial(logTail, t.hi));
    return s * (t * Pair{inner.hi, inner.lo + twoThirds.lo} + 2.0);
}

// Logarithm of a normal x that is up to 2^1023.
template <bool isLong = false>
ZOLVM_INLINE Pair logPair(Pair x) {
    constexpr Bits mantissa = 0x000fffffffffffffULL;
    constexpr Bits sqrtHalfBits = 0x3fe6a09e667f3bcdULL;
    constexpr Bits oneBits = 0x3ff0000000000000ULL;
    constexpr Bits shiftBits = 0x4330000000000000ULL; // of 2^52
    Bits const moved = bitsOf(x.hi) + (oneBits - sqrtHalfBits);
    Bits const exponent = moved >> 52;
    double const k = fromBits(exponent | shiftBits) - (0x1p52 + 1023);
    double const m = fromBits((moved & mantissa) + sqrtHalfBits);
    double const mLow = x.lo * 0.5 * fromBits((2047 - exponent) << 52);
    Pair const fraction = isLong ? logNearOneLong(m, mLow) : logNearOne(m, mLow);
    Pair const sum = exactSum(k * ln2.hi, fraction.hi);
    return quickSum(sum.hi, sum.lo + (fraction.lo + k * ln2.lo));
}

// sin(r) = r + r^3 * polynomial(r^2), cos(r) = 1 - r^2 / 2 + r^4 * polynomial(r^2), |r| <= pi / 4
constexpr double sinTail[] = {-0x1.5555555555555p-3, 0x1.1111111111110p-7,   -0x1.a01a01a01992fp-13,
                              0x1.71de3a545f836p-19, -0x1.ae645410e937bp-26, 0x1.61217d9252c03p-33,
                              -0x1.ab16f5caa198ap-41};
constexpr double cosTail[] = {
    0x1.5555555555555p-5,  -0x1.6c16c16c16c16p-10, 0x1.a01a01a019d06p-16, -0x1.27e4fb77125c5p-22,
    0x1.1eed8deac3dfep-29, -0x1.9394b8bd50ae1p-37, 0x1.ab779550c8d9bp-45};

// For |x| up to trigonometricLimit: pi / 2 goes off in three parts of 33 bits, whose multiples are
// exact, and a rest.
constexpr double trigonometricLimit = 0x1p20;
ZOLVM_INLINE Two<Pair> sinCosPair(Pair x) {
    double const shifted = x.hi * 0x1.45f306dc9c883p-1 + integerShift;
    double const k = shifted - integerShift;
    Pair const second = exactSum(x.hi - k * 0x1.921fb54400000p+0, -(k * 0x1.0b4611a600000p-34));
    Pair const third = exactSum(second.hi, -(k * 0x1.3198a2e000000p-69));
    Pair const r = quickSum(third.hi, (third.lo + second.lo) + (x.lo - k * 0x1.b839a252049c1p-104));
    Pair const square = exactProduct(r.hi, r.hi);
    double const t = square.hi;
    double const cube = t * r.hi;
    Pair const sine = quickSum(r.hi, r.lo * (1.0 - 0.5 * t) + cube * polynomial(sinTail, t));
    Pair const start = quickSum(1.0, -0.5 * t);
    Pair const cosine = quickSum(
        start.hi, start.lo + (t * t * polynomial(cosTail, t) - (0.5 * square.lo + r.hi * r.lo)));
    // Odd quadrants exchange the two; signs follow the quadrant.
    Bits const quadrant = bitsOf(shifted);
    bool const odd = (quadrant & 1) != 0;
    double const sineSign = fromBits(((quadrant & 2) << 62) | bitsOf(1.0));
    double const cosineSign = fromBits((((quadrant + 1) & 2) << 62) | bitsOf(1.0));
    return {scaled(choose(odd, cosine, sine), sineSign),
            scaled(choose(odd, sine, cosine), cosineSign)};
}

// atan(q) = q + q^3 * (atan0 + q^2 * (atan1 + q^2 * (atan2 + q^2 * polynomial(q^2)))), on
// |q| <= sqrt(2) - 1
constexpr Pair atan0{-0x1.5555555555555p-2, -0x1.5555553b5968ep-56};
constexpr Pair atan1{0x1.999999999999ap-3, -0x1.999c44fbc10ffp-57};
constexpr Pair atan2{-0x1.2492492492492p-3, -0x1.1ebc077a9eb2cp-57};
constexpr double atanTail[] = {0x1.c71c71c71c71ap-4,  -0x1.745d1745d161ep-4, 0x1.3b13b13b0e90fp-4,
                               -0x1.11111110209efp-4, 0x1.e1e1e1a483909p-5,  -0x1.af28662426632p-5,
                               0x1.8617ff562368dp-5,  -0x1.6427891212ff1p-5, 0x1.477d4fac978e2p-5,
                               -0x1.2e01e807cd9fdp-5, 0x1.12d234692b9f7p-5,  -0x1.d3298e23bbc76p-6,
                               0x1.41c5090a22e9cp-6,  -0x1.fdbaf780d0fc5p-8};

ZOLVM_INLINE Pair atanNearZero(Pair q) {
    double const t = q.hi * q.hi;
    double const inner = atan1.hi + t * (atan2.hi + t * polynomial(atanTail, t));
    return quickSum(q.hi, q.lo * (1.0 - t) + t * q.hi * (atan0.hi + t * inner));
}
// The same to about 2^-66, for angles that are multiplied before they are rounded.
ZOLVM_INLINE Pair atanNearZeroLong(Pair q) {
    Pair const t = q * q;
    Pair const inner = atan2 + t.hi * polynomial(atanTail, t.hi);
    return q + q * (t * (atan0 + t * (atan1 + t * inner)));
}

// Angle of the point (x, y), where neither is too large or too small to be multiplied by 8 or
// divided by the other.
template <bool isLong = false>
ZOLVM_INLINE Pair atan2Pair(Pair y, Pair x) {
    Pair const high = choose(y.hi < 0, -y, y);
    Pair const wide = choose(x.hi < 0, -x, x);
    bool const steep = high.hi > 0x1.3504f333f9de6p+1 * wide.hi; // sqrt(2) + 1
    bool const middle = high.hi > 0x1.a827999fcef32p-2 * wide.hi;
    Pair const top = choose(steep, -wide, choose(middle, high - wide, high));
    Pair const bottom = choose(steep, high, choose(middle, high + wide, wide));
    double const eighths = steep ? 0.5 : middle ? 0.25 : 0.0;
    Pair const q = top / bottom;
    Pair const angle = isLong ? atanNearZeroLong(q) : atanNearZero(q);
    Pair const offset = exactSum(pi.hi * eighths, angle.hi);
    Pair const first = quickSum(offset.hi, offset.lo + (angle.lo + pi.lo * eighths));
    Pair const second = pi - first;
    Pair const result = choose(x.hi < 0, second, first);
    return choose(y.hi < 0, -result, result);
}

// erf(x) = x * (erf0 + x^2 * (erf1 + x^2 * polynomial(x^2))) on |x| <= erfSplit
constexpr double erfSplit = 0.75;
constexpr Pair erf0{0x1.20dd750429b6dp+0, 0x1.0ba72caf836ddp-56};
constexpr Pair erf1{-0x1.812746b0379e0p-2, -0x1.6ccabe755547dp-56};
constexpr double erfTail[] = {
    0x1.ce2f21a0424c3p-4,   -0x1.b82ce31257412p-6,  0x1.565bcd03657c0p-8,
    -0x1.c02db1220cfe6p-11, 0x1.f9a2afa3a8f86p-14,  -0x1.f4c5debf1228ap-17,
    0x1.b90ecd4aeec12p-20,  -0x1.564f71bbc0d35p-23, 0x1.8a312cb07e6ccp-27};

ZOLVM_INLINE Pair erfNearZero(Pair x) {
    Pair const t = x * x;
    Pair const inner = erf1 + t.hi * polynomial(erfTail, t.hi);
    return x * (erf0 + t * inner);
}

// e^(x^2) erfc(x) (1 + 2 x) = erfcx0 + q * (erfcx1 + q * polynomial(q)), q = (x - 4) / (x + 4), on
// 0 <= x <= 28
constexpr Pair erfcx0{0x1.3ba5916e9fd7fp+0, -0x1.ac30edc64d8bcp-55};
constexpr Pair erfcx1{-0x1.1df1ad154a28fp-3, 0x1.5872c3977bf34p-57};
constexpr double erfcxTail[] = {
    0x1.f7f5df66fd7e6p-7,   0x1.16ecefcfa5400p-4,   -0x1.9ddb23c3e924bp-4,  0x1.7fee004e113a0p-4,
    -0x1.0fb06dfe46db3p-4,  0x1.3079edf6ae2ebp-5,   -0x1.09623885955c8p-6,  0x1.49c6727714f22p-8,
    -0x1.8d4a996717f16p-11, -0x1.a1df1879570cbp-13, 0x1.3be033841dfc4p-13,  -0x1.995b13f6b0a3fp-16,
    -0x1.7882d18e29e35p-17, 0x1.7f3e45c1e5061p-18,  0x1.3926a52c331a6p-22,  -0x1.bc665b6377870p-21,
    0x1.4adcd53cbbc96p-24,  0x1.e689355383b88p-24,  -0x1.483e5f2f13f5cp-26, -0x1.1d56405fb00c0p-26,
    0x1.cfaa94405e761p-30,  0x1.210c970eb46d4p-29,  0x1.401609bf915e2p-32};

// e^(x^2) erfc(x) for 0 <= x <= 28.
ZOLVM_INLINE Pair erfcxPair(Pair x) {
    Pair const q = (x + -4.0) / (x + 4.0);
    Pair const inner = erfcx1 + q.hi * polynomial(erfcxTail, q.hi);
    return (erfcx0 + q * inner) / (scaled(x, 2.0) + 1.0);
}
// erfc(x) for 0 <= x <= 26.6.
ZOLVM_INLINE Pair erfcTail(Pair x) { return expPair(-(x * x)) * erfcxPair(x); }
ZOLVM_INLINE Pair erfcPair(Pair x) {
    Pair const away = choose(x.hi < 0, -x, x);
    Pair const small = erfNearZero(choose(away.hi < erfSplit, x, {0.5, 0.0}));
    // For a large negative x the tail doesn't count, but its exponential has to stay in range.
    Pair const tail = erfcTail(choose(away.hi > 26.6, {26.6, 0.0}, away));
    Pair const reflected = choose(x.hi < 0, -tail + 2.0, tail);
    return choose(away.hi < erfSplit, -small + 1.0, reflected);
}

} // namespace

#endif
