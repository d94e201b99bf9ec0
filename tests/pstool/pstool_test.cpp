// pstool_test.cpp - choice of methods, the single measurement, call loops, fallbacks and
// the small texts; priorities beside them.
#include "pstool/pstool.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#include "psmemory/psmemory.h"
#include "pstool/pspriority.h"
#include "pstool/scriptedtiming.h"
#include "support/messagecapture.h"
#include "support/storedtext.h"

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

// What a measured function finds; it leaves a flag.
struct {
    int nice;
    unsigned status87;
    unsigned vector;
} found;
psResult lookAround(long long* clocks) {
    asm volatile("movd %%xmm15, %0" : "=r"(found.vector));
    found.nice = getpriority(PRIO_PROCESS, 0);
    found.status87 = ps_get_sw_fpu() & 0x3fU;
    raiseInvalid87();
    *clocks = 1000;
    return psResOk;
}

// Whether this user gets a lowered priority back.
bool mayRaise() {
    int const before = getpriority(PRIO_PROCESS, 0);
    bool const may = setpriority(PRIO_PROCESS, 0, before - 1) == 0;
    setpriority(PRIO_PROCESS, 0, before);
    return may;
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
        psTool::m_priority = 0;
        calls.clear();
        statuses.clear();
        ScriptedTiming::TearDown();
    }
};

} // namespace

TEST_F(PsTool, MissingCallablesAreTold) {
    MessageCapture messages(MSG_ERR);
    start({{700, psResFuncWrn}});
    tool.setMethodLoop(7);
    tool.timing(scriptedLoop, scriptedStat, countedCall, countedInit);
    tool.m_actualAccuracy = 0.25;
    tool.m_resetTime = 0;
    EXPECT_EQ(tool.timing(nullptr, nullptr, nullptr, countedInit), psResFail);
    // Nothing of the measurement before is left.
    EXPECT_EQ(tool.m_actualAccuracy, 1.0);
    EXPECT_EQ(tool.m_funcTicks, 0.0);
    EXPECT_EQ(tool.m_result + tool.m_curLoops + tool.m_numClocks, 0);
    EXPECT_STREQ((tool.m_comment + tool.m_resultText).c_str(), "");
    EXPECT_TRUE(tool.m_funcLoop == nullptr && tool.m_funcStat == nullptr &&
                tool.m_funcCall == nullptr && tool.m_funcInit == nullptr);
    EXPECT_GE(tool.m_resetTime, tool.m_createTime);
    tool.m_method = 4;
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResFail);
    EXPECT_TRUE(matchesStored("pstool/missing", messages.text()));
}

TEST_F(PsTool, ASingleMeasurementWithoutClocksIsTakenOnceMore) {
    std::tuple<std::vector<Reading>, std::size_t, double, psResult> const cases[] = {
        {{{400}}, 1, 100, 1},     {{{0}, {400}}, 2, 100, 1}, {{{0}, {0}}, 2, 0, 1},
        {{{-4}, {-8}}, 2, -2, 1}, {{{0, 9}}, 1, 0, 9},       {{{0, 5}, {400}}, 2, 100, 5}};
    for (auto const& [given, taken, wanted, result] : cases) {
        start(given);
        tool.m_funcLoop = scriptedLoop;
        double ticks = -1.0;
        tool.runTimFunc(4, &ticks, true);
        EXPECT_EQ(askedLoops.size(), taken);
        EXPECT_EQ(ticks, wanted);
        EXPECT_EQ(tool.m_result, result);
    }
}

TEST_F(PsTool, EveryReadingHasItsStackAtTheSamePlaceOfAPage) {
    static std::set<std::uintptr_t> places;
    tool.m_funcLoop = [](int, long long* clocks) {
        places.insert(reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) % 4096);
        *clocks = 1;
        return psResult{psResOk};
    };
    for (std::size_t depth = 16; depth < 4096; depth += 400) {
        void* const volatile moved = __builtin_alloca(depth);
        static_cast<void>(moved);
        double ticks;
        tool.runTimFunc(1, &ticks, true);
    }
    EXPECT_EQ(places.size(), 1U);
}

TEST_F(PsTool, TheMethodsKeepWhatTheyWereGiven) {
    psString kept;
    auto const note = [this, &kept] { // what the getters tell of the chosen one
        int first = -1;
        int max = -1;
        long long clocks = -1;
        kept << (tool.getMethodAuto() ? "auto " : "");
        if (tool.getMethodLoop(first)) {
            kept << "loop " << first << " ";
        }
        if (tool.getMethodStat(first, clocks)) {
            kept << "stat " << first << " " << clocks << " ";
        }
        if (tool.getMethodBest(first, max, clocks)) {
            kept << "best " << first << " " << max << " " << clocks << " ";
        }
    };
    for (int method : {psTool::Auto, psTool::Loop, psTool::Stat, psTool::Best}) {
        tool.m_method = method;
        note();
    }
    tool.setMethodBest(0, 4, 77);
    note();
    tool.setMethodBest(2, 15, 0);
    note();
    tool.setMethodLoop(0);
    note();
    tool.setMethodAuto();
    note();
    EXPECT_STREQ(kept.c_str(), "auto loop 10 stat 12 10000 best 1 2048 100 best 1 4 77 "
                               "best 2 16 0 loop 1 auto ");
}

