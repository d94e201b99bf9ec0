// pstestrun_test.cpp - the run of one test: the walk over its sets, how results merge, and what
// ends it early.
#include <sstream>
#include <stdio_ext.h>
#include <sys/resource.h>

#include "psbase/psexception.h"
#include "pstest/psrunmode.h"
#include "runfixture.h"
#include "support/leaksofjumps.h"
#include "support/storedtext.h"

namespace {

class PsTestRun : public RunFixture {
protected:
    PsTestRun() {
        list.init("Len");
        list.translate("1; 2");
        addParm(test, list);
    }

    psIterator<int> list;
    ScriptedTest test;
};

// A test that faults in one of its steps, at one of its calls, by a signal or an exception.
class FaultingTest : public ScriptedTest {
public:
    FaultingTest(std::string name, int atCall, bool signal)
        : m_name(std::move(name)), m_calls(atCall), m_signal(signal) {}

    void beginTest() override { (step("beginTest"), psTest::beginTest()); }
    bool canStart() override { return step("canStart"), ScriptedTest::canStart(); }
    void parmsFromIstrm() override { (step("parmsFromIstrm"), psTest::parmsFromIstrm()); }
    void parmsNameToCstrm() override { (step("parmsNameToCstrm"), psTest::parmsNameToCstrm()); }
    bool canContinue() override { return step("canContinue"), psTest::canContinue(); }
    bool initData() override { return step("initData"), true; }
    void constToOstrm() override { step("constToOstrm"); }
    void parmsToOstrm() override { (step("parmsToOstrm"), psTest::parmsToOstrm()); }
    psResult runTiming() override { return step("runTiming"), psTest::runTiming(); }
    void funcToCstrm() override { (psTest::funcToCstrm(), step("funcToCstrm")); }
    void parmsToCstrm() override { (step("parmsToCstrm"), psTest::parmsToCstrm()); }
    void resultToCstrm(psResult result) override {
        psTest::resultToCstrm(result);
        step("resultToCstrm");
    }
    void flushData() override { step("flushData"); }
    void flushStart() override { step("flushStart"); }
    void endTest() override { step("endTest"); }

private:
    void step(std::string const& name) {
        if (name == m_name && --m_calls == 0) {
            g_ostrm << MSG_INFO; // a message that is left open
            m_signal ? raise(SIGFPE) : throw psException(psString("no such data"));
        }
    }
    std::string m_name;
    int m_calls;
    bool m_signal;
};

} // namespace

// Console and table of: a walk over two parameters, the last one fastest; a function with a number
// of operations; name lines; functions that are not hot; repeated, deprecated and wrong parameters.
TEST_F(PsTestRun, WholeRuns) {
    psStepIterator<int> step;
    step.init("Step", 5, 10, 2, StepMul);
    addParm(test, step);
    psTest::m_numParmsColm = 3;
    StreamCapture const summary(g_ustrm);
    EXPECT_EQ(test.run(), psResOk);
    auto const waiting = [](psTargetList& out) { return __fpending((*out.begin())->file); };
    EXPECT_EQ(waiting(g_ostrm) + waiting(g_cstrm) + waiting(g_ustrm), 0U);
    test.registered.clear(); // one set then
    test.flops = 50.0;
    psRunMode::m_nameMode = 1;
    EXPECT_EQ(test.run(), psResOk);
    psRunMode::m_nameMode = 0;
    psTest::m_hot = 2;
    EXPECT_EQ(test.run(), psResDataFail);
    psTest::m_hot = 1;
    EXPECT_EQ(test.run(), psResOk);
    psTest::m_hot = 0;
    addParm(test, list);
    list.addDeprecated(1, "one");
    EXPECT_EQ(test.run(), psResOk);
    list.translate("5; 5");
    EXPECT_EQ(test.run(), psResDataWrn);
    // The table may hold lines of earlier tests.
    std::string const told =
        std::regex_replace(lines(), std::regex(R"(Lines \d+ & \d+)"), "Lines N & N+1");
    EXPECT_TRUE(matchesStored("pstest/runs", told + rows()));
}

TEST_F(PsTestRun, ResultsMergeUpwardAndFailuresEndTheWalk) {
    int const rowsOfRuns[][5] = {// first and second result, level, merged result, sets measured
                                 {psResOk, psResAccurWrn, 3, psResAccurWrn, 2},
                                 {psResOk, psResWarning, 1, psResOk, 2},
                                 {psResAccurFail, psResOk, 7, psResAccurFail, 1}};
    for (auto const& [first, second, level, merged, sets] : rowsOfRuns) {
        SCOPED_TRACE(testing::Message() << first << " " << second << " at " << level);
        int measured = 0;
        test.onTiming = [&, one = first, two = second] { return ++measured == 1 ? one : two; };
        g_ostrm.setOutLevel(level);
        EXPECT_EQ(test.run(), merged);
        EXPECT_EQ(g_ostrm.getOutLevel(), level);
        EXPECT_EQ(measured, sets);
    }
}

