// psautotiming_test.cpp - the branches of the Auto method, over scripted readings.
#include "pstool/pstool.h"

#include <climits>
#include <cmath>
#include <string>

#include "pstool/scriptedtiming.h"
#include "support/messagecapture.h"
#include "support/storedtext.h"

using PsAutoTiming = ScriptedTiming;

TEST_F(PsAutoTiming, EveryBranchAsksForItsLoopCounts) {
    // clang-format off
    // loops: asked for
    std::tuple<int, int, long long, std::vector<Reading>, std::vector<int>, psResult, double,
               char const*> const cases[] = {
        // The correction by a power of two: quotients 6, 4 and 5; there is only one.
        {1, 2048, 10000, {{3000}, {24000}, {96000}}, {1, 8, 32}, 1, 3000, "nLps=32"},
        {1, 2048, 10000, {{5000}, {20000}, {80000}}, {1, 4, 16}, 1, 5000, "nLps=16"},
        {1, 2048, 10000, {{5000}, {400}, {1600}}, {1, 4, 16}, 1, 100, "nLps=16"},
        {1, 2048, 1LL << 31, {{1}, {5}}, {1, 0}, 2, HUGE_VAL, "nLps=0 acc=100.0%"},
        // Zero readings: by 10 once, given up the second time, never in the iteration.
        {1, 2048, 10000, {{0}, {20000}, {80000}}, {1, 1, 4}, 1, 20000, "nLps=4"},
        {1, 2048, 10000, {{0}, {0}, {500}, {2000}}, {1, 1, 10, 40}, 1, 50, "nLps=40"},
        {1, 2048, 10000, {{0}, {0}, {0}, {0}}, {1, 1, 10, 10}, 7, 0, ""},
        {1, 2048, 10000, {{10000}, {0}, {0}}, {1, 4, 4}, 7, 0, ""},
        // The function's own codes: a failure ends the prior stage alone, 7 is tried again.
        {1, 2048, 10000, {{10000, 9}}, {1}, 9, 10000, ""},
        {1, 2048, 10000, {{10000}, {40000, 9}}, {1, 4}, 9, 10000, "nLps=4"},
        {4, 4, 10000, {{20000, 5}}, {4}, 5, 5000, "nLps=4 acc=100.0%"},
        {1, 2048, 10000, {{10000, 7}, {9}}, {1, 10}, 7, 0.9, ""},
        {1, 2048, 10000, {{10000, 5}, {40000}}, {1, 4}, 5, 10000, "nLps=4"},
        // Exactly one percent is enough to stop at, and nobody watches the status.
        {1, 2048, 10000, {{19900}, {80400, 1, true}}, {1, 4}, 1, 20100, "nLps=4"},
        // The iteration: none, at the maximum, settled by simple measurements, not settled.
        {4, 4, 10000, {{20000}}, {4}, 2, 5000, "nLps=4 acc=100.0%"},
        {1, 2, 10000, {{10000}, {20000}}, {1, 2}, 1, 10000, "nLps=2"},
        {1, 2048, 10000, {{10000}, {40600}, {40000}, {40400}}, {1, 4, 4, 4}, 1, 10000, "nLps=4"},
        {1, 2048, 10000,
         {{10000}, {41200}, {60000}, {41200}, {160000}, {160000}, {160000}},
         {1, 4, 4, 4, 16, 16, 16}, 1, 10000, "nLps=16"},
        {1, 16, 10000, {{10000}, {80000}, {80000}, {320000}, {160000}, {160000}},
         {1, 4, 8, 16, 16, 16}, 2, 10000, "nLps=16 acc=50.0%"},
        // Counts beyond 32 bits wrap below 0 and are tried once more, times ten.
        {1 << 29, INT_MAX, 0, {{1 << 29}, {1 << 20}, {40}},
         {1 << 29, INT_MIN, -10}, 2, -4, "nLps=-10 acc=100.0%"},
        // The one quotient that can overflow.
        {-1, 2048, 1LL << 62, {{-1}, {-1}, {5}}, {-1, -1, 0}, 2, HUGE_VAL, "nLps=0 acc=100.0%"}};
    // clang-format on
    for (auto const& [first, maxLoops, minClocks, given, loops, result, ticks, comment] : cases) {
        SCOPED_TRACE(testing::PrintToString(loops));
        start(given);
        tool.setMethodBest(first, 1, minClocks);
        std::tie(tool.m_startLoops, tool.m_maxLoops) = std::pair(first, maxLoops);
        EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), result);
        EXPECT_EQ(askedLoops, loops);
        EXPECT_EQ(tool.m_funcTicks, ticks);
        EXPECT_STREQ(tool.m_comment.c_str(), comment);
    }
}

TEST_F(PsAutoTiming, TheWantedAccuracyDecidesTheWarning) {
    start({{20000}});
    tool.setLoopFactor(11);
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResAccurWrn);
    EXPECT_STREQ(tool.m_resultText.c_str(), "successfullyactual accuracy = 100.0%");
    start({{10000}, {80000}, {80000}, {80000}});
    tool.m_accuracy = 500.0; // still goes for 1%
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResOk);
    start({{30000}, {200000}, {400000}, {600000}});
    tool.m_accuracy = 0.5;  // met exactly, by two readings and by three
    tool.m_useCalls = true; // but there is nothing that counts calls
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResOk);
    EXPECT_STREQ(tool.m_comment.c_str(), "nLps=4");
    EXPECT_EQ(tool.m_actualAccuracy, 0.5);
    EXPECT_EQ(tool.m_funcTicks, 50000.0);
    start({{300}, {330}}); // repeated at a count that wasn't measured before
    tool.m_funcLoop = scriptedLoop;
    EXPECT_EQ(tool.repeatTiming(3, 2), psResOk);
    EXPECT_EQ(askedLoops, (std::vector<int>{3, 3}));
    EXPECT_EQ(tool.m_funcTicks, 100.0);
}

