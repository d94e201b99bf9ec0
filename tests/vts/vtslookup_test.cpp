// vtslookup_test.cpp - type codes and flavours by tag, and the include and exclude lists.
#include <string>
#include <tuple>
#include <unistd.h>
#include <vector>

#include "vtsfixture.h"

using VtsLookup = VtsFixture;

TEST_F(VtsLookup, TagIsTheFirstWordOfTheBlock) {
    setBlock("  \"sFoo_LA*  more\nNormal:\n");
    char tag[vtsNameSize];
    vtsGetFuncName(0, tag);
    EXPECT_STREQ(tag, "sFoo_LA");
    EXPECT_EQ(vtsFindFunc("sFoo_LA"), 0);
    EXPECT_EQ(vtsFindFunc("sFoo_L"), -1);
    setBlock(std::string(200, 'x'));
    vtsGetFuncName(0, tag);
    EXPECT_EQ(tag, std::string(vtsNameSize - 1, 'x'));
    // The first row of a tag wins, within the rows that count.
    defFunc[5].text = defFunc[7].text;
    EXPECT_EQ(vtsFindFunc("sCosh_HA"), 5);
    defParam.numFuncs = 5;
    EXPECT_EQ(vtsFindFunc("sCosh_HA"), -1);
}

TEST_F(VtsLookup, TypeCodeAndFlavourComeFromTheTagAlone) {
    std::vector<std::tuple<char const*, int, int>> const cases = {
        {"sMulByConj", 1 + 0x210, 0}, {"sPow2o3", 1 + 0x110, 0},     {"dPow3o2_LA", 2 + 0x110, 1},
        {"sSinCos_EP", 1 + 0x120, 3}, {"dModfMul", 2 + 0x120, 0},    {"cAbs_HA", 9 + 0x110, 0},
        {"zArg_EP", 10 + 0x110, 2},   {"cCIS_EP", 5 + 0x110, 3},     {"sLinearFrac", 1 + 0x2010, 0},
        {"sPackI", 1 + 0x110110, 0},  {"dUnpackM", 2 + 0x220110, 0}, {"zUnpackV", 14 + 0x420110, 0},
        {"dSin_EP", 2 + 0x110, 2}};
    for (auto const& [tag, code, flavour] : cases) {
        setBlock(tag);
        EXPECT_EQ(vtsGetFuncType(0), code) << tag;
        EXPECT_EQ(vtsGetFuncFlavorIndex(0), flavour) << tag;
    }
    auto const ask = [] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        vtsGetFlavourIndexByName("XY");
    };
    EXPECT_EXIT(ask(), testing::ExitedWithCode(255), "^flavour : XY doesn't exists\n$");
    setBlock("");
    EXPECT_EQ(vtsGetFuncType(0), -1);
    setBlock("qSin");
    EXPECT_EQ(vtsGetFuncType(0), -1);
    EXPECT_EQ(vtsGetFuncShape(0), 0xfff0); // which no branch accepts
}

TEST_F(VtsLookup, ListsCompareBySubstringAndExclusionWins) {
    std::vector<std::tuple<char const*, char const*, char const*, int>> const cases = {
        {"Work", "", "", 1},
        {"Work", "", " _ep", 1},
        {"Int81_ep_fd", "", " _ep", 0},
        {"Int81_ep_fd", "_fd", " _ep", 0},
        {"Work2", "Int  or", "", 1},
        {"Work2", "Int", "", 0},
        {"Work2", "  ", "", 1}, // blanks are no word
        {"", "a", "", 0}};
    for (auto const& [text, include, exclude, verdict] : cases) {
        EXPECT_EQ(vtsIsStringIncluded(text, include, exclude), verdict)
            << text << "|" << include << "|" << exclude;
    }
}

TEST_F(VtsLookup, FunctionFilter) {
    int const row = vtsFindFunc("cAbs_EP");
    for (auto const& [precision, flavourOn, verdict] :
         {std::tuple(9, 1, 1), {13, 1, 0}, {0, 0, 0}}) {
        defParam.precision = precision;
        defParam.flavourOn[3] = flavourOn;
        EXPECT_EQ(vtsIsFuncIncluded(row), verdict) << precision;
    }
}
