// psstring_test.cpp - buffer rule, search and conversions of the string.
#include "psbase/psstring.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>

#include "psbase/psexception.h"

namespace {

// The two promises on which appending without a terminator rests.
void expectSoundBuffer(psString const& text) {
    ASSERT_EQ(text.capacityBytes(), psString::getBufSize(text.size()));
    for (int i = text.size(); i < text.capacityBytes(); ++i) {
        ASSERT_EQ(text[i], 0) << "byte " << i << " of a text of " << text.size();
    }
}

TEST(PsString, BufferFollowsTheSixteenByteRuleHoweverTheTextGrows) {
    EXPECT_EQ(psString::getBufSize(15) + 100 * psString::getBufSize(16), 16 + 100 * 32);
    psString text;
    std::string model;
    for (int i = 0; i < 70; ++i) {
        text += static_cast<char>('a' + i % 26);
        model += static_cast<char>('a' + i % 26);
        ASSERT_EQ(model, text.c_str());
        expectSoundBuffer(text);
    }
    text += text;
    text += text.c_str() + 130;
    EXPECT_THROW(text.growBy(INT_MAX - 14 - text.size()), psException); // not to be counted
    EXPECT_THROW(text.allocate(INT_MAX), psException);
    EXPECT_EQ(model + model + model.substr(60), text.c_str());
    expectSoundBuffer(text);
}

TEST(PsString, AssignsFromItselfAndFromNull) {
    psString text("a text that is longer than one buffer");
    text.assign(text.c_str() + 7);
    EXPECT_STREQ(text.c_str(), "that is longer than one buffer");
    text.assign(static_cast<char const*>(nullptr));
    EXPECT_STREQ(text.c_str(), "");
    expectSoundBuffer(text);
    text.assign('x');
    EXPECT_STREQ(text.c_str(), "x");
    text.assign('\0'); // a text of one character all the same
    EXPECT_EQ(text.size(), 1);
    expectSoundBuffer(text);
}

TEST(PsString, ResizeFillsOnlyBehindAText) {
    psString text;
    text.resize(4, 'x');
    EXPECT_STREQ(text.c_str(), "");
    text = "ab";
    text.resize(20, 'x');
    EXPECT_STREQ(text.c_str(), "abxxxxxxxxxxxxxxxxxx");
    text.resize(1, 'x');
    expectSoundBuffer(text);
}

TEST(PsString, ComparesSignedCharactersThenLengthsAndFindsBothEnds) {
    EXPECT_EQ(psString("ab").compare("abc"), -1);
    EXPECT_EQ(psString("abc").compare(""), 3);
    EXPECT_EQ(psString("\xE4").compare("a"), -1);
    psString const text("abcabc");
    EXPECT_EQ(text.find("bc", 1), 1);
    EXPECT_EQ(text.find("bc", 2), 4);
    EXPECT_EQ(text.find("", 4), 4);
    EXPECT_EQ(text.rfind("abc"), 3);
    EXPECT_EQ(psString("xbc").rfind("x"), 0);
    EXPECT_STREQ(text.substr(4, 9).c_str(), "bc");
}

TEST(PsString, TrimKeepsATrailingCarriageReturn) {
    char const* const cases[][2] = {{"  a b\t", "a b"}, {"\ra", "a"},   {"a\r", "a\r"},
                                    {"a \r", "a \r"},   {" \t\r ", ""}, {"", ""}};
    for (auto const& [given, wanted] : cases) {
        psString text(given);
        text.trim();
        EXPECT_STREQ(text.c_str(), wanted) << given;
    }
}

TEST(PsString, SplitsPaths) {
    char const* const cases[][4] = {{"dir.d/file", "dir.d/", "file", "file"},
                                    {"a.b.c", "", "a.b.c", "a.b"},
                                    {"x/y\\z.csv", "x/y\\", "z.csv", "z"},
                                    {"x\\y/z.csv", "x\\y/", "z.csv", "z"},
                                    {"dir/", "dir/", "", ""}};
    for (auto const& [path, dir, name, title] : cases) {
        SCOPED_TRACE(path);
        EXPECT_STREQ(psString(path).getFileDir().c_str(), dir);
        EXPECT_STREQ(psString(path).getFileName().c_str(), name);
        EXPECT_STREQ(psString(path).getFileTitle().c_str(), title);
    }
}

TEST(PsString, ReadsNumbersAndFlagsTheOthers) {
    std::tuple<char const*, long long, bool> const cases[] = {
        {"42 x", 42, false}, {"0x1F", 31, false}, {"0Xff", 255, false}, {"-0x10", 0, false},
        {"-7", -7, false},   {"", 99, false},     {"x1", 99, true}};
    for (auto const& [given, wanted, failed] : cases) {
        SCOPED_TRACE(given);
        psString text(given);
        int narrow = 99;
        narrow << text;
        EXPECT_EQ(text.errorConvertion(), failed);
        EXPECT_EQ(narrow, wanted);
        long long whole = 99;
        unsigned long long positive = 99;
        whole << text;
        positive << text;
        EXPECT_EQ(whole, wanted);
        EXPECT_EQ(static_cast<long long>(positive), wanted);
    }

    psString long64("0xFEDCBA9876543210");
    long long whole = 0;
    unsigned long long positive = 0;
    whole << long64;
    positive << long64;
    EXPECT_EQ(static_cast<unsigned long long>(whole), 0xFEDCBA9876543210ULL);
    EXPECT_EQ(positive, 0xFEDCBA9876543210ULL);

    for (char const* given : {"abc", ""}) { // what is empty is no failure
        psString word(given);
        float single = 1.5F;
        double wide = 2.5;
        single << word;
        wide << word;
        EXPECT_EQ(single + static_cast<float>(wide), 4.0F);
        EXPECT_EQ(word.errorConvertion(), given[0] != '\0');
    }
}

TEST(PsString, ReadsTruth) {
    std::tuple<char const*, bool, bool> const cases[] = {
        {" Yes", true, false}, {"TRUE", true, false}, {"1", true, false},
        {"no", false, false},  {"F\t", false, false}, {"0", false, false},
        {"", false, true},     {"10", false, true},   {"00", false, true}};
    for (auto const& [given, wanted, failed] : cases) {
        psString text(given);
        bool value = !wanted;
        value << text;
        EXPECT_EQ(value, wanted) << given;
        EXPECT_EQ(text.errorConvertion(), failed) << given;
    }
}

TEST(PsString, WritesValues) {
    psString text;
    text << -5 << ' ' << 1234567890123LL << ' ' << ULLONG_MAX << ' ' << 4000000000U << ' ' << 1234.5
         << ' ' << 0.125F << ' ' << true << false << ' ' << static_cast<char const*>(nullptr)
         << static_cast<void const*>(nullptr) << ' ' << reinterpret_cast<void const*>(0xAB12);
    EXPECT_STREQ(text.c_str(), "-5 1234567890123 -1 4000000000 1.23e+03 0.125 yesno NULL AB12");
}

TEST(PsString, ConvertsNamesByAbbreviation) {
    int const values[] = {1, 2, 6, 0};
    psString const names[] = {"mthAuto", "mthManual", "mthBoth", "mthNever"};
    EXPECT_STREQ(psString::enumString(2, values, names, 4).c_str(), "mthManual");
    EXPECT_STREQ(psString::enumString(7, values, names, 4).c_str(), "7");
    EXPECT_STREQ(psString::flagString(3, values, names, 4).c_str(), "mthAuto|mthManual|mthBoth");
    EXPECT_STREQ(psString::flagString(0, values, names, 4).c_str(), "0");

    EXPECT_EQ(psString::enumValue("MAN", values, names, 4, 3), 2);
    EXPECT_EQ(psString::enumValue("mthB", values, names, 4, 3), 6);
    EXPECT_EQ(psString::enumValue("mthAutomatic", values, names, 4, 3), 0);
    EXPECT_EQ(psString::flagValue("man, zzz|a; ", values, names, 4, 3), 3);
}

} // namespace
