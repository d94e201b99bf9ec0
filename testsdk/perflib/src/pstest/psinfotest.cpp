// psinfotest.cpp - tests that print information instead of measuring.
#include "pstest/psinfotest.h"

#include "pscpu/pshost.h"

__psInfoTest::__psInfoTest(psString funcName, psString testName, psString note, psString fileName)
    : psTest(static_cast<psFuncOld>(nullptr), funcName, fileName, testName + "/" + note) {}

void __psInfoTest::loopData() {
    g_ostrm << MSG_ERR;
    printInformation();
    g_ostrm << MSG_RESTORE_FLUSH;
    m_currentResult = psResOk;
}

void __psHostTest::printInformation() { g_ostrm << " Computer : " << host.name() << "\n"; }

void __psOSTest::printInformation() { g_ostrm << " OS       : " << os.text() << "\n"; }
