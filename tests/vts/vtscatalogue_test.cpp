// vtscatalogue_test.cpp - names, order, type codes, functions and Work intervals of the rows,
// against tables of their own.
#include <dlfcn.h>

#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "vts/vtspowx.h"
#include "vtsfixture.h"

namespace {

std::vector<std::string> split(std::string const& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

constexpr char const* wide = "[ -10000.0 ; 10000.0 ]";
constexpr char const* quarter = "[ 0.01 ; 20.00 ]";
std::string const wide2 = std::string(wide) + " & " + wide;
std::string const quarter2 = std::string(quarter) + " & " + quarter;

// Families, flavours ("-" for none) and type letters that have a Work source.
struct WorkRow {
    char const* families;
    char const* flavours;
    char const* letters;
    std::string source;
};
constexpr char const* all = "HA LA EP";
WorkRow const workRows[] = {
    {"Inv", all, "s d", "[ 0.0001 ; 10000.0 ]"},
    {"Div", all, "s d", "[ 0.0001 ; 10000.0 ] & [ 0.0001 ; 10000.0 ]"},
    {"Sqrt", all, "s d", "[ 0.0 ; 10000.0 ]"},
    {"InvSqrt InvCbrt Pow3o2 Pow2o3", all, "s d", "[ 0.1 ; 10000.0 ]"},
    {"Ln Log10", "HA LA", "s d", "[ 0.1 ; 10000.0 ]"},
    {"Ln Log10", "EP", "s d", "[ 1.2 ; 10000.0 ]"},
    {"Cbrt", all, "s d", wide},
    {"Ceil Floor Frac Modf NearbyInt Rint Round Trunc Abs Sqr", "-", "s d", wide},
    {"Cos SinCos", all, "s d", "[ -10000 ; 10000.0 ]"},
    {"Sin", "HA LA", "s d", "[ -10000 ; 10000.0 ]"},
    {"Sin", "EP", "d", "[ -10000 ; 10000.0 ]"},
    {"Sin", "EP", "s", "[ -1000 ; 1000.0 ]"},
    {"Tan", all, "s d", "[ -1000 ; 1000.0 ]"},
    {"Pow Powx", all, "s", "[ 0.1 ; 10.0 ] & [ 0.1 ; 10.0 ]"},
    {"Pow", all, "d", "[ 5.0 ; 100.0 ] & [ 5.0 ; 100.0 ]"},
    {"Powx", all, "d", "[ 5.0 ; 100.0 ] & [ 5.0 ; 10.0 ]"},
    {"Exp Cosh Sinh", all, "s", "[ -87.0 ; 87.0 ]"},
    {"Exp", "EP", "d", "[ -87.0 ; 87.0 ]"},
    {"Exp", "HA", "d", "[ -707.0 ; 707.0 ]"},
    {"Exp", "LA", "d", "[ -700.0 ; 707.0 ]"},
    {"Cosh Sinh", all, "d", "[ -675.0 ; 675.0 ]"},
    {"Acos Asin", all, "s d", "[ -1.0 ; +1.0 ]"},
    {"Atan", all, "s d", "[ -5.0 ; +5.0 ]"},
    {"Atan2", all, "s d", "[ -10000 ; +10000 ] & [ -10000 ; +10000 ]"},
    {"Tanh", all, "s", "[ -9.0 ; 9.0 ]"},
    {"Tanh", all, "d", "[ -19.0 ; 19.0 ]"},
    {"Acosh Asinh", all, "s", "[ +4.0 ; +1.0e+19 ]"},
    {"Acosh", all, "d", "[ +1.001 ; +1.0e+154 ]"},
    {"Asinh", all, "d", "[ +0.002 ; +1.0e+154 ]"},
    {"Atanh", all, "s", "[ 0.77 ; 0.99999 ]"},
    {"Atanh", all, "d", "[ 0.005 ; 0.99999 ]"},
    {"Erf", "HA", "s", "[ 1.0 ; 4.0 ]"},
    {"Erf", "LA EP", "s", "[ 0.126 ; 4.0 ]"},
    {"Erf", all, "d", "[ 0.5 ; 5.9 ]"},
    {"Erfc", all, "s", "[ -3.0 ; 9.0 ]"},
    {"Erfc", all, "d", "[ -5.0 ; 25.0 ]"},
    {"ErfInv", all, "s d", "[ -0.99999 ; 0.99999 ]"},
    {"ErfcInv", all, "s d", "[ 0.00001 ; 1.99999 ]"},
    {"CdfNorm", "HA LA", "s", "[ -8.0 ; 5.0 ]"},
    {"CdfNorm", "EP", "s", "[ -3.8 ; 5.0 ]"},
    {"CdfNorm", all, "d", "[ -32.0 ; 8.0 ]"},
    {"CdfNormInv", all, "s d", "[ 0.00001 ; 0.99999 ]"},
    {"Hypot", all, "s d", wide2},
    {"Add Sub Mul", "-", "s d", wide2},
    {"Expm1", all, "s", "[ -70.0 ; 70.0 ]"},
    {"Expm1", all, "d", "[ -500.0 ; 500.0 ]"},
    {"Log1p", all, "s d", "[ 1.0 ; 999.0 ]"},
    {"Cos Sin Tan Cosh Sinh Tanh Acos Asin Atan Acosh Asinh Atanh Exp Ln Log10 Sqrt", all, "c z",
     std::string(quarter) + " # " + quarter},
    {"Abs CIS Arg", all, "c z", std::string(wide) + " # " + wide},
    {"Conj", "-", "c z", std::string(wide) + " # " + wide},
    {"Pow Powx", all, "c z", quarter2 + " # " + quarter2},
    {"Mul Div MulByConj", "HA LA", "c z", wide2 + " # " + wide2},
    {"Add Sub", "-", "c z", wide2 + " # " + wide2},
    {"Mul Div MulByConj", "EP", "c z",
     "[ 1000.0 ; 10000.0 ] & [ 1.0 ; 10.0 ] # [ 1.0 ; 10.0 ] & [ 1.0 ; 10.0 ]"},
};

std::map<std::string, std::string> workByTag() {
    std::map<std::string, std::string> table;
    for (WorkRow const& row : workRows) {
        for (std::string const& letter : split(row.letters)) {
            for (std::string const& family : split(row.families)) {
                for (std::string const& flavour : split(row.flavours)) {
                    table[letter + family + (flavour == "-" ? "" : "_" + flavour)] = row.source;
                }
            }
        }
    }
    return table;
}

std::string tagOf(int row) {
    char tag[vtsNameSize];
    vtsGetFuncName(row, tag);
    return tag;
}

bool isOneOf(std::string const& families, std::string const& family) {
    return (" " + families + " ").find(" " + family + " ") != std::string::npos;
}

// What a tag's library name and type code have to be, by the rules alone.
struct Expected {
    explicit Expected(std::string const& tag) {
        size_t const mark = tag.find('_');
        std::string const family = tag.substr(1, mark == std::string::npos ? mark : mark - 1);
        char const flavour = mark == std::string::npos ? 'H' : tag[mark + 1];
        bool const pairs = tag[0] == 'c' || tag[0] == 'z';
        bool const single = tag[0] == 's' || tag[0] == 'c';
        name = "zols" + family + (single ? "_32f" : "_64f") + (pairs ? "c" : "");
        if (!isOneOf("Ceil Floor Frac Modf NearbyInt Rint Round Trunc", family)) {
            std::string const bits = single ? "112124" : "265053"; // of EP, LA, HA
            name += "_A" + bits.substr(flavour == 'E' ? 0 : flavour == 'L' ? 2 : 4, 2);
        }
        bool const twoSources = isOneOf("Div Pow Powx Hypot Sub Add Mul MulByConj Atan2", family);
        type = (single ? 1 : 2) + (pairs && !isOneOf("Abs Arg", family) ? 4 : 0) +
               (pairs && family != "CIS" ? 8 : 0) +
               (isOneOf("SinCos Modf", family) ? 0x120
                : twoSources                   ? 0x210
                                               : 0x110);
    }
    std::string name;
    int type;
};

} // namespace

using VtsCatalogue = VtsFixture;

TEST_F(VtsCatalogue, RowsHoldTheWorkLinesAndFunctionsOfTheirTags) {
    auto table = workByTag();
    EXPECT_EQ(table.size(), 392U);
    for (int row = 0; row < vtsNumFuncs; ++row) {
        std::string const tag = tagOf(row);
        SCOPED_TRACE(tag);
        auto const found = table.find(tag);
        ASSERT_NE(found, table.end());
        std::string const head = tag + "\nNormal:\n    Work = " + found->second + " * 2.0\n";
        EXPECT_EQ(std::string(defFunc[row].text).substr(0, head.size()), head);
        table.erase(found); // each tag once
        Expected const expected(tag);
        void* const function = dlsym(RTLD_DEFAULT, expected.name.c_str());
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(reinterpret_cast<void*>(*vtsGetLibraryFunc(row)), function);
        bool const adapted = reinterpret_cast<void*>(defFunc[row].func) != function;
        EXPECT_EQ(adapted, tag.find("Powx") != std::string::npos);
        EXPECT_EQ(vtsGetFuncType(row), expected.type);
    }
}

TEST_F(VtsCatalogue, RowsStandInGroups) {
    // Letter, first letter of the flavour (H for none) and number of rows, in order.
    std::vector<std::pair<std::string, int>> groups;
    for (int row = 0; row < vtsNumFuncs; ++row) {
        std::string const tag = tagOf(row);
        size_t const mark = tag.find('_');
        std::string const group = {tag[0], mark == std::string::npos ? 'H' : tag[mark + 1]};
        if (groups.empty() || groups.back().first != group) {
            groups.emplace_back(group, 0);
        }
        ++groups.back().second;
    }
    EXPECT_EQ(groups, (decltype(groups){{"sH", 49},
                                        {"cH", 27},
                                        {"dH", 49},
                                        {"zH", 27},
                                        {"sL", 36},
                                        {"cL", 24},
                                        {"sE", 36},
                                        {"cE", 24},
                                        {"dL", 36},
                                        {"zL", 24},
                                        {"dE", 36},
                                        {"zE", 24}}));
}
