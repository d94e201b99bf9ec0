// psistream_test.cpp - the sources of a value and their order.
#include "psstream/psistream.h"

#include "streamfixture.h"

namespace {

class PsIStream : public StreamFixture {
protected:
    void answers(std::string const& text) {
        fill("answers", text);
        input.setIStream(new i_stream(path("answers").c_str(), 257, true));
    }

    // Value and source of an item, with the default "def".
    std::string item(char const* key, char const* title = "") {
        psString const value = input.getItemValue(key, "def", title, "comment");
        return value.c_str() + std::string("/") + std::to_string(input.source());
    }

    psIStream input;
};

TEST_F(PsIStream, AsksDataThenIniFileThenConsoleThenDefault) {
    EXPECT_TRUE(input.batchMode());
    EXPECT_EQ(item("Length"), "def/0");

    fill("ini", "[Perf System]\nLength=ini\nSteps=5\nEmpty=\n[other]\nLength=other\n");
    EXPECT_TRUE(input.setIniFile(path("ini").c_str(), false));
    input.setData("Length=data");
    answers("typed\n\n");
    testing::internal::CaptureStdout();
    EXPECT_EQ(item("Length"), "data/3");
    EXPECT_EQ(item("Steps"), "5/2");
    EXPECT_EQ(item("Empty", "Title"), "typed/1");
    EXPECT_EQ(item("Absent"), "/0");
    EXPECT_EQ(item("Absent"), "/0"); // end of the answers
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\n Title [def] = \n Absent [def] = \n Absent [def] = ");
    EXPECT_STREQ(input.setIniSection("other").c_str(), "Perf System");
    input.setData("Length= ");
    EXPECT_EQ(item("Length"), "/3");
    input.setIStream(nullptr);
    EXPECT_EQ(item("Steps"), "def/0");
    input.deleteIniFile();
    EXPECT_EQ(content(path("ini")).substr(0, 15), "[Perf System]\nL");
}

TEST_F(PsIStream, KeepsARecordInAWritableIniFile) {
    fill("ini", "[Perf System]\nFromIni=1 // old\n");
    EXPECT_TRUE(input.setIniFile(path("ini").c_str(), true));
    input.setData("FromData=2");
    item("FromIni");
    item("FromData");
    input.setIniSection("Sin");
    item("Default");
    input.deleteIniFile();
    EXPECT_EQ(content(path("ini")), "\n[Perf System]\nFromIni=1\nFromData=2\t// comment\n\n[Sin]\n"
                                    "Default=def\t// comment\n");
    item("Default");
    EXPECT_FALSE(input.savesToIni());
    EXPECT_FALSE(input.setIniFile(path("missing").c_str(), false));
    EXPECT_EQ(item("Default"), "def/0");
}

TEST_F(PsIStream, NeverClosesStandardInput) {
    input.setIStream(&c_in);
    input.setIStream(new i_stream("", 257, false));
    EXPECT_TRUE(c_in.isOpen());
}

TEST(PsDataList, KeepsTheLastOfEqualKeysAtTheEnd) {
    psDataList list;
    list.set("a=1");
    list.set(" b = 2 ");
    list.set("a=b=c");
    list.set("", "ignored");
    list.set("=ignored"); // the first word is the key, wherever the sign stands
    list.set("flag");
    std::string all;
    for (psData const& pair : list) {
        all += pair.key.c_str() + std::string("=") + pair.value.c_str() + ";";
    }
    EXPECT_EQ(all, "b=2;a=b;ignored=;flag=;");
    psString value("old");
    EXPECT_FALSE(list.get("absent", value));
    EXPECT_STREQ(value.c_str(), "old");
    EXPECT_TRUE(list.find("absent") == list.end());
}

} // namespace
