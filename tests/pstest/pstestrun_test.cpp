// pstestrun_test.cpp - the run of one test: the walk over its sets, how results merge, and what
// ends it early.
#include <csignal>
#include <sstream>
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

    // A further run leaves these lines at the end of the console.
    void expectRun(psResult result, std::string const& lastLines) {
        EXPECT_EQ(test.run(), result);
        std::string const all = lines();
        EXPECT_TRUE(all.ends_with(lastLines)) << all;
    }

    psIterator<int> list;
    ScriptedTest test;
};

// A test that faults in one of its steps, at one of its calls.
class FaultingTest : public ScriptedTest {
public:
    FaultingTest(std::string name, int atCall) : m_name(std::move(name)), m_calls(atCall) {}

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
            raise(SIGFPE);
        }
    }
    std::string m_name;
    int m_calls;
};

constexpr char perfLine[] = "  nLps=10     perf=      100/        8=     12.5 clocks\n";

} // namespace

// Console and table of: a walk over two parameters, the last one fastest; a function with a number
// of operations; name lines; functions that are not hot; repeated, deprecated and wrong parameters.
TEST_F(PsTestRun, WholeRuns) {
    psStepIterator<int> step;
    step.init("Step", 5, 10, 2, StepMul);
    addParm(test, step);
    psTest::m_numParmsColm = 3;
    EXPECT_EQ(test.run(), psResOk);
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
    int const rowsOfRuns[][5] = {
        // first and second result, level, merged result, sets measured
        {psResOk, psResAccurWrn, 7, psResAccurWrn, 2},
        {psResOk, psResWarning, 1, psResOk, 2},
        {psResAccurFail, psResOk, 7, psResAccurFail, 1},
        {psResUndefined, psResOk, 7, psResFail, 1},
    };
    for (auto const& [first, second, level, merged, sets] : rowsOfRuns) {
        SCOPED_TRACE(testing::Message() << first << " " << second << " at " << level);
        int measured = 0;
        test.onTiming = [&, one = first, two = second] { return ++measured == 1 ? one : two; };
        g_ostrm.setOutLevel(level);
        EXPECT_EQ(test.run(), merged);
        EXPECT_EQ(measured, sets);
    }
}

TEST_F(PsTestRun, WarningsAndFailuresAreToldAndOnlyWarningsGetARow) {
    list.translate("3");
    psResult result = psResAccurWrn;
    test.onTiming = [&] {
        test.psTest::runTiming();
        return result;
    };
    expectRun(psResAccurWrn, "Const\nLen=3 \n"
                             "-- wrong measure accuracy on test parameters:\nLen=3 \n"
                             "-- performance:\n" +
                                 std::string(perfLine));
    g_ostrm.setOutLevel(1);
    expectRun(psResOk, perfLine); // nothing more at the level of errors
    result = psResFuncFail;
    expectRun(psResFuncFail,
              perfLine + std::string("-- lib function error on test parameters:\nLen=3 \n"));
    EXPECT_EQ(rows(), "zScript,3,nLps=10,12.5,elem,0.1,-\nzScript,3,nLps=10,12.5,elem,0.1,-\n");
}

TEST_F(PsTestRun, WithoutStartDataOrValues) {
    int flushed = 0;
    test.onFlush = [&flushed] { ++flushed; };
    test.onData = [this] { return list.value() != 1; };
    EXPECT_EQ(test.run(), psResOk);
    EXPECT_EQ(flushed, 2);
    EXPECT_EQ(rows(), "zScript,2,nLps=10,12.5,elem,0.1,-\n");

    test.onData = [] { return false; };
    expectRun(psResDataFail, "measuring.\n-- Error while initialization of function data\n");
    list.clear();
    expectRun(psResDataFail, "-- One of argument list for timing is empty\n");
    test.onStart = [] { return false; };
    expectRun(psResDataFail,
              "-- One of argument list for timing is empty\n-- Can't start timing\n");
}

