// vtscatalogue_test.cpp - names, order, type codes, functions and Work intervals of the rows,
// against a stored text.
#include <dlfcn.h>

#include <sstream>
#include <string>

#include "support/storedtext.h"
#include "vts/vtspowx.h"
#include "vtsfixture.h"

namespace {

std::string tagOf(int row) {
    char tag[vtsNameSize];
    vtsGetFuncName(row, tag);
    return tag;
}

// A tag's library name, by the rules alone.
std::string libraryName(std::string const& tag) {
    size_t const mark = tag.find('_');
    std::string const family = tag.substr(1, mark == std::string::npos ? mark : mark - 1);
    char const flavour = mark == std::string::npos ? 'H' : tag[mark + 1];
    bool const single = tag[0] == 's' || tag[0] == 'c';
    std::string name = "zols" + family + (single ? "_32f" : "_64f");
    name += tag[0] == 'c' || tag[0] == 'z' ? "c" : "";
    std::string const rounding = " Ceil Floor Frac Modf NearbyInt Rint Round Trunc ";
    if (rounding.find(" " + family + " ") == std::string::npos) {
        std::string const bits = single ? "112124" : "265053"; // of EP, LA, HA
        name += "_A" + bits.substr(flavour == 'E' ? 0 : flavour == 'L' ? 2 : 4, 2);
    }
    return name;
}

} // namespace

using VtsCatalogue = VtsFixture;

// In order: tag, type code, flavour and the line of the Work pool.
TEST_F(VtsCatalogue, RowsHoldTheWorkLinesAndFunctionsOfTheirTags) {
    std::ostringstream text;
    for (int row = 0; row < vtsNumFuncs; ++row) {
        std::string const tag = tagOf(row);
        SCOPED_TRACE(tag);
        std::string const lines = defFunc[row].text;
        std::string const head = tag + "\nNormal:\n    Work = ";
        ASSERT_TRUE(lines.starts_with(head));
        text << tag << " " << std::hex << vtsGetFuncType(row) << " " << vtsGetFuncFlavorIndex(row)
             << " " << lines.substr(head.size(), lines.find('\n', head.size()) - head.size())
             << "\n";
        void* const function = dlsym(RTLD_DEFAULT, libraryName(tag).c_str());
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(reinterpret_cast<void*>(*vtsGetLibraryFunc(row)), function);
        bool const adapted = reinterpret_cast<void*>(defFunc[row].func) != function;
        EXPECT_EQ(adapted, tag.find("Powx") != std::string::npos);
    }
    EXPECT_TRUE(matchesStored("vts/catalogue", text.str()));
}
