// pstool.cpp - the choice of the method, the one single measurement under all methods
// and its call loops, and the small texts of a measurement.
#include "pstool/pstool.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "psmemory/psmemory.h"
#include "psstream/psostream.h"
#include "psstream/pstraced.h"
#include "pstool/psctrl.h"
#include "pstool/pspriority.h"

psTool g_tool;
psString info;
psFuncOld _funcOld = nullptr;
psTool* _pTool = nullptr;

int psTool::m_priority = 0;
psResult (*psTool::m_pCheckStatus)(int) = nullptr;

namespace {

// A fault of the harness itself, by the place that found it.
psResult internalError(int line) {
    g_ostrm << MSG_ERR << "PS internal error: file "
            << "testsdk/perflib/src/pstool"
            << ", line " << line << "\n"
            << MSG_RESTORE_FLUSH;
    return psResFail;
}

// The tool form behind the loop form.
psResult _funcLoop(int loops, long long* clocks) {
    psResult const result = _funcOld(*_pTool, loops);
    *clocks = _pTool->m_numClocks * psCpuTicker::getClockFactor();
    return result;
}

psResult checkedStatus(int status) {
    return psTool::m_pCheckStatus != nullptr ? psTool::m_pCheckStatus(status) : psResOk;
}

// The system begins the stack of each process somewhere else in a page, and some functions that
// keep values on the stack read by a fifth more or less for that. Here the reading is taken at one
// place of a page. The filling lives as long as this frame, which is why the reading is a call from
// here, and why this must stay a frame of its own.
template <typename Reading>
[[gnu::noinline]] void atStackPlace(Reading takeReading) {
    constexpr uintptr_t pageSize = 4096;
    auto const frame = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
    void* const filling = __builtin_alloca(frame % pageSize);
    asm volatile("" : : "r"(filling)); // nobody uses it, and the compiler would leave it out
    takeReading();
}

} // namespace

psTool::psTool() : m_resetTime(std::time(nullptr)), m_createTime(m_resetTime) {}

void psTool::setMethodAuto() { m_method = Auto; }

void psTool::setMethodLoop(int loops) {
    m_method = Loop;
    m_numLoops = loops > 0 ? loops : 1;
}

void psTool::setMethodStat(int minCalls, long long maxClocks) {
    m_method = Stat;
    m_minCalls = minCalls;
    m_maxClocks = maxClocks;
}

void psTool::setMethodBest(int start, int max, long long minClocks) {
    m_method = Best;
    m_minClocks = minClocks;
    m_startLoops = start > 0 ? start : 1;
    m_maxLoops = std::max(max, static_cast<int>(static_cast<unsigned>(start) * 8U));
}

bool psTool::getMethodAuto() const { return m_method == Auto; }

bool psTool::getMethodLoop(int& loops) const {
    if (m_method != Loop) {
        return false;
    }
    loops = m_numLoops;
    return true;
}

bool psTool::getMethodStat(int& minCalls, long long& maxClocks) const {
    if (m_method != Stat) {
        return false;
    }
    minCalls = m_minCalls;
    maxClocks = m_maxClocks;
    return true;
}

bool psTool::getMethodBest(int& start, int& max, long long& minClocks) const {
    if (m_method != Best) {
        return false;
    }
    start = m_startLoops;
    max = m_maxLoops;
    minClocks = m_minClocks;
    return true;
}

void psTool::getAutoParameters(int& start, int& max, long long& minClocks) {
    start = defaultStartLoops;
    max = defaultMaxLoops;
    minClocks = autoMinClocks;
}

void psTool::setLoopFactor(int factor) {
    if (factor == 0) {
        m_factorStart = 0;
        m_factorMax = 0;
        return;
    }
    unsigned const start = defaultStartLoops;
    unsigned const max = defaultMaxLoops;
    unsigned const up = (0U - static_cast<unsigned>(factor)) % 32U;
    unsigned const down = static_cast<unsigned>(factor) % 32U;
    m_factorStart = static_cast<int>(factor < 0 ? start << up : start >> down);
    m_factorMax = static_cast<int>(factor < 0 ? max << up : max >> down);
}

void psTool::reset() {
    m_actualAccuracy = 1.0;
    m_result = psResUndefined;
    m_funcTicks = 0.0;
    m_resultText.assign("");
    m_comment.assign("");
    m_funcLoop = nullptr;
    m_funcStat = nullptr;
    m_funcCall = nullptr;
    m_funcInit = nullptr;
    m_resetTime = std::time(nullptr);
    m_numClocks = 0;
    m_curLoops = 0;
    m_pairResult = {};
}

