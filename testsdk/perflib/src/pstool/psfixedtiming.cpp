// psfixedtiming.cpp - the two methods with a fixed effort: Manual, one measurement with a
// given loop count, and Statistic, single calls up to a count and a sum of clocks.
#include "pstool/pstool.h"

#include "psstream/psostream.h"
#include "psstream/pstraced.h"
#include "pstool/pspriority.h"

void psTool::customLoopTiming() {
    if (g_ostrm.beginMessage(MSG_INFO)) {
        g_ostrm << "    Manual method: \n"
                << "        numLoops   = " << m_numLoops << "\n";
        g_ostrm.endMessage();
    }
    traced("runTimFunc", [this] { runTimFunc(m_numLoops, &m_funcTicks, true); });
    m_actualAccuracy = 0.0; // not judged, so never a reason to warn
    m_comment << "nLps=" << m_numLoops;
    if (g_ostrm.beginMessage(MSG_INFO)) {
        g_ostrm << "        funcClocks = " << m_funcTicks << "\n"
                << "        result     = " << resultText(m_result) << "\n";
        g_ostrm.endMessage();
    }
}

void psTool::statisticTiming() {
    if (g_ostrm.beginMessage(MSG_INFO)) {
        g_ostrm << "    Statistical method:\n"
                << "        minCalls   = " << m_minCalls << "\n"
                << "        maxClocks  = " << clockStr(m_maxClocks) << "\n";
        g_ostrm.endMessage();
    }
    int calls = m_minCalls;
    traced("runTimFuncStat", [&] { runTimFuncStat(m_maxClocks, &calls, &m_funcTicks); });
    m_actualAccuracy = 0.0;
    m_comment << "nCalls=" << calls;
    if (g_ostrm.beginMessage(MSG_INFO)) {
        g_ostrm << "        numCalls   = " << calls << "\n"
                << "        funcClocks = " << m_funcTicks << "\n"
                << "        result     = " << resultText(m_result) << "\n";
        g_ostrm.endMessage();
    }
}

void psTool::runTimFuncStat(long long clocks, int* calls, double* funcClocks) {
    psResult result;
    if (m_setAndUse) {
        if (m_funcCall == nullptr) {
            m_result = psResUndefined;
            return;
        }
        result = timCall_Stat(calls, &clocks, true);
    } else {
        ctrlStart();
        psSetPriority(m_priority);
        result = traced("zolFunctionCalls", [&] {
            return m_funcStat != nullptr ? m_funcStat(calls, &clocks)
                                         : timCall_Stat(calls, &clocks, false);
        });
        psResetPriority();
        ctrlStop();
    }
    // Clocks per call.
    *funcClocks = *calls != 0 ? static_cast<double>(clocks) / static_cast<double>(*calls) : 0.0;
    updateResult(result);
}
