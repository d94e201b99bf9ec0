// vtslookup_test.cpp - type codes and flavours by tag, and the include and exclude lists.
#include "vtsfixture.h"

using VtsLookup = VtsFixture;

TEST_F(VtsLookup, TagIsTheFirstWordOfTheBlock) {
    setBlock("  \"sFoo_LA*  more\nNormal:\n");
    char tag[vtsNameSize];
    vtsGetFuncName(0, tag);
    EXPECT_STREQ(tag, "sFoo_LA");
    EXPECT_EQ(vtsFindFunc("sFoo_LA"), 0);
    EXPECT_EQ(vtsFindFunc("sFoo_L"), -1);
    EXPECT_EQ(vtsFindFunc("sFoo_LA2"), -1);
    std::string const longName(200, 'x');
    setBlock(longName.c_str());
    vtsGetFuncName(0, tag);
    EXPECT_EQ(std::string(tag), longName.substr(0, vtsNameSize - 1));
}

TEST_F(VtsLookup, FirstRowOfATagWinsWithinTheRowsThatCount) {
    defFunc[5].text = defFunc[7].text;
    EXPECT_EQ(vtsFindFunc("sCosh_HA"), 5);
    defParam.numFuncs = 5;
    EXPECT_EQ(vtsFindFunc("sCosh_HA"), -1);
}

TEST_F(VtsLookup, TypeCodeComesFromTheTagAlone) {
    struct {
        char const* tag;
        int code;
    } const cases[] = {{"sMulByConj", 1 + 0x210},
                       {"sPow2o3", 1 + 0x110},
                       {"dPow3o2_LA", 2 + 0x110},
                       {"sSinCos", 1 + 0x120},
                       {"dModfMul", 2 + 0x120},
                       {"cAbs_HA", 9 + 0x110},
                       {"zArg", 10 + 0x110},
                       {"cCIS_HA", 5 + 0x110},
                       {"sLinearFrac", 1 + 0x2010},
                       {"sPackI", 1 + 0x110110},
                       {"dUnpackM", 2 + 0x220110},
                       {"zUnpackV", 14 + 0x420110},
                       {"qSin", -1},
                       {"", -1}};
    for (auto const& [tag, code] : cases) {
        setBlock(tag);
        EXPECT_EQ(vtsGetFuncType(0), code) << tag;
    }
    setBlock("qSin");
    EXPECT_EQ(vtsGetFuncShape(0), 0xfff0); // which no branch accepts
}

TEST_F(VtsLookup, FlavourOfARow) {
    struct {
        char const* tag;
        int index;
    } const cases[] = {{"sFloor", 0},  {"sSin_HA", 0}, {"zSin_LA", 1}, {"dSin_EP", 2},
                       {"zSin_EP", 2}, {"sSin_EP", 3}, {"cSin_EP", 3}};
    for (auto const& [tag, index] : cases) {
        setBlock(tag);
        EXPECT_EQ(vtsGetFuncFlavorIndex(0), index) << tag;
    }
    EXPECT_EXIT(vtsGetFlavourIndexByName("XY"), testing::ExitedWithCode(255), "");
}

TEST_F(VtsLookup, ListsCompareBySubstringAndExclusionWins) {
    struct {
        char const* text;
        char const* include;
        char const* exclude;
        int verdict;
    } const cases[] = {{"Work", "", "", 1},
                       {"", "", "", 1},
                       {"Work", "", " _ep", 1},
                       {"Int81_ep_fd", "", " _ep", 0},
                       {"Int81_ep_fd", "_fd", " _ep", 0},
                       {"Work2", "Int  or", "", 1},
                       {"Work2", "Int", "", 0},
                       {"Work2", "  ", "", 1}, // blanks are no word
                       {"Work", "Work2", "", 0},
                       {"", "a", "", 0}};
    for (auto const& row : cases) {
        EXPECT_EQ(vtsIsStringIncluded(row.text, row.include, row.exclude), row.verdict)
            << row.text << "|" << row.include << "|" << row.exclude;
    }
}

TEST_F(VtsLookup, FunctionFilter) {
    int const row = vtsFindFunc("cAbs_EP");
    defParam.precision = 9;
    EXPECT_EQ(vtsIsFuncIncluded(row), 1);
    defParam.precision = 13;
    EXPECT_EQ(vtsIsFuncIncluded(row), 0);
    defParam.precision = 0;
    defParam.flavourOn[3] = 0;
    EXPECT_EQ(vtsIsFuncIncluded(row), 0);
}