psResult psTool::timing(psFuncLoop funcLoop, psFuncStat funcStat, psFuncCall funcCall,
                        psFuncCall funcInit) {
    reset();
    if (funcLoop == nullptr && funcStat == nullptr && funcCall == nullptr) {
        g_ostrm << MSG_ERR
                << " Internal test problem: The test cannot execute standard timing.\n"
                   " No one of funcLoop, funcStat or funcCall is registered in the test.\n"
                << MSG_RESTORE_FLUSH;
        return psResFail;
    }
    m_funcLoop = funcLoop;
    m_funcStat = funcStat;
    m_funcCall = funcCall;
    m_funcInit = funcInit;
    leaveUnservedMethod();
    runMethod();
    return m_result;
}

void psTool::leaveUnservedMethod() {
    if (m_funcCall != nullptr) {
        return;
    }
    if (m_method == Loop && m_funcLoop == nullptr) {
        g_ostrm << MSG_ERR
                << " ATTENTION! The test cannot execute Manual loop timing.\n"
                   " Statistic timing will be run instead.\n"
                << MSG_RESTORE;
        setMethodStat(m_numLoops, 0);
    } else if (m_method == Stat && m_funcStat == nullptr) {
        g_ostrm << MSG_ERR
                << " ATTENTION! The test cannot execute Statistic timing.\n"
                   " Manual loop timing will be run instead.\n"
                << MSG_RESTORE;
        setMethodLoop(m_minCalls);
    }
}

void psTool::runMethod() {
    switch (m_method) {
    case Loop:
        traced("customLoopTiming", [this] { customLoopTiming(); });
        break;
    case Stat:
        traced("statisticTiming", [this] { statisticTiming(); });
        break;
    case Best:
        traced("iterativeTiming", [this] { bestTiming(m_startLoops, m_maxLoops, m_minClocks); });
        break;
    case Auto:
        if (g_pairing.ready() && m_funcLoop == _funcLoop) {
            traced("pairedTiming", [this] { pairedTiming(); });
        } else {
            traced("autoTiming", [this] { autoLoopTiming(); });
        }
        break;
    default:
        m_result = internalError(811);
        break;
    }
}

psResult psTool::timing(psFuncOld funcOld) {
    _funcOld = funcOld;
    _pTool = this;
    return timing(funcOld != nullptr ? _funcLoop : nullptr, nullptr, nullptr, nullptr);
}

void psTool::takeTurns(psFuncOld funcOld, int loops) {
    _funcOld = funcOld;
    _pTool = this;
    m_funcLoop = _funcLoop;
    double lastReading;
    runTimFunc(loops, &lastReading, true);
}

void psTool::runTimFunc(int loops, double* funcClocks, bool forceLoop) {
    bool const useLoop = forceLoop || !m_useCalls;
    atStackPlace([=, this] { takeReading(useLoop, loops, funcClocks); });
}

void psTool::takeReading(bool useLoop, int loops, double* funcClocks) {
    for (int round = 0; round < 2; ++round) { // a reading without clocks is taken once more
        m_numClocks = 0;
        if (m_setAndUse && m_funcCall == nullptr) {
            m_result = psResUndefined;
            return;
        }
        updateResult(m_setAndUse ? callSetAndUse(useLoop, &loops) : callWatched(useLoop, &loops));
        if (isFailure(m_result) || m_numClocks > 0) {
            break;
        }
    }
    // Clocks per loop. The Stat form has put the calls that it made into loops.
    *funcClocks = static_cast<double>(m_numClocks) / static_cast<double>(loops);
}

psResult psTool::callSetAndUse(bool useLoop, int* loops) {
    return traced("zolFunctionCalls", [=, this] {
        return useLoop ? timCall_Loop(*loops, &m_numClocks, true)
                       : timCall_Stat(loops, &m_numClocks, true);
    });
}

psResult psTool::callWatched(bool useLoop, int* loops) {
    if (m_initAndCheck && m_funcInit != nullptr) {
        traced("initFunc call", [this] { m_funcInit(); });
    }
    ctrlStart();
    psResult const result = traced("zolFunctionCalls", [=, this] {
        psSetPriority(m_priority);
        psResult const code = useLoop ? callLoopForm(*loops) : callStatForm(loops);
        psResetPriority();
        return code;
    });
    ctrlStop();
    return result;
}

psResult psTool::callLoopForm(int loops) {
    if (m_funcLoop != nullptr) {
        return m_funcLoop(loops, &m_numClocks);
    }
    return m_funcCall != nullptr ? timCall_Loop(loops, &m_numClocks, false) : internalError(269);
}

