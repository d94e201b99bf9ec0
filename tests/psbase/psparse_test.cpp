// psparse_test.cpp - words, separators and quotes.
#include "psbase/psparse.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

TEST(PsParse, SplitsByEachSeparatorAndByQuotes) {
    std::tuple<char const*, char const*, std::vector<std::string>> const cases[] = {
        {"  a  b ", " ", {"a", "b"}},
        {"a,,b;", ",;", {"a", "b"}},
        {"a b", "", {"a b"}},
        {"", " ", {}},
        {"\"a b\"", " ", {"\"a", "b\""}},
        {"\"x y\" z", " \"", {"x y", "z"}},
        {"\"a\"\"b\"", "\" ", {"a\"b"}},
        {"\"\"\"a\"", " \"", {"\"a"}},
        {"\"open end", " \"", {"open end"}},
        {"a\"b c\"d", " \"", {"a", "b c", "d"}},
        {"\"\" a \"\" \"", " \"", {"a"}}};
    for (auto const& [text, separators, wanted] : cases) {
        SCOPED_TRACE(text);
        psStringList words;
        words.insert(words.end(), "old");
        int const count = psString(text).parse(words, separators);
        std::vector<std::string> got;
        for (psString const& word : words) {
            got.emplace_back(word.c_str());
        }
        EXPECT_EQ(got, wanted);
        EXPECT_EQ(count, static_cast<int>(wanted.size()));
    }
}

TEST(PsParse, CountsTheWordsThatFindNoRoom) {
    psString a("old");
    psString b("old");
    EXPECT_EQ(psString("k=v=w").parse(a, b, "="), 3);
    EXPECT_STREQ(a.c_str(), "k");
    EXPECT_STREQ(b.c_str(), "v");
    EXPECT_EQ(psString("one").parse(a, b, " "), 1);
    EXPECT_STREQ(a.c_str(), "one");
    EXPECT_TRUE(b.empty());
    psString c("old");
    EXPECT_EQ(psString("one two three four").parse(a, b, c, " "), 4);
    EXPECT_STREQ((a + b + c).c_str(), "onetwothree");
    psParse again("x y");
    again.parse(a, b, " ");
    EXPECT_EQ(again.parse(a, b, "y"), 1); // from the start, by these separators alone
    EXPECT_STREQ(a.c_str(), "x ");
}
