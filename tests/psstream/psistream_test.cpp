// psistream_test.cpp - the sources of a value and their order.
#include "psstream/psistream.h"

#include <stdio_ext.h>

#include "psstream/streamfixture.h"

namespace {

class PsIStream : public StreamFixture {
protected:
    void answers(std::string const& text) {
        fill("answers", text);
        auto* const in = new i_stream(path("answers").c_str(), 257, true);
        input.setIStream(&c_in); // never deleted, nor one that is set again
        input.setIStream(in);
        input.setIStream(in);
    }

    // Value and source of an item, with the default "def".
    std::string item(char const* key, char const* title = "") {
        psString const value = input.getItemValue(key, "def", title, "comment");
        return value.c_str() + std::string("/") + std::to_string(input.source());
    }

    psIStream input;
};

TEST_F(PsIStream, AsksDataThenIniFileThenConsoleThenDefault) {
    fill("ini", "[Perf System]\nLength=ini\nSteps=5\nEmpty=\n[other]\nLength=other\n");
    input.setIniFile(path("ini").c_str(), false);
    input.setData("Length=data");
    answers("typed\n\n");
    testing::internal::CaptureStdout();
    EXPECT_EQ(item("Length"), "data/3");
    EXPECT_EQ(item("Steps"), "5/2");
    EXPECT_EQ(item("Empty", "Title"), "typed/1");
    EXPECT_EQ(item("Absent"), "/0");
    EXPECT_EQ(__fpending(stdout), 0U); // a question is seen at once
    EXPECT_EQ(item("Absent"), "/0");   // end of the answers
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\n Title [def] = \n Absent [def] = \n Absent [def] = ");
    EXPECT_STREQ(input.setIniSection("other").c_str(), "Perf System");
    input.setIStream(nullptr);
    EXPECT_EQ(item("Steps"), "def/0");
}

TEST_F(PsIStream, IniFileStandsWhereTheHookSaysUntilItIsDeleted) {
    static std::string folder;
    folder = path("");
    auto* const hook = io_stream::inPathHook;
    io_stream::inPathHook = [](psString name) { return psString(folder.c_str()) + name; };
    EXPECT_TRUE(input.setIniFile("ini", true));
    io_stream::inPathHook = hook;
    EXPECT_TRUE(input.savesToIni() && input.hasIniFile());
    EXPECT_EQ(item("Length"), "def/0");
    input.deleteIniFile();
    EXPECT_EQ(content(path("ini")), "\n[Perf System]\nLength=def\t// comment\n");
    EXPECT_FALSE(input.savesToIni() || input.hasIniFile());
    input.setIniFile(path("ini").c_str(), false);
    EXPECT_FALSE(input.savesToIni());
    {
        psIStream ended;
        ended.setIniFile(path("ended").c_str(), true);
        ended.getItemValue("k", "1", "", "");
    }
    EXPECT_EQ(content(path("ended")), "\n[Perf System]\nk=1\n");
}

TEST(PsDataList, KeepsTheLastOfEqualKeysAtTheEnd) {
    psDataList list;
    for (char const* text : {"a=1", " b = 2 ", "a=b=c", "=x", "flag"}) {
        list.set(text); // of "=x" the first word is the key, wherever the sign stands
    }
    list.set("", "ignored");
    std::string all;
    for (psData const& pair : list) {
        all += pair.key.c_str() + std::string("=") + pair.value.c_str() + ";";
    }
    EXPECT_EQ(all, "b=2;a=b;x=;flag=;");
}

} // namespace
