// psresultline.cpp - how a measured parameter set is told: console lines, rows of the performance
// table and of the table of names, and the number formats in them.
#include "pstest/pstest.h"

#include <cmath>
#include <cstdio>

#include "pscpu/pscputicker.h"
#include "psstream/pstraced.h"
#include "pstest/psrunmode.h"

namespace {

// Decimals of numbers from the limit on, about three significant digits. The last row ends every
// search: smaller numbers go the exponential way.
struct ClockFormat {
    double from;
    int decimals;
};
constexpr ClockFormat clockFormats[] = {
    {100.0, 0}, {10.0, 1}, {1.0, 2}, {0.1, 3}, {0.01, 4}, {0.001, 5}, {0.0001, 6},
};
constexpr double leastFixed = 0.0001;
constexpr double mostFixed = 1e7;

// Whatever the parameters wrote, by turns or by place: the result columns stand at the same place.
void endParmColumns() { g_cstrm.nextColm = psTest::m_numParmsColm; }

} // namespace

void psTest::funcToCstrm() { g_cstrm << m_funcName; }

void psTest::resultToCstrm(psResult) {
    psString usec;
    usec << m_tool.m_funcTicks / psCpuTicker::getFreq();
    g_cstrm << getComment() << perfString(false) << getUnit() << usec << perfString(true)
            << (isHotLine() ? "Hot" : "");
}

psString psTest::getComment() {
    if (m_deprecated) {
        return "deprecated";
    }
    psString comment = m_tool.m_comment;
    if (m_tool.m_pairResult.pairs != 0) {
        comment << " " << pairString();
    }
    return m_cacheIterator != nullptr ? m_cacheIterator->getComment() + " " + comment : comment;
}

psString psTest::formatClocks(double clocks) {
    if (clocks <= 0.0) {
        return "";
    }
    char text[64];
    if (std::isnan(clocks) || clocks < leastFixed || clocks > mostFixed) {
        std::snprintf(text, sizeof text, "%.3e", clocks);
        return text;
    }
    ClockFormat const* format = clockFormats;
    while (clocks < format->from) {
        ++format;
    }
    std::snprintf(text, sizeof text, "%.*f", format->decimals, clocks);
    return text;
}

psString psTest::regInfo() {
    psString text = "   Test has been registered";
    if (!m_info.m_macro.empty()) {
        text << " by " << m_info.m_macro << " macro";
    }
    struct {
        bool there;
        char const* name;
    } const callables[] = {{m_funcLoop != nullptr, "loopMethod"},
                           {m_funcStat != nullptr, "statMethod"},
                           {m_funcOld != nullptr, "oldMethod"},
                           {m_funcCall != nullptr, "funcCall"}};
    psString list;
    for (auto const& callable : callables) {
        if (callable.there) {
            list << (list.empty() ? "" : ", ") << callable.name;
        }
    }
    if (list.empty()) {
        return text + " without any function to call.\n No standard timing method is available";
    }
    if (m_funcInit != nullptr) {
        list << ", "
             << "funcInit";
    }
    text << " with " << list << ".";
    text << "\n   " << usedCallable() << " is called for measuring.";
    return text;
}

char const* psTest::usedCallable() const {
    if (m_funcOld != nullptr) {
        return "oldMethod";
    }
    if (m_funcCall != nullptr && m_tool.m_setAndUse) {
        return "funcCall with Set&Use";
    }
    if (m_funcCall != nullptr && m_funcLoop == nullptr && m_funcStat == nullptr) {
        return "funcCall";
    }
    bool const iterates = m_tool.m_method == psTool::Auto || m_tool.m_method == psTool::Best;
    bool const prefersStat = m_tool.m_method == psTool::Stat || (iterates && m_tool.m_useCalls);
    bool const statIsUsed = prefersStat ? m_funcStat != nullptr : m_funcLoop == nullptr;
    return statIsUsed ? "statMethod" : "loopMethod";
}

void psTest::putTableParms() {
    traced("funcToCstrm", [this] { funcToCstrm(); });
    traced("parmsToCstrm", [this] { parmsToCstrm(); });
    endParmColumns();
}

void psTest::putTableResult(psResult result) {
    putTableLine(result);
    g_cstrm.lineOut(m_numResultColm + m_numParmsColm);
}

// A second line for the same measurement, with old values, held back until the end of the test.
void psTest::putTableResult_Deprecated(psResult result) {
    if (setDeprecatedFlag(true)) {
        putTableLine(result);
        g_cstrm.linePostpone();
    }
    setDeprecatedFlag(false);
}

void psTest::putTableLine(psResult result) {
    putTableParms();
    traced("resultToCstrm", [this, result] { resultToCstrm(result); });
}

void psTest::putTextParms() { putTextParms(g_ostrm.getMsgLevel()); }

