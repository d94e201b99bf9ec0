// zotest.cpp - a test that knows the library.
#include "zo/zotest.h"

#include "pscpu/pszolentry.h"
#include "psmemory/psmemory.h"
#include "zo/zovector.h"

bool zoTest::m_checkErrorsOnly = false;

zoTest::zoTest(psFuncOld body, psString funcName, psString fileName, psString bodyName)
    : psTest(body, funcName, fileName, bodyName), m_func(funcName) {}

zoTest::zoTest(psFuncCall funcCall, psFuncCall funcInit, psFuncLoop funcLoop, psFuncStat funcStat,
               psString funcName, psString fileName, psString infoText)
    : psTest(funcCall, funcInit, funcLoop, funcStat, funcName, fileName, infoText),
      m_func(funcName) {}

bool zoTest::tobeRun(psConditions& conditions) { return psTest::tobeRun(conditions); }

psResult zoTest::run() {
    m_checkErrorsOnly = false;
    zoVector::m_seed = zoVector::startSeed;
    return psTest::run();
}

int zoTest::compareFunc(psTest const* other) const {
    return m_func.compare(zoFunc(other->m_funcName));
}

void zoTest::funcToCstrm() {
    g_cstrm << m_func.prefix() + m_func.baseName() << m_func.typeName() << m_func.descrName();
}

bool zoTest::isFloatFunction() {
    return psTest::isFloatFunction() && (m_func.contains("32f") || m_func.contains("64f"));
}

// The macro's marker in the text tells tests of this layer from others.
psString zoTest::regInfo() {
    psString text = psTest::regInfo();
    int const marker = text.find("PS_", 0);
    if (marker >= 0) {
        text[marker + 1] = 'P';
    }
    return text;
}

int zoTest::printAllMemoryBlocks(psString title) {
    if (!g_ostrm.beginMessage(MSG_DATA)) {
        return 0;
    }
    g_trace.traceIn("printAllMemoryBlocks");
    printFirstDebugLine(title);
    int count = 0;
    int size = 0;
    void* mark = nullptr;
    for (void* block = psMallocFirst(&size, &mark); block != nullptr;
         block = psMallocNext(&size, &mark)) {
        psObject* const owner = static_cast<psObject*>(mark);
        if (owner == nullptr || owner == MEM_OBJECT_IS_SUBOBJECT) {
            continue;
        }
        printFirstBlockLine(++count, owner, size);
        if (owner == MEM_OBJECT_IS_BUFFER) {
            printByteBlock(block, size);
        } else {
            printVectorBlock(owner);
        }
        printLastBlockLine();
    }
    printLastDebugLine(title);
    g_ostrm.endMessage();
    g_trace.traceOut("printAllMemoryBlocks");
    return count;
}

void zoTest::printFirstDebugLine(psString title) {
    g_ostrm << "======== OBJECTS OUTPUT START === " << title
            << " === OBJECTS OUTPUT START ========\n";
}

void zoTest::printLastDebugLine(psString title) {
    g_ostrm << "======== OBJECTS OUTPUT END === " << title << " === OBJECTS OUTPUT END ========\n";
}

void zoTest::printFirstBlockLine(int count, psObject* owner, int size) {
    g_ostrm << "======== Object " << count << ": ";
    if (owner == MEM_OBJECT_IS_BUFFER) {
        g_ostrm << "MemoryBlock size=" << size << "\n";
    } else {
        g_ostrm << owner->objectInfo() << "\n";
    }
}

void zoTest::printLastBlockLine() { g_ostrm << "\n"; }

void zoTest::printVectorBlock(psObject* owner) {
    if (zoVector* const vector = dynamic_cast<zoVector*>(owner)) {
        g_ostrm << vector->getString();
    }
    g_ostrm << "\n";
}

void zoTest::printByteBlock(void const* data, int size) {
    g_ostrm << zoVector::getByteString(data, size) << "\n";
}

void zoTest::regCacheParm(psIterator<ZoliSize>& parm, psObject* image, psSetNewValue setNewValue) {
    bool const wrap = m_cache && m_cacheIterator == nullptr;
    regParm(parm, wrap ? new psCacheIteratorSize(parm, image, setNewValue) : nullptr);
}

void zoTest::regCacheParm(psIterator<ZoliSize>& parm, psSetNewValue setNewValue) {
    regCacheParm(parm, nullptr, setNewValue);
}

psString zoTest::unitStr(int index) {
    static char const* const units[] = {" ",     "e",    "px",    "pxch",
                                        "cpMac", "e_kp", "px_kp", "pxch_kp"};
    constexpr int count = sizeof units / sizeof units[0];
    return units[index >= 0 && index < count ? index : 0];
}

psResult zoTest::checkFuncStatus(ZolStatus status, psString name) {
    return checkStatus(status, name);
}

psResult zoTest::checkStatus(ZolStatus status, psString name) {
    if (status == zolStsNoErr || (status > 0 && m_checkErrorsOnly)) {
        return psResOk;
    }
    bool const error = status < 0;
    g_ostrm << (error ? MSG_ERR : MSG_WARN) << (error ? "--ZOL ERROR. " : "--ZOL WARNING. ")
            << "status = " << status;
    if (!name.empty()) {
        g_ostrm << " in " << name;
    }
    g_ostrm << ": " << zol_GetStatusString(status) << "\n" << MSG_RESTORE;

    psResult const result = error ? psResFuncFail : psResFuncWrn;
    // A warning that is not shown does not spoil the test.
    bool const hidden = !error && !g_ostrm.admits(MSG_WARN);
    psResult const merged = hidden ? psResOk : result;
    if (m_currentResult < merged) {
        m_currentResult = merged;
    }
    return result;
}

psResult zoTest::checkStatus(ZolStatus status) const { return checkStatus(status, m_funcName); }