// Warnings and failures are told, and only warnings get a row; then starts that fail.
TEST_F(PsTestRun, WhatIsToldAndKeptOfARunThatIsNotGood) {
    list.translate("3");
    psResult result = psResAccurWrn;
    test.onTiming = [&] {
        test.psTest::runTiming();
        return result;
    };
    EXPECT_EQ(test.run(), psResAccurWrn);
    g_ostrm.setOutLevel(1);
    EXPECT_EQ(test.run(), psResOk); // nothing more at the level of errors
    g_ostrm.setOutLevel(7);
    result = psResFuncFail;
    EXPECT_EQ(test.run(), psResFuncFail);
    result = psResUndefined;
    EXPECT_EQ(test.run(), psResFail);

    list.translate("1; 2");
    test.onTiming = [&] { return test.psTest::runTiming(); };
    int flushed = 0;
    test.onFlush = [&flushed] { ++flushed; };
    test.onData = [this] { return list.value() != 1; };
    EXPECT_EQ(test.run(), psResOk);
    EXPECT_EQ(flushed, 2);
    test.onData = [] { return false; };
    EXPECT_EQ(test.run(), psResDataFail);
    list.clear();
    EXPECT_EQ(test.run(), psResDataFail);
    test.onStart = [] { return false; };
    EXPECT_EQ(test.run(), psResDataFail);
    EXPECT_TRUE(matchesStored("pstest/not_good", lines() + rows()));
}

TEST_F(PsTestRun, AFaultPutsThePriorityBack) {
    int const before = getpriority(PRIO_PROCESS, 0);
    if (setpriority(PRIO_PROCESS, 0, before - 1) != 0) {
        GTEST_SKIP() << "this user cannot get a lowered priority back";
    }
    setpriority(PRIO_PROCESS, 0, before);
    psTool::m_priority = 1;
    static int measuredAt = before;
    test.m_funcLoop = [](int, long long*) -> psResult {
        measuredAt = getpriority(PRIO_PROCESS, 0);
        return raise(SIGILL);
    };
    EXPECT_EQ(test.run(), psResExcptFail);
    psTool::m_priority = 0;
    EXPECT_EQ(measuredAt, -20);
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before);
    unblockSignals();
}

TEST_F(PsTestRun, AFaultInAnyStepEndsItsTestAlone) {
    [[maybe_unused]] LeaksOfJumps const lost;
    StreamCapture summary(g_ustrm);
    StreamCapture names(g_qstrm);
    psRunMode::m_nameMode = 2;
    list.addDeprecated(1, "one");
    ScriptedTest next("zNext");
    addParm(next, list);
    std::pair<char const*, int> const steps[] = {
        {"beginTest", 1},     {"canStart", 1},    {"parmsFromIstrm", 1}, {"parmsNameToCstrm", 1},
        {"canContinue", 2},   {"initData", 2},    {"constToOstrm", 1},   {"parmsToOstrm", 2},
        {"runTiming", 2},     {"funcToCstrm", 2}, {"parmsToCstrm", 2},   {"resultToCstrm", 1},
        {"resultToCstrm", 2}, {"flushData", 2},   {"flushStart", 1},     {"endTest", 1}};
    g_ostrm.setOutLevel(15);
    g_ostrm << MSG_WARN; // stays so through all runs
    for (int i = 0; i < 2 * std::ssize(steps); ++i) {
        auto const& [step, call] = steps[i / 2];
        bool const signal = i % 2 == 0;
        SCOPED_TRACE(testing::Message() << step << signal);
        FaultingTest faulting(step, call, signal);
        addParm(faulting, list);
        EXPECT_EQ(faulting.run(), psResExcptFail);
        EXPECT_TRUE(lines().ends_with(
            (signal ? "--ZOL. Signal: FP error, such as overflow, division by zero, invalid "
                      "operation. in "
                    : "--ZOL. Exception: no such data in ") +
            std::string(step) + "\n"))
            << lines();
        EXPECT_EQ(g_ostrm.getOutLevel(), 15);
        EXPECT_TRUE(summary.text().ends_with("EXCPTFAIL,\n")) << summary.text();
        unblockSignals();

        std::size_t const rowsBefore = rows().size();
        std::size_t const namesBefore = names.text().size();
        EXPECT_EQ(next.run(), psResOk);
        EXPECT_EQ(rows().substr(rowsBefore), "zNext,1,nLps=10,12.5,elem,0.1,-\n"
                                             "zNext,2,nLps=10,12.5,elem,0.1,-\n"
                                             "zNext,one,deprecated,12.5,elem,0.1,-\n");
        EXPECT_EQ(g_ostrm.getMsgLevel(), MSG_WARN);
        EXPECT_EQ(names.text().substr(namesBefore), "zNext,Len,parmNames,-,-,-,-\n");
    }
    psRunMode::m_nameMode = 0;
    for (char const* step : {"beginTest", "canStart", "flushStart", "endTest"}) {
        FaultingTest(step, 1, false).startAndStop();
        EXPECT_TRUE(lines().ends_with("no such data in startAndStop of zScript test\n")) << step;
        EXPECT_EQ(g_ostrm.getMsgLevel(), MSG_WARN);
        g_ostrm << "\n";
    }
    g_ostrm << MSG_PERF; // as before
    std::regex const row("z\\w+,Timing,(-,){4}zScript_timing_test,\\d,script.cpp,(OK|EXCPTFAIL),");
    std::istringstream all(summary.text());
    for (std::string line; std::getline(all, line);) {
        EXPECT_TRUE(std::regex_match(line, row)) << line;
    }
}
