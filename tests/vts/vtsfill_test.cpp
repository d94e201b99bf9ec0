// vtsfill_test.cpp - operand arrays: their layout, and the fills that a block's lines ask for.
#include <cmath>
#include <cstdint>
#include <sstream>
#include <sys/resource.h>
#include <tuple>
#include <vector>

#include "psbase/psexception.h"
#include "support/storedtext.h"
#include "vts/vtslines.h"
#include "vtsfixture.h"

namespace {

class VtsFill : public VtsFixture {
protected:
    VtsFill() { vtsAllocData(); }

    // First and last elements of an operand array that a row of this type uses.
    static void tell(std::ostream& out, char const* name, void* array, int type, bool scalar) {
        int const width = !scalar && (type & vtsComplexSource) != 0 ? 2 : 1;
        int const last = scalar ? 0 : width * defData.n - 1;
        out << " " << name;
        for (int i : {0, 1, last - 1, last}) {
            if (i >= 0 && i <= last) {
                double const value = (type & vtsSingle) != 0 ? static_cast<float*>(array)[i]
                                                             : static_cast<double*>(array)[i];
                out << " " << (std::isnan(value) ? "nan" : testing::PrintToString(value));
            }
        }
    }

    // What every line of a block leaves, with a generator that starts at 1.
    std::string fills(std::string const& tag, std::string const& lines) {
        std::ostringstream out;
        vtsDeAllocData();
        defData = vtsData();
        vtsAllocData();
        memset(defData.arg1, 0, 16 * static_cast<size_t>(defData.n));
        setBlock(tag + "\n" + lines + "\n");
        MCG31m1Init(1);
        out << tag << " | " << lines << "\n";
        while (vtsFillData(0) == 1) {
            int const type = vtsGetFuncType(0);
            int const shape = vtsGetFuncShape(0);
            out << "  " << defData.valuesType << " " << defData.valuesName << " n " << defData.n
                << " of " << defData.requested << " assign " << defData.assignType << " "
                << defData.assignTypeImag << " names";
            for (char const* name :
                 {defData.srcName1, defData.srcName1Imag, defData.srcName2, defData.srcName2Imag,
                  defData.resName1, defData.resName1Imag, defData.resName2, defData.resName2Imag,
                  defData.errName, defData.excName}) {
                out << " " << (*name != '\0' ? name : "-");
            }
            out << " code " << defData.errCodes[0] << " " << defData.errCodes[defData.n - 1];
            if (defData.assignType <= vtsAssignSpecial) {
                tell(out, "arg1", defData.arg1, type, false);
                if (shape == vtsShapeBinary || shape == vtsShapeLinearFrac) {
                    tell(out, "arg2", defData.arg2, type, false);
                }
            }
            if (shape == vtsShapeLinearFrac) {
                tell(out, "par", defData.par1, type, true);
                tell(out, "", defData.par2, type, true);
                tell(out, "", defData.par3, type, true);
                tell(out, "", defData.par4, type, true);
            }
            out << "\n";
        }
        out << "  " << defData.valuesCount << " lines, then " << iBrngMCG31m1() << "\n";
        return out.str();
    }
};

uintptr_t address(void* pointer) { return reinterpret_cast<uintptr_t>(pointer); }

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
        void* const arguments[] = {defData.arg1, defData.arg2, defData.arg3, defData.arg4};
        void* const parameters[] = {defData.par1, defData.par2, defData.par3, defData.par4};
        for (size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(address(arguments[i]) - address(arguments[0]), i * (width + 512)) << n;
            EXPECT_EQ(address(parameters[i]) - address(parameters[0]), i * (width + 512)) << n;
        }
        EXPECT_EQ(defData.errCodes[n + 1023], 0);
    }
    vtsDeAllocData();
    for (void* gone : {defData.block1, defData.arg1, defData.arg2, defData.arg3, defData.arg4,
                       defData.block2, defData.par1, defData.par2, defData.par3, defData.par4}) {
        EXPECT_EQ(gone, nullptr);
    }
    EXPECT_EQ(defData.auxCodes, nullptr);
    EXPECT_EQ(defData.errCodes, nullptr);
}

TEST_F(VtsFill, WorkLineGivesThePool) {
    int const row = vtsFindFunc("sHypot_HA");
    vtsBeginFillData(row);
    ASSERT_EQ(vtsFillData(row), 1);
    // The second operand goes on where the first one ended.
    MCG31m1Init(1);
    for (void* const operand : {defData.arg1, defData.arg2}) {
        for (int i = 0; i < 2002; ++i) {
            ASSERT_EQ(static_cast<float*>(operand)[i],
                      static_cast<float>(-10000.0 + 20000.0 * vtsDraw()))
                << i;
        }
    }
}

