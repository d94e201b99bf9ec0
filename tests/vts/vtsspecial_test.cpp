// vtsspecial_test.cpp - the dictionary of special values: bits, classes, draws, order of tests.
#include "vts/vtsspecial.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <vector>

#include "vtsfixture.h"

namespace {

using VtsSpecial = VtsFixture;

// How often a lookup advances the generator.
template <typename Bits>
int drawsOf(char const* name, Bits (*lookup)(char const*)) {
    MCG31m1Init(12345);
    lookup(name);
    unsigned const next = iBrngMCG31m1();
    MCG31m1Init(12345);
    for (int draws = 0; draws < 4; ++draws) {
        if (iBrngMCG31m1() == next) {
            return draws;
        }
    }
    return -1;
}

float single(char const* name) { return std::bit_cast<float>(vtssGetSpecialValue(name)); }
double dual(char const* name) { return std::bit_cast<double>(vtsdGetSpecialValue(name)); }

} // namespace

TEST_F(VtsSpecial, ConstantsAsBitPatterns) {
    auto const expectBits = [](std::string const& name, unsigned single, uint64_t dual) {
        EXPECT_EQ(vtssGetSpecialValue(name.c_str()), single) << name;
        EXPECT_EQ(vtsdGetSpecialValue(name.c_str()), dual) << name;
        EXPECT_EQ(drawsOf(name.c_str(), vtssGetSpecialValue), 1) << name;
    };
    struct Constant {
        char const* name;
        unsigned single;
        uint64_t dual;
    };
    // With P and N in front, and the first ones alone.
    Constant const signedOnes[] = {{"ZERO", 0, 0},
                                   {"TWO", 0x40000000, 0x4000000000000000},
                                   {"INF", 0x7f800000, 0x7ff0000000000000},
                                   {"ONE", 0x3f800000, 0x3ff0000000000000},
                                   {"ONEHALF", 0x3fc00000, 0x3ff8000000000000},
                                   {"HALF", 0x3f000000, 0x3fe0000000000000},
                                   {"THREEPIO4", 0x4016cbe4, 0x4002d97c7f3321d2},
                                   {"PIO4", 0x3f490fdb, 0x3fe921fb54442d18},
                                   {"PIO2", 0x3fc90fdb, 0x3ff921fb54442d18},
                                   {"PI", 0x40490fdb, 0x400921fb54442d18},
                                   {"THREEPIO4OLN10", 0x3f82faea, 0x3ff05f5d39863cb9},
                                   {"PIO4OLN10", 0x3eaea3e2, 0x3fd5d47c4cb2fba1},
                                   {"PIO2OLN10", 0x3f2ea3e2, 0x3fe5d47c4cb2fba1},
                                   {"PIOLN10", 0x3faea3e2, 0x3ff5d47c4cb2fba1},
                                   {"BIG", 0x7f7fffff, 0x7fefffffffffffff},
                                   {"SMALL", 0x00800000, 0x0010000000000000},
                                   {"DENORM", 8, 8},
                                   {"NEARMAX2", 0x7f0fffff, 0x7fe00000000fffff},
                                   {"NEARMAX", 0x7e0fffff, 0x7fd00000000fffff},
                                   {"NEARMIN2", 0x020fffff, 0x00400000000fffff},
                                   {"NEARMIN", 0x010fffff, 0x00200000000fffff}};
    bool alone = true;
    for (auto const& [name, single, dual] : signedOnes) {
        alone = alone && strcmp(name, "BIG") != 0;
        if (alone) {
            expectBits(name, single, dual);
        }
        expectBits(std::string("P") + name, single, dual);
        expectBits(std::string("N") + name, single | 0x80000000U, dual | 0x8000000000000000U);
    }
    Constant const others[] = {{"EXPGRUNDERFLOW", 0xc2aeac50, 0xc086232bdd7abcd3},
                               {"EXPUNDERFLOW", 0xc2cff1b5, 0xc0874910d52d3052},
                               {"EXPOVERFLOW", 0x42b17218, 0x40862e42fefa39f0},
                               {"SINHOVERFLOW", 0x42b2d4fd, 0x408633ce8fb9f87e},
                               {"SINHNOVERFLOW", 0xc2b2d4fd, 0xc08633ce8fb9f87e}};
    for (auto const& [name, single, dual] : others) {
        expectBits(name, single, dual);
        expectBits(std::string(name) + "_M_ULP", single - 1, dual - 1);
    }
    for (char const* letter : {"A", "B", "C", "D"}) {
        EXPECT_EQ(single((std::string("CPOWOVF1") + letter).c_str()),
                  *letter < 'C' ? 15.5F : 400.5F);
        EXPECT_EQ(dual((std::string("CPOWOVF2") + letter).c_str()), *letter < 'C' ? 308.5 : 138.5);
    }
}

