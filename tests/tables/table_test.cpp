// table_test.cpp - tests core/table.h and core/merge.h.
#include "core/table.h"

#include <gtest/gtest.h>

#include "core/failure.h"
#include "core/merge.h"
#include "core/text.h"

using namespace tables;

namespace {

std::string const head = "CPU,A chip, with commas, 2x2.6 GHz, Max cache size 1 K\nComputer,vm\n";
std::string const title =
    "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,Parm5,Parm6,"
    "scaleFactor,Comment,Clocks,per,Time (usec),MFlops\n";
std::string const pairWords = "nLps=8 base=2.95 ratio=1.0312 lo=1.0290 hi=1.0330 nPrs=60 quiet";

std::string row(std::string const& point, std::string const& comment = "nLps=8",
                std::string const& clocks = "3.19", std::string const& usec = "0.0487") {
    return point + ",-,-,-,-,-,-,-," + comment + "," + clocks + ",e," + usec + ",-\n";
}

std::string refusal(std::string const& text) {
    Passes passes;
    try {
        readPasses(passes, text, "a.csv");
    } catch (Failure const& failure) {
        return failure.what();
    }
    return "";
}

Passes read(std::string const& text) {
    Passes passes;
    readPasses(passes, text, "a.csv");
    return passes;
}

} // namespace

TEST(Table, WhatIsReadIsWrittenToTheByte) {
    std::string const rows = row("Sin,32f,A24,32", "nLps=1024 acc=7.5%") +
                             row("Sin,32f,A24,64", pairWords, "3.04") +
                             row("Rint,64f,-,64", "-", "0.0123", "3.34") +
                             row("CPU,64f,-,64", "-", "1.000e-09", "1e+12") +
                             row("Pass,64f,-,1",
                                 "base=1.000e-16 ratio=1.0000 lo=1.0000 hi=1.0000 "
                                 "nPrs=1 shared",
                                 "1.000e+12", "1e-09");
    Passes const passes = read(head + title + rows);
    EXPECT_EQ(head + title + rows, tableText(passes.points, passes.list[0]));
    EXPECT_EQ("Sin_32f_A24", passes.points[1].function());
    EXPECT_EQ("Rint_64f", passes.points[2].function());
    EXPECT_EQ("vm (A chip, with commas)", passes.list[0].machine());
    Reading const& pair = passes.list[0].readings[1];
    EXPECT_EQ(1.0312, pair.ratio);
    EXPECT_EQ(2.95, pair.base);
    EXPECT_EQ(60, pair.pairs);
    EXPECT_TRUE(pair.quiet);
    EXPECT_FALSE(passes.list[0].readings[0].ratio > 0);

    std::string const twoRuns = head + title + rows + head + title + rows;
    EXPECT_EQ(2U, read(twoRuns).list.size());
    std::string const passesFile = passesText(read(twoRuns));
    EXPECT_EQ(passesFile, passesText(read(passesFile)));
    EXPECT_EQ(5U, read(passesFile).list[1].readings.size());

    // Rows of passes in any order, lines that are just short enough, bytes of any alphabet.
    std::string const mixed = "Pass,1\nPass,2\nCPU,\ta\x80\nOS," + std::string(65533, 'x') +
                              "\nPass," + title + "2," + row("Sin,32f,A24,32") + "1," +
                              row("Sin,32f,A24,32") + "2," + row("Sin,32f,A24,64");
    Passes const apart = read(mixed);
    EXPECT_EQ(1U, apart.list[0].readings.size());
    EXPECT_EQ(2U, apart.list[1].readings.size());
    EXPECT_EQ(" a\x80", apart.list[1].head.get(key::cpu));
}

TEST(Table, RowsThatMeasureNothingNewAreLeftOut) {
    EXPECT_EQ(1U, read(title + row("Sin,32f,A24,32") + row("Sin,32f,A24,32", "deprecated") +
                       row("Sin,32f,A24,-", "parmNames", "-", "-"))
                      .list[0]
                      .readings.size());
    std::string hot = title + row("Sin,32f,A24,32");
    hot.insert(hot.rfind('\n'), ",Hot").insert(title.size() - 1, ",Interest");
    EXPECT_EQ(1U, read(hot + "\r\n").list[0].readings.size());
}