void psTest::putTextParms(MessageLevel level) {
    if (!g_ostrm.beginMessage(level)) {
        return;
    }
    if (m_cacheIterator != nullptr) {
        g_ostrm << m_cacheIterator->getComment() << ":";
    }
    traced("parmsToOstrm", [this] { parmsToOstrm(); });
    g_ostrm << "\n";
    g_ostrm.endMessage();
}

void psTest::outputResult(psResult result) {
    if (result == psResUndefined) {
        return;
    }
    putTextError(result);
    putTextResult(result);
    if (isFailure(result)) {
        return;
    }
    putTableResult(result);
    putTableResult_Deprecated(result);
}

void psTest::putTextResult(psResult result) {
    if (result < psResOk || isFailure(result)) {
        return;
    }
    bool const isWarning = result != psResOk;
    if (!g_ostrm.beginMessage(isWarning ? MSG_WARN : MSG_PERF)) {
        return;
    }
    if (isWarning) {
        g_ostrm << "-- performance:\n";
    }
    g_ostrm << testResultString() << "\n";
    if (m_tool.m_pairResult.pairs != 0) {
        g_ostrm << "  " << pairString() << "\n";
    }
    g_ostrm.endMessage();
}

double psTest::performance(bool flops) {
    if (!flops) {
        return m_tool.m_funcTicks / getDivisor();
    }
    if (!isFloatFunction()) {
        return 0.0;
    }
    return getFlops() * psCpuTicker::getFreq() / m_tool.m_funcTicks;
}

psString psTest::perfString(bool flops) { return formatClocks(performance(flops)); }

psString psTest::testResultString() {
    psString text;
    if (m_tool.m_method == psTool::Auto || m_tool.m_method == psTool::Best) {
        text << "  acc=" << sFormat(psTool::getAccuracyStr(m_tool.m_actualAccuracy), -5);
    }
    text << "  " << sFormat(m_tool.m_comment, -10);
    text << "  perf=" << sFormat(m_tool.m_funcTicks, 9) << "/" << sFormat(getDivisor(), 9) << "="
         << sFormat(perfString(false), 9) << " clocks";
    return text;
}

psString psTest::pairString() {
    psPairResult const& pairs = m_tool.m_pairResult;
    char numbers[160];
    std::snprintf(numbers, sizeof numbers, " ratio=%.4f lo=%.4f hi=%.4f nPrs=%d %s", pairs.ratio,
                  pairs.lo, pairs.hi, pairs.pairs, pairs.quiet ? "quiet" : "shared");
    return "base=" + formatClocks(pairs.baseline / getDivisor()) + numbers;
}

void psTest::putTextError(psResult result) {
    if (result <= psResOk) {
        return;
    }
    g_ostrm << (isFailure(result) ? MSG_ERR : MSG_WARN) << "-- " << resultText(result)
            << " on test parameters:\n";
    putTextParms();
    g_ostrm << MSG_RESTORE;
}

void psTest::putTableName() {
    if (m_funcName.find("__ps", 0) == 0) {
        return;
    }
    if ((psRunMode::m_nameMode & psRunMode::namesIntoResults) != 0) {
        putTableNameLine();
    }
    if ((psRunMode::m_nameMode & psRunMode::namesIntoOwnTable) != 0) {
        useNameTable(true);
        putTableNameLine();
        useNameTable(false);
    }
}

// A fault between the two calls leaves it on, and who takes the failure puts it off.
void psTest::useNameTable(bool on) {
    static bool isUsed = false;
    if (on != isUsed) {
        g_cstrm.swap(g_qstrm);
        isUsed = on;
    }
}

void psTest::putTableNameLine() {
    traced("funcToCstrm", [this] { funcToCstrm(); });
    traced("parmsNameToCstrm", [this] { parmsNameToCstrm(); });
    endParmColumns();
    g_cstrm << "parmNames";
    g_cstrm.lineOut(m_numResultColm + m_numParmsColm);
}

bool psTest::setDeprecatedFlag(bool on) {
    m_deprecated = on;
    bool taken = false;
    for (psParameter* parm : m_parms) {
        if (!on) {
            parm->setDeprecatedFlag(false);
        } else if (parm->isDeprecatedParm()) {
            if (!parm->setDeprecatedFlag(true)) {
                return false;
            }
            taken = true;
        }
    }
    return taken;
}

psString sFormat(psString text, int width) {
    int const missing = std::abs(width) - text.size();
    if (missing <= 0) {
        return text;
    }
    psString blanks(" ");
    blanks.resize(missing, ' ');
    return width < 0 ? text + blanks : blanks + text;
}

psString sFormat(double value, int width) {
    psString text;
    text << value;
    return sFormat(text, width);
}
