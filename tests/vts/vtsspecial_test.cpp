// vtsspecial_test.cpp - the dictionary of special values: bits, classes, draws, order of tests.
#include "vts/vtsspecial.h"

#include <bit>
#include <cmath>
#include <sstream>
#include <string>

#include "support/storedtext.h"
#include "vtsfixture.h"

namespace {

using VtsSpecial = VtsFixture;

// Bits of a name from a generator that starts at the seed, and the number that it gives next: a
// class takes one more than a constant.
template <typename Lookup>
void tell(std::ostream& out, char const* name, unsigned seed, Lookup lookup) {
    MCG31m1Init(seed);
    auto const bits = lookup(name);
    out << " " << std::hex << bits << " then " << std::dec << iBrngMCG31m1();
}

} // namespace

TEST_F(VtsSpecial, EveryName) {
    struct {
        std::vector<char const*> fixes;
        std::istringstream names;
    } groups[] = {
        {{"", "P", "N"},
         std::istringstream("ZERO TWO INF ONE ONEHALF HALF THREEPIO4 PIO4 PIO2 PI THREEPIO4OLN10 "
                            "PIO4OLN10 PIO2OLN10 PIOLN10 ODDINT EVENINT NOTINT")},
        {{"P", "N"},
         std::istringstream("BIG SMALL DENORM NEARMAX2 NEARMAX NEARMIN2 NEARMIN FINITE")},
        {{""},
         std::istringstream(
             "EXPGRUNDERFLOW EXPUNDERFLOW EXPOVERFLOW SINHOVERFLOW SINHNOVERFLOW "
             "EXPGRUNDERFLOW_M_ULP EXPUNDERFLOW_M_ULP EXPOVERFLOW_M_ULP SINHOVERFLOW_M_ULP "
             "SINHNOVERFLOW_M_ULP LTEXPUNDERFLOW GTEXPOVERFLOW GTSINHOVERFLOW LTSINHNOVERFLOW "
             "SNAN QNAN NAN NONZERO NONINT LTZERO GTZERO ABSGTONE ABSLTONE LTONE ANY "
             "GTERFCUNDERFLOW CPOWOVF1A CPOWOVF1B CPOWOVF1C CPOWOVF1D CPOWOVF2A CPOWOVF2B "
             "CPOWOVF2C CPOWOVF2D xxGTZEROxx GTZER xPONE xODDINT")}};
    std::ostringstream text;
    strcpy(defData.valuesName, "Line");
    for (auto& [fixes, names] : groups) {
        for (std::string base; names >> base;) {
            for (char const* fix : fixes) {
                std::string const name = fix + base;
                text << name;
                for (unsigned const seed : {1U, 12345U}) {
                    tell(text, name.c_str(), seed, vtssGetSpecialValue);
                    tell(text, name.c_str(), seed, vtsdGetSpecialValue);
                }
                text << "\n" << printed; // of an unknown name
                printed.clear();
            }
        }
    }
    // In two halves, real first; a name without halves gives zeros, without lookup or warning.
    for (char const* name : {"PINF_iQNAN", "ANY_iANY", "ZERO", "PINF", "NEARZERO"}) {
        unsigned single[5] = {9, 9, 9, 9, 9}; // two pairs, and one beyond
        unsigned long long dual[5] = {9, 9, 9, 9, 9};
        MCG31m1Init(1);
        vtscFillSpecial(reinterpret_cast<float*>(single), 2, name, 1);
        vtszFillSpecial(reinterpret_cast<double*>(dual), 2, name, 2);
        text << name << std::hex;
        for (int i = 0; i < 5; ++i) {
            text << " " << single[i] << " " << dual[i];
        }
        text << " then " << std::dec << iBrngMCG31m1() << "\n";
    }
    for (char const* word : {"ERRDOM", "SING", "OVERFLOW", "UNDERFLOW", "BADSIZE", "BADMEM",
                             "INEXACT", "ZERODIVIDE", "DENORMAL", "INVALID", "0", ""}) {
        text << word << " " << vtssGetErrCode(word) << " " << vtssGetExcCode(word) << "\n";
    }
    EXPECT_TRUE(matchesStored("vts/special", text.str() + printed));
}

TEST_F(VtsSpecial, FillsLookEachElementUp) {
    float singles[4] = {9, 9, 9, 9};
    double doubles[4] = {9, 9, 9, 9};
    vtssFillSpecial(singles, 3, "GTZERO");
    vtsdFillSpecial(doubles, 3, "GTZERO");
    EXPECT_NE(singles[0], singles[1]);
    EXPECT_NE(doubles[0], doubles[1]);
    EXPECT_TRUE(singles[3] == 9.0F && doubles[3] == 9.0);
}
