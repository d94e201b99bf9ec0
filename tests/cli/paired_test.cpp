// paired_test.cpp - two libraries in one run, in one process or two: rows, texts, and what becomes
// of bad ones, and of the one process when the other ends.
#include "program.h"

#include <algorithm>
#include <regex>

namespace {

std::string const own = PS_OWN_LIBRARY;
std::string const builtIn = PS_LIBRARY;
#ifdef __SANITIZE_ADDRESS__ // whose run time knows one, and wants the memory for itself
constexpr bool hasSpaces = false;
#else
constexpr bool hasSpaces = true;
#endif

// A run with -dBaseline and further keys; the table is t.csv in the directory.
std::string command(TempDirectory const& dir, std::string const& baseline,
                    std::string const& keys) {
    return "PS_CPU_MHZ=2000 " + psZolvm() + " -B -LPERF -rt -l" + dir.path +
           " '-dBaseline=" + baseline + "' " + keys;
}

Outcome paired(TempDirectory const& dir, std::string const& baseline, std::string const& keys,
               std::string const& environment = "") {
    return runShell(environment + " " + command(dir, baseline, keys));
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
    std::string const start = "-- Baseline: the start of " + own + "/libzolvm.so gave status ";
    std::regex const large("Abs,64f,A53,32768,.* ratio=[1-9]\\d+\\.\\d{4} ");
    for (bool const apart : {false, true}) {
        TempDirectory const dir;
        // The own library's function returns at once; the built-in one does its work.
        Outcome const outcome = paired(
            dir, own + "/libzolvm.so",
            std::string(apart ? "-dBaselineIn=process" : "") +
                " -f=zolsAbs_64f_A53 -f=zolsCos_32f_A11 -dBaselineFirst=1 -dPairTime=2 -dAccuracy=7"
                " -dBaselineFeatures=AVX2 -N2",
            apart ? "OWN_INIT=unasked OWN_ABS=q" : "");
        EXPECT_TRUE(contains(outcome.out, "baseline: Own Vector Math, 1.0.0 of my own, today"));
        EXPECT_TRUE(contains(outcome.out, start + "38: ")) << outcome.out; // it has no features
        std::string const table = readFile(dir.path + "t.csv");
        EXPECT_TRUE(std::regex_search(table, large));
        EXPECT_TRUE(contains(outcome.out, "-- Function zolsCos_32f_A11 is missing in the baseline, "
                                          "and is measured alone\n"));
        EXPECT_TRUE(std::regex_search(table, std::regex("Cos,32f,A11,32768,[-,]*nLps=\\d+,")));
        EXPECT_EQ(contains(outcome.out, "-- Baseline: in a second process: as asked\n"), apart);
        EXPECT_EQ(outcome.err, apart ? "in order\n" : ""); // its end, which isn't waited for long
    }
}

TEST(Paired, AFaultNamesItsSideEndsItsTestAndTheNextIsInStep) {
    std::string const ended = "-- The baseline's process ended: ";
    std::string const tested = "-- It came from the library under test\n";
    std::string const killed = ended + "killed by signal 11 (Segmentation fault)\n";
    std::tuple<char const*, std::string, char const*, std::string> const cases[] = {
        {"OWN_ABS=f", own, "", hasSpaces ? "-- It came from the baseline\n" : killed},
        {"OWN_ABS=f LD_LIBRARY_PATH='" PS_OWN_LIBRARY "'", builtIn, "", tested},
        {"OWN_ABS=f", own, "-dBaselineIn=process", killed},
        {"OWN_ABS=e", own, "-dBaselineIn=process", ended + "exit code 3\n"},
        {"OWN_ABS=f LD_LIBRARY_PATH='" PS_OWN_LIBRARY "'", builtIn, "-dBaselineIn=process",
         tested}};
    for (auto const& [environment, baseline, where, told] : cases) {
        SCOPED_TRACE(where + told);
        TempDirectory const dir;
        Outcome const outcome =
            paired(dir, baseline,
                   std::string(where) +
                       " -f=zolsAbs_32f_A24 -f=zolsAbs_64f_A53 -f=zolsSqr_64f_A53 -dAccuracy=0",
                   environment);
        EXPECT_TRUE(contains(outcome.out, told)) << outcome.out;
        EXPECT_TRUE(contains(outcome.out, "| .Successes       : 2 "));
        EXPECT_TRUE(contains(outcome.out, "| .....-EXCPTFAIL  : 1 "));
        std::string const table = readFile(dir.path + "t.csv");
        EXPECT_TRUE(std::regex_search(table, std::regex("Abs,64f,A53,32,.* ratio=")));
        EXPECT_FALSE(contains(table, "Abs,64f,A53,64,"));
        EXPECT_TRUE(std::regex_search(table, std::regex("Sqr,64f,A53,32768,.* ratio=")));
    }
}

TEST(Paired, WhatCannotBeMeasuredIsOneClearLine) {
    TempDirectory const dir;
    auto const made = [&dir](std::string const& name, std::string const& vm) {
        std::string const folder = dir.path + name;
        runShell("mkdir " + folder + " && cp '" + own + "/libzolcore.so' " + folder);
        writeFile(folder + "/libzolvm.so", vm);
        return folder;
    };
    std::string library = readFile(own + "/libzolvm.so");
    library[18] = '\xb7'; // of another architecture
    std::string const ended = "its process ended: ";
    std::string const bad = made("bad", std::string(4096, 'x'));
    std::string const empty = made("empty", "");
    std::string const half = made("half", readFile(own + "/libzolcore.so"));
    char const* const apart = "-dBaselineIn=process";
    std::string const none = "libzolvm.so holds none of the measured functions\n";
    std::tuple<char const*, std::string, char const*, std::string> const cases[] = {
        {"", "/no/where", "", "-- Baseline: /no/where is not there\n"},
        {"", half + "/..//none.so", "", "none.so is not there\n"},
        {"", bad, "",
         "-- Baseline: " + (hasSpaces ? "" : ended) + bad + "/libzolvm.so: invalid ELF header\n"},
        {"", half, "", none},
        {"", half, apart, none},
        {"", own, "-dPairTime=0", "PairTime=0 is not a number from 1 to 10000\n"},
        {"", own, "-dPairTime=10001", "PairTime=10001 is not a number from 1 to 10000\n"},
        {"", own, "-dPairTime=ten", "PairTime=ten is not a number from 1 to 10000\n"},
        {"", own, "-dBaselineFirst=2", "BaselineFirst=2 is not a number from 0 to 1\n"},
        {"", own, "-dBaselineIn=heap", "BaselineIn=heap is neither space nor process\n"},
        {"", own, "-dBaselineIn=", "BaselineIn= is neither space nor process\n"},
        {"", "", "", "-- Baseline: no path is given\n"},
        {"", own, "-dBaselineFeatures=X", "BaselineFeatures=X names no features\n"},
        {"", empty, apart, ended + empty + "/libzolvm.so: file too short\n"},
        {"", made("other", library), apart, "/libzolvm.so and took "},
        {"", own + "/libzolcore.so", apart, "/libzolcore.so and took "},
        {"OWN_INIT=", own, "-dBaselineIn=process -dBaselineFeatures=1", ended + "exit code 3\n"},
        {"OWN_INIT='No licence\nfor you\n'", own, apart, ended + "No licence\n"},
        {"trap '' XFSZ; ulimit -f 20000;", own, apart, "no shared memory: File too large\n"},
        {"ulimit -v 40000;", own, apart, "the shared memory: Cannot allocate memory\n"},
        {"ulimit -v 80000;", own, "-dPairTime=10000", "-- Baseline: no memory for the readings\n"}};
    for (auto const& [environment, baseline, keys, line] : cases) {
        if (!hasSpaces && contains(environment, "ulimit -v")) {
            continue;
        }
        SCOPED_TRACE(baseline + " " + keys + " " + line);
        Outcome const outcome =
            paired(dir, baseline, std::string(keys) + " -f=zolsAbs_64f_A53", environment);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(contains(outcome.out, line)) << outcome.out;
        EXPECT_FALSE(contains(outcome.out, "Length="));
        EXPECT_EQ(outcome.err, "");
    }
    Outcome const lost = runShell("PS_PEER_MEMORY=99 " + psZolvm());
    EXPECT_EQ(lost.err, "shared memory: Bad file descriptor\n");
    EXPECT_EQ(lost.status, 1);
}

TEST(Paired, WhereBothGoAndInWhichOrder) {
    TempDirectory const dir;
    // A core that is not known by its own name: the other file finds another one.
    std::string core = readFile(builtIn + "/libzolcore.so");
    core.replace(core.find("libzolcore.so"), 13, "libzolcorX.so");
    writeFile(dir.path + "libzolcore.so", core);
    writeFile(dir.path + "libzolvm.so", readFile(builtIn + "/libzolvm.so"));
    std::regex const told("-- Baseline: in a second process: (this build knows one name space|" +
                          dir.path + "/libzolvm.so finds .*/libzolcore.so instead of " + dir.path +
                          "/libzolcore.so)\n");
    EXPECT_TRUE(std::regex_search(paired(dir, dir.path, "-fnone").out, told));
    std::string const orders =
        paired(dir, own + "/../lib", "-fnone -N2 -dBaselineIn=space -dBaselineFirst=1",
               "LD_LIBRARY_PATH='" + own + "'")
            .out;
    std::regex const order(hasSpaces ? "/lib/../lib/libzolvm.so gave status -6: .*\n.* of " + own +
                                           "/libzolvm.so gave status -6: .*\n.*: both libraries in"
                                     : "-- Baseline: this build knows one name space\n");
    EXPECT_TRUE(std::regex_search(orders, order)) << orders;
}

TEST(Paired, OnlyTheAutoMethodReadsPairs) {
    TempDirectory const dir;
    Outcome const outcome = paired(dir, own, "-f=zolsAbs_64f_A53 -dMethod=Manual -dNumLoops=3");
    EXPECT_TRUE(contains(outcome.out, "-- Baseline is not used with this method"));
    EXPECT_TRUE(contains(readFile(dir.path + "t.csv"), ",nLps=3,"));
}

TEST(PairedProcess, BothHaveTheSameVectorsAndLengths) {
    TempDirectory const dir;
    Outcome const outcome =
        paired(dir, builtIn,
               "-dBaselineIn=process -f=zolsPowx_32f_A24 -f=zolsDiv_64fc_A53 -f=zolsModf_64f");
    EXPECT_TRUE(contains(outcome.out, "| .Successes       : 3 "));
    std::string const table = readFile(dir.path + "t.csv");
    std::regex const near(" ratio=(0\\.[89]|1\\.[01])\\d+ "); // most, on a busy machine, too
    EXPECT_GE(std::distance(std::sregex_iterator(table.begin(), table.end(), near), {}), 20);
}

TEST(PairedProcess, NoneStaysBehindAKilledOne) {
    for (char const* pause : {"0", "0.5"}) { // while it starts, and in its readings
        TempDirectory const dir;
        Outcome const outcome = runShell(
            "LD_LIBRARY_PATH=/no/where " +
            command(dir, builtIn, "-dBaselineIn=process -f=zolsAbs_64f_A53 -dPairTime=10000") +
            "</dev/zero >&2 & p=$!\n"
            "while [ -d /proc/$p ] && [ -z \"$c\" ]; do\n"
            "    read -r c </proc/$p/task/$p/children; sleep 0.01\n"
            "done; sleep " +
            pause + "; [ " + pause +
            " = 0 ] || { grep -qz ':/no/where$' /proc/$c/environ && cd /proc/$c/fd &&\n"
            "    [ 0 -ef /dev/null ] && [ 1 -ef /dev/null ] && [ 2 -ef ../../$p/fd/2 ] &&\n"
            "    grep -hx 'Cpus_allowed_list:.[0-9]*' /proc/$p/status /proc/$c/status |\n"
            "        uniq -d | grep -q .; } || exit 1\n" // on one processor
            "kill -9 $p; [ -n \"$c\" ] || exit 1\n"
            "for i in $(seq 500); do\n" // gone, or waiting for whoever inherited it
            "    grep -q ') [^Z]' /proc/$c/stat 2>/dev/null || exit 7; sleep 0.01\n"
            "done");
        EXPECT_EQ(outcome.status, 7) << pause;
    }
}
