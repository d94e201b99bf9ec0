// psinifile_test.cpp - grammar, changes and rewriting of an ini file.
#include "psstream/psinifile.h"

#include "psstream/streamfixture.h"

namespace {

class PsIniFile : public StreamFixture {
protected:
    // What the file holds after it was opened and closed again.
    std::string roundTrip(std::string const& text) {
        fill("ini", text);
        psIniFile ini;
        EXPECT_TRUE(ini.open(path("ini").c_str(), true));
        ini.close();
        return content(path("ini"));
    }
};

TEST_F(PsIniFile, RewritesWhatItRead) {
    char const* const cases[][2] = {
        {"", ""},
        {"lost=1\n", ""},
        {"[a]\nx=1 // note\n", "\n[a]\nx=1\n"},
        {"[ a ]\n a = b = c \n", "\n[a]\na=b = c\n"},
        {"[a]\n=5\n", "\n[a]\n=5\n"},
        {"[a]\nkey\nk2=\nk3=~~~\n", "\n[a]\nkey\nk2=\nk3\n"},
        {"[a]\n[open\n", "\n[a]\n[open\n"},
        {"x[a]=5\nk=1", "\n[a]\nk=1\n"},
        {"[a]\nk=1\n[b]\n[a]\nk=2\nK=3\n", "\n[a]\nk=1\nK=3\n\n[b]\n"},
        {"[a]\r\nk=1\r\n\r\n", "\n[a]\nk=1\r\n"},
        {"// [a]\n[b] // c\n // d\n", "\n[b]\n"},
    };
    for (auto const& [given, wanted] : cases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(roundTrip(given), wanted);
        EXPECT_EQ(roundTrip(wanted), wanted);
    }
}

TEST_F(PsIniFile, ChangesMemoryAndWritesWhenAsked) {
    fill("ini", "[old]\nkeep=1\ndrop=2\n[gone]\nx=1\n");
    psIniFile ini;
    ASSERT_TRUE(ini.open(path("ini").c_str(), true));
    ini.write("old", " keep ", "5", "comment that stays out");
    ini.write("new", "value", "7", "seven");
    ini.write("new", "value", "8", "eight");
    ini.write("new", "bare");
    ini.write("empty");
    ini.eraseSection("gone");
    ini.deleteKey("old", "drop");
    EXPECT_STREQ(ini.read("old", "\tkeep", "none").c_str(), "5");
    EXPECT_STREQ(ini.read("old", "drop", "none").c_str(), "none");
    EXPECT_EQ(content(path("ini")), "[old]\nkeep=1\ndrop=2\n[gone]\nx=1\n");
    ini.updateFile();
    EXPECT_EQ(content(path("ini")),
              "\n[old]\nkeep=5\n\n[new]\nvalue=8\t// seven\nbare\n\n[empty]\n");
}

TEST_F(PsIniFile, LosesNothingWhenTheFileCanNoLongerBeWritten) {
    std::filesystem::create_directory(path("dir"));
    fill("dir/ini", "[a]\nk=1\n");
    psIniFile ini;
    ASSERT_TRUE(ini.open(path("dir/ini").c_str(), true));
    std::filesystem::rename(path("dir"), path("away"));
    ini.write("a", "k", "2", "");
    ini.updateFile();
    EXPECT_EQ(console(), "-- Can't open file " + path("dir/ini") + " to write: \n");
    EXPECT_EQ(content(path("away/ini")), "[a]\nk=1\n");
    std::filesystem::rename(path("away"), path("dir"));
    ini.updateFile();
    EXPECT_EQ(content(path("dir/ini")), "\n[a]\nk=2\n");
}

} // namespace
