// psreportformat_test.cpp - the edges of the framed layout.
#include "pstest/psreportformat.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TEST(PsReportFormat, PlacesItemsByColumn) {
    psReportFormat form(0, 4, 1, 12, 14, -79, -79, -79);
    EXPECT_STREQ("  x\n", form.getLine("x").c_str()); // not open: no bars
    EXPECT_EQ(std::string("+").append(77, '-') + "+\n", form.firstLine().c_str());
    std::string const wide(76, 'x'); // from column 2 to 77
    std::string const wide3 = wide + "xxx";
    std::string const value(61, '1');
    char const* const cases[][5] = {
        // label, separator, value, right-hand text, the line without padding and closing bar
        {"Test", ":", "", "", "| Test      :"},
        // A label that reaches a column pushes what stands there one blank on.
        {"Description", ":", "value", "", "| Description : value"},
        // A right-hand text that is longer than the line is left out.
        {"Test", ":", "", wide3.c_str(), "| Test      :"}};
    for (auto const& [label, separator, text, right, shown] : cases) {
        std::string line = shown;
        line.resize(78, ' ');
        EXPECT_EQ(line + "|\n", form.getLine(label, separator, text, right).c_str());
    }
    std::string const whole(78, 'w'); // of the whole line
    EXPECT_EQ("| Test      : " + whole + "\n",
              form.getLine("Test", ":", "", whole.c_str()).c_str());
    // Overruns: no bar, and the right-hand text goes behind.
    EXPECT_EQ("| " + wide + "x\n", form.getLine((wide + "x").c_str()).c_str());
    EXPECT_EQ("| Test      : " + value + " right\n",
              form.getLine("Test", ":", value.c_str(), "right").c_str());
}

TEST(PsReportFormat, TimesAndLineEnds) {
    EXPECT_STREQ("01:01:01", psReportFormat::getTimeStr(3661).c_str());
    EXPECT_STREQ("100:00:00", psReportFormat::getTimeStr(360000).c_str());
    EXPECT_STREQ("ab", cutoffNL("ab\ncd\n").c_str());
}

} // namespace
