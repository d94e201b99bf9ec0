// empty_test.cpp - the framework alone: a program without a test of its own and without the
// library goes through all steps of a run.
#include "program.h"

TEST(EmptyProgram, RunsAllStepsWithTheReplacements) {
    TempDirectory const dir;
    Outcome const outcome = runShell(psEmpty() + " -B -l" + dir.path + " -r -u -g -TSSE2 -N1");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(contains(outcome.out, "-TSSE2: ignored: incorrect option key\n"));
    EXPECT_TRUE(contains(outcome.out, "-N1: ignored: incorrect option key\n"));
    EXPECT_FALSE(contains(outcome.out, "integrated into PS"));
    EXPECT_TRUE(contains(outcome.out, "Norvo(R) Processor Identification"));
    EXPECT_FALSE(contains(outcome.out, "Feature Flags"));
    EXPECT_TRUE(contains(outcome.out, "| .Number of tests : 1 "));
    EXPECT_TRUE(contains(readFile(dir.path + "ps_empty.csv"), "function,Len/Size,Parm1,"));
    EXPECT_TRUE(contains(readFile(dir.path + "ps_empty_sum.csv"), "__psNorvoCpuTest,Information,"));
    EXPECT_FALSE(readFile(dir.path + "ps_empty.end").empty());
}