TEST_F(VtsFill, EveryFormOfLine) {
    std::string text;
    std::pair<char const*, char const*> const cases[] = {
        // Lines that are off or fit no form are passed over.
        {"dSin_HA", "Normal:\n  Work = [ 0.1 ; 10.0 ] // old\n  Work = [ 0.1 ; 10.0 ] !\n"
                    "  Special: a = [ 1 ; 2 ]\n  Int_ep = [ 1 ; 2 ]\n  Tight = [1;2]\n"
                    "  Half = [ 1 ;\n  Empty =\n  Good = [ 3.0 ; 3.0 ] * 0.1"},
        {"dSin_HA", "A = for X from -700.0 to 700.0 num 400"}, // a sweep fills nothing
        {"zSin_HA", "A = for X from 0 to 1"},
        {"dSin_HA", "A = { 1 }"},
        {"dSin_HA", "A = ./file"},
        {"cSin_HA", "A = { 1 } # ./file"},
        {"zSin_HA", "A = [ 0.0 ] # [ 1 ; 1 ]"}, // the second half alone counts
        {"zSin_HA", "A = [ 0 ; 1 ] # [ 1 ]"},
        {"dPow_HA", "A = 1"}, // one operand is missing
        {"sDiv_HA", "A = PONE"},
        {"sLinearFrac_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ]\nA = 1 & 2\nA = PONE & PONE -> PONE"},
        {"sSin", "A = [ 1 ; 2 ] * 2.0\nA = [ 1 ; 2 ]\nA = [ 1 ; 2 ] * 0.1\nA = [ 1 ; 2 ] * 0.0001"},
        {"cDiv_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ] # [ 3 ; 3 ] & [ 4 ; 4 ]"},
        {"zSin_HA", "A = [ 0.0 ; 1.0 ]"}, // without "#" both halves are drawn from the same text
        {"cSin_HA", "A = [ 0.0 ; 1.0 ]"},
        {"cCIS_HA", "A = [ 1 ; 1 ] # [ 3 ; 3 ]"}, // a real source: the second fill stands
        {"dPow_HA", "A = 0x41153ef879f0f3e3 & -2.5 * 0.1"},
        {"sPow_HA", "A = 0x41153ef8 & -2.5 * 0.1"},
        {"cSin_HA", "A = 1 # 0x40000000"},
        {"zMul_HA", "A = 1 & 2 # 3 & 4"},
        {"sLinearFrac_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ] & [ 3 ; 3 ] & [ 4 ; 4 ] & [ 5 ; 5 ] & [ 6 ; "
                           "6 ]"},
        {"dLinearFrac_HA", "A = [ 1 ; 1 ] & [ 2 ; 2 ] & [ 3 ; 3 ] & [ 4 ; 4 ] & [ 5 ; 5 ] & [ 6 ; "
                           "9 ]"},
        {"sDiv_HA", "A = PONE & NZERO -> NINF ( SING / ZERODIVIDE ) * 0.1\n"
                    "B = PTWO & PONE -> PTWO * 0.1\nC = [ 1 ; 2 ] & [ 1 ; 2 ]"},
        {"dDiv_HA", "A = PONE & NZERO -> NINF ( SING / ZERODIVIDE )\nB = 1 & 2"},
        {"dModf", "A = PONEHALF -> PONE & PHALF ( 0 / INEXACT )"},
        {"zSin_HA", "A = NINF_iPONE -> QNAN_iQNAN ( ERRDOM / INVALID ) * 0.1"},
        // In two halves each has names of its own, and a name of one half gives zeros.
        {"cSin_HA", "A = LTZERO -> QNAN # SNAN -> PONE ( 0 / INVALID ) * 0.1"},
        {"cMul_HA", "A = PONE_iPTWO & PTWO_iPONE -> ZERO"}};
    for (auto const& [tag, lines] : cases) {
        text += fills(tag, lines);
    }
    for (float const details : {5.0F, 0.001F, 9000.0F}) { // of the last one the count is no more
        defParam.details = details;
        text += fills("sSin", "A = [ 1 ; 2 ] * 2.0");
    }
    EXPECT_TRUE(matchesStored("vts/fill", text + printed));
    setBlock("dSin_HA\n  Last = [ 1 ; 2 ]"); // no newline: no line
    EXPECT_EQ(vtsFillData(0), 0);
}

#ifndef __SANITIZE_ADDRESS__ // its allocator ends the process
TEST_F(VtsFill, WithoutMemoryIsAnException) {
    rlimit old = {};
    getrlimit(RLIMIT_AS, &old);
    rlimit const small = {1 << 29, old.rlim_max};
    defParam.details = 4500.0F;
    setrlimit(RLIMIT_AS, &small);
    try {
        fills("s", "A = [ 1 ; 2 ] * 2.0");
        ADD_FAILURE();
    } catch (psException& exception) {
        EXPECT_STREQ(exception.info(), "no memory for 9009000 values");
    }
    EXPECT_EQ(defData.arg1, nullptr);
    EXPECT_THROW(psString().allocate(1 << 30), psException);
    setrlimit(RLIMIT_AS, &old);
}
#endif