TEST(Table, BadInputIsToldWithFileAndRow) {
    std::string const good = title + row("Sin,32f,A24,32");
    auto const changed = [&good](std::string const& from, std::string const& to) {
        std::string text = good;
        return text.replace(text.find(from), from.size(), to);
    };
    std::string semicolons = good;
    std::replace(semicolons.begin(), semicolons.end(), ',', ';');
    std::string const cases[][2] = {
        {"", "a.csv: the file is empty"},
        {head, "a.csv: no title line ('funcBase,...'): not a table of ps_zolvm"},
        {head + title, "a.csv: the table has no rows"},
        {semicolons, "a.csv: row 1: the title has other separators than commas"},
        {good.substr(0, good.size() - 1), "a.csv: row 2: the line is cut off"},
        {good + "Sin,32f,A24\n", "a.csv: row 3: 3 columns where the title has 16"},
        {std::string("CPU,\0x\n", 7) + good, "a.csv: row 1: not a text"},
        {"CPU," + std::string(10 << 20, 'x') + "\n" + good,
         "a.csv: row 1: the line is longer than 65536 characters"},
        {"what is this\n" + good,
         "a.csv: row 1: 'what is this' is neither a line of the head nor the title"},
        {changed(",MFlops", ""), "a.csv: row 1: column 'MFlops' is missing"},
        {changed("Clocks", "clocks"), "a.csv: row 1: column 13 is 'clocks' instead of 'Clocks'"},
        {changed("MFlops", "MFlops,more"), "a.csv: row 1: column 'more' is none of ps_zolvm's"},
        {good + row("Sin,32f,A24,32"), "a.csv: row 3: measures the same as row 2"},
        {good + row("-,-,-,32"), "a.csv: row 3: a row without function"},
        {title + row("Sin,32f,A24,0"), "a.csv: row 2: length '0' is no whole number from 1"},
        {changed("nLps=8", "nLps=8x"), "a.csv: row 2: nLps '8x' is no whole number from 1"},
        {changed(pairWords.substr(0, 6), pairWords.substr(0, 30)),
         "a.csv: row 2: a pair needs base, ratio, lo, hi, nPrs, and quiet or shared"},
        {changed("nLps=8", "base=3 ratio=2 lo=2.1 hi=3 nPrs=8 shared"),
         "a.csv: row 2: the ratio lies outside its interval"},
        {changed("nLps=8", "base=3 ratio=4 lo=2 hi=3 nPrs=8 shared"),
         "a.csv: row 2: the ratio lies outside its interval"},
        {changed("nLps=8", "base=0"), "a.csv: row 2: base '0' is no number from 1e-16 to 1e+17"},
        {changed("nLps=8", "acc=0%"), "a.csv: row 2: acc '0' is no number from 1e-09 to 1e+12"},
        {changed("nLps=8", "nPrs=0"), "a.csv: row 2: nPrs '0' is no whole number from 1"},
        {changed("0.0487", "0"), "a.csv: row 2: time '0' is no number from 1e-09 to 1e+12"},
        {"CPU,\x7f\n" + good, "a.csv: row 1: not a text"},
        {"CPU," + std::string(65533, 'x') + "\n" + good,
         "a.csv: row 1: the line is longer than 65536 characters"},
        {good + title, "a.csv: row 3: a title among the rows"},
        {"Pass,1\nPass," + title + "1," + row("funcBase,32f,A24,32"),
         "a.csv: row 3: a title among the rows"},
        {changed("nLps=8", "base=3 ratio=-nan lo=2 hi=3 nPrs=8 shared"),
         "a.csv: row 2: ratio '-nan' is no number from 0.0001 to 1e+06"},
        {"Pass,1\nPass,funcBase" + good.substr(8),
         "a.csv: row 3: 16 columns where the title has 17"},
        {"Pass,1\nPass," + title + "2," + row("Sin,32f,A24,32"),
         "a.csv: row 3: pass '2' has no head"},
    };
    for (auto const& [text, wanted] : cases) {
        EXPECT_EQ(wanted, refusal(text));
    }
    // Each word once: none may be there twice, in place of another one or beside all.
    std::string const words[] = {"base=3", "ratio=2", "lo=1", "hi=3", "nPrs=8", "quiet", ""};
    for (std::string const& missing : words) {
        std::string twice = missing == "base=3" ? "hi=3" : "base=3";
        for (std::string const& word : words) {
            twice += word == missing ? "" : ' ' + word;
        }
        EXPECT_EQ("a.csv: row 2: a pair needs base, ratio, lo, hi, nPrs, and quiet or shared",
                  refusal(changed("nLps=8", twice)));
    }
    for (char const* number : {"nan", "inf", "-3.19", "0", "1e-99", "1e99", "3.19x", "", "-"}) {
        EXPECT_EQ(std::string("a.csv: row 2: clocks '") + number +
                      "' is no number from 1e-09 to 1e+12",
                  refusal(changed("3.19", number)));
    }
}

TEST(Table, ClocksHaveThreeDigits) {
    std::pair<double, char const*> const cases[] = {
        {0.00005, "5.000e-05"}, {0.00099, "0.000990"}, {0.0123, "0.0123"},
        {0.5, "0.500"},         {9.999, "10.00"},      {12.34, "12.3"},
        {100, "100"},           {1e7, "10000000"},     {1.1e7, "1.100e+07"}};
    for (auto const& [clocks, wanted] : cases) {
        EXPECT_EQ(wanted, formatClocks(clocks));
    }
    EXPECT_EQ(format("%500d\n", 7).size(), 501U); // as a line with long names
}

TEST(Merge, TheSecondLeastStandsForAPoint) {
    EXPECT_EQ(3, standingOf({3}).clocks);
    EXPECT_EQ(3, standingOf({4, 3}).clocks);
    EXPECT_EQ(4, standingOf({9, 3, 5, 4}).clocks);
    EXPECT_DOUBLE_EQ(0.125, standingOf({9, 3, 5, 4}).spread);

    std::string text;
    for (char const* clocks : {"2.00", "1.00", "1.50", "1.80"}) {
        text += head + title + row("Sin,32f,A24,32", "nLps=8", clocks, clocks) +
                row("Sin,32f,A24,64", std::string("nLps=8 acc=") + clocks + "%");
    }
    Passes const passes = read(text);
    Merged const merged = mergePasses(passes);
    EXPECT_EQ(head + "Passes,4\n" + title +
                  row("Sin,32f,A24,32", "nLps=8 passes=4 spread=10.0% apart", "1.50", "1.5") +
                  row("Sin,32f,A24,64", "nLps=8 acc=1% passes=4 spread=0.0%"),
              tableText(passes.points, merged.pass, merged.words));
}
