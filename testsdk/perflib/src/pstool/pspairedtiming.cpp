// pspairedtiming.cpp - the method of paired readings: finds calls for about 10000 clocks, then
// reads both libraries in turns for a point's time.
#include "pstool/pstool.h"

#include <algorithm>
#include <cmath>

#include "psstream/psostream.h"
#include "psstream/pstraced.h"

namespace {

constexpr double clocksPerReading = 10000.0;
constexpr int mostLoops = 100000; // a function that returns at once
constexpr int loopSearches = 2;   // from one call, then from the count that this gave

} // namespace

// A series of turns is one call of the timing function. What a fault leaves is put right by the
// next one, and by the test that it ended.
bool psTool::readSeries(int loops, int pairs) {
    if (!g_pairing.beginSeries(loops, pairs)) {
        g_pairing.endSeries();
        return false;
    }
    double lastReading;
    traced("runTimFunc", [&] { runTimFunc(loops, &lastReading, true); });
    g_pairing.endSeries();
    return !g_pairing.lost();
}

// Calls for a reading, by the mean of both sides. A single call shows the counter's own clocks,
// hence the second look.
bool psTool::findPairLoops() {
    m_curLoops = 1;
    for (int search = 0; search < loopSearches; ++search) {
        if (!readSeries(m_curLoops, 1) || isFailure(m_result)) {
            return false;
        }
        psPair const& pair = g_pairing.pair(0);
        double const clocks = std::max(1.0, 0.5 * (pair.tested + pair.baseline));
        double const loops = std::clamp(clocksPerReading / clocks, 1.0, double{mostLoops});
        int const found = static_cast<int>(std::lround(loops));
        if (found == m_curLoops) {
            break;
        }
        m_curLoops = found;
    }
    return true;
}

void psTool::pairedTiming() {
    if (!g_pairing.beginPoint() || !findPairLoops() || !readSeries(m_curLoops, 0) ||
        isFailure(m_result)) {
        updateResult(psResExcptFail);
        return;
    }
    m_pairResult = g_pairing.judge();
    m_funcTicks = m_pairResult.tested;
    // How far the ratio can be trusted; not a reason to warn, as more readings would not help.
    m_actualAccuracy = m_pairResult.pairs != 0
                           ? 0.5 * (m_pairResult.hi - m_pairResult.lo) / m_pairResult.ratio
                           : 0.0;
    m_comment << "nLps=" << m_curLoops;
    if (g_ostrm.beginMessage(MSG_INFO)) {
        g_ostrm << "    Paired readings: \n"
                << "        numLoops   = " << m_curLoops << "\n"
                << "        numPairs   = " << g_pairing.count() << "\n"
                << "        quietClocks= " << g_pairing.quietLevel().bound() << "\n"
                << "        funcClocks = " << m_funcTicks << "\n"
                << "        result     = " << resultText(m_result) << "\n";
        g_ostrm.endMessage();
    }
}
