// family_test.cpp - one family measured by the built program, with all outputs at once: one run
// serves all assertions.
#include "program.h"

#include <gtest/gtest.h>
#include <regex>

namespace {

class FamilyRun : public testing::Test {
protected:
    static void SetUpTestSuite() {
        dir = new TempDirectory;
        outcome = new Outcome(
            runShell(psZolvm() + " -B -fAbs -LPERF -l" + dir->path + " -r -o -u -q -g"));
    }
    static void TearDownTestSuite() {
        delete outcome;
        delete dir;
    }
    static TempDirectory* dir;
    static Outcome* outcome;
};

TempDirectory* FamilyRun::dir = nullptr;
Outcome* FamilyRun::outcome = nullptr;

std::vector<std::string> const functions = {
    "zolsAbs_32f_A24", "zolsAbs_32fc_A11", "zolsAbs_32fc_A21", "zolsAbs_32fc_A24",
    "zolsAbs_64f_A53", "zolsAbs_64fc_A26", "zolsAbs_64fc_A50", "zolsAbs_64fc_A53"};

} // namespace

TEST_F(FamilyRun, TableHoldsEveryFunctionAtEveryLengthInOrder) {
    auto const table = lines(readFile(dir->path + "ps_zolvm.csv"));
    std::string const title = "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,"
                              "Parm4,Parm5,Parm6,scaleFactor,Comment,Clocks,per,Time (usec),MFlops";
    auto const begin = std::find(table.begin(), table.end(), title);
    ASSERT_NE(begin, table.end());
    ASSERT_EQ(table.end() - begin - 1, static_cast<long>(functions.size()) * 11);

    auto row = begin + 1;
    std::regex const number(R"(\d+(\.\d+)?(e[+-]\d+)?)");
    for (std::string const& function : functions) {
        for (int length = 32; length <= 32768; length *= 2, ++row) {
            SCOPED_TRACE(*row);
            auto const cell = cells(*row);
            ASSERT_EQ(cell.size(), 16U);
            EXPECT_EQ("zols" + cell[0] + "_" + cell[1] + "_" + cell[2], function);
            EXPECT_EQ(cell[3], std::to_string(length));
            for (int i = 4; i <= 10; ++i) {
                EXPECT_EQ(cell[static_cast<size_t>(i)], "-");
            }
            EXPECT_TRUE(std::regex_match(cell[11], std::regex(R"(nLps=\d+( acc=[\d.]+%)?)")));
            EXPECT_TRUE(std::regex_match(cell[12], number));
            EXPECT_GT(std::stod(cell[12]), 0.0);
            EXPECT_EQ(cell[13], "e");
            EXPECT_TRUE(std::regex_match(cell[14], number));
            EXPECT_EQ(cell[15], "-");
        }
    }
}

TEST_F(FamilyRun, SummaryHasARowForEachTestAndSumsThatFit) {
    auto const summary = lines(readFile(dir->path + "ps_zolvm_sum.csv"));
    std::string const header = "Function,Class,Control87,Status87,ControlSSX,StatusSSX,Test,"
                               "Time (sec.),SrcName,Result,ExeName";
    auto const begin = std::find(summary.begin(), summary.end(), header);
    auto const end = std::find(summary.begin(), summary.end(), "END_DATA");
    ASSERT_NE(begin, summary.end());
    ASSERT_NE(end, summary.end());
    ASSERT_EQ(static_cast<size_t>(end - begin - 1), functions.size());
    auto row = begin + 1;
    for (std::string const& function : functions) {
        auto const cell = cells(*row++);
        ASSERT_EQ(cell.size(), 11U);
        EXPECT_EQ(cell[0], function);
        EXPECT_EQ(cell[1], "Timing");
        EXPECT_EQ(cell[6], function + "_timing_test");
        EXPECT_EQ(cell[8], "timing");
        EXPECT_EQ(cell[10], "ps_zolvm");
    }
    ASSERT_GT(summary.end() - end, 2);
    EXPECT_EQ(*(end + 1), ".Number of tests," + std::to_string(functions.size()));
}

TEST_F(FamilyRun, TextFileIsTheConsoleWithoutWhatPassesItBy) {
    std::string console = outcome->out;
    std::string const direct = "Sorting functions...\n";
    size_t const where = console.find(direct);
    ASSERT_NE(where, std::string::npos);
    std::string const copy = readFile(dir->path + "ps_zolvm.txt");
    // The copy begins when its key is applied, with the echo, which is written at the end.
    console.erase(where, direct.size());
    size_t const echo = console.find("Command line options: ");
    ASSERT_NE(echo, std::string::npos);
    EXPECT_EQ(copy, console.substr(echo));
    EXPECT_TRUE(contains(console, "Length=32768 \n"));
    EXPECT_EQ(outcome->err, "");
    EXPECT_EQ(outcome->status, 0);
}

TEST_F(FamilyRun, FramesAreSeventyNineColumnsWide) {
    int frames = 0;
    for (std::string const& line : lines(outcome->out)) {
        if (line.size() > 2 && line.front() == '+' && line[1] == '-') {
            EXPECT_EQ(line.size(), 79U) << line;
            ++frames;
        }
    }
    EXPECT_GE(frames, 4);
}

TEST_F(FamilyRun, NamesAndSignalFile) {
    auto const names = readFile(dir->path + "ps_zolvm_name.csv");
    EXPECT_TRUE(contains(names, "Abs,32f,A24,"));
    EXPECT_TRUE(contains(names, ",parmNames,"));
    auto const signal = lines(readFile(dir->path + "ps_zolvm.end"));
    ASSERT_EQ(signal.size(), 3U);
    EXPECT_TRUE(std::regex_match(signal[0], std::regex(R"(\d\d:\d\d:\d\d)")));
    EXPECT_EQ(signal[2], "");
}
