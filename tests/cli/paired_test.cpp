// paired_test.cpp - two libraries in one run: rows, texts, and what becomes of bad ones.
#include "program.h"

#include <algorithm>
#include <regex>

namespace {

std::string const own = PS_OWN_LIBRARY;

// A run with -dBaseline and further keys; the table is t.csv in the directory.
Outcome paired(TempDirectory const& dir, std::string const& baseline, std::string const& keys,
               std::string const& environment = "") {
    return runShell(environment + " PS_CPU_MHZ=2000 " + psZolvm() + " -B -LPERF -rt -l" + dir.path +
                    " '-dBaseline=" + baseline + "' " + keys);
}

} // namespace

TEST(Paired, EveryPointHasARatioInTableAndText) {
    TempDirectory const dir;
    Outcome const outcome =
        paired(dir, PS_LIBRARY, "-f=zolsAbs_32f_A24 -f=zolsPowx_32f_A24 -f=zolsModf_64f");
    for (std::string const line :
         {"under test: " PS_LIBRARY "/libzolvm.so", "baseline: ZOL Vector Math, ",
          "baseline: " PS_LIBRARY "/libzolvm.so"}) {
        EXPECT_TRUE(contains(outcome.out, "| Library  : " + line)) << outcome.out;
    }
    std::regex const place("\n-- Baseline: (both libraries in this process, each in a name space "
                           "of its own|in a second process: this build knows one name space)\n");
    EXPECT_TRUE(std::regex_search(outcome.out, place));
    EXPECT_TRUE(contains(outcome.out, "| .Successes       : 3 "));
    std::regex const comment("nLps=\\d+ base=[0-9.]+ ratio=(\\d+\\.\\d{4}) lo=(\\d+\\.\\d{4}) "
                             "hi=(\\d+\\.\\d{4}) nPrs=\\d+ (quiet|shared)");
    std::vector<double> ratios;
    for (std::string const& line : lines(readFile(dir.path + "t.csv"))) {
        if (std::vector<std::string> const row = cells(line);
            row.size() == 16 && row[0] != "funcBase") {
            std::smatch match;
            ASSERT_TRUE(std::regex_match(row[11], match, comment)) << line;
            EXPECT_LE(std::stod(match[2]), std::stod(match[1]));
            EXPECT_GE(std::stod(match[3]), std::stod(match[1]));
            ratios.push_back(std::stod(match[1]));
            std::string const shown = row[11].substr(row[11].find(' '));
            EXPECT_TRUE(contains(outcome.out, "clocks\n " + shown + "\n")) << shown;
        }
    }
    ASSERT_EQ(ratios.size(), 33U);
    // The same library, and a machine that may be busy with anything.
    std::sort(ratios.begin(), ratios.end());
    EXPECT_NEAR(ratios[16], 1.0, 0.5);
}

TEST(Paired, TheRatioIsUnderTestByBaselineAndSettingsReachTheBaseline) {
    TempDirectory const dir;
    // The own library's function returns at once; the built-in one does its work.
    Outcome const outcome =
        paired(dir, own + "/libzolvm.so",
               "-f=zolsAbs_64f_A53 -dBaselineFirst=1 -dPairTime=2 -dAccuracy=7");
    EXPECT_TRUE(contains(outcome.out, "baseline: Own Vector Math, 1.0.0 of my own, today"));
    std::regex const large("Abs,64f,A53,32768,.* ratio=[1-9]\\d+\\.\\d{4} ");
    EXPECT_TRUE(std::regex_search(readFile(dir.path + "t.csv"), large));

    Outcome const features = paired(dir, own, "-f=zolsAbs_64f_A53 -dBaselineFeatures=AVX2");
    std::string const start = "-- Baseline: the start of " + own + "/libzolvm.so gave status ";
    EXPECT_TRUE(contains(features.out, start + "38: ")) << features.out; // it has none
    EXPECT_TRUE(contains(paired(dir, own, "-fnone -N2").out, start + "-6: "));
}

