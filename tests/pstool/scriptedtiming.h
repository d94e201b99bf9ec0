// scriptedtiming.h - for tests: functions that raise flags, a timing function that gives
// chosen clocks and keeps the loop counts asked for, and the fixture around them.
#ifndef PSTOOL_SCRIPTEDTIMING_H
#define PSTOOL_SCRIPTEDTIMING_H

#include <gtest/gtest.h>
#include <vector>

#include "pstool/psctrl.h"
#include "pstool/pstool.h"

// Both exceptions are masked in the default modes.
inline void raiseInvalid87() {
    asm volatile("fldz\n\tfldz\n\tfdivp\n\tfstp %%st(0)" : : : "st", "st(1)");
}
inline void raiseInvalidSSX() {
    double volatile zero = 0.0;
    zero = zero / zero;
}

// One reading: the clocks, the function's code, whether a flag comes up.
struct Reading {
    long long clocks;
    psResult result = psResOk;
    bool bad = false;
};
inline std::vector<Reading> readings;
inline std::vector<int> askedLoops;

inline psResult scriptedLoop(int loops, long long* clocks) {
    EXPECT_EQ(*clocks, 0); // nothing of an earlier reading
    askedLoops.push_back(loops);
    if (askedLoops.size() > readings.size()) {
        ADD_FAILURE() << "asked once more, for " << loops << " loops";
        return psResFail;
    }
    Reading const& reading = readings[askedLoops.size() - 1];
    *clocks = reading.clocks;
    if (reading.bad) {
        raiseInvalidSSX();
    }
    return reading.result;
}

// Makes one call more than it was asked for.
inline psResult scriptedStat(int* calls, long long* clocks) {
    *clocks = 0;
    psResult const result = scriptedLoop(*calls, clocks);
    ++*calls;
    return result;
}

// Puts the words of both units, the modes and the records back.
class ScriptedTiming : public testing::Test {
protected:
    void SetUp() override { start({}); }
    void TearDown() override {
        psClearCtrlStatus();
        ps_set_cw_fpu(savedCW, 0xffff);
        ps_set_ssx(savedSSX, 0xffff);
    }

    // A fresh tool with these readings ahead of it.
    void start(std::vector<Reading> const& given) {
        psInitCtrlStatus();
        readings = given;
        askedLoops.clear();
        tool = psTool();
    }

    psTool tool;

private:
    unsigned savedCW = ps_get_cw_fpu();
    unsigned savedSSX = ps_get_ssx();
};

#endif
