// pstestrun.cpp - one selected test: its frame of section, title, start check and report, and the
// walk over its parameter sets.
#include "pstest/pstest.h"

#include <new>

#include "psbase/psexception.h"
#include "psbase/tssignal.h"
#include "psstream/pstraced.h"
#include "pstest/psreport.h"
#include "pstest/psrunmode.h"
#include "pstool/pspriority.h"

namespace {

// What a jump out of a test may leave changed on the message stream. The level of the message that
// stood open is put back on top of what it left on the stack.
class StreamState {
public:
    StreamState() : outLevel(g_ostrm.getOutLevel()), msgLevel(g_ostrm.getMsgLevel()) {}
    void restore() const {
        g_ostrm.setOutLevel(outLevel);
        if (g_ostrm.getMsgLevel() != msgLevel) {
            g_ostrm.setMsgLevel(msgLevel);
        }
    }

private:
    OutputLevel outLevel;
    MessageLevel msgLevel;
};

// With errors only on the screen, warnings don't spoil a test's result.
psResult mergedResult(psResult result) {
    bool const isWarning = result > psResOk && !isFailure(result);
    return isWarning && !g_ostrm.admits(MSG_WARN) ? psResult{psResOk} : result;
}

void raiseCurrentResult(psResult result) {
    if (result > psTest::m_currentResult) {
        psTest::m_currentResult = result;
    }
}

} // namespace

// The landing place of signals, good from setjmp to the return of the body: a jump needs this frame
// to stand. It holds plain data, set ahead of setjmp and never changed, and so do all frames
// between it and the measured call: a jump abandons them. The exception is made here, outside of
// the handler.
bool psTest::callGuarded(bool (psTest::*body)()) {
    if (setjmp(tsSignal::m_jmpbuf) != 0) {
        throw psException(tsSignal::getInfo());
    }
    try {
        return (this->*body)();
    } catch (std::bad_alloc const&) {
        throw psException(psString("no memory"));
    }
}

psResult psTest::run() {
    StreamState const before;
    try {
        if (!callGuarded(&psTest::runBody)) {
            return psResUndefined;
        }
    } catch (psException const& failure) {
        before.restore();
        takeFailure(failure);
    }
    try {
        callGuarded(&psTest::endBody);
    } catch (psException const& failure) {
        before.restore();
        takeFailure(failure);
        outputReport(); // corrects the one before
    }
    return m_result;
}

// What a jump out of the test has left open is closed: the next test begins with a clean table.
void psTest::takeFailure(psException const& failure) {
    m_currentResult = psResExcptFail;
    psResetPriority(); // a measurement that was left has raised it
    g_ostrm << MSG_ERR << failure.msg() << " in " << g_trace.getCurName() << "\n";
    if (g_pairing.inSeries()) {
        g_ostrm << "-- It came from the "
                << (g_pairing.turn() == psBaseline ? "baseline\n" : "library under test\n");
        g_pairing.endSeries();
    }
    g_ostrm << MSG_RESTORE;
    useNameTable(false);
    g_cstrm.lineAbandon();
    setDeprecatedFlag(false);
}

void psTest::outputReport() {
    m_result = m_currentResult;
    m_stopTime = time(nullptr);
    traced("testResult", [this] {
        psReportTestResult const report(this);
        g_ostrm << report;
        if (!m_summaryBegun) { // of a test that failed before its title, or behind its row
            g_ustrm << psReportTestTitle(this);
        }
        m_summaryBegun = false;
        g_ustrm << report;
        g_cstrm.flush(); // the two others are, by their reports
    });
}

bool psTest::runBody() {
    m_result = psResOk;
    m_currentResult = psResUndefined;
    m_summaryBegun = false;
    m_tool = g_tool;
    if (m_info.m_macro.contains("Ibs")) {
        m_tool.m_initAndCheck = true;
    }
    g_trace.clearState();
    if (traced("setIniSection", [this] { return setIniSection(m_funcName); }) == 0) {
        return false;
    }
    traced("beginTest", [this] { beginTest(); });
    m_startTime = time(nullptr);
    outputTitle();
    startAndMeasure();
    traced("flushStart", [this] { flushStart(); });
    return true;
}

bool psTest::endBody() {
    outputReport();
    traced("endTest", [this] { endTest(); });
    return true;
}

void psTest::outputTitle() {
    psReportTestTitle const title = traced("testTitle", [this] { return psReportTestTitle(this); });
    traced("g_ostrm<<testTitle", [&title] { g_ostrm << MSG_ERR << title << MSG_RESTORE; });
    traced("g_ustrm<<testTitle", [&title] { g_ustrm << title; });
    m_summaryBegun = true;
}

void psTest::startAndMeasure() {
    if (!traced("canStart", [this] { return canStart(); })) {
        g_ostrm << MSG_ERR << "-- Can't start timing\n" << MSG_RESTORE;
        m_currentResult = psResDataFail;
        return;
    }
    if (m_cache && m_cacheIterator == nullptr) {
        g_ostrm << MSG_ERR << "-- Can't run "
                << "In-Outof-Cache"
                << " timing: no program support for function " << m_funcName << "\n"
                << MSG_RESTORE;
        return;
    }
    traced("parmsFromIstrm", [this] { parmsFromIstrm(); });
    putTableName();
    if (g_istrm.savesToIni() || psRunMode::m_nameExit) {
        m_currentResult = psResOk; // asked and stored; nothing is measured
        return;
    }
    outputRegInfo();
    traced("loopData", [this] { loopData(); });
}