TEST(Paired, AFaultNamesItsSideAndAMissingFunctionIsMeasuredAlone) {
    TempDirectory const dir;
    Outcome const outcome =
        paired(dir, own, "-f=zolsAbs_64f_A53 -f=zolsSqr_64f_A53 -f=zolsCos_32f_A11 -dAccuracy=0",
               "OWN_ABS=f");
    // A build that knows one name space has the baseline in a second process, which it ends.
    bool const inSpace = contains(outcome.out, "each in a name space");
    EXPECT_TRUE(contains(outcome.out, inSpace ? "Illegal storage access. in "
                                              : "-- The baseline's process ended: killed by"));
    EXPECT_EQ(contains(outcome.out, "-- It came from the baseline\n"), inSpace);
    EXPECT_TRUE(contains(
        outcome.out,
        "-- Function zolsCos_32f_A11 is missing in the baseline, and is measured alone\n"));
    EXPECT_TRUE(contains(outcome.out, "| .....-EXCPTFAIL  : 1 "));
    EXPECT_TRUE(contains(outcome.out, "| .Successes       : 2 "));
    std::string const table = readFile(dir.path + "t.csv");
    EXPECT_TRUE(contains(table, "Abs,64f,A53,32,")); // before the fault
    EXPECT_FALSE(contains(table, "Abs,64f,A53,64,"));
    EXPECT_TRUE(std::regex_search(table, std::regex("Sqr,64f,A53,32768,.* ratio=")));
    EXPECT_TRUE(std::regex_search(table, std::regex("Cos,32f,A11,32768,[-,]*nLps=\\d+,")));

    Outcome const tested =
        paired(dir, PS_LIBRARY, "-f=zolsAbs_64f_A53", "OWN_ABS=f LD_LIBRARY_PATH='" + own + "'");
    EXPECT_TRUE(contains(tested.out, "-- It came from the library under test\n"));
}

TEST(Paired, WhatCannotBeMeasuredIsOneClearLine) {
    TempDirectory const dir;
    writeFile(dir.path + "libzolvm.so", std::string(4096, 'x'));
    runShell("cp '" + own + "/libzolcore.so' " + dir.path);
    runShell("mkdir " + dir.path + "half && cp '" + own + "/libzolcore.so' " + dir.path +
             "half/libzolvm.so && cp '" + own + "/libzolcore.so' " + dir.path + "half");
#ifdef __SANITIZE_ADDRESS__ // which knows one name space
    std::string const here = "its process ended: " + dir.path;
#else
    std::string const here = dir.path + '/'; // another process would do no better
#endif
    std::tuple<std::string, char const*, std::string> const cases[] = {
        {"/no/where", "", "-- Baseline: /no/where is not there"},
        {dir.path + "half/..//none.so", "", "none.so is not there"},
        {dir.path, "", "-- Baseline: " + here + "libzolvm.so: invalid ELF header"},
        {dir.path + "half", "", "libzolvm.so holds none of the measured functions"},
        {own, "-dPairTime=0", "-- Baseline: PairTime=0 is not a number from 1 to 10000"},
        {own, "-dPairTime=10001", "-- Baseline: PairTime=10001 is not a number from 1 to 10000"},
        {own, "-dPairTime=ten", "-- Baseline: PairTime=ten is not a number from 1 to 10000"},
        {own, "-dBaselineFirst=2", "-- Baseline: BaselineFirst=2 is not a number from 0 to 1"},
        {own, "-dBaselineIn=heap", "-- Baseline: BaselineIn=heap is neither space nor process"},
        {own, "-dBaselineIn=", "-- Baseline: BaselineIn= is neither space nor process"},
        {"", "", "-- Baseline: no path is given"},
        {own, "-dBaselineFeatures=X", "-- Baseline: BaselineFeatures=X names no features"}};
    for (auto const& [baseline, keys, line] : cases) {
        SCOPED_TRACE(baseline + " " + keys);
        Outcome const outcome = paired(dir, baseline, std::string(keys) + " -f=zolsAbs_64f_A53");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(contains(outcome.out, line)) << outcome.out;
        EXPECT_FALSE(contains(outcome.out, "Length="));
    }
    // A core that is not known by its own name: the other file finds another one.
    std::string core = readFile(PS_LIBRARY "/libzolcore.so");
    core.replace(core.find("libzolcore.so"), 13, "libzolcorX.so");
    writeFile(dir.path + "libzolcore.so", core);
    writeFile(dir.path + "libzolvm.so", readFile(PS_LIBRARY "/libzolvm.so"));
    std::regex const told("-- Baseline: in a second process: (this build knows one name space|" +
                          dir.path + "/libzolvm.so finds .*/libzolcore.so instead of " + dir.path +
                          "/libzolcore.so)\n");
    EXPECT_TRUE(std::regex_search(paired(dir, dir.path, "-fnone").out, told));
#ifndef __SANITIZE_ADDRESS__ // which wants the memory for itself
    EXPECT_TRUE(contains(paired(dir, own, "-fnone -dPairTime=10000", "ulimit -v 80000;").out,
                         "-- Baseline: no memory for the readings\n"));
#endif
}

TEST(Paired, OnlyTheAutoMethodReadsPairs) {
    TempDirectory const dir;
    Outcome const outcome = paired(dir, own, "-f=zolsAbs_64f_A53 -dMethod=Manual -dNumLoops=3");
    EXPECT_TRUE(contains(outcome.out, "-- Baseline is not used with this method"));
    EXPECT_TRUE(contains(readFile(dir.path + "t.csv"), ",nLps=3,"));
}
