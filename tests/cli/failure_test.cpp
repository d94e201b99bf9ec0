// failure_test.cpp - what goes wrong in a real process: files, disks, pipes and signals.
#include "program.h"

TEST(Failure, AnOutputFileThatCannotBeOpenedEndsTheRunAfterTheEcho) {
    TempDirectory const dir;
    Outcome const outcome =
        runShell(psZolvm() + " -B -r" + dir.path + "no/where.csv -g" + dir.path + "x.end -h");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(
        contains(outcome.out, "-- Can't open file " + dir.path + "no/where.csv to write: \n"));
    EXPECT_TRUE(contains(outcome.out, "-h: type short help and exit\n"));
    EXPECT_TRUE(contains(outcome.out, "FATAL ERROR: can't open output file for writing\n"));
    EXPECT_FALSE(contains(outcome.out, "QUICK HELP"));
    EXPECT_FALSE(readFile(dir.path + "x.end").empty());
}

TEST(Failure, ADirectoryIsNoIniFileAndStaysWhole) {
    TempDirectory const dir;
    writeFile(dir.path + "kept", "text");
    Outcome const outcome = runShell(psZolvm() + " -B -I" + dir.path);
    EXPECT_TRUE(contains(outcome.out, "FATAL ERROR: can't open ini-file for writing\n"));
    EXPECT_EQ(readFile(dir.path + "kept"), "text");
}

TEST(Failure, AFullDiskAndAClosedPipeAreToldOnceAndTheRunGoesOn) {
    TempDirectory const dir;
    std::string const run = psZolvm() + " -B -f=zolsSqr_32f_A24 -LPERF -r" + dir.path + "t.csv";
    Outcome const full = runShell(run + " -o/dev/full >/dev/full");
    EXPECT_EQ(full.status, 0);
    auto const told = lines(full.err);
    EXPECT_EQ(told.size(), 2U) << full.err;
    EXPECT_TRUE(contains(readFile(dir.path + "t.csv"), "Sqr,32f,A24,32768,"));

    Outcome const closed = runShell("( " + run + "; echo status $? >&2 ) | head -n 1");
    EXPECT_TRUE(contains(closed.err, "status 0")) << closed.err;
    EXPECT_TRUE(contains(readFile(dir.path + "t.csv"), "Sqr,32f,A24,32768,"));
}

TEST(Failure, ClosedStandardInputTakesTheDefaults) {
    Outcome const outcome = runShell(psZolvm() + " -A -e -f=zolsSqr_32f_A24 <&-");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(contains(outcome.out, "   1\t__psNorvoCpuTest") ||
                contains(outcome.out, "   1\tzolsSqr_32f_A24"));
}

// A named pipe as signal file holds the program until it is read: all else has to be there by then.
TEST(Failure, TheSignalFileComesBehindAllOthersAndTheIniFileIsWrittenOnce) {
    TempDirectory const dir;
    Outcome const outcome = runShell(
        "cd " + dir.path + "; mkfifo x.end; PS_CPU_MHZ=1000 " + psEmpty() + " -B -I" + dir.path +
        "x.ini -LTRACE -o" + dir.path + "x.txt -g" + dir.path +
        "x.end >x.out & i=0; until tail -n 1 x.txt | grep -q 'out of main' || [ $i = 100 ]; do "
        "i=$((i + 1)); sleep 0.05; done; cp x.txt copy; stat -c %i x.ini; cat x.end >signal; wait; "
        "stat -c %i x.ini; cmp x.txt copy");
    auto const inodes = lines(outcome.out);
    ASSERT_EQ(inodes.size(), 2U) << outcome.out;
    EXPECT_EQ(inodes[0], inodes[1]);
    EXPECT_EQ(lines(readFile(dir.path + "signal")).size(), 3U);
}
