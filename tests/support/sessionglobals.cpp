// sessionglobals.cpp - the globals of the framework, put back to their start.
#include "sessionglobals.h"

#include "ps/psregister.h"
#include "ps/pssession.h"
#include "psmemory/psmemory.h"
#include "psstream/pscstream.h"
#include "psstream/psistream.h"
#include "pstool/psctrl.h"

void resetSessionGlobals() {
    for (auto target = g_ostrm.begin(); target != g_ostrm.end();) {
        target = *target == &c_out ? g_ostrm.erase(target) : ++target;
    }
    renew(g_ostrm);
    renew(g_cstrm);
    renew(g_qstrm);
    renew(g_ustrm);
    renew(g_istrm);
    drop(g_pParmList);
    drop(pCmdLine);
    drop(psSession::pCmdList);
    s_cpuFeature = 0;
    s_numThreads = 0;
    s_version = false;
    s_hintArg = 0;
    s_hintHide = true;
    g_tool = psTool();
    psTool::m_priority = 0;
    psTest::m_hot = 0;
    psTest::m_pressing = false;
    psTest::m_cache = false;
    psTestList::m_startFunc = "";
    psRunMode::m_nameMode = 0;
    psRunMode::m_nameExit = false;
    psSession::m_exitLevel = 0;
    psRunMode::m_exePath = "";
    psSession::m_defName = "";
    psSession::m_inDir = "";
    psSession::m_outDir = "";
    psSetAlignByByte(false);
    psSetVectorAlign(0);
    psSetAlignSrc(true);
    psSetVectorShift(512);
    is_W_flagUsed = false;
    ts87Base::Exception = 0x3b;
    tsSSXBase::Exception = 0x1f80;
    psCpuTicker::m_freqMHz = 1000; // the estimate spins for seconds
}
