#include "pstool/pspairing.h"

#include <string>

#include "scriptedtiming.h"
#include "support/messagecapture.h"

namespace {

// Sides that write down what is asked of them; the baseline may live elsewhere, and go away.
class ScriptedSides : public psPairSides {
public:
    bool beginPoint() override { return there; }
    bool select(psSide side) override {
        selected = side;
        return side == psTested || here;
    }
    bool readElsewhere(int warmUpCalls, int loops, long long* clocks) override {
        log += "b" + std::to_string(warmUpCalls);
        *clocks = loops * baselineClocks;
        return there && --left >= 0;
    }

    psSide selected = psTested;
    bool here = true;
    bool there = true;
    int left = 1 << 30;
    long long baselineClocks = 1000;
    long long drift = 0; // of the baseline's clocks, from reading to reading
    bool realTime = false;
    std::string log; // T and B for readings in this process, with the calls ahead of them
};

ScriptedSides* scripted; // of the timing function

// 800 clocks a call under test; as slow as it is told for the baseline.
psResult scriptedTool(psTool& tool, int loops) {
    do {
        bool const isTested = scripted->selected == psTested;
        scripted->log += (isTested ? "T" : "B") + std::to_string(tool.warmUpCalls());
        tool.m_numClocks = loops * (isTested ? 800 : scripted->baselineClocks);
        scripted->baselineClocks += isTested ? 0 : scripted->drift;
        unsigned long long const begin = psCpuTicker::rdtsc();
        while (scripted->realTime && psCpuTicker::rdtsc() - begin < 9000) {
        }
    } while (tool.nextTurn());
    return psResOk;
}

class PsPairing : public testing::Test {
protected:
    void SetUp() override {
        scripted = &sides;
        ASSERT_TRUE(g_pairing.enable(1, psTested));
        g_pairing.setSides(&sides);
    }
    void TearDown() override {
        g_pairing.setSides(nullptr);
        g_pairing.disable();
    }
    std::string point() {
        sides.log.clear();
        result = tool.timing(scriptedTool);
        EXPECT_EQ(g_turns, nullptr);
        EXPECT_EQ(sides.selected, psTested); // what any other reading would call
        return sides.log;
    }

    ScriptedSides sides;
    psTool tool;
    psResult result = psResUndefined;
};

// Twelve pairs A B, B A ... , behind the search for the loop count.
std::string turns(std::string const& a, std::string const& b) {
    std::string all;
    for (int i = 0; i < 6; ++i) {
        all += a + b + b + a;
    }
    return all;
}

} // namespace

TEST_F(PsPairing, SidesTakeTurnsAndWarmUpOnceAtAPoint) {
    EXPECT_EQ(point(), "T16B16T1B1" + turns("T1", "B1"));
    EXPECT_EQ(result, psResOk);
    EXPECT_EQ(tool.m_curLoops, 11); // 10000 clocks by the mean of both
    EXPECT_STREQ(tool.m_comment.c_str(), "nLps=11");
    EXPECT_EQ(tool.m_funcTicks, 800.0);
    EXPECT_EQ(tool.m_pairResult.baseline, 1000.0);
    EXPECT_EQ(tool.m_pairResult.ratio, 0.8);
    EXPECT_EQ(tool.m_actualAccuracy, 0.0);
    EXPECT_EQ(point(), "T16B16T1B1" + turns("T1", "B1")); // the next point warms up anew

    sides.drift = 10;
    point();
    psPairResult const& drifted = tool.m_pairResult;
    EXPECT_LT(drifted.lo, drifted.hi);
    EXPECT_EQ(tool.m_actualAccuracy, 0.5 * (drifted.hi - drifted.lo) / drifted.ratio);
    sides.drift = 0;

    ASSERT_TRUE(g_pairing.enable(1, psBaseline));
    EXPECT_EQ(point(), "B16T16B1T1" + turns("B1", "T1"));
}

TEST_F(PsPairing, LoopsComeFromBothSidesAndStayInBounds) {
    for (auto const& [clocks, loops] : {std::pair{1200LL, 10}, {200000LL, 1}, {9200LL, 2}}) {
        sides.baselineClocks = clocks;
        point();
        EXPECT_EQ(tool.m_curLoops, loops) << clocks;
    }
}

TEST_F(PsPairing, APointLastsItsTime) {
    long long const clocks = 20'000'000;
    ASSERT_TRUE(g_pairing.enable(clocks, psTested));
    sides.realTime = true;
    unsigned long long const begin = psCpuTicker::rdtsc();
    point();
    EXPECT_GE(psCpuTicker::rdtsc() - begin, static_cast<unsigned long long>(clocks));
    EXPECT_GT(g_pairing.count(), psPairing::leastPairs);
    EXPECT_EQ(g_pairing.count() % 2, 0); // both orders as often
}

TEST_F(PsPairing, ASeriesEndsWithItsRoom) {
    ASSERT_TRUE(g_pairing.enable(25'000'000, psTested)); // a pair for 5000 clocks, and the least
    g_pairing.beginPoint();
    g_pairing.beginSeries(1, 1 << 20);
    while (g_pairing.next(800)) {
    }
    EXPECT_EQ(g_pairing.count(), 5024);
    EXPECT_GT(g_pairing.pair(0).before, 2.0F); // each pair stands between two sentinels
    EXPECT_EQ(g_pairing.pair(1).before, g_pairing.pair(0).after);
    EXPECT_FALSE(g_pairing.next(800));
    g_pairing.endSeries();
}

TEST_F(PsPairing, ASideElsewhereIsReadAlikeAndMayGo) {
    sides.here = false;
    EXPECT_EQ(point(), "T16b16T1b1" + turns("T1", "b1"));
    EXPECT_EQ(tool.m_pairResult.ratio, 0.8);

    for (int const left : {0, 1, 5}) { // readings until it is gone
        sides.left = left;
        point();
        EXPECT_EQ(result, psResExcptFail) << left;
        EXPECT_EQ(tool.m_pairResult.pairs, 0) << left;
    }
    sides.there = false;
    EXPECT_EQ(point(), "");
    EXPECT_EQ(result, psResExcptFail);
}

TEST_F(PsPairing, WithoutSidesOrWithAnotherMethodNothingIsPaired) {
    g_pairing.setSides(nullptr);
    tool.setMethodLoop(1);
    EXPECT_EQ(point(), "T16");
    g_pairing.setSides(&sides);
    EXPECT_EQ(point(), "T16");
    EXPECT_EQ(tool.m_pairResult.pairs, 0);
}

TEST_F(PsPairing, WhatAFaultLeavesIsEnded) {
    g_pairing.beginPoint();
    g_pairing.beginSeries(1, 0);
    sides.selected = psBaseline;
    EXPECT_TRUE(g_pairing.inSeries());
    g_pairing.endSeries();
    EXPECT_FALSE(g_pairing.inSeries());
    EXPECT_EQ(sides.selected, psTested);
}