TEST_F(PsTestRun, SignalsAndExceptionsEndTheTestAndTheNextOneRuns) {
    auto const fault = [] {
        g_ostrm << MSG_INFO; // a message that is left open
        raise(SIGFPE);
        return true;
    };
    auto const refuse = []() -> bool { throw psException(psString("no such data")); };
    std::pair<char const*, void (*)(ScriptedTest&, std::function<bool()>)> const hooks[] = {
        {"canStart", [](ScriptedTest& t, std::function<bool()> act) { t.onStart = act; }},
        {"initData", [](ScriptedTest& t, std::function<bool()> act) { t.onData = act; }},
        {"runTiming",
         [](ScriptedTest& t,
            std::function<bool()> act) { t.onTiming = [act] { return psResult{act()}; }; }},
        {"flushData", [](ScriptedTest& t, std::function<bool()> act) { t.onFlush = act; }},
    };
    g_ostrm.setOutLevel(3);
    MessageLevel const msgLevel = g_ostrm.getMsgLevel();
    for (auto const& [name, hook] : hooks) {
        for (bool const signal : {true, false}) {
            ScriptedTest broken;
            addParm(broken, list);
            hook(broken, signal ? std::function<bool()>(fault) : refuse);
            EXPECT_EQ(broken.run(), psResExcptFail);
            EXPECT_TRUE(lines().ends_with(
                (signal ? "--ZOL. Signal: FP error, such as overflow, division by zero, invalid "
                          "operation. in "
                        : "--ZOL. Exception: no such data in ") +
                std::string(name) + "\n"))
                << lines();
            sigset_t none; // the signal is left blocked, which the next one would meet
            sigemptyset(&none);
            sigprocmask(SIG_SETMASK, &none, nullptr);
            EXPECT_EQ(g_ostrm.getOutLevel(), 3);
            EXPECT_EQ(g_ostrm.getMsgLevel(), msgLevel);
            EXPECT_EQ(ScriptedTest("zNext").run(), psResOk);
        }
    }
}

TEST_F(PsTestRun, AFaultPutsThePriorityBack) {
    int const before = getpriority(PRIO_PROCESS, 0);
    if (setpriority(PRIO_PROCESS, 0, before - 1) != 0) {
        GTEST_SKIP() << "this user cannot get a lowered priority back";
    }
    setpriority(PRIO_PROCESS, 0, before);
    psTool::m_priority = 3;
    static int measuredAt = before;
    test.m_funcLoop = [](int, long long*) -> psResult {
        measuredAt = getpriority(PRIO_PROCESS, 0);
        return raise(SIGILL);
    };
    EXPECT_EQ(test.run(), psResExcptFail);
    psTool::m_priority = 0;
    EXPECT_EQ(measuredAt, 10);
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before);
    setpriority(PRIO_PROCESS, 0, before);
    sigset_t none; // the signal is left blocked
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
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
    for (auto const& [step, call] : steps) {
        SCOPED_TRACE(step);
        FaultingTest faulting(step, call);
        addParm(faulting, list);
        EXPECT_EQ(faulting.run(), psResExcptFail);
        EXPECT_EQ(faulting.m_result, psResExcptFail);
        EXPECT_TRUE(lines().ends_with(std::string(" in ") + step + "\n")) << lines();
        EXPECT_TRUE(summary.text().ends_with("EXCPTFAIL,\n")) << summary.text();
        sigset_t none; // the signal is left blocked
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);

        std::size_t const rowsBefore = rows().size();
        std::size_t const namesBefore = names.text().size();
        EXPECT_EQ(next.run(), psResOk);
        EXPECT_EQ(rows().substr(rowsBefore), "zNext,1,nLps=10,12.5,elem,0.1,-\n"
                                             "zNext,2,nLps=10,12.5,elem,0.1,-\n"
                                             "zNext,one,deprecated,12.5,elem,0.1,-\n");
        EXPECT_EQ(names.text().substr(namesBefore), "zNext,Len,parmNames,-,-,-,-\n");
    }
    psRunMode::m_nameMode = 0;
    std::regex const row("z\\w+,Timing,(-,){4}zScript_timing_test,\\d,script.cpp,(OK|EXCPTFAIL),");
    std::istringstream all(summary.text());
    for (std::string line; std::getline(all, line);) {
        EXPECT_TRUE(std::regex_match(line, row)) << line;
    }
}
