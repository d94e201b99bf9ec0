// vtsspecial_test.cpp - the dictionary of special values: bits, classes, draws, order of tests.
#include "vts/vtsspecial.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>
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

// Bits and value of a name from a generator that starts at 1.
unsigned singleBits(char const* name) {
    MCG31m1Init(1);
    return vtssGetSpecialValue(name);
}
unsigned long long dualBits(char const* name) {
    MCG31m1Init(1);
    return vtsdGetSpecialValue(name);
}
float single(char const* name) { return std::bit_cast<float>(singleBits(name)); }
double dual(char const* name) { return std::bit_cast<double>(dualBits(name)); }

} // namespace

TEST_F(VtsSpecial, ConstantsAsBitPatterns) {
    struct {
        std::vector<std::string> fixes; // before or behind the name
        std::istringstream constants;   // name and bits of both precisions
    } groups[] = {
        {{"", "P", "N"},
         std::istringstream(
             "ZERO 0 0 TWO 40000000 4000000000000000 INF 7f800000 7ff0000000000000 "
             "ONE 3f800000 3ff0000000000000 ONEHALF 3fc00000 3ff8000000000000 "
             "HALF 3f000000 3fe0000000000000 THREEPIO4 4016cbe4 4002d97c7f3321d2 "
             "PIO4 3f490fdb 3fe921fb54442d18 PIO2 3fc90fdb 3ff921fb54442d18 "
             "PI 40490fdb 400921fb54442d18 THREEPIO4OLN10 3f82faea 3ff05f5d39863cb9 "
             "PIO4OLN10 3eaea3e2 3fd5d47c4cb2fba1 PIO2OLN10 3f2ea3e2 3fe5d47c4cb2fba1 "
             "PIOLN10 3faea3e2 3ff5d47c4cb2fba1 ")},
        {{"P", "N"},
         std::istringstream(
             "BIG 7f7fffff 7fefffffffffffff SMALL 00800000 0010000000000000 DENORM 8 8 "
             "NEARMAX2 7f0fffff 7fe00000000fffff NEARMAX 7e0fffff 7fd00000000fffff "
             "NEARMIN2 020fffff 00400000000fffff NEARMIN 010fffff 00200000000fffff ")},
        {{"", "_M_ULP"},
         std::istringstream(
             "EXPGRUNDERFLOW c2aeac50 c086232bdd7abcd3 EXPUNDERFLOW c2cff1b5 c0874910d52d3052 "
             "EXPOVERFLOW 42b17218 40862e42fefa39f0 SINHOVERFLOW 42b2d4fd 408633ce8fb9f87e "
             "SINHNOVERFLOW c2b2d4fd c08633ce8fb9f87e ")}};
    for (auto& [fixes, constants] : groups) {
        uint64_t single = 0;
        uint64_t dual = 0;
        for (std::string name; constants >> name >> std::hex >> single >> dual;) {
            for (std::string const& fix : fixes) {
                bool const ulp = fix == "_M_ULP";
                std::string const whole = ulp ? name + fix : fix + name;
                uint64_t const sign = fix == "N" ? 1 : 0;
                EXPECT_EQ(singleBits(whole.c_str()), (single | sign << 31U) - (ulp ? 1 : 0))
                    << whole;
                EXPECT_EQ(dualBits(whole.c_str()), (dual | sign << 63U) - (ulp ? 1 : 0)) << whole;
                EXPECT_EQ(drawsOf(whole.c_str(), vtssGetSpecialValue), 1) << whole;
            }
        }
        EXPECT_TRUE(constants.eof()); // all were read
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
        EXPECT_EQ(single(name), static_cast<float>(value)) << name;
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
    EXPECT_EQ(single("GTERFCUNDERFLOW"), static_cast<float>(10.0 * r + 11.0));
    EXPECT_EQ(dual("GTERFCUNDERFLOW"), 100.0 * r + 28.0);
    EXPECT_EQ(dual("LTEXPUNDERFLOW"), dual("EXPUNDERFLOW") - 1000000.0 * r);
    EXPECT_EQ(single("GTSINHOVERFLOW"),
              static_cast<float>(static_cast<double>(single("SINHOVERFLOW")) + 1000000.0 * r));
    EXPECT_EQ(singleBits("LTZERO"),
              std::bit_cast<unsigned>(static_cast<float>(1000000.0 * r)) | 0x80000001U);
    EXPECT_EQ(dualBits("NNOTINT"),
              std::bit_cast<unsigned long long>(-1000000.0 * r) | 0x101010101U);
    // From a seed of 1 that number is -1000000: a high exponent once its sign is cut off.
    EXPECT_EQ(singleBits("PFINITE"), static_cast<unsigned>(-1000000) & 0x7fffffffU);
    EXPECT_EQ(dualBits("NFINITE"), static_cast<unsigned long long>(-1000000LL));
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
    EXPECT_EQ(pair.re, dualBits("ANY"));
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
    std::vector<std::tuple<char const*, int, int>> const cases = {
        {"ERRDOM", 19, 0},  {"SING", 18, 0},   {"OVERFLOW", 12, 8}, {"UNDERFLOW", 17, 16},
        {"BADSIZE", -6, 0}, {"BADMEM", -8, 0}, {"INEXACT", 0, 32},  {"ZERODIVIDE", 0, 4},
        {"DENORMAL", 0, 2}, {"INVALID", 0, 1}, {"0", 0, 0},         {"", 0, 0}};
    for (auto const& [word, error, exception] : cases) {
        EXPECT_EQ(vtssGetErrCode(word), error) << word;
        EXPECT_EQ(vtssGetExcCode(word), exception) << word;
    }
}

TEST_F(VtsSpecial, FillsLookEachElementUp) {
    float array[4] = {9, 9, 9, 9};
    vtssFillSpecial(array, 3, "GTZERO");
    EXPECT_NE(array[0], array[1]);
    EXPECT_EQ(array[3], 9.0F);
}
