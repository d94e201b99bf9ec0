// fault_test.cpp - what a run reports of functions that misbehave, and what is on disk when a
// run is ended from outside.
#include "program.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <thread>

namespace {

std::string const program = "'" PS_FAULTS "'";

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
    int rows(std::string const& test) const {
        int count = 0;
        for (std::string const& line : lines(table)) {
            count += line.rfind(test + ",", 0) == 0 ? 1 : 0;
        }
        return count;
    }
    TempDirectory dir;
    Outcome outcome;
    std::string table;
    std::string summary;
};

void expectWholeLines(std::string const& text) {
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.back(), '\n');
}

} // namespace

TEST(Fault, EachSignalEndsItsTestAndTheNextOneRuns) {
    struct {
        char const* test;
        char const* text;
    } const cases[] = {
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

TEST(Fault, ASecondFaultOfTheSameSignalEndsTheProcessWithNothingLost) {
    FaultRun const run("aFpeAtFirstCall -fdFpeInLoop");
    EXPECT_EQ(run.outcome.status, 128 + SIGFPE);
    EXPECT_EQ(run.word("aFpeAtFirstCall"), "EXCPTFAIL");
    EXPECT_TRUE(contains(run.outcome.out, "--ZOL. Signal: FP error"));
    expectWholeLines(run.table);
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
                if (lines(readFile(dir.path + "ps_faults.csv")).size() > 12) {
                    break;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            runShell("kill -" + std::to_string(signal) + " $(cat " + dir.path + "pid)");
        });
        Outcome const outcome =
            runShell("sh -c 'echo $$ >" + dir.path + "pid; exec \"$0\" \"$@\"' " + program + keys +
                     " -r -o -u");
        killer.join();
        EXPECT_EQ(outcome.status, 128 + signal);
        std::string const table = readFile(dir.path + "ps_faults.csv");
        expectWholeLines(table);
        EXPECT_GT(lines(table).size(), 12U);
        expectWholeLines(readFile(dir.path + "ps_faults.txt"));
    }
}