int psTest::setIniSection(psString name) {
    if (m_pressing && g_istrm.hasIniFile() && !g_istrm.getIniFile()->sectionExist(name)) {
        return 0;
    }
    if (g_istrm.savesToIni()) {
        g_istrm.getIniFile()->write(name);
    }
    g_istrm.setIniSection(name);
    return 1;
}

void psTest::startAndStop() {
    StreamState const before;
    g_ostrm.setOutLevel(MSG_ERR);
    try {
        callGuarded(&psTest::startAndStopBody);
    } catch (psException const& failure) {
        g_ostrm << MSG_ERR << failure.msg() << " in startAndStop of " << m_funcName << " test\n"
                << MSG_RESTORE_FLUSH;
    }
    before.restore();
}

bool psTest::startAndStopBody() {
    beginTest();
    canStart();
    flushStart();
    endTest();
    return true;
}

bool psTest::canContinue() {
    if (m_parms.empty()) {
        return m_firstData;
    }
    if (m_cacheIterator != nullptr && m_cacheRetry) {
        return retryCacheSize();
    }
    if (m_firstData) {
        for (psParameter* parm : m_parms) {
            if (!parm->firstValue()) {
                return false;
            }
        }
        return true;
    }
    // The list is an odometer: a parameter at its end wraps round and moves the one before it.
    for (auto* node = m_parms.end().pNode()->prev; node != nullptr; node = node->prev) {
        if (node->item->nextValue()) {
            return true;
        }
        node->item->firstValue();
    }
    return false;
}

bool psTest::retryCacheSize() {
    m_cacheRetry = false;
    if (m_cacheIterator->repeatValue()) {
        return true;
    }
    g_ostrm << MSG_ERR;
    m_cacheIterator->outputInfo();
    putTextParms();
    g_ostrm << "-- Fail to allocate " << m_cacheIterator->getComment() << " data\n" << MSG_RESTORE;
    raiseCurrentResult(psResDataFail);
    return false;
}

void psTest::loopData() {
    m_traceState = g_trace.saveState();
    g_cstrm.identicalLinesStart(m_numParmsColm);
    bool constTold = false;
    do {
        g_trace.restoreState(m_traceState);
        m_vectorNum = 0;
        m_vectorShift = 0;
        if (!traced("canContinue", [this] { return canContinue(); })) {
            break;
        }
        m_firstData = false;
        if (traced("initData", [this] { return initData(); })) {
            if (!constTold) {
                outputConst();
            }
            measureData();
            constTold = true;
        }
        traced("flushData", [this] { flushData(); });
    } while (!isFailure(m_currentResult));

    if (m_firstData) {
        g_ostrm << MSG_ERR << "-- One of argument list for timing is empty\n" << MSG_RESTORE;
        raiseCurrentResult(psResDataFail);
    } else if (m_currentResult == psResUndefined) {
        g_ostrm << MSG_ERR << "-- Error while initialization of function data\n" << MSG_RESTORE;
        m_currentResult = psResDataFail;
    }
    g_cstrm.linePostponeOut(m_numResultColm + m_numParmsColm);
    if (g_cstrm.identicalLinesStop()) {
        g_ostrm << MSG_WARN << "-- Warning: duplicate lines in performance table (csv-file)\n"
                << MSG_RESTORE;
        raiseCurrentResult(mergedResult(psResDataWrn));
    }
    g_trace.restoreState(m_traceState);
}

// One parameter set whose data are there.
void psTest::measureData() {
    if (m_cacheIterator != nullptr && !m_cacheIterator->validateSize()) {
        m_cacheRetry = true;
        return;
    }
    putTextParms(MSG_PERF);
    if (m_tool.m_setAndUse) {
        traced("reserveAllVectors", [] { return reserveAllVectors(); });
    }
    if (m_hot == 2 && !isHotLine()) {
        g_ostrm << "  measuring is omitted: not hot line\n";
        return;
    }
    printAllMemoryBlocks("before function calls");
    OutputLevel const oldOutLevel = g_ostrm.getOutLevel();
    initCtrlStatus();
    if (oldOutLevel == (MSG_ERR | MSG_WARN)) {
        g_ostrm.setOutLevel(MSG_ERR | MSG_WARN | MSG_PERF);
    }
    psResult result = traced("runTiming", [this] { return runTiming(); });
    g_ostrm.setOutLevel(oldOutLevel);
    if (result != psResUndefined) {
        printAllMemoryBlocks("after function calls");
    } else {
        g_ostrm << MSG_ERR
                << "-- Internal test problem: runTiming() function returns undefined result\n"
                << MSG_RESTORE;
        raiseCurrentResult(psResFail);
    }
    psResult const status = checkCtrlStatus();
    result = result > status ? result : status;
    raiseCurrentResult(mergedResult(result));
    outputResult(result);
}
