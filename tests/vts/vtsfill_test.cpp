// vtsfill_test.cpp - operand arrays: their layout, and the fills that a block's lines ask for.
#include <bit>
#include <cmath>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "vtsfixture.h"

namespace {

class VtsFill : public VtsFixture {
protected:
    VtsFill() { vtsAllocData(); }

    // Fills from the first usable line, with a generator that starts at 1.
    int fill(std::string const& tag, std::string const& lines) {
        setBlock(tag + "\n" + lines + "\n");
        MCG31m1Init(1);
        return vtsFillData(0);
    }
    static float single(void* array, int index) { return static_cast<float*>(array)[index]; }
    static std::pair<float, float> pair(void* array, int index) {
        return {single(array, 2 * index), single(array, 2 * index + 1)};
    }
    static double dual(void* array, int index) { return static_cast<double*>(array)[index]; }
};

uintptr_t address(void* pointer) { return reinterpret_cast<uintptr_t>(pointer); }

constexpr double draws[] = {1.0 / 2147483647.0, 1132489760.0 / 2147483647.0};

} // namespace

TEST_F(VtsFill, ArraysLieApartByTheirWidth) {
    std::vector<std::tuple<int, uintptr_t>> const cases = {
        {1001, 65536}, {4032, 65536}, {4033, 131072}, {1, 65536}};
    for (auto const& [n, width] : cases) {
        defData.n = n;
        vtsReAllocData();
        EXPECT_EQ(address(defData.arg1) % 65536, 0U);
        EXPECT_LT(address(defData.arg1) - address(defData.block1), 65536U);
        EXPECT_EQ(address(defData.par1) % 65536, 0U);
        EXPECT_EQ(address(defData.arg2) - address(defData.arg1), width + 512) << n;
        EXPECT_EQ(address(defData.par4) - address(defData.par1), 3 * (width + 512)) << n;
        EXPECT_EQ(defData.errCodes[n + 1023], 0);
    }
    vtsDeAllocData();
    EXPECT_EQ(defData.block1, nullptr);
    EXPECT_EQ(defData.arg3, nullptr);
    EXPECT_EQ(defData.auxCodes, nullptr);
}

TEST_F(VtsFill, WorkLineGivesThePool) {
    int const row = vtsFindFunc("sHypot_HA");
    vtsBeginFillData(row);
    ASSERT_EQ(vtsFillData(row), 1);
    EXPECT_STREQ(defData.valuesName, "Work");
    EXPECT_STREQ(defData.valuesType, "Normal");
    EXPECT_EQ(defData.n, 2002);
    EXPECT_EQ(defData.assignType, 1);
    // The second operand goes on where the first one ended.
    MCG31m1Init(1);
    for (void* const operand : {defData.arg1, defData.arg2}) {
        for (int i = 0; i < 2002; ++i) {
            ASSERT_EQ(single(operand, i), static_cast<float>(-10000.0 + 20000.0 * vtsDraw())) << i;
        }
    }
}

TEST_F(VtsFill, LinesThatAreOffOrFitNoFormArePassedOver) {
    EXPECT_EQ(fill("dSin_HA", "Normal:\n"
                              "  Work = [ 0.1 ; 10.0 ] // old\n"
                              "  Work = [ 0.1 ; 10.0 ] !\n"
                              "  Special: a = [ 1 ; 2 ]\n"
                              "  Int_ep = [ 1 ; 2 ]\n"
                              "  Tight = [1;2]\n"
                              "  Half = [ 1 ;\n"
                              "  Empty =\n"
                              "  Good = [ 3.0 ; 3.0 ] * 0.1"),
              1);
    EXPECT_STREQ(defData.valuesName, "Good");
    EXPECT_STREQ(defData.valuesType, "Special");
    EXPECT_EQ(defData.valuesCount, 1);
    EXPECT_EQ(dual(defData.arg1, 999), 3.0);
    setBlock("dSin_HA\n  Last = [ 1 ; 2 ]"); // no newline: no line
    EXPECT_EQ(vtsFillData(0), 0);
}

TEST_F(VtsFill, FormsThatFitARow) {
    EXPECT_EQ(fill("dSin_HA", "A = for X from -700.0 to 700.0 num 400"), 1);
    EXPECT_EQ(iBrngMCG31m1(), 1U); // a sweep fills nothing
    std::vector<std::tuple<char const*, char const*, int>> const cases = {
        {"zSin_HA", "A = for X from 0 to 1", 0},
        {"dSin_HA", "A = { 1 }", 1},
        {"zSin_HA", "A = [ 0.0 ] # [ 1 ; 1 ]", 1}, // the second half alone counts
        {"zSin_HA", "A = [ 0 ; 1 ] # [ 1 ]", 0},
        {"dPow_HA", "A = 1", 0}, // one operand is missing
        {"sDiv_HA", "A = PONE", 0},
        {"sLinearFrac_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ]", 0},
        {"sLinearFrac_HA", "A = 1 & 2", 0},
        {"sLinearFrac_HA", "A = PONE & PONE -> PONE", 0}};
    for (auto const& [tag, line, verdict] : cases) {
        EXPECT_EQ(fill(tag, line), verdict) << tag << " " << line;
    }
}