TEST_F(PsTool, AMeasuredFunctionFindsCleanUnitsAndItsPriority) {
    int const before = getpriority(PRIO_PROCESS, 0);
    for (int method : {psTool::Loop, psTool::Stat}) {
        start({});
        tool.m_method = method;
        psTool::m_priority = mayRaise() ? 1 : 0;
        raiseInvalid87();
        asm volatile("pxor %%xmm15, %%xmm15" : : : "xmm15");
        tool.timing([](int, long long* clocks) { return lookAround(clocks); },
                    [](int*, long long* clocks) { return lookAround(clocks); }, nullptr, nullptr);
        EXPECT_EQ(found.nice, psTool::m_priority == 1 ? -20 : before);
        EXPECT_EQ(found.status87, 0U);
        EXPECT_EQ(found.vector, ~0U);
        EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before);
        EXPECT_STREQ(g_ctrl87.strSW().c_str(), "?Invalid ");
    }
}

TEST_F(PsTool, TheSourceIsSetUpAheadOfAMeasurementThatIsChecked) {
    MessageCapture messages(MSG_TRACE);
    for (bool initAndCheck : {true, false}) {
        start({{20000}, {80000}});
        tool.setMethodBest(1, 2048, 0);
        tool.m_initAndCheck = initAndCheck;
        tool.timing(scriptedLoop, nullptr, nullptr, countedInit);
    }
    EXPECT_EQ(calls, "ii");
    tool.setMethodLoop(1);
    tool.m_setAndUse = true;
    tool.timing(nullptr, nullptr, countedCall, nullptr);
    EXPECT_TRUE(matchesStored("pstool/trace", messages.text()));
}

