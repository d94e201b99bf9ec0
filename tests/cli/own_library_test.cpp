// own_library_test.cpp - another library in the place of the built-in one: by the search path
// of the loader, without a new build.
#include "program.h"

TEST(OwnLibrary, TheUnchangedProgramMeasuresItAndNamesWhatItLacks) {
    TempDirectory const dir;
    Outcome const outcome = runShell(
        "LD_LIBRARY_PATH='" PS_OWN_LIBRARY "' " + psZolvm() +
        " -B -LPERF -fzolsAbs_ -f=zolsSqr_64f_A53 -f=zolsPowx_32f_A24 -l" + dir.path + " -r");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(contains(outcome.out, "| Library  : Own Vector Math, 1.0.0 of my own, today "));
    EXPECT_TRUE(contains(outcome.out, "-- Function zolsAbs_32fc_A11 is missing in the library\n"
                                      "-- Can't start timing\n"));
    EXPECT_TRUE(contains(outcome.out, "-- Function zolsPowx_32f_A24 is missing in the library\n"));
    std::string const table = readFile(dir.path + "ps_zolvm.csv");
    EXPECT_TRUE(contains(table, "Library,Own Vector Math"));
    EXPECT_TRUE(contains(table, "Abs,32f,A24,32768,"));
    EXPECT_TRUE(contains(table, "Sqr,64f,A53,32768,"));
}
