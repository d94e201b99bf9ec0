// vtsspecial.cpp - the dictionary of special values.
#include "vts/vtsspecial.h"

#include <bit>
#include <cmath>
#include <cstring>

#include "vts/vtsdefs.h"
#include "vts/vtsrandom.h"
#include "vts/vtsstatus.h"

namespace {

enum class Kind {
    constant,
    signallingNaN,
    quietNaN,
    nonZero,
    nonInteger,
    negativeNonInteger,
    positiveNonInteger,
    negative,
    positive,
    belowLimit,
    aboveLimit,
    absAboveOne,
    absBelowOne,
    belowOne,
    odd,
    even,
    positiveOdd,
    positiveEven,
    negativeOdd,
    negativeEven,
    any,
    aboveErfc,
    finite,
    negativeFinite
};

constexpr bool exact = true; // the whole name
constexpr bool part = false; // the name holds it

// The first row that fits a name wins, so the order is part of the language: the parts would
// catch longer names that stand above them. Bits of a constant, or the limit that a class lies
// beyond.
struct SpecialName {
    char const* name;
    bool whole;
    Kind kind;
    unsigned single = 0;
    unsigned long long dual = 0;
};
constexpr SpecialName specialNames[] = {
    {"ZERO", exact, Kind::constant, 0x00000000, 0x0000000000000000},
    {"PZERO", exact, Kind::constant, 0x00000000, 0x0000000000000000},
    {"NZERO", exact, Kind::constant, 0x80000000, 0x8000000000000000},
    {"TWO", exact, Kind::constant, 0x40000000, 0x4000000000000000},
    {"PTWO", exact, Kind::constant, 0x40000000, 0x4000000000000000},
    {"NTWO", exact, Kind::constant, 0xc0000000, 0xc000000000000000},
    {"INF", exact, Kind::constant, 0x7f800000, 0x7ff0000000000000},
    {"PINF", exact, Kind::constant, 0x7f800000, 0x7ff0000000000000},
    {"NINF", exact, Kind::constant, 0xff800000, 0xfff0000000000000},
    {"PBIG", exact, Kind::constant, 0x7f7fffff, 0x7fefffffffffffff},
    {"NBIG", exact, Kind::constant, 0xff7fffff, 0xffefffffffffffff},
    {"PSMALL", exact, Kind::constant, 0x00800000, 0x0010000000000000},
    {"NSMALL", exact, Kind::constant, 0x80800000, 0x8010000000000000},
    {"SNAN", part, Kind::signallingNaN},
    {"QNAN", part, Kind::quietNaN},
    {"NAN", part, Kind::quietNaN},
    {"NONZERO", part, Kind::nonZero},
    {"NONINT", part, Kind::nonInteger},
    {"NNOTINT", part, Kind::negativeNonInteger},
    {"PNOTINT", part, Kind::positiveNonInteger},
    {"LTZERO", part, Kind::negative},
    {"GTZERO", part, Kind::positive},
    {"ONE", exact, Kind::constant, 0x3f800000, 0x3ff0000000000000},
    {"PONE", exact, Kind::constant, 0x3f800000, 0x3ff0000000000000},
    {"NONE", exact, Kind::constant, 0xbf800000, 0xbff0000000000000},
    {"PONEHALF", exact, Kind::constant, 0x3fc00000, 0x3ff8000000000000},
    {"ONEHALF", exact, Kind::constant, 0x3fc00000, 0x3ff8000000000000},
    {"NONEHALF", exact, Kind::constant, 0xbfc00000, 0xbff8000000000000},
    {"PHALF", exact, Kind::constant, 0x3f000000, 0x3fe0000000000000},
    {"HALF", exact, Kind::constant, 0x3f000000, 0x3fe0000000000000},
    {"NHALF", exact, Kind::constant, 0xbf000000, 0xbfe0000000000000},
    {"EXPGRUNDERFLOW_M_ULP", exact, Kind::constant, 0xc2aeac4f, 0xc086232bdd7abcd2},
    {"EXPGRUNDERFLOW", exact, Kind::constant, 0xc2aeac50, 0xc086232bdd7abcd3},
    {"EXPUNDERFLOW_M_ULP", exact, Kind::constant, 0xc2cff1b4, 0xc0874910d52d3051},
    {"EXPUNDERFLOW", exact, Kind::constant, 0xc2cff1b5, 0xc0874910d52d3052},
    {"LTEXPUNDERFLOW", exact, Kind::belowLimit, 0xc2cff1b5, 0xc0874910d52d3052},
    {"EXPOVERFLOW_M_ULP", exact, Kind::constant, 0x42b17217, 0x40862e42fefa39ef},
    {"EXPOVERFLOW", exact, Kind::constant, 0x42b17218, 0x40862e42fefa39f0},
    {"GTEXPOVERFLOW", exact, Kind::aboveLimit, 0x42b17218, 0x40862e42fefa39f0},
    {"SINHOVERFLOW_M_ULP", exact, Kind::constant, 0x42b2d4fc, 0x408633ce8fb9f87d},
    {"SINHOVERFLOW", exact, Kind::constant, 0x42b2d4fd, 0x408633ce8fb9f87e},
    {"GTSINHOVERFLOW", exact, Kind::aboveLimit, 0x42b2d4fd, 0x408633ce8fb9f87e},
    {"SINHNOVERFLOW_M_ULP", exact, Kind::constant, 0xc2b2d4fc, 0xc08633ce8fb9f87d},
    {"SINHNOVERFLOW", exact, Kind::constant, 0xc2b2d4fd, 0xc08633ce8fb9f87e},
    {"LTSINHNOVERFLOW", exact, Kind::belowLimit, 0xc2b2d4fd, 0xc08633ce8fb9f87e},
    {"ABSGTONE", part, Kind::absAboveOne},
    {"ABSLTONE", part, Kind::absBelowOne},
    {"LTONE", part, Kind::belowOne},
    {"THREEPIO4", exact, Kind::constant, 0x4016cbe4, 0x4002d97c7f3321d2},
    {"PTHREEPIO4", exact, Kind::constant, 0x4016cbe4, 0x4002d97c7f3321d2},
    {"NTHREEPIO4", exact, Kind::constant, 0xc016cbe4, 0xc002d97c7f3321d2},
    {"PIO4", exact, Kind::constant, 0x3f490fdb, 0x3fe921fb54442d18},
    {"PPIO4", exact, Kind::constant, 0x3f490fdb, 0x3fe921fb54442d18},
    {"NPIO4", exact, Kind::constant, 0xbf490fdb, 0xbfe921fb54442d18},
    {"PIO2", exact, Kind::constant, 0x3fc90fdb, 0x3ff921fb54442d18},
    {"PPIO2", exact, Kind::constant, 0x3fc90fdb, 0x3ff921fb54442d18},
    {"NPIO2", exact, Kind::constant, 0xbfc90fdb, 0xbff921fb54442d18},
    {"PI", exact, Kind::constant, 0x40490fdb, 0x400921fb54442d18},
    {"PPI", exact, Kind::constant, 0x40490fdb, 0x400921fb54442d18},
    {"NPI", exact, Kind::constant, 0xc0490fdb, 0xc00921fb54442d18},
    {"THREEPIO4OLN10", exact, Kind::constant, 0x3f82faea, 0x3ff05f5d39863cb9},
    {"PTHREEPIO4OLN10", exact, Kind::constant, 0x3f82faea, 0x3ff05f5d39863cb9},
    {"NTHREEPIO4OLN10", exact, Kind::constant, 0xbf82faea, 0xbff05f5d39863cb9},
    {"PIO4OLN10", exact, Kind::constant, 0x3eaea3e2, 0x3fd5d47c4cb2fba1},
    {"PPIO4OLN10", exact, Kind::constant, 0x3eaea3e2, 0x3fd5d47c4cb2fba1},
    {"NPIO4OLN10", exact, Kind::constant, 0xbeaea3e2, 0xbfd5d47c4cb2fba1},
    {"PIO2OLN10", exact, Kind::constant, 0x3f2ea3e2, 0x3fe5d47c4cb2fba1},
    {"PPIO2OLN10", exact, Kind::constant, 0x3f2ea3e2, 0x3fe5d47c4cb2fba1},
    {"NPIO2OLN10", exact, Kind::constant, 0xbf2ea3e2, 0xbfe5d47c4cb2fba1},
    {"PIOLN10", exact, Kind::constant, 0x3faea3e2, 0x3ff5d47c4cb2fba1},
    {"PPIOLN10", exact, Kind::constant, 0x3faea3e2, 0x3ff5d47c4cb2fba1},
    {"NPIOLN10", exact, Kind::constant, 0xbfaea3e2, 0xbff5d47c4cb2fba1},
    {"ODDINT", exact, Kind::odd},
    {"EVENINT", exact, Kind::even},
    {"PODDINT", part, Kind::positiveOdd},
    {"PEVENINT", part, Kind::positiveEven},
    {"NODDINT", part, Kind::negativeOdd},
    {"NEVENINT", part, Kind::negativeEven},
    {"ANY", part, Kind::any},
    {"GTERFCUNDERFLOW", part, Kind::aboveErfc},
    {"PDENORM", exact, Kind::constant, 0x00000008, 0x0000000000000008},
    {"NDENORM", exact, Kind::constant, 0x80000008, 0x8000000000000008},
    {"PNEARMAX2", part, Kind::constant, 0x7f0fffff, 0x7fe00000000fffff},
    {"NNEARMAX2", part, Kind::constant, 0xff0fffff, 0xffe00000000fffff},
    {"PNEARMAX", part, Kind::constant, 0x7e0fffff, 0x7fd00000000fffff},
    {"NNEARMAX", part, Kind::constant, 0xfe0fffff, 0xffd00000000fffff},
    {"PNEARMIN2", part, Kind::constant, 0x020fffff, 0x00400000000fffff},
    {"NNEARMIN2", part, Kind::constant, 0x820fffff, 0x80400000000fffff},
    {"PNEARMIN", part, Kind::constant, 0x010fffff, 0x00200000000fffff},
    {"NNEARMIN", part, Kind::constant, 0x810fffff, 0x80200000000fffff},
    {"PFINITE", part, Kind::finite},
    {"NFINITE", part, Kind::negativeFinite},
    {"CPOWOVF1A", part, Kind::constant, 0x41780000, 0x402f000000000000},
    {"CPOWOVF1B", part, Kind::constant, 0x41780000, 0x402f000000000000},
    {"CPOWOVF1C", part, Kind::constant, 0x43c84000, 0x4079080000000000},
    {"CPOWOVF1D", part, Kind::constant, 0x43c84000, 0x4079080000000000},
    {"CPOWOVF2A", part, Kind::constant, 0x439a4000, 0x4073480000000000},
    {"CPOWOVF2B", part, Kind::constant, 0x439a4000, 0x4073480000000000},
    {"CPOWOVF2C", part, Kind::constant, 0x430a8000, 0x4061500000000000},
    {"CPOWOVF2D", part, Kind::constant, 0x430a8000, 0x4061500000000000},
};

// What differs between the two precisions.
struct Single {
    using Real = float;
    using Bits = unsigned;
    using Signed = int;
    static constexpr Bits sign = 0x80000000;
    static constexpr Bits infinity = 0x7f800000;
    static constexpr Bits quiet = 0x400000;
    static constexpr Bits notInteger = 0x10101;
    static constexpr double erfcSpan = 10.0;
    static constexpr double erfcStart = 11.0;
    static constexpr Bits bits(SpecialName const& row) { return row.single; }
};
struct Double {
    using Real = double;
    using Bits = unsigned long long;
    using Signed = long long;
    static constexpr Bits sign = 0x8000000000000000;
    static constexpr Bits infinity = 0x7ff0000000000000;
    static constexpr Bits quiet = 0x8000000000000;
    static constexpr Bits notInteger = 0x101010101;
    static constexpr double erfcSpan = 100.0;
    static constexpr double erfcStart = 28.0;
    static constexpr Bits bits(SpecialName const& row) { return row.dual; }
};

// Bits of a value rounded to the precision.
template <typename P>
typename P::Bits realBits(double value) {
    return std::bit_cast<typename P::Bits>(static_cast<typename P::Real>(value));
}

double million() { return 1000000.0 * vtsDraw(); }

// A number of either sign below a million.
double anyNumber() { return 2000000.0 * vtsDraw() - 1000000.0; }

template <typename P>
typename P::Bits absAboveOne() {
    using Real = typename P::Real;
    Real const value = static_cast<Real>(anyNumber()); // never 0, as the modulus is odd
    return std::bit_cast<typename P::Bits>(value + std::copysign(Real{1}, value));
}

// Bits of an integer below ten thousand; odd ones get their low bit by an or.
template <typename P>
typename P::Bits integerBits(double start, bool isOdd, int offset) {
    int const twice = static_cast<int>(start) * 2;
    return realBits<P>(isOdd ? twice | 1 : twice + offset);
}

// small is the number that every lookup draws first; only the finite classes use it.
template <typename P>
typename P::Bits specialBits(SpecialName const& row, typename P::Signed small) {
    using Bits = typename P::Bits;
    Bits const limit = P::bits(row);
    switch (row.kind) {
    case Kind::constant:
        return limit;
    case Kind::signallingNaN:
        return (realBits<P>(anyNumber()) & ~P::quiet) | P::infinity | 1;
    case Kind::quietNaN:
        return realBits<P>(anyNumber()) | P::infinity | P::quiet | 1;
    case Kind::nonZero:
        return realBits<P>(anyNumber()) | 1;
    case Kind::nonInteger: // need not be one: only low bits are set
        return realBits<P>(anyNumber()) | P::notInteger;
    case Kind::negativeNonInteger:
        return realBits<P>(-million()) | P::notInteger;
    case Kind::positiveNonInteger:
        return realBits<P>(million()) | P::notInteger;
    case Kind::negative:
        return realBits<P>(million()) | P::sign | 1;
    case Kind::positive:
        return realBits<P>(million()) | 1;
    case Kind::belowLimit:
        return realBits<P>(std::bit_cast<typename P::Real>(limit) - million());
    case Kind::aboveLimit:
        return realBits<P>(std::bit_cast<typename P::Real>(limit) + million());
    case Kind::absAboveOne:
        return absAboveOne<P>();
    case Kind::absBelowOne:
        return realBits<P>(1.99 * vtsDraw() - 0.99);
    case Kind::belowOne:
        return realBits<P>(1.0 - (1000.0 * vtsDraw() + 0.001));
    case Kind::odd:
        return integerBits<P>(2000.0 * vtsDraw() - 1000.0, true, 0);
    case Kind::even:
        return integerBits<P>(2000.0 * vtsDraw() - 1000.0, false, 0);
    case Kind::positiveOdd:
        return integerBits<P>(1000.0 * vtsDraw() + 10.0, true, 0);
    case Kind::positiveEven:
        return integerBits<P>(1000.0 * vtsDraw() + 10.0, false, 2);
    case Kind::negativeOdd:
        return integerBits<P>(-1000.0 * vtsDraw() - 10.0, false, -1);
    case Kind::negativeEven:
        return integerBits<P>(-1000.0 * vtsDraw() - 10.0, false, -2);
    case Kind::any:
        return realBits<P>(anyNumber());
    case Kind::aboveErfc:
        return realBits<P>(P::erfcSpan * vtsDraw() + P::erfcStart);
    case Kind::finite: // the bits of an integer: denormal, or of a high exponent when it is below 0
        return static_cast<Bits>(small) & ~P::sign;
    case Kind::negativeFinite:
        return static_cast<Bits>(small) | P::sign;
    }
    return 0;
}

template <typename P>
typename P::Bits specialValue(char const* name) {
    auto const small = static_cast<typename P::Signed>(2000000.0 * vtsDraw()) - 1000000;
    for (SpecialName const& row : specialNames) {
        if (row.whole ? strcmp(name, row.name) == 0 : strstr(name, row.name) != nullptr) {
            return specialBits<P>(row, small);
        }
    }
    vtsPrint(vtsStreamErrTxt, "\nHROTS WARNING:\n");
    vtsPrint(vtsStreamErrTxt, "  Argument of vts?GetSpecialValue is pcSpecialName=\"%s\"\n", name);
    vtsPrint(vtsStreamErrTxt, "  It corresponds to unknown special interval name %s\n",
             defData.valuesName);
    vtsPrint(vtsStreamErrTxt, "  used in vts/hrots/_src/hro/%s/%s_?? file.\n", "", "");
    return 0;
}

template <typename Pair, typename Lookup>
Pair complexValue(char const* name, Lookup lookup) {
    char real[vtsNameSize];
    bool const zero = strlen(name) == 4 && strstr(name, "ZERO") != nullptr;
    strncpy(real, zero ? "ZERO_iZERO" : name, sizeof(real) - 1);
    real[sizeof(real) - 1] = '\0';
    char* const joint = strstr(real, "_i");
    if (joint == nullptr) {
        return Pair{0, 0};
    }
    *joint = '\0';
    Pair pair;
    pair.re = lookup(real); // in this order: both advance the generator
    pair.im = lookup(joint + 2);
    return pair;
}

// By bytes: a signalling NaN has to arrive as it is.
template <typename T, typename Value, typename Lookup>
void fillSpecial(T* array, int count, char const* name, Lookup lookup) {
    constexpr int width = sizeof(Value) / sizeof(T);
    for (int i = 0; i < count; ++i, array += width) {
        Value const value = lookup(name);
        memcpy(array, &value, sizeof(value));
    }
}

struct CodeWord {
    char const* word;
    int code;
};
constexpr CodeWord errorWords[] = {{"BADSIZE", -6}, {"BADMEM", -8},   {"ERRDOM", 19},
                                   {"SING", 18},    {"OVERFLOW", 12}, {"UNDERFLOW", 17}};
constexpr CodeWord exceptionWords[] = {{"INEXACT", 32},   {"UNDERFLOW", 16}, {"OVERFLOW", 8},
                                       {"ZERODIVIDE", 4}, {"INVALID", 1},    {"DENORMAL", 2}};

template <int N>
int codeOf(CodeWord const (&words)[N], char const* word) {
    for (CodeWord const& row : words) {
        if (strcmp(row.word, word) == 0) {
            return row.code;
        }
    }
    return 0;
}

} // namespace

