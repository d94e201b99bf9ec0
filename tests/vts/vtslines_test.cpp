// vtslines_test.cpp - the block reader and the parts of its lines.
#include "vts/vtslines.h"

#include <cstdlib>
#include <sstream>
#include <string>

#include "support/storedtext.h"
#include "vtsfixture.h"

using VtsLines = VtsFixture;

TEST_F(VtsLines, ReaderGivesLinesPiecesAndTheRest) {
    setBlock("ab\n\nabcdefg\nrest");
    char line[8];
    auto const next = [&line](int size) {
        int const result = GetMetrixLine(0, line, size);
        return std::to_string(result) + line;
    };
    EXPECT_EQ(next(8), "0ab");
    EXPECT_EQ(next(8), "0");
    EXPECT_EQ(next(8), "0abcdefg"); // as long as there is room: the newline is still ahead
    EXPECT_EQ(next(8), "0");
    EXPECT_EQ(next(8), "-1rest");
    EXPECT_EQ(next(8), "-1");
    RewindMetrix(0);
    EXPECT_EQ(next(2), "0a");
    EXPECT_EQ(next(2), "0b");
    defFunc[0].text = nullptr;
    EXPECT_EQ(GetMetrixLine(0, line, 8), -1);
    defFunc[0].metrix = static_cast<char*>(malloc(8));
    vtsClearMetrixes();
    EXPECT_EQ(defFunc[0].metrix, nullptr);
}

// A line for all that each line tells: kind, weight, name, section, source and imaginary part.
TEST_F(VtsLines, PartsOfLines) {
    std::ostringstream text;
    std::istringstream lines("Work = [ 0.0001 ; 10000.0 ] * 2.0|"
                             "Int81_fd = 0x41153ef879f0f3e3 & 0x409a840000000000 * 0.1|"
                             "A =\tPINF -> PINF|A = PINF -> PINF * 0.1|A = { 1 }|A = ./file|"
                             "dSinhPerf = for X from -700.0 to 700.0 num 400|for X from 1 to 2|"
                             "A|A =  \t|  Work2= [ 1 ; 2 ]|\n = 1|Special:  x = y| Normal :|"
                             "A = [ 1 ; 2 ] # [ 3 ; 4 ] # 5|A = 1 * 0.1 -> 2|A = -1|A = 1|"
                             "A = 1 *2.0|A = 1 * 0.25|A = 1 * 0|A = 1 * -2|A = 1 * 1000|"
                             "A = 1 * 1001|A = 1 * many|A = 1 * nan");
    for (std::string line; std::getline(lines, line, '|');) {
        text << line << " is " << vtsGetValuesAssignType(line.c_str()) << " by "
             << vtsGetValuesDetails(line.c_str());
        for (auto const part :
             {vtsGetValuesName, vtsGetValuesType, vtsGetValuesData, vtsGetImaginaryValues}) {
            char told[vtsLineSize] = "?";
            part(line.c_str(), told);
            text << " {" << told << "}";
        }
        text << "\n";
    }
    EXPECT_TRUE(matchesStored("vts/lines", text.str()));
}

TEST_F(VtsLines, NumbersAndBitPatterns) {
    EXPECT_EQ(vtssGetValue("1.0"), 0x3f800000U);
    EXPECT_EQ(vtssGetValue("+1.0e+19"), 0x5f0ac723U);
    EXPECT_EQ(vtssGetValue("0X7fffffff"), 0x7fffffffU);
    EXPECT_EQ(vtssGetValue("0x41153ef879f0f3e3"), 0x79f0f3e3U);
    EXPECT_EQ(vtssGetValue("-0x10"), 0xc1800000U); // no pattern: a negative number
    EXPECT_EQ(vtsdGetValue("0x3FD5555555555555"), 0x3fd5555555555555U);
    EXPECT_EQ(vtsdGetValue("-2"), 0xc000000000000000U);
    EXPECT_EQ(vtsdGetValue(""), 0U);
}
