// vtslines_test.cpp - the block reader and the parts of its lines.
#include "vts/vtslines.h"

#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

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

TEST_F(VtsLines, NameSectionAndSource) {
    std::vector<std::tuple<void (*)(char const*, char*), char const*, char const*>> const cases = {
        {vtsGetValuesName, "  Work2= [ 1 ; 2 ]", "Work2"},
        {vtsGetValuesName, "\n = 1", ""},
        {vtsGetValuesType, "Special:  x = y", "Special"},
        {vtsGetValuesType, " Normal :", "Normal"},
        {vtsGetValuesData, "A = PINF -> PINF * 0.1", " PINF "},
        {vtsGetValuesData, "A = 1 * 0.1 -> 2", " 1 "},
        {vtsGetValuesData, "A", ""},
        {vtsGetImaginaryValues, "A = [ 1 ; 2 ] # [ 3 ; 4 ] # 5", "=  [ 3 ; 4 ] # 5"},
        {vtsGetImaginaryValues, "A = 1", "A = 1"}};
    for (auto const& [part, line, wanted] : cases) {
        char text[vtsLineSize];
        part(line, text);
        EXPECT_STREQ(text, wanted) << line;
    }
}

TEST_F(VtsLines, AssignKind) {
    std::vector<std::tuple<char const*, int>> const cases = {
        {"Work = [ 0.0001 ; 10000.0 ] * 2.0", 1},
        {"Int81_fd = 0x41153ef879f0f3e3 & 0x409a840000000000 * 0.1", 2},
        {"A = -1", 2},
        {"A =\tPINF -> PINF", 3},
        {"A = { 1 }", 4},
        {"A = ./file", 5},
        {"dSinhPerf = for X from -700.0 to 700.0 num 400", 6},
        {"A", -1},
        {"A =  \t", -1},
        {"for X from 1 to 2", -1}};
    for (auto const& [line, kind] : cases) {
        EXPECT_EQ(vtsGetValuesAssignType(line), kind) << line;
    }
}

TEST_F(VtsLines, Weight) {
    std::vector<std::tuple<char const*, float>> const cases = {
        {"A = 1 * 0.25", 0.25F}, {"A = 1 *2.0", 2.0F},   {"A = 1", 1.0F},
        {"A = 1 * 0", 1.0F},     {"A = 1 * -2", 1.0F},   {"A = 1 * 1000", 1000.0F},
        {"A = 1 * 1001", 1.0F},  {"A = 1 * many", 1.0F}, {"A = 1 * nan", 1.0F}};
    for (auto const& [line, weight] : cases) {
        EXPECT_EQ(vtsGetValuesDetails(line), weight) << line;
    }
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
