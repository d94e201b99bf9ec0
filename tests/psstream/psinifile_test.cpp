// psinifile_test.cpp - grammar, changes and rewriting of an ini file.
#include "psstream/psinifile.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "psstream/psreplacefile.h"
#include "psstream/streamfixture.h"

namespace {

class PsIniFile : public StreamFixture {
protected:
    // What the file holds after it was opened, closed and destroyed again.
    std::string roundTrip(std::string const& text) {
        fill("ini", text);
        {
            psIniFile ini;
            EXPECT_TRUE(ini.open(path("ini").c_str(), true));
            ini.close();
        }
        return content(path("ini"));
    }

    // Opens a file, and changes a value in it.
    void change(std::string const& name, psIniFile& ini) {
        fill(name, "[a]\nk=1\n");
        ASSERT_TRUE(ini.open(path(name).c_str(), true));
        ini.write("a", "k", "2", "");
    }
    static constexpr char changed[] = "\n[a]\nk=2\n";
};

TEST_F(PsIniFile, RewritesWhatItRead) {
    char const* const cases[][2] = {{"", ""},
                                    {"lost=1\n", ""},
                                    {"[a]\nx=1 // note\n", "\n[a]\nx=1\n"},
                                    {"[ a ]\n a = b = c \n", "\n[a]\na=b = c\n"},
                                    {"[a]\n=5\n", "\n[a]\n=5\n"},
                                    {"[a]\nkey\nk2=\nk3=~~~\n", "\n[a]\nkey\nk2=\nk3\n"},
                                    {"[a]\n[open\n", "\n[a]\n[open\n"},
                                    {"x[a]=5\nk=1", "\n[a]\nk=1\n"},
                                    {"[a]\nk=1\n[b]\n[a]\nk=2\nK=3\n", "\n[a]\nk=1\nK=3\n\n[b]\n"},
                                    {"[a]\r\nk=1\r\n\r\n", "\n[a]\nk=1\r\n"},
                                    {"// [a]\n[b] // c\n // d\n", "\n[b]\n"}};
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
    ini.deleteKey("absent", "drop");
    ini.deleteKey("old", "drop");
    EXPECT_STREQ(ini.read("old", "\tkeep", "none").c_str(), "5");
    EXPECT_STREQ(ini.read("old", "drop", "none").c_str(), "none");
    EXPECT_EQ(content(path("ini")), "[old]\nkeep=1\ndrop=2\n[gone]\nx=1\n");
    ini.updateFile();
    EXPECT_EQ(content(path("ini")),
              "\n[old]\nkeep=5\n\n[new]\nvalue=8\t// seven\nbare\n\n[empty]\n");
}

TEST_F(PsIniFile, LeavesAloneWhatItMayOnlyRead) {
    std::string const text = "[a] // note\nk=1\n";
    fill("ini", text);
    {
        psIniFile ini;
        ASSERT_TRUE(ini.open(path("ini").c_str(), false));
        EXPECT_TRUE(ini.sectionExist("a") && ini.valueExist("a", "k"));
        EXPECT_FALSE(ini.sectionExist("k") || ini.valueExist("a", " k") ||
                     ini.valueExist("b", "k"));
        EXPECT_TRUE(ini.getSectionValues("a") != nullptr && ini.getSectionValues("b") == nullptr);
        ini.write("a", "k", "2", "");
        ini.updateFile();
    }
    EXPECT_EQ(content(path("ini")), text);
    EXPECT_FALSE(psIniFile().open(path("none").c_str(), false));
    EXPECT_EQ(files(), 1);
    // A file that can be written and not read, for other users than root.
    namespace fs = std::filesystem;
    fs::permissions(path(""), fs::perms::all);
    fs::permissions(path("ini"), fs::perms::owner_write | fs::perms::others_write);
    fill("shared", "old"); // a file that can't be given back to its owner is written in place
    fs::permissions(path("shared"), fs::perms::all);
    bool const root = geteuid() == 0;
    EXPECT_EQ(root ? seteuid(65534) : 0, 0);
    psIniFile secret;
    EXPECT_FALSE(secret.open(path("ini").c_str(), true));
    secret.write("b");
    secret.close();
    EXPECT_TRUE(psReplaceFile(path("shared").c_str(), "new"));
    EXPECT_EQ(content(path("shared")), "new");
    EXPECT_EQ(root ? seteuid(0) : 0, 0);
    fs::permissions(path("ini"), fs::perms::owner_all);
    EXPECT_EQ(content(path("ini")), text);
    EXPECT_EQ(console(), "-- Can't open file " + path("none") + " to read: \n-- Can't open file " +
                             path("ini") + " to read: \n");
}

TEST_F(PsIniFile, LosesNothingWhenTheFileCanNoLongerBeWritten) {
    std::filesystem::create_directory(path("dir"));
    psIniFile ini;
    change("dir/ini", ini);
    std::filesystem::rename(path("dir"), path("away"));
    ini.updateFile();
    EXPECT_EQ(console(), "-- Can't open file " + path("dir/ini") + " to write: \n");
    EXPECT_EQ(content(path("away/ini")), "[a]\nk=1\n");
    std::filesystem::rename(path("away"), path("dir"));
    ini.updateFile();
    EXPECT_EQ(content(path("dir/ini")), changed);
}

// A name that leaves no room for a neighbour's can only be written in place.
TEST_F(PsIniFile, StaysWholeOrAbsentWhereThereIsNoRoomForTheNewText) {
    for (std::string const& name :
         {std::string("ini"), std::string(250, 'i'), std::string("new")}) {
        SCOPED_TRACE(name);
        if (name != "new") {
            fill(name, "old");
        }
        rlimit old = {};
        getrlimit(RLIMIT_FSIZE, &old);
        rlimit const small = {4096, old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(psReplaceFile(path(name).c_str(), std::string(5000, 'x').c_str()));
        setrlimit(RLIMIT_FSIZE, &old);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "-- Can't write to " + path(name) + ": File too large\n");
        EXPECT_EQ(content(path(name)), name == "new" ? "" : "old");
    }
    EXPECT_EQ(files(), 2); // neither a neighbour nor an empty new one
}

TEST_F(PsIniFile, KeepsModeOwnerAndLinkAndIsWholeAtEachMoment) {
    for (std::string const& name : {std::string("ini"), std::string(250, 'i')}) {
        SCOPED_TRACE(name);
        psIniFile ini;
        change(name, ini);
        std::string const file = path(name);
        ASSERT_EQ(chmod(file.c_str(), 0604), 0);
        bool const given = chown(file.c_str(), 12, 34) == 0; // by root alone
        std::filesystem::remove(path("link"));
        std::filesystem::create_symlink(name, path("link"));
        std::filesystem::remove(path("old"));
        std::filesystem::create_hard_link(file, path("old"));
        testing::internal::CaptureStderr();
        {
            psIniFile linked;
            ASSERT_TRUE(linked.open(path("link").c_str(), true));
            linked.write("a", "k", "2", "");
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
        struct stat facts = {};
        ASSERT_EQ(stat(file.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777U, 0604U);
        EXPECT_TRUE(!given || (facts.st_uid == 12 && facts.st_gid == 34));
        EXPECT_EQ(content(file), changed);
        EXPECT_EQ(content(path("old")), name == "ini" ? "[a]\nk=1\n" : changed);
    }
    EXPECT_EQ(files(), 4);
    mode_t const withheld = umask(0027);
    EXPECT_TRUE(psReplaceFile(path("new").c_str(), "t"));
    umask(withheld);
    EXPECT_EQ(content(path("new")), "t");
    struct stat facts = {};
    EXPECT_TRUE(stat(path("new").c_str(), &facts) == 0 && (facts.st_mode & 07777U) == 0640);
    EXPECT_TRUE(facts.st_uid == geteuid() && facts.st_gid == getegid());
}

TEST_F(PsIniFile, WritesInsideWhatIsNoFile) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    int const reader = open(path("pipe").c_str(), O_RDWR);
    EXPECT_TRUE(psReplaceFile(path("pipe").c_str(), "text"));
    char text[8] = "";
    EXPECT_EQ(read(reader, text, sizeof text - 1), 4);
    EXPECT_STREQ(text, "text");
    EXPECT_TRUE(std::filesystem::is_fifo(path("pipe")));
    close(reader);
}

} // namespace
