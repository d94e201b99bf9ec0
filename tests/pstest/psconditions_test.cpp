// psconditions_test.cpp - which kind of pattern an argument asks for. How patterns combine is shown
// through the keys that bring them.
#include "pstest/psconditions.h"

#include <gtest/gtest.h>
#include <utility>

TEST(PsConditions, KindOfAnArgument) {
    std::pair<char const*, int> const cases[] = {{"x", 0}, {"+-", 1}, {"-x", 2}, {"=x", 3},
                                                 {"", 4},  {"=", 4},  {"+", 4},  {"-", 4}};
    for (auto const& [text, kind] : cases) {
        psString arg(text);
        EXPECT_EQ(getCondition(arg), kind) << text;
    }
}
