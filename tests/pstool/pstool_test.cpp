// pstool_test.cpp - choice of methods, the single measurement, call loops, fallbacks and
// the small texts; priorities beside them.
#include "pstool/pstool.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "psmemory/psmemory.h"
#include "pstool/pspriority.h"
#include "pstool/scriptedtiming.h"
#include "support/messagecapture.h"

namespace {

// One letter for each thing that a measurement called, and the statuses to answer.
std::string calls;
std::vector<int> statuses;

int countedCall() {
    calls += 'c';
    auto const count = static_cast<std::size_t>(std::count(calls.begin(), calls.end(), 'c'));
    return count <= statuses.size() ? statuses[count - 1] : 0;
}
int countedInit() {
    calls += 'i';
    return 0;
}
psResult statusPlusTen(int status) { return status + 10; }

psResult toolForm(psTool& tool, int loops) {
    tool.start();
    calls += 't';
    tool.stop();
    tool.m_numClocks = 70LL * loops; // a reading that does not vary
    return psResDataWrn;
}

class Resetting : public psObject {
public:
    int setReservedCopy() override {
        calls += 'r';
        return 1;
    }
};

class PsTool : public ScriptedTiming {
protected:
    void TearDown() override {
        psTool::m_pCheckStatus = nullptr;
        calls.clear();
        statuses.clear();
        ScriptedTiming::TearDown();
    }
};

} // namespace

TEST_F(PsTool, MissingCallablesAreTold) {
    MessageCapture messages(MSG_ERR);
    EXPECT_EQ(tool.timing(nullptr, nullptr, nullptr, countedInit), psResFail);
    tool.m_method = 4;
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResFail);
    EXPECT_EQ(messages.text(),
              " Internal test problem: The test cannot execute standard timing.\n"
              " No one of funcLoop, funcStat or funcCall is registered in the test.\n"
              "PS internal error: file testsdk/perflib/src/pstool, line 811\n");
}

TEST_F(PsTool, ASingleMeasurementWithoutClocksIsTakenOnceMore) {
    struct {
        std::vector<Reading> given;
        std::size_t taken;
        double ticks;
        psResult result;
    } const cases[] = {{{{400}}, 1, 100, 1},  {{{0}, {400}}, 2, 100, 1},
                       {{{0}, {0}}, 2, 0, 1}, {{{-4}, {-8}}, 2, -2, 1},
                       {{{0, 9}}, 1, 0, 9},   {{{0, 5}, {400}}, 2, 100, 5}};
    for (auto const& row : cases) {
        start(row.given);
        tool.m_funcLoop = scriptedLoop;
        double ticks = -1.0;
        tool.runTimFunc(4, &ticks, true);
        EXPECT_EQ(askedLoops.size(), row.taken);
        EXPECT_EQ(ticks, row.ticks);
        EXPECT_EQ(tool.m_result, row.result);
    }
}

TEST_F(PsTool, TheLoopFormCallsOnceMoreThanItMeasures) {
    long long clocks = -1;
    tool.m_funcCall = countedCall;
    tool.m_funcInit = countedInit;
    statuses = {-1}; // without a hook nobody minds
    EXPECT_EQ(tool.timCall_Loop(2, &clocks, false), psResOk);
    EXPECT_EQ(calls, "icicic");
    psTool::m_pCheckStatus = statusPlusTen;
    tool.m_funcInit = nullptr;
    struct {
        std::vector<int> given; // the first is the warm-up's
        char const* calls;
        psResult result;
    } const cases[] = {{{}, "ccc", 10},
                       {{-3}, "c", 7},
                       {{0, 2, 0}, "ccc", 12},
                       {{0, 2, 1}, "ccc", 11},
                       {{0, -1, 1}, "cc", 9}};
    for (auto const& row : cases) {
        calls.clear();
        statuses = row.given;
        EXPECT_EQ(tool.timCall_Loop(2, &clocks, false), row.result);
        EXPECT_EQ(calls, row.calls);
    }
}

TEST_F(PsTool, TheStatFormMeasuresEverySecondCall) {
    tool.m_funcCall = countedCall;
    tool.m_funcInit = countedInit;
    int count = 2;
    long long clocks = 0;
    EXPECT_EQ(tool.timCall_Stat(&count, &clocks, false), psResOk);
    EXPECT_EQ(calls, "ic"
                     "iccicc");
    EXPECT_EQ(count, 2);
    calls.clear();
    count = 0;
    clocks = 100000; // a lower bound
    tool.timCall_Stat(&count, &clocks, false);
    EXPECT_GE(clocks, 100000);
    EXPECT_EQ(calls.size(), 2 + 3 * static_cast<std::size_t>(count));
    psTool::m_pCheckStatus = statusPlusTen;
    struct {
        std::vector<int> given; // warm-up, then measured and unmeasured by turns
        int count;
        psResult result;
    } const cases[] = {
        {{-2}, 3, 8}, {{0, 4, 0}, 3, 10}, {{0, 0, 0, 0, 0, 2, 0}, 3, 12}, {{0, 0, -4}, 0, 6}};
    for (auto const& row : cases) {
        calls.clear();
        statuses = row.given;
        count = 3;
        clocks = 0;
        EXPECT_EQ(tool.timCall_Stat(&count, &clocks, false), row.result);
        EXPECT_EQ(count, row.count);
    }
}