psResult psTool::callStatForm(int* loops) {
    if (m_funcStat != nullptr) {
        return m_funcStat(loops, &m_numClocks);
    }
    return m_funcCall != nullptr ? timCall_Stat(loops, &m_numClocks, false) : internalError(278);
}

psResult psTool::timCall_Loop(int loops, long long* clocks, bool reset) {
    psFuncCall const call = m_funcCall;
    psFuncCall const init = m_funcInit;
    if (call == nullptr) {
        return internalError(823);
    }
    if (init != nullptr) {
        init();
    }
    int status = call(); // warm-up
    if (m_pCheckStatus != nullptr && status < 0) {
        return m_pCheckStatus(status);
    }
    // The measured span. What it calls and tests must stay in registers: two tests that never
    // change, the call, the test of its status, the count. In the generated code nothing else
    // stands between the two rdtsc but one store of the first reading, ahead of the loop.
    unsigned long long const begin = psCpuTicker::rdtsc();
    for (int i = 0; i < loops; ++i) {
        if (init != nullptr) {
            init();
        }
        if (reset) {
            psResetAllVectors();
        }
        int const callStatus = call();
        if (callStatus != 0) {
            status = callStatus;
            if (status < 0) {
                break;
            }
        }
    }
    unsigned long long const end = psCpuTicker::rdtsc();
    *clocks = psCpuTicker::getClockFactor() * static_cast<long long>(end - begin);
    return checkedStatus(status);
}

psResult psTool::timCall_Stat(int* calls, long long* clocks, bool reset) {
    psFuncCall const call = m_funcCall;
    psFuncCall const init = m_funcInit;
    if (call == nullptr) {
        return internalError(860);
    }
    if (init != nullptr) {
        init();
    }
    int status = call(); // warm-up
    if (m_pCheckStatus != nullptr && status < 0) {
        return m_pCheckStatus(status);
    }
    long long sum = 0;
    int count = 0;
    while (count < *calls || psCpuTicker::getClockFactor() * sum < *clocks) {
        if (init != nullptr) {
            init();
        }
        // The measured span: the reset if asked for, and one call.
        unsigned long long const begin = psCpuTicker::rdtsc();
        if (reset) {
            psResetAllVectors();
        }
        status = call();
        unsigned long long const end = psCpuTicker::rdtsc();
        sum += static_cast<long long>(end - begin);
        // Unmeasured, so that each measured call follows one with the same data.
        int const secondStatus = call();
        if (secondStatus != 0) {
            status = secondStatus;
            if (status < 0) {
                break;
            }
        }
        ++count;
    }
    *calls = count;
    *clocks = psCpuTicker::getClockFactor() * sum;
    return checkedStatus(status);
}

void psTool::updateResult(psResult result) {
    if (result > m_result) {
        m_result = result;
        m_resultText = resultText(result);
    }
}

void psTool::ctrlStart() {
    g_ctrl87.start();
    g_ssx.start();
}

void psTool::ctrlStop() {
    g_ctrl87.stop();
    g_ssx.stop();
}

// Digits beyond an int become zeros.
psString psTool::clockStr(long long clocks) {
    double value = static_cast<double>(clocks);
    psString zeros;
    while (value > 2147483647.0) {
        value /= 10.0;
        zeros += '0';
    }
    psString text;
    text << static_cast<int>(static_cast<long long>(value)) << zeros;
    return text;
}

psString psTool::getAccuracyStr(double accuracy) {
    double const percent = accuracy * 100.0;
    char text[352]; // the longest double, with its decimals
    std::snprintf(text, sizeof text, percent < 0.1 ? "%.2f%c" : "%.1f%c", percent, '%');
    return text;
}

void psTool::writeInfo(psString& text) {
    if (g_ostrm.beginMessage(MSG_INFO)) {
        g_ostrm << text;
        g_ostrm.endMessage();
    }
    text.assign("");
}

void psTool::writeError() {
    if (!g_ostrm.admits(MSG_INFO)) { // who sees that level has read the story
        g_ostrm << MSG_ERR << info << MSG_RESTORE_FLUSH;
    }
    info.assign("");
}

bool badCtrlStatus() {
    bool bad87;
    bool badSSX;
    return psBadCtrlStatus(bad87, badSSX);
}

void printBadCtrlStatus(bool enabled) {
    bool bad87;
    bool badSSX;
    if (enabled && psBadCtrlStatus(bad87, badSSX)) {
        psPrintCtrlStatus(bad87, badSSX);
    }
}
