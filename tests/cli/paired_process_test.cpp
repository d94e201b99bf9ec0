// paired_process_test.cpp - two libraries in two processes: readings of both, and what becomes of
// the one process when the other ends.
#include "program.h"

#include <regex>

namespace {

std::string const own = PS_OWN_LIBRARY;
std::string const builtIn = PS_LIBRARY;

std::string command(TempDirectory const& dir, std::string const& baseline,
                    std::string const& keys) {
    return "PS_CPU_MHZ=2000 " + psZolvm() + " -B -LPERF -rt -l" + dir.path +
           " -dBaselineIn=process '-dBaseline=" + baseline + "' " + keys;
}

} // namespace

TEST(PairedProcess, BothAreReadAndSettingsReachTheOther) {
    TempDirectory const dir;
    // The own library's function returns at once; the built-in one does its work.
    Outcome const outcome =
        runShell("OWN_ABS=q " +
                 command(dir, own, "-f=zolsAbs_64f_A53 -dBaselineFirst=1 -dBaselineFeatures=AVX2"));
    EXPECT_TRUE(contains(outcome.out, "-- Baseline: in a second process: as asked\n"));
    EXPECT_TRUE(contains(outcome.out, "gave status 38: ")); // it has no features
    EXPECT_TRUE(contains(outcome.out, "baseline: Own Vector Math, 1.0.0 of my own, today"));
    EXPECT_EQ(outcome.err, "in order\n"); // the other process's end
    std::regex const large("Abs,64f,A53,32768,.* ratio=[1-9]\\d+\\.\\d{4} ");
    EXPECT_TRUE(std::regex_search(readFile(dir.path + "t.csv"), large));

    // The same vectors and lengths: most points of a busy machine read alike.
    Outcome const shapes =
        runShell(command(dir, builtIn, "-f=zolsPowx_32f_A24 -f=zolsDiv_64fc_A53 -f=zolsModf_64f"));
    EXPECT_TRUE(contains(shapes.out, "| .Successes       : 3 "));
    std::string const table = readFile(dir.path + "t.csv");
    std::regex const near(" ratio=(0\\.[89]|1\\.[01])\\d+ ");
    EXPECT_GE(std::distance(std::sregex_iterator(table.begin(), table.end(), near), {}), 20);
}

TEST(PairedProcess, TheEndOfOneSideEndsATestAndTheNextIsInStep) {
    std::tuple<std::string, std::string, char const*> const cases[] = {
        {"OWN_ABS=f ", own,
         "-- The baseline's process ended: killed by signal 11 (Segmentation fault)\n"},
        {"OWN_ABS=e ", own, "-- The baseline's process ended: exit code 3\n"},
        {"OWN_ABS=f LD_LIBRARY_PATH='" + own + "' ", builtIn,
         "-- It came from the library under test\n"}};
    for (auto const& [environment, baseline, told] : cases) {
        SCOPED_TRACE(told);
        TempDirectory const dir;
        Outcome const outcome = runShell(
            environment +
            command(dir, baseline, "-f=zolsAbs_32f_A24 -f=zolsAbs_64f_A53 -f=zolsSqr_64f_A53"));
        EXPECT_TRUE(contains(outcome.out, told)) << outcome.out;
        EXPECT_TRUE(contains(outcome.out, "| .Successes       : 2 "));
        EXPECT_TRUE(contains(outcome.out, "| .....-EXCPTFAIL  : 1 "));
        std::string const table = readFile(dir.path + "t.csv");
        EXPECT_TRUE(std::regex_search(table, std::regex("Abs,64f,A53,32,.* ratio=")));
        EXPECT_FALSE(contains(table, "Abs,64f,A53,64,"));
        EXPECT_TRUE(std::regex_search(table, std::regex("Sqr,64f,A53,32768,.* ratio=")));
    }
}

TEST(PairedProcess, NoneStaysBehindAKilledOne) {
    for (char const* pause : {"0", "0.5"}) { // while it starts, and in its readings
        TempDirectory const dir;
        Outcome const outcome =
            runShell("LD_LIBRARY_PATH=/no/where " +
                     command(dir, builtIn, "-f=zolsAbs_64f_A53 -dPairTime=10000") +
                     ">/dev/null & p=$!\n"
                     "while [ -d /proc/$p ] && [ -z \"$c\" ]; do\n"
                     "    read -r c </proc/$p/task/$p/children; sleep 0.01\n"
                     "done; sleep " +
                     pause + "; [ " + pause +
                     " = 0 ] || grep -qz ':/no/where$' /proc/$c/environ || exit 1\n"
                     "kill -9 $p; [ -n \"$c\" ] || exit 1\n"
                     "for i in $(seq 500); do\n" // gone, or waiting for whoever inherited it
                     "    grep -q ') [^Z]' /proc/$c/stat 2>/dev/null || exit 7; sleep 0.01\n"
                     "done");
        EXPECT_EQ(outcome.status, 7) << pause;
    }
}

TEST(PairedProcess, WhatTheOtherCannotLoadIsOneClearLine) {
    TempDirectory const dir;
    std::string library = readFile(own + "/libzolvm.so");
    auto const made = [&dir](std::string const& name, std::string const& vm) {
        runShell("mkdir " + dir.path + name + " && cp '" + own + "/libzolcore.so' " + dir.path +
                 name);
        writeFile(dir.path + name + "/libzolvm.so", vm);
        return dir.path + name;
    };
    std::string const core = readFile(own + "/libzolcore.so");
    library[18] = '\xb7'; // of another architecture
    std::tuple<std::string, std::string> const cases[] = {
        {made("empty", ""), "/libzolvm.so: file too short"},
        {made("other", library), "/libzolvm.so and took "},
        {made("half", core), "/libzolvm.so holds none of the measured functions"},
        {own + "/libzolcore.so", "/libzolcore.so and took "}};
    for (auto const& [baseline, line] : cases) {
        SCOPED_TRACE(line);
        Outcome const outcome = runShell(command(dir, baseline, "-f=zolsAbs_64f_A53"));
        EXPECT_TRUE(std::regex_search(outcome.out, std::regex("-- Baseline: .*" + line)))
            << outcome.out;
        EXPECT_FALSE(contains(outcome.out, "Length="));
        EXPECT_FALSE(outcome.out.ends_with("\n\n")); // one line of the loader's words alone
        EXPECT_EQ(outcome.err, "");
    }
    Outcome const small =
        runShell("trap '' XFSZ; ulimit -f 20000; " + command(dir, own, "-f=zolsAbs_64f_A53"));
    EXPECT_TRUE(contains(small.out, "-- Baseline: no shared memory: File too large\n"));
}
