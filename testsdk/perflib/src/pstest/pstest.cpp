// pstest.cpp - the test object: construction, the default behaviour of its hooks, its vectors and
// its control status.
#include "pstest/pstest.h"

#include "psmemory/psmemory.h"
#include "psstream/pstraced.h"
#include "pstest/psconditions.h"
#include "pstest/psrunmode.h"
#include "pstool/psctrl.h"

namespace {

constexpr int maxVectorShift = 32768; // shifts start over from 0 here

bool isHotFunction(psString const& name) {
    if (g_pHotList != nullptr) {
        for (psString const& hot : *g_pHotList) {
            if (hot == name) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

psResult psTest::m_currentResult = psResUndefined;
int psTest::m_numParmsColm = 0;
int psTest::m_numResultColm = 0;
int psTest::m_hot = 0;
bool psTest::m_pressing = false;
bool psTest::m_cache = false;
int psTest::m_vectorNum = 0;
int psTest::m_vectorShift = 0;

constinit psList<psParameter*>* g_pParmList = nullptr;

psTestInfo::psTestInfo(psString text) : m_name(text) {
    int const noteSlash = text.find("/", 0);
    if (noteSlash < 0) {
        return;
    }
    m_name = text.substr(0, noteSlash);
    m_note = text.substr(noteSlash + 1);
    int const macroSlash = m_note.find("/", 0);
    if (macroSlash >= 0) {
        m_macro = m_note.substr(macroSlash + 1);
        m_note = m_note.substr(0, macroSlash);
    }
}

psTest::psTest(psFuncOld funcOld, psString funcName, psString fileName, psString infoText)
    : psTest(nullptr, nullptr, nullptr, nullptr, funcName, fileName, infoText) {
    m_funcOld = funcOld;
}

psTest::psTest(psFuncLoop funcLoop, psFuncStat funcStat, psString funcName, psString fileName,
               psString infoText)
    : psTest(nullptr, nullptr, funcLoop, funcStat, funcName, fileName, infoText) {}

psTest::psTest(psFuncCall funcCall, psFuncCall funcInit, psFuncLoop funcLoop, psFuncStat funcStat,
               psString funcName, psString fileName, psString infoText)
    : m_startTime(time(nullptr)), m_stopTime(m_startTime), m_funcName(funcName),
      m_fileName(fileName.getFileName()), m_info(infoText), m_funcLoop(funcLoop),
      m_funcStat(funcStat), m_funcCall(funcCall), m_funcInit(funcInit) {
    psTest::initSettings();
}

psTest::~psTest() { delete m_cacheIterator; }

bool psTest::tobeRun(psConditions& conditions) {
    return conditions.tobeRun(this) && (m_hot != 2 || isHotFunction(m_funcName));
}

int psTest::compareFunc(psTest const* other) const { return m_funcName.compare(other->m_funcName); }

psResult psTest::runTiming() {
    if (m_funcLoop == nullptr && m_funcStat == nullptr && m_funcCall == nullptr) {
        return m_funcOld != nullptr ? m_tool.timing(m_funcOld) : psResUndefined;
    }
    return m_tool.timing(m_funcLoop, m_funcStat, m_funcCall, m_funcInit);
}

void psTest::parmsFromIstrm() {
    for (psParameter* parm : m_parms) {
        parm->fromIStream(g_istrm);
    }
}

void psTest::parmsToOstrm() {
    for (psParameter* parm : m_parms) {
        parm->toOStream(g_ostrm);
    }
}

void psTest::parmsToCstrm() {
    for (psParameter* parm : m_parms) {
        parm->toCStream(g_cstrm);
    }
}

void psTest::parmsNameToCstrm() {
    for (psParameter* parm : m_parms) {
        parm->nameToCStream(g_cstrm);
    }
}

void psTest::beginTest() { initSettings(); }

bool psTest::isFloatFunction() { return getFlops() > 0.0; }

bool psTest::isHotLine() { return isHotFunction(m_funcName); }

void psTest::initSettings() {
    m_firstData = true;
    m_bad87 = false;
    m_badSSX = false;
    m_parms.clear();
    delete m_cacheIterator; // of an earlier run
    m_cacheIterator = nullptr;
    m_cacheRetry = false;
    m_deprecated = false;
    m_currentResult = psResUndefined;
}

int psTest::printAllMemoryBlocks(psString) { return 0; }

void psTest::outputConst() {
    traced("constToOstrm", [this] { constToOstrm(); });
}

void psTest::outputRegInfo() {
    if (g_ostrm.beginMessage(MSG_PERF)) {
        g_ostrm << regInfo() << "\n";
        g_ostrm.endMessage();
    }
}

void* psTest::allocate(int size, int align, void* owner) {
    if (align < 0) {
        bool const aligned = psGetAlignSrc() && m_vectorNum != 0;
        align = aligned ? 0 : -align * psGetVectorAlign();
    }
    void* const vector =
        psMalloc(size, align, m_vectorShift, owner != nullptr ? owner : MEM_OBJECT_IS_BUFFER);
    if (vector != nullptr) {
        ++m_vectorNum;
        m_vectorShift += psGetVectorShift();
        if (m_vectorShift >= maxVectorShift) {
            m_vectorShift = 0;
        }
    }
    return vector;
}

void psTest::deallocate(void* vector) { psFree(vector); }

int psTest::resetAllVectors() { return psResetAllVectors(); }

int psTest::reserveAllVectors() { return psReserveAllVectors(); }

void psTest::regCacheParm(psStepIterator<int>& parm, psObject* object, psSetNewValue setNewValue) {
    regCacheParm(static_cast<psIterator<int>&>(parm), object, setNewValue);
}

void psTest::regCacheParm(psIterator<int>& parm, psObject* object, psSetNewValue setNewValue) {
    bool const wrap = m_cache && m_cacheIterator == nullptr;
    regParm(parm, wrap ? new psCacheIteratorInt(parm, object, setNewValue) : nullptr);
}

void psTest::regParm(psParameter& parm, psCacheIterator* wrapped) {
    if (wrapped == nullptr) {
        m_parms.insert(m_parms.end(), &parm);
        return;
    }
    m_cacheIterator = wrapped;
    m_parms.insert(m_parms.end(), wrapped);
}

void psTest::setTimingResult(double ticks, psString comment) {
    m_tool.setFuncTicks(ticks);
    m_tool.m_resultText = comment;
}

int psTest::checkCtrlStatus() {
    bool bad87 = false;
    bool badSSX = false;
    bool const bad = badCtrlStatus(bad87, badSSX);
    if (bad) {
        m_bad87 = m_bad87 || bad87;
        m_badSSX = m_badSSX || badSSX;
        printCtrlStatus(bad87, badSSX);
    }
    clearCtrlStatus();
    return bad ? psResBadStsWrn : psResUndefined;
}

void psTest::printCtrlStatus(bool bad87, bool badSSX) { psPrintCtrlStatus(bad87, badSSX); }

void psTest::clearCtrlStatus() { psClearCtrlStatus(); }

void psTest::initCtrlStatus() { psInitCtrlStatus(); }

bool psTest::badCtrlStatus(bool& bad87, bool& badSSX) { return psBadCtrlStatus(bad87, badSSX); }