unsigned vtssGetSpecialValue(char const* name) { return specialValue<Single>(name); }

unsigned long long vtsdGetSpecialValue(char const* name) { return specialValue<Double>(name); }

vtsComplexBits32 vtscGetSpecialValue(char const* name) {
    return complexValue<vtsComplexBits32>(name, vtssGetSpecialValue);
}

vtsComplexBits64 vtszGetSpecialValue(char const* name) {
    return complexValue<vtsComplexBits64>(name, vtsdGetSpecialValue);
}

int vtssGetErrCode(char const* word) { return codeOf(errorWords, word); }

int vtssGetExcCode(char const* word) { return codeOf(exceptionWords, word); }

void vtssFillSpecial(float* array, int count, char const* name) {
    fillSpecial<float, unsigned>(array, count, name, vtssGetSpecialValue);
}

void vtsdFillSpecial(double* array, int count, char const* name) {
    fillSpecial<double, unsigned long long>(array, count, name, vtsdGetSpecialValue);
}

void vtscFillSpecial(float* array, int count, char const* name, int) {
    fillSpecial<float, vtsComplexBits32>(array, count, name, vtscGetSpecialValue);
}

void vtszFillSpecial(double* array, int count, char const* name, int) {
    fillSpecial<double, vtsComplexBits64>(array, count, name, vtszGetSpecialValue);
}