TEST_F(PsTool, TheLoopFormCallsOnceMoreThanItMeasures) {
    long long clocks = -1;
    tool.m_funcCall = countedCall;
    tool.m_funcInit = countedInit;
    statuses = {-1}; // without a hook nobody minds
    EXPECT_EQ(tool.timCall_Loop(2, &clocks, false), psResOk);
    EXPECT_TRUE(clocks > 0 && clocks < 10000000000) << clocks;
    EXPECT_EQ(calls, "icicic");
    psTool::m_pCheckStatus = statusPlusTen;
    tool.m_funcInit = nullptr;
    // given: the first is the warm-up's
    std::tuple<std::vector<int>, char const*, psResult> const cases[] = {{{}, "ccc", 10},
                                                                         {{-3}, "c", 7},
                                                                         {{0, 2, 0}, "ccc", 12},
                                                                         {{0, 2, 1}, "ccc", 11},
                                                                         {{0, -1, 1}, "cc", 9}};
    for (auto const& [given, made, result] : cases) {
        calls.clear();
        statuses = given;
        EXPECT_EQ(tool.timCall_Loop(2, &clocks, false), result);
        EXPECT_EQ(calls, made);
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
    tool.m_funcInit = nullptr;
    psTool::m_pCheckStatus = statusPlusTen;
    // given: warm-up, then measured and unmeasured by turns
    std::tuple<std::vector<int>, int, psResult> const cases[] = {
        {{-2}, 3, 8}, {{0, 4, 0}, 3, 10}, {{0, 0, 0, 0, 0, 2, 0}, 3, 12}, {{0, 0, -4}, 0, 6}};
    for (auto const& [given, measured, result] : cases) {
        calls.clear();
        statuses = given;
        count = 3;
        clocks = 0;
        EXPECT_EQ(tool.timCall_Stat(&count, &clocks, false), result);
        EXPECT_EQ(count, measured);
    }
}

TEST_F(PsTool, SetAndUseResetsAheadOfEachCall) {
    Resetting object;
    void* const block = psMalloc(8, 0, 0, static_cast<psObject*>(&object));
    std::tuple<int, bool, char const*, char const*> const cases[] = {
        {psTool::Best, false, "icicic", "icircirc"},
        {psTool::Best, true, "iciccicc", "icirccircc"},
        {psTool::Loop, true, "icicic", "icircirc"},
        {psTool::Stat, false, "iciccicc", "icirccircc"}};
    for (auto const& [method, useCalls, plain, reset] : cases) {
        for (bool setAndUse : {false, true}) {
            start({});
            calls.clear();
            tool.setMethodBest(2, 2, 0);
            tool.m_maxLoops = 2; // no iteration behind the first measurement
            tool.m_method = method;
            tool.m_numLoops = tool.m_minCalls = 2;
            tool.m_maxClocks = 0;
            tool.m_useCalls = useCalls;
            tool.m_setAndUse = setAndUse;
            tool.timing(nullptr, nullptr, countedCall, countedInit);
            EXPECT_EQ(calls, setAndUse ? reset : plain) << method;
        }
    }
    psFree(block);
    psFreeAll();
    // Without a bare call there is nothing to reset for.
    double ticks = 0.0;
    int count = 1;
    tool.m_funcCall = nullptr;
    tool.m_funcLoop = scriptedLoop;
    tool.m_funcStat = scriptedStat;
    tool.runTimFunc(1, &ticks, true);
    EXPECT_EQ(tool.m_result, psResUndefined);
    tool.m_result = psResFail;
    tool.runTimFuncStat(1, &count, &ticks);
    EXPECT_EQ(tool.m_result, psResUndefined);
    EXPECT_TRUE(askedLoops.empty());
}

TEST_F(PsTool, TheFixedMethodsTellWhatTheyDid) {
    start({{700, psResFuncWrn}, {1300}});
    tool.setMethodLoop(7);
    tool.m_useCalls = true; // not by this method
    MessageCapture messages(MSG_TRACE | 15);
    EXPECT_EQ(tool.timing(scriptedLoop, scriptedStat, nullptr, nullptr), psResFuncWrn);
    EXPECT_STREQ(tool.m_comment.c_str(), "nLps=7");
    EXPECT_EQ(tool.m_actualAccuracy, 0.0);
    tool.setMethodStat(12, 30000000000LL);
    EXPECT_EQ(tool.timing(scriptedLoop, scriptedStat, nullptr, nullptr), psResOk);
    EXPECT_STREQ(tool.m_comment.c_str(), "nCalls=13");
    EXPECT_EQ(tool.m_actualAccuracy, 0.0);
    EXPECT_EQ(askedLoops, (std::vector<int>{7, 12}));
    EXPECT_TRUE(matchesStored("pstool/fixed", messages.text()));
    start({{700}});
    tool.setMethodStat(-1, 0); // ends with no call made
    tool.timing(nullptr, scriptedStat, nullptr, nullptr);
    EXPECT_EQ(tool.m_funcTicks, 0.0);
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
    EXPECT_TRUE(matchesStored("pstool/other_method", messages.text()));
}

TEST_F(PsTool, OnlyAWorseResultChangesTheText) {
    tool.updateResult(psResDataWrn);
    EXPECT_STREQ(tool.m_resultText.c_str(), "test data warning");
    tool.m_resultText = "own";
    tool.updateResult(psResDataWrn);
    EXPECT_STREQ(tool.m_resultText.c_str(), "own");
}

TEST_F(PsTool, TextsOfClocksAndAccuracy) {
    EXPECT_STREQ(psTool::clockStr(2147483647).c_str(), "2147483647");
    EXPECT_STREQ(psTool::clockStr(2147483648).c_str(), "2147483640");
    EXPECT_STREQ(psTool::clockStr(30000000000).c_str(), "30000000000");
    EXPECT_STREQ(psTool::getAccuracyStr(0.0005).c_str(), "0.05%");
    EXPECT_STREQ(psTool::getAccuracyStr(0.001).c_str(), "0.1%");
    EXPECT_STREQ(psTool::getAccuracyStr(500.0).c_str(), "50000.0%");
}

TEST(PsResult, EachCodeHasAWordAndAText) {
    std::string text;
    for (psResult result = -1; result <= psNumResults; ++result) {
        text += std::string(resultWord(result)) + ", " + resultText(result) + "\n";
    }
    EXPECT_TRUE(matchesStored("pstool/results", text));
}

TEST(PsPriority, OnlyRootChangesItAndGetsItBack) {
    EXPECT_EQ(getPriority("High") + 10 * getPriority("N") + 100 * getPriority("LOW"), 321);
    EXPECT_EQ(getPriority("high") + getPriority(""), 0);
    EXPECT_EXIT(
        {
            int const old = getpriority(PRIO_PROCESS, 0);
            bool const asUser = getuid() != 0 || setuid(65534) == 0;
            psSetPriority(3);
            _exit(asUser && getpriority(PRIO_PROCESS, 0) == old ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    if (!mayRaise()) {
        GTEST_SKIP() << "this user cannot get a lowered priority back";
    }
    int const before = getpriority(PRIO_PROCESS, 0);
    int const niceValues[] = {before, -20, 0, 10, before};
    for (int priority = 0; priority < 5; ++priority) {
        psSetPriority(priority);
        EXPECT_EQ(getpriority(PRIO_PROCESS, 0), niceValues[priority]);
        psResetPriority();
        EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before);
    }
    setpriority(PRIO_PROCESS, 0, before + 1);
    psResetPriority(); // of nothing
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before + 1);
    setpriority(PRIO_PROCESS, 0, before);
}