TEST_F(VtsFill, WeightAndDetailsGiveTheCount) {
    std::vector<std::tuple<float, char const*, int>> const cases = {
        {5.0F, "A = [ 1 ; 2 ] * 2.0", 10010},
        {1.0F, "A = [ 1 ; 2 ]", 1001},
        {0.001F, "A = [ 1 ; 2 ] * 0.25", 1001},  // 0: as it was
        {9000.0F, "A = [ 1 ; 2 ] * 1000", 1001}, // above the limit
        {1.0F, "A = [ 1 ; 2 ] * 0.1", 1000}};
    for (auto const& [details, line, n] : cases) {
        defParam.details = details;
        EXPECT_EQ(fill("sSin", line), 1);
        EXPECT_EQ(defData.n, n) << details;
        EXPECT_EQ(defData.requested, n == 1000 ? 100 : n) << details;
    }
}

TEST_F(VtsFill, ComplexIntervalsFillHalfByHalf) {
    ASSERT_EQ(fill("cDiv_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ] # [ 3 ; 3 ] & [ 4 ; 4 ]"), 1);
    EXPECT_THAT(pair(defData.arg1, 0), testing::Pair(1.0F, 3.0F));
    EXPECT_THAT(pair(defData.arg2, 1000), testing::Pair(2.0F, 4.0F));
    // Without "#" both halves are drawn from the same text.
    ASSERT_EQ(fill("zSin_HA", "A = [ 0.0 ; 1.0 ]"), 1);
    EXPECT_EQ(dual(defData.arg1, 0), draws[0]);
    EXPECT_EQ(dual(defData.arg1, 2), draws[1]);
    // A real source with a complex result: the imaginary text's fill stands.
    ASSERT_EQ(fill("cCIS_HA", "A = [ 1 ; 1 ] # [ 3 ; 3 ]"), 1);
    EXPECT_THAT(pair(defData.arg1, 0), testing::Pair(3.0F, 3.0F));
}

TEST_F(VtsFill, FixedLinesAndScalarParameters) {
    ASSERT_EQ(fill("dPow_HA", "A = 0x41153ef879f0f3e3 & -2.5 * 0.1"), 1);
    EXPECT_EQ(std::bit_cast<uint64_t>(dual(defData.arg1, 999)), 0x41153ef879f0f3e3U);
    EXPECT_EQ(dual(defData.arg2, 0), -2.5);
    ASSERT_EQ(fill("cSin_HA", "A = 1 # 0x40000000"), 1);
    EXPECT_THAT(pair(defData.arg1, 0), testing::Pair(1.0F, 2.0F));
    ASSERT_EQ(fill("sLinearFrac_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ] & [ 3 ; 3 ] & [ 4 ; 4 ] & "
                                     "[ 5 ; 5 ] & [ 6 ; 6 ]"),
              1);
    EXPECT_EQ(single(defData.arg2, 7), 2.0F);
    EXPECT_EQ(single(defData.par1, 0), 3.0F);
    EXPECT_EQ(single(defData.par4, 0), 6.0F);
}

TEST_F(VtsFill, SpecialLinesGiveNamesCodesAndValues) {
    ASSERT_EQ(fill("sDiv_HA", "A = PONE & NZERO -> NINF ( SING / ZERODIVIDE ) * 0.1\n"
                              "B = PTWO & PONE -> PTWO * 0.1\n"
                              "C = [ 1 ; 2 ] & [ 1 ; 2 ]"),
              1);
    EXPECT_STREQ(defData.srcName1, "PONE");
    EXPECT_STREQ(defData.srcName2, "NZERO");
    EXPECT_STREQ(defData.resName1, "NINF");
    EXPECT_STREQ(defData.errName, "SING");
    EXPECT_STREQ(defData.excName, "ZERODIVIDE");
    EXPECT_EQ(defData.errCodes[999], 18);
    EXPECT_EQ(single(defData.arg1, 999), 1.0F);
    EXPECT_TRUE(std::signbit(single(defData.arg2, 0)));
    ASSERT_EQ(vtsFillData(0), 1); // a line without a clause expects no error
    EXPECT_STREQ(defData.errName, "");
    EXPECT_EQ(defData.errCodes[0], 0);
    ASSERT_EQ(vtsFillData(0), 1);
    EXPECT_STREQ(defData.resName1, ""); // intervals expect nothing
    ASSERT_EQ(fill("dModf", "A = PONEHALF -> PONE & PHALF ( 0 / INEXACT )"), 1);
    EXPECT_STREQ(defData.resName2, "PHALF");
    EXPECT_STREQ(defData.excName, "INEXACT");
}

TEST_F(VtsFill, ComplexSpecialLines) {
    ASSERT_EQ(fill("zSin_HA", "A = NINF_iPONE -> QNAN_iQNAN ( ERRDOM / INVALID ) * 0.1"), 1);
    EXPECT_EQ(dual(defData.arg1, 1998), -HUGE_VAL);
    EXPECT_EQ(dual(defData.arg1, 1999), 1.0);
    EXPECT_STREQ(defData.srcName1Imag, "NINF_iPONE");
    EXPECT_EQ(defData.errCodes[0], 19);
    // In two halves each has names of its own, and a name of one half gives zeros.
    ASSERT_EQ(fill("cSin_HA", "A = LTZERO -> QNAN # SNAN -> PONE ( 0 / INVALID ) * 0.1"), 1);
    EXPECT_STREQ(defData.srcName1, "LTZERO");
    EXPECT_STREQ(defData.srcName1Imag, "SNAN");
    EXPECT_STREQ(defData.resName1, "QNAN");
    EXPECT_STREQ(defData.resName1Imag, "PONE");
    EXPECT_EQ(single(defData.arg1, 0), 0.0F);
    EXPECT_EQ(printed, "");
}
