// pssession.cpp - the order of all steps of a run.
#include "ps/pssession.h"

#include <cstdio>
#include <ctime>

#include "ps/psregister.h"
#include "psstream/pscstream.h"
#include "psstream/psistream.h"
#include "psstream/psreplacefile.h"
#include "pstest/psnorvocputest.h"
#include "pstest/psreport.h"
#include "pstest/psreportformat.h"

namespace {

void deleteTests() {
    for (psTest* test : *pTestList) {
        delete test;
    }
    delete pTestList;
    pTestList = nullptr;
}

} // namespace

psSession::psSession() {
    io_stream::inPathHook = getInPath;
    io_stream::outPathHook = getOutPath;
}

psSession::~psSession() {
    delete m_conditions;
    for (psOption* option : m_options) {
        delete option;
    }
    if (pSession == this) {
        pSession = nullptr;
    }
}

void psSession::initSession() {
    m_conditions = new psConditions;
    psInitKeyTable(*this);
}

int psSession::run(int argc, char** argv) {
    g_ostrm.setMsgLevel(MSG_PERF);
    g_ostrm.insert(g_ostrm.end(), &c_out);
    setZolEnvironment();
    initSession();
    psRegTest(new __psNorvoCpuTest("__psNorvoCpuTest", "__psNorvoCpu", "Norvo CPU information",
                                   "testsdk/perflib/src/ps"));
    std::time(&pTestList->m_startTime);

    int result = 0;
    bool measured = false;
    if (parseCommandLine(argc, argv) && startSession() && !hintOutput()) {
        startZolLibrary();
        setZolLibInfo();
        if (pTestList == nullptr) {
            (void)std::puts("Error! pTestList is NULL");
            return 0;
        }
        if (m_enumMode <= 1 || startComparison()) {
            sortTests();
            outputHeader();
            if (!enumOutput()) {
                result = measureTests();
                measured = true;
            }
        }
    }
    std::time(&pTestList->m_stopTime);
    if (measured) {
        outputFooter();
    }
    g_istrm.deleteIniFile(); // written, once
    outputSignal();
    deleteTests();
    return result;
}

void psSession::sortTests() {
    if (!m_noSort) {
        // Straight to the console: no output file shall hold this.
        (void)std::printf("Sorting functions...");
        pTestList->sortFunc();
        (void)std::putchar('\n');
    }
    pTestList->startWithCpuTest();
}

int psSession::measureTests() {
    if (s_parmFunc != nullptr) {
        s_parmFunc();
    }
    selectTestParameters();
    beginCommonData();
    readCommonData();
    endCommonData();
    if (g_pHotList == nullptr) {
        g_pHotList = new psStringList;
    }
    putTableTitle();
    return pTestList->runTests(*m_conditions) ? 1 : 0;
}

void psSession::selectTestParameters() {
    if (g_pParmList == nullptr) {
        return;
    }
    bool const savedBatch = m_batchMode;
    int const savedAsk = m_askMode;
    m_batchMode = true;
    m_askMode = 0;
    pTestList->selectCommonParms(*m_conditions, *g_pParmList);
    m_batchMode = savedBatch;
    m_askMode = savedAsk;
}

void psSession::beginCommonData() { g_ostrm.setOutLevel(dialogueLevel); }

void psSession::endCommonData() {
    g_ostrm.setOutLevel(m_levelMode);
    if ((m_askMode & askEachTest) == 0) {
        g_istrm.setIStream(nullptr);
    }
}

void psSession::putTableTitle() {
    putTableTitleLine();
    if ((m_nameMode & namesIntoOwnTable) != 0) {
        g_cstrm.swap(g_qstrm);
        putTableTitleLine();
        g_cstrm.swap(g_qstrm);
    }
}

void psSession::putTableTitleLine() {
    funcTitleToCStream();
    parmsTitleToCStream();
    psTest::m_numParmsColm = g_cstrm.nextColm;
    resultTitleToCStream();
    psTest::m_numResultColm = g_cstrm.nextColm - psTest::m_numParmsColm;
    g_cstrm.lineOut(0);
}

void psSession::funcTitleToCStream() { g_cstrm << "function"; }

void psSession::parmsTitleToCStream() {
    g_cstrm << "Len/Size"
            << "Parm1"
            << "Parm2"
            << "Parm3"
            << "Parm4"
            << "Parm5"
            << "Parm6"
            << "scaleFactor";
}

void psSession::resultTitleToCStream() {
    g_cstrm << "Comment"
            << "Clocks"
            << "per"
            << "Time (usec)"
            << "MFlops";
    if (psTest::m_hot != 0) {
        g_cstrm << "Interest";
    }
}

bool psSession::enumOutput() {
    if (m_enumMode > 1) {
        return false;
    }
    listTests(m_enumMode);
    return true;
}

void psSession::listTests(int mode) {
    psReportTitle const title(*pTestList);
    g_ostrm << title;
    g_cstrm << title;
    psReportList const list(*pTestList, *m_conditions, mode);
    g_ostrm << list;
    g_cstrm << list;
}

void psSession::outputHeader() {
    psReportTitle const title(*pTestList);
    g_ostrm << title;
    g_cstrm << title;
    g_qstrm << title;
    g_ustrm << title;
    g_ustrm << psReportTestResult(nullptr); // the titles of the summary's columns
}

void psSession::outputFooter() {
    psReportEnd const end(*pTestList);
    g_ostrm << MSG_ERR << end << MSG_RESTORE;
    g_ustrm << end;
}

void psSession::outputSignal() {
    time_t const stop = pTestList->m_stopTime;
    int const seconds = static_cast<int>(std::difftime(stop, pTestList->m_startTime));
    m_sglText = psReportFormat::getTimeStr(seconds) + "\n" + std::ctime(&stop) + "\n";
}

void psSession::endOutput() {
    g_ostrm.flush();
    g_cstrm.flush();
    g_qstrm.flush();
    g_ustrm.flush();
    if (!m_sglName.empty() && !m_sglText.empty()) {
        (void)psReplaceFile(m_sglName, m_sglText); // tells a failure
    }
}