TEST_F(VtsSpecial, ClassesDrawOnceMore) {
    std::istringstream classes(
        "SNAN QNAN NAN NONZERO NONINT NNOTINT PNOTINT LTZERO GTZERO LTEXPUNDERFLOW GTEXPOVERFLOW "
        "GTSINHOVERFLOW LTSINHNOVERFLOW ABSGTONE ABSLTONE LTONE ODDINT EVENINT PODDINT PEVENINT "
        "NODDINT NEVENINT ANY GTERFCUNDERFLOW");
    for (std::string name; classes >> name;) {
        EXPECT_EQ(drawsOf(name.c_str(), vtssGetSpecialValue), 2) << name;
        EXPECT_EQ(drawsOf(name.c_str(), vtsdGetSpecialValue), 2) << name;
    }
    EXPECT_EQ(drawsOf("PFINITE", vtsdGetSpecialValue), 1);
    EXPECT_EQ(drawsOf("NOSUCHNAME", vtssGetSpecialValue), 1);
}

TEST_F(VtsSpecial, MembersFollowTheirFormulas) {
    // The first draw is spent on the number of the finite classes, the second makes the member.
    constexpr double r = 1132489760.0 / 2147483647.0;
    auto const expectValue = [](char const* name, double value) {
        MCG31m1Init(1);
        EXPECT_EQ(single(name), static_cast<float>(value)) << name;
        MCG31m1Init(1);
        EXPECT_EQ(dual(name), value) << name;
    };
    expectValue("ANY", 2000000.0 * r - 1000000.0);
    expectValue("ABSLTONE", 1.99 * r - 0.99);
    expectValue("LTONE", 1.0 - (1000.0 * r + 0.001));
    expectValue("ODDINT", 2 * std::trunc(2000.0 * r - 1000.0) + 1);
    expectValue("EVENINT", 2 * std::trunc(2000.0 * r - 1000.0));
    expectValue("PODDINT", 2 * std::trunc(1000.0 * r + 10.0) + 1);
    expectValue("PEVENINT", 2 * std::trunc(1000.0 * r + 10.0) + 2);
    expectValue("NODDINT", 2 * std::trunc(-1000.0 * r - 10.0) - 1);
    expectValue("NEVENINT", 2 * std::trunc(-1000.0 * r - 10.0) - 2);
    MCG31m1Init(1);
    EXPECT_EQ(single("GTERFCUNDERFLOW"), static_cast<float>(10.0 * r + 11.0));
    MCG31m1Init(1);
    EXPECT_EQ(dual("GTERFCUNDERFLOW"), 100.0 * r + 28.0);
    MCG31m1Init(1);
    EXPECT_EQ(dual("LTEXPUNDERFLOW"), std::bit_cast<double>(0xc0874910d52d3052ULL) - 1000000.0 * r);
    MCG31m1Init(1);
    EXPECT_EQ(
        single("GTSINHOVERFLOW"),
        static_cast<float>(static_cast<double>(std::bit_cast<float>(0x42b2d4fdU)) + 1000000.0 * r));
    MCG31m1Init(1);
    EXPECT_EQ(vtssGetSpecialValue("LTZERO"),
              std::bit_cast<unsigned>(static_cast<float>(1000000.0 * r)) | 0x80000001U);
    MCG31m1Init(1);
    EXPECT_EQ(vtsdGetSpecialValue("NNOTINT"),
              std::bit_cast<unsigned long long>(-1000000.0 * r) | 0x101010101U);
    // From a seed of 1 that number is -1000000: a high exponent once its sign is cut off.
    MCG31m1Init(1);
    EXPECT_EQ(vtssGetSpecialValue("PFINITE"), static_cast<unsigned>(-1000000) & 0x7fffffffU);
    MCG31m1Init(1);
    EXPECT_EQ(vtsdGetSpecialValue("NFINITE"), static_cast<unsigned long long>(-1000000LL));
}

