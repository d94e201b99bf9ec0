// fault_test.cpp - what a run reports of functions that misbehave, and what is on disk when a
// run is ended from outside.
#include "program.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

namespace {

std::string const executable = "'" PS_FAULTS "'";
std::string const program = "PS_CPU_MHZ=1000 " + executable; // else each start estimates it

long linesWith(std::string const& part, std::string const& text) {
    auto const all = lines(text);
    return std::count_if(all.begin(), all.end(),
                         [&](std::string const& line) { return contains(line, part); });
}

// Runs the named tests and zGood behind them, with table and summary.
struct FaultRun {
    explicit FaultRun(std::string const& tests, std::string const& keys = "") {
        std::string command = program + " -B -dMethod=Manual -l" + dir.path + " -r -u " + keys;
        for (std::string const& test : {tests, std::string("zGood")}) {
            command += " -f" + test;
        }
        outcome = runShell(command);
        table = readFile(dir.path + "ps_faults.csv");
        summary = readFile(dir.path + "ps_faults_sum.csv");
    }
    // The summary row's result word of a test.
    std::string word(std::string const& test) const {
        for (std::string const& line : lines(summary)) {
            auto const cell = cells(line);
            if (cell.size() == 11 && cell[0] == test) {
                return cell[9];
            }
        }
        return "";
    }
    long rows(std::string const& test) const { return linesWith(test + ",", table); }
    TempDirectory dir;
    Outcome outcome;
    std::string table;
    std::string summary;
};

} // namespace

TEST(Fault, EachSignalEndsItsTestAndTheNextOneRuns) {
    std::tuple<char const*, char const*> const cases[] = {
        {"aFpe", "--ZOL. Signal: FP error, such as overflow, division by zero, invalid operation."},
        {"bIll", "--ZOL. Signal: Illegal instruction."},
        {"cSegv", "--ZOL. Signal: Illegal storage access."}};
    // One run: three signals, each caught once.
    FaultRun const run("AtFirstCall");
    for (auto const& [test, text] : cases) {
        EXPECT_EQ(run.word(std::string(test) + "AtFirstCall"), "EXCPTFAIL");
        EXPECT_TRUE(contains(run.outcome.out, text)) << text;
    }
    EXPECT_EQ(run.word("zGood"), "OK");
    EXPECT_EQ(run.rows("zGood"), 3);
    EXPECT_EQ(run.outcome.status, 0);
}

TEST(Fault, InTheLoopInALaterSetAndInTheStart) {
    FaultRun const run("dFpeInLoop -fgIllInStart -ffSegvLater", "-dNumLoops=2000000");
    EXPECT_EQ(run.word("dFpeInLoop"), "EXCPTFAIL");
    EXPECT_EQ(run.word("gIllInStart"), "EXCPTFAIL");
    EXPECT_EQ(run.word("fSegvLater"), "EXCPTFAIL");
    EXPECT_EQ(run.rows("fSegvLater"), 2) << "lines completed before the fault";
    EXPECT_EQ(run.word("zGood"), "OK");
}

TEST(Fault, AtTheEndOfATestIsReportedBehindItsResult) {
    FaultRun const run("lSegvAtEnd", "-g");
    EXPECT_TRUE(contains(run.outcome.out, "--ZOL. Signal: Illegal storage access. in endTest\n"));
    EXPECT_EQ(linesWith("lSegvAtEnd,Timing,", run.summary), 2);
    EXPECT_TRUE(contains(run.summary, ",EXCPTFAIL,ps_faults\nzGood,"));
    EXPECT_TRUE(contains(run.summary, ".....-EXCPTFAIL ,1\n"));
    EXPECT_EQ(run.rows("zGood"), 3);
    EXPECT_EQ(run.outcome.status, 0);
    EXPECT_FALSE(readFile(run.dir.path + "ps_faults.end").empty());
}

TEST(Fault, ASecondFaultOfTheSameSignalEndsTheProcessWithNothingLost) {
    FaultRun const run("aFpeAtFirstCall -fdFpeInLoop");
    EXPECT_EQ(run.outcome.status, 128 + SIGFPE);
    EXPECT_EQ(run.word("aFpeAtFirstCall"), "EXCPTFAIL");
    EXPECT_TRUE(contains(run.outcome.out, "--ZOL. Signal: FP error"));
    EXPECT_TRUE(run.table.ends_with('\n')) << run.table;
}

TEST(Fault, FlagsFailuresAndWritesBeyondTheVector) {
    FaultRun const run("hInvalidFlag -fiFails -fjTooFar", "-LWARN");
    EXPECT_EQ(run.word("hInvalidFlag"), "BADSTSWRN");
    EXPECT_TRUE(contains(run.outcome.out, "-- Status    SSX: ?Invalid "));
    EXPECT_EQ(run.rows("hInvalidFlag"), 3);
    EXPECT_EQ(run.word("iFails"), "FUNCFAIL");
    EXPECT_EQ(run.rows("iFails"), 0);
    // One element too far stays inside the block: it harms neither the book nor later tests.
    EXPECT_EQ(run.word("jTooFar"), "OK");
    EXPECT_EQ(run.word("zGood"), "OK");
    EXPECT_EQ(FaultRun("hInvalidFlag", "-W").word("hInvalidFlag"), "EXCPTFAIL");
    EXPECT_TRUE(contains(run.summary, ".Number of tests,4\n"));
    EXPECT_TRUE(contains(run.summary, ".....-BADSTSWRN ,1\n"));
}

TEST(Fault, AKilledRunLeavesAllCompletedLinesWhole) {
    for (int const signal : {SIGKILL, SIGTERM}) {
        TempDirectory const dir;
        std::string const keys = " -B -LPERF -dMethod=Manual -dNumLoops=1 -fkSlow -l" + dir.path;
        std::thread killer([&] {
            // The table shows when the run is in the middle of its work.
            for (int i = 0; i < 2000; ++i) {
                if (linesWith("kSlow,", readFile(dir.path + "ps_faults.csv")) > 2) {
                    break;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            runShell("kill -" + std::to_string(signal) + " $(cat " + dir.path + "pid)");
        });
        Outcome const outcome =
            runShell("PS_CPU_MHZ=1000 sh -c 'echo $$ >" + dir.path + "pid; exec \"$0\" \"$@\"' " +
                     executable + keys + " -r -o -u");
        killer.join();
        EXPECT_EQ(outcome.status, 128 + signal);
        std::string const table = readFile(dir.path + "ps_faults.csv");
        std::string const copy = readFile(dir.path + "ps_faults.txt");
        for (std::string const& text :
             {table, copy, outcome.out, readFile(dir.path + "ps_faults_sum.csv")}) {
            EXPECT_TRUE(text.ends_with('\n')) << text;
        }
        // What the table has of a set, console and copy had before.
        EXPECT_GE(linesWith("  perf=", copy), linesWith("kSlow,", table));
        EXPECT_GE(linesWith("  perf=", outcome.out), linesWith("kSlow,", table));
    }
}