TEST_F(PsTool, SetAndUseResetsAheadOfEachCall) {
    Resetting object;
    void* const block = psMalloc(8, 0, 0, static_cast<psObject*>(&object));
    tool.m_setAndUse = true;
    tool.setMethodLoop(2);
    EXPECT_EQ(tool.timing(nullptr, nullptr, countedCall, countedInit), psResOk);
    EXPECT_EQ(calls, "icircirc");
    calls.clear();
    tool.setMethodStat(1, 0);
    EXPECT_EQ(tool.timing(nullptr, nullptr, countedCall, nullptr), psResOk);
    EXPECT_EQ(calls, "crcc");
    psFree(block);
    psFreeAll();
    // Without a bare call there is nothing to reset for.
    EXPECT_EQ(tool.timing(scriptedLoop, scriptedStat, nullptr, nullptr), psResUndefined);
    EXPECT_TRUE(askedLoops.empty());
}

TEST_F(PsTool, TheFixedMethodsTellWhatTheyDid) {
    start({{700, psResFuncWrn}, {1300}});
    tool.setMethodLoop(7);
    MessageCapture messages(15);
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResFuncWrn);
    EXPECT_STREQ(tool.m_comment.c_str(), "nLps=7");
    tool.setMethodStat(12, 30000000000LL);
    EXPECT_EQ(tool.timing(scriptedLoop, scriptedStat, nullptr, nullptr), psResOk);
    EXPECT_STREQ(tool.m_comment.c_str(), "nCalls=13");
    EXPECT_EQ(tool.m_actualAccuracy, 0.0);
    EXPECT_EQ(askedLoops, (std::vector<int>{7, 12}));
    EXPECT_EQ(messages.text(), "    Manual method: \n        numLoops   = 7\n"
                               "        funcClocks = 100\n"
                               "        result     = lib function warning\n"
                               "    Statistical method:\n        minCalls   = 12\n"
                               "        maxClocks  = 30000000000\n"
                               "        numCalls   = 13\n        funcClocks = 100\n"
                               "        result     = successfully\n");
    tool.setMethodLoop(3);
    EXPECT_EQ(tool.timing(toolForm), psResDataWrn);
    EXPECT_EQ(calls, "t");
    EXPECT_EQ(tool.m_funcTicks, 70.0);
}

TEST_F(PsTool, AMethodThatTheTestCannotServeGivesWayToTheOther) {
    MessageCapture messages(MSG_ERR);
    start({{500}, {1200}});
    int minCalls = 0;
    long long maxClocks = -1;
    tool.setMethodLoop(4);
    EXPECT_EQ(tool.timing(nullptr, scriptedStat, nullptr, nullptr), psResOk);
    EXPECT_TRUE(tool.getMethodStat(minCalls, maxClocks));
    EXPECT_EQ(minCalls, 4);
    EXPECT_EQ(maxClocks, 0);
    tool = psTool();
    tool.m_method = psTool::Stat;
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResOk);
    EXPECT_STREQ(tool.m_comment.c_str(), "nLps=12");
    EXPECT_EQ(messages.text(), " ATTENTION! The test cannot execute Manual loop timing.\n"
                               " Statistic timing will be run instead.\n"
                               " ATTENTION! The test cannot execute Statistic timing.\n"
                               " Manual loop timing will be run instead.\n");
}

TEST_F(PsTool, TextsOfClocksAndAccuracy) {
    EXPECT_STREQ(psTool::clockStr(2147483647).c_str(), "2147483647");
    EXPECT_STREQ(psTool::clockStr(2147483648).c_str(), "2147483640");
    EXPECT_STREQ(psTool::clockStr(30000000000).c_str(), "30000000000");
    EXPECT_STREQ(psTool::getAccuracyStr(0.0005).c_str(), "0.05%");
    EXPECT_STREQ(psTool::getAccuracyStr(500.0).c_str(), "50000.0%");
}

TEST(PsPriority, OnlyRootChangesItAndGetsItBack) {
    EXPECT_EQ(getPriority("High") + 10 * getPriority("N") + 100 * getPriority("LOW"), 321);
    EXPECT_EQ(getPriority("high") + getPriority(""), 0);
    int const before = getpriority(PRIO_PROCESS, 0);
    bool const mayRaise = setpriority(PRIO_PROCESS, 0, before - 1) == 0;
    setpriority(PRIO_PROCESS, 0, before);
    if (!mayRaise) {
        GTEST_SKIP() << "this user cannot get a lowered priority back";
    }
    psSetPriority(3);
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), 10);
    psResetPriority();
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before);
}