TEST_F(PsAutoTiming, LoopFactorMovesTheStartAndTheMaximum) {
    int const cases[][3] = {{-1, 2, 4096}, {0, 0, 0}, {1, 0, 1024}, {11, 0, 1}, {12, 0, 0}};
    for (auto const& [factor, first, max] : cases) {
        tool.setLoopFactor(factor);
        EXPECT_EQ(tool.m_factorStart, first) << factor;
        EXPECT_EQ(tool.m_factorMax, max) << factor;
    }
    start({{20000}, {80000}});
    tool.setLoopFactor(-1);
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResOk);
    EXPECT_EQ(askedLoops, (std::vector<int>{2, 8}));
}

TEST_F(PsAutoTiming, CallsAreCountedWhereTheTestCanCountThem) {
    start({{20000}, {50000}});
    tool.m_useCalls = true;
    MessageCapture messages(15);
    EXPECT_EQ(tool.timing(nullptr, scriptedStat, nullptr, nullptr), psResOk);
    EXPECT_EQ(askedLoops, (std::vector<int>{1, 4}));
    EXPECT_EQ(tool.m_funcTicks, 10000.0); // per call made, one more than asked for
    EXPECT_STREQ(tool.m_comment.c_str(), "nCalls=4");
    EXPECT_NE(messages.text().find("        numCalls   = 1\n"), std::string::npos);
}

TEST_F(PsAutoTiming, TheStoryIsToldToTheByte) {
    start({{3000}, {24000}, {98880}, {97000}, {97600}});
    MessageCapture messages(MSG_TRACE | 15);
    EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), psResOk);
    EXPECT_TRUE(matchesStored("pstool/auto", messages.text()));
}

// A flag comes up at 8 loops: the count goes back to 4.
TEST_F(PsAutoTiming, ABadStatusSendsTheCountBack) {
    // again: five at 4 loops; told: behind the attempt
    char const fails[] = "-- Attempt fails: Accuracy is unsatisfactory.\n";
    char const repeats[] = "-- Status    SSX: ?Invalid \n"
                           "-- Attempt fails: Bad control status repeats.\n";
    char const success[] = "-- Attempt is successful\n";
    std::tuple<std::vector<Reading>, psResult, char const*, char const*> const cases[] = {
        {{{48400}, {48000}, {48200}, {48000}, {48100}}, psResOk, "nLps=4", success},
        // Twice as much is borne.
        {{{52800}, {48000}, {48000}, {48000}, {48000}}, psResAccurWrn, "nLps=4 acc=8.2%", success},
        {{{54720}, {48000}, {48000}, {48000}, {48000}}, psResAccurWrn, "nLps=4 acc=11.4%", fails},
        {{{48000}, {49000, 1, true}, {48000}, {48000}, {48000}}, psResOk, "nLps=4", repeats}};
    for (auto const& [again, result, comment, told] : cases) {
        SCOPED_TRACE(told);
        start({{10000}, {48000}, {80000, psResOk, true}});
        readings.insert(readings.end(), again.begin(), again.end());
        tool.m_initAndCheck = true;
        MessageCapture messages(MSG_ERR | MSG_WARN);
        EXPECT_EQ(tool.timing(scriptedLoop, nullptr, nullptr, nullptr), result);
        EXPECT_EQ(askedLoops, (std::vector<int>{1, 4, 8, 4, 4, 4, 4, 4}));
        EXPECT_EQ(tool.m_funcTicks, 12000.0);
        EXPECT_STREQ(tool.m_comment.c_str(), comment);
        EXPECT_EQ(messages.text(), std::string("-- Status    SSX: ?Invalid _Inexact \n"
                                               "-- Attempting to avoid bad control status\n") +
                                       told);
    }
    askedLoops.clear(); // the last one once more, with its story
    psInitCtrlStatus();
    MessageCapture story(15);
    tool.timing(scriptedLoop, nullptr, nullptr, nullptr);
    EXPECT_TRUE(matchesStored("pstool/avoiding", story.text()));
}

TEST_F(PsAutoTiming, TheFunctionsOwnWordsAreToldWhenNoClocksPass) {
    for (OutputLevel level : {MSG_ERR, MSG_INFO}) { // the story of the latter says it all
        start({});
        info = "of an earlier measurement";
        MessageCapture messages(level);
        auto const silent = [](int, long long*) -> psResult {
            info += info.empty() ? "no clocks\n" : ""; // read four times
            return psResOk;
        };
        EXPECT_EQ(tool.timing(silent, nullptr, nullptr, nullptr), psResAccurFail);
        EXPECT_EQ(messages.text() == "no clocks\n", level == MSG_ERR);
        EXPECT_TRUE(info.empty());
    }
}