TEST_F(VtsSpecial, NanBits) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(vtssGetSpecialValue("SNAN") & 0x7fc00001U, 0x7f800001U);
        EXPECT_EQ(vtsdGetSpecialValue("SNAN") & 0x7ff8000000000001U, 0x7ff0000000000001U);
        EXPECT_EQ(vtssGetSpecialValue("QNAN") & 0x7fc00001U, 0x7fc00001U);
        EXPECT_EQ(vtsdGetSpecialValue("NAN") & 0x7ff8000000000001U, 0x7ff8000000000001U);
    }
}

TEST_F(VtsSpecial, ComplexNamesHaveTwoHalves) {
    auto const value = vtscGetSpecialValue("PINF_iQNAN");
    EXPECT_EQ(value.re, 0x7f800000U);
    EXPECT_TRUE(std::isnan(std::bit_cast<float>(value.im)));
    // Real first: its draws come before those of the imaginary half.
    MCG31m1Init(1);
    auto const pair = vtszGetSpecialValue("ANY_iANY");
    MCG31m1Init(1);
    EXPECT_EQ(pair.re, vtsdGetSpecialValue("ANY"));
    EXPECT_EQ(pair.im, vtsdGetSpecialValue("ANY"));
    EXPECT_EQ(vtscGetSpecialValue("ZERO").im, 0U);
    MCG31m1Init(5);
    auto const none = vtscGetSpecialValue("PINF"); // no halves: zeros, no lookup, no warning
    EXPECT_EQ(none.re, 0U);
    EXPECT_EQ(none.im, 0U);
    EXPECT_EQ(iBrngMCG31m1(), 5U);
    EXPECT_EQ(printed, "");
}

TEST_F(VtsSpecial, UnknownNameIsWarnedOf) {
    EXPECT_GT(single("xxGTZEROxx"), 0.0F); // a part is enough for this one, and not for others
    strcpy(defData.valuesName, "Line");
    EXPECT_EQ(vtsdGetSpecialValue("xPONE"), 0U);
    EXPECT_EQ(printed, "32:\nHROTS WARNING:\n"
                       "32:  Argument of vts?GetSpecialValue is pcSpecialName=\"xPONE\"\n"
                       "32:  It corresponds to unknown special interval name Line\n"
                       "32:  used in vts/hrots/_src/hro//_?? file.\n");
}

TEST_F(VtsSpecial, ErrorAndExceptionWords) {
    struct {
        char const* word;
        int error;
        int exception;
    } const cases[] = {{"ERRDOM", 19, 0},     {"SING", 18, 0},      {"OVERFLOW", 12, 8},
                       {"UNDERFLOW", 17, 16}, {"BADSIZE", -6, 0},   {"BADMEM", -8, 0},
                       {"INEXACT", 0, 32},    {"ZERODIVIDE", 0, 4}, {"DENORMAL", 0, 2},
                       {"INVALID", 0, 1},     {"0", 0, 0},          {"", 0, 0}};
    for (auto const& [word, error, exception] : cases) {
        EXPECT_EQ(vtssGetErrCode(word), error) << word;
        EXPECT_EQ(vtssGetExcCode(word), exception) << word;
    }
}

TEST_F(VtsSpecial, FillsLookEachElementUp) {
    std::vector<float> array(8, 9.0F);
    vtssFillSpecial(array.data(), 3, "GTZERO");
    EXPECT_NE(array[0], array[1]);
    EXPECT_EQ(array[3], 9.0F);
    vtscFillSpecial(array.data() + 4, 2, "PONE_iNONE", 2); // both halves, whatever part
    EXPECT_EQ(array[6], 1.0F);
    EXPECT_EQ(array[7], -1.0F);
}
