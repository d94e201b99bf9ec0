// runfixture.h - a fixture for runs of scripted tests: console and table in files, clocks given,
// every global that a run moves put back.
#ifndef TESTS_PSTEST_RUNFIXTURE_H
#define TESTS_PSTEST_RUNFIXTURE_H

#include <functional>
#include <regex>

#include "psstream/streamfixture.h"
#include "pstest/pstestlist.h"

// A test whose hooks are given and whose measurements take 100 clocks per loop.
class ScriptedTest : public psTest {
public:
    explicit ScriptedTest(psString name = "zScript", psString infoText = "zScript_timing_test")
        : psTest(loop, nullptr, name, "suite/script.cpp", infoText) {}

    bool canStart() override {
        for (psParameter* parm : registered) {
            regParm(*parm, nullptr);
        }
        return onStart();
    }
    bool initData() override { return onData(); }
    psResult runTiming() override { return onTiming(); }
    void flushData() override { onFlush(); }
    void constToOstrm() override { g_ostrm << "Const\n"; }
    double getDivisor() override { return 8.0; }
    double getFlops() override { return flops; }
    psString getUnit() override { return "elem"; }

    static psResult loop(int loops, long long* clocks) {
        *clocks = loops * 100LL;
        return psResOk;
    }

    psList<psParameter*> registered; // at each start
    std::function<bool()> onStart = [] { return true; };
    std::function<bool()> onData = [] { return true; };
    std::function<psResult()> onTiming = [this] { return psTest::runTiming(); };
    std::function<void()> onFlush = [] {};
    double flops = -1.0;
};

class RunFixture : public StreamFixture {
protected:
    RunFixture() {
        g_ostrm.setOutLevel(7);
        g_tool.setMethodLoop(10);
        psCpuTicker::m_freqMHz = 1000;
        psTest::m_numParmsColm = 2;
        psTest::m_numResultColm = 5;
    }
    ~RunFixture() override {
        g_tool = savedTool;
        g_istrm.deleteIniFile();
        psTest::m_hot = 0;
        psTest::m_pressing = false;
        psTest::m_cache = false;
    }

    static void addParm(ScriptedTest& test, psParameter& parm) {
        test.registered.insert(test.registered.end(), &parm);
    }

    // The console without the framed reports, whose times differ from run to run.
    std::string lines() const {
        return std::regex_replace(console(), std::regex("(^|\n)((\\||\\+--).*\n)+"), "$1");
    }
    std::string rows() const { return table.text(); }

private:
    psTool savedTool = g_tool;
    StreamCapture table{g_cstrm};
};

#endif
