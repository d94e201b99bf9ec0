// psreport_test.cpp - the five reports, as whole texts on each kind of stream.
#include "pstest/psreport.h"

#include <cstdlib>
#include <ctime>
#include <regex>
#include <utility>

#include "pscpu/pscputicker.h"
#include "pscpu/pshost.h"
#include "pscpu/pszolentry.h"
#include "pstest/psconditions.h"
#include "pstest/psrunmode.h"
#include "support/messagecapture.h"
#include "support/storedtext.h"

namespace {

// What a stream writes of a report.
template <typename Stream, typename Report>
std::string written(Stream& out, Report const& report) {
    StreamCapture const capture(out);
    out << report;
    return capture.text();
}

template <typename Report>
std::string console(Report const& report, OutputLevel level, MessageLevel message = MSG_PERF) {
    psOStream out;
    out.setOutLevel(level);
    out.setMsgLevel(message);
    return written(out, report);
}

template <typename Stream, typename Report>
std::string written(Report const& report) {
    Stream out;
    return written(out, report);
}

// A report on each kind of stream that has it: on the console at the levels that matter.
template <typename Report>
std::string everywhere(char const* title, Report const& report) {
    std::string text = std::string("==== ") + title + "\n";
    for (OutputLevel const level : {1, 2, 3, 7}) {
        text += "---- console at " + std::to_string(level) + "\n";
        text += console(report, level, level == 2 ? MSG_PERF : MSG_ERR);
    }
    text += "---- summary\n" + written<psUStream>(report);
    if constexpr (requires(psCStream out) { out << report; }) {
        text += "---- table\n" + written<psCStream>(report);
    }
    return text;
}

class PsReport : public testing::Test {
protected:
    PsReport() {
        setenv("TZ", "UTC", 1);
        tzset();
        g_ostrm.setOutLevel(7);
        psCpuTicker::m_freqMHz = 2933; // else the estimate takes seconds
        psRunMode::m_exePath = "/opt/bin/ps_zolvm";
        psFillZolEntries();
        tests.m_startTime = start;
        tests.m_stopTime = start + 3661;
        infoTest = add("__psInfo", "info/Information of a kind", "dir/info.cpp");
        absTest = add("zolsAbs_32f_A24", "absTest", "dir/abs.cpp");
        add("zolsAdd_64f_A53", "addTest", "dir/add.cpp");
    }

    ~PsReport() override {
        for (psTest* test : tests) {
            delete test;
        }
        delete std::exchange(g_pLibInfoList, nullptr);
        delete std::exchange(g_pLibFuncList, nullptr);
        g_ostrm.setOutLevel(oldLevel);
        psRunMode::m_exePath = oldPath;
    }

    psTest* add(char const* function, char const* info, char const* file) {
        auto* const test = new psTest(static_cast<psFuncOld>(nullptr), function, file, info);
        test->m_startTime = start;
        test->m_stopTime = start + 5;
        return *tests.insert(tests.end(), test);
    }

    static constexpr time_t start = 1000000000; // Sun Sep  9 01:46:40 2001
    psTestList tests;
    psTest* infoTest;
    psTest* absTest;
    psConditions conditions;
    OutputLevel oldLevel = g_ostrm.getOutLevel();
    psString oldPath = psRunMode::m_exePath;
};

TEST_F(PsReport, EveryReportOnEveryStream) {
    psRegLibInfo("libone, 1.0, Jan 1 2020");
    psRegLibInfo("libtwo, 2.0, Jan 2 2020");
    psReportTitle const title(tests);
    std::string const lines = written<psUStream>(title);
    std::string const machine = std::string("CPU,") + cpuInfo().c_str() + "\nOS," + os.text() +
                                "\nComputer," + host.name() + "\n";
    EXPECT_TRUE(lines.starts_with(machine)) << lines;
    std::string text = everywhere("title", title);
    // The times of these reports are given, and stand in the text as they are.
    text = std::regex_replace(text, std::regex("(CPU|OS|Computer)( +: |,).*"), "$1$2...");

    text += everywhere("information test", psReportTestTitle(infoTest));
    text += everywhere("timing test", psReportTestTitle(absTest));
    g_ostrm.setOutLevel(MSG_ERR); // holds the function alone
    text += everywhere("timing test, in short", psReportTestTitle(absTest));
    text += everywhere("head of the results", psReportTestResult(nullptr));
    for (psResult result = -1; result <= psNumResults; ++result) {
        absTest->m_result = result;
        absTest->m_bad87 = result == psResBadStsWrn;
        absTest->m_badSSX = result == psResOk;
        psReportTestResult const report(absTest);
        text += everywhere("result", report) + report.m_note.c_str();
    }

    conditions.insert(conditions.end(), new RunCondition_f("zols"));
    text += everywhere("list", psReportList(tests, conditions, 0));
    text += everywhere("list without functions of the library", psReportList(tests, conditions, 1));
    for (char const* name :
         {"zolsAbs_32f_A24", "zolsMissing", "zolsGetMean", "Forget_x", "zolsResetMean", "Free",
          "zolsGet_x", "zolsSet_x", "zolsSetMean", "zolsInit", "zolsClose", "zolsAlloc",
          "zolsMalloc", "zoliPutVal", "zoliRotateCenter", "zoliResizeShift", "zoliDrawText"}) {
        psRegLibFunc(name);
    }
    text += everywhere("all functions", psReportList(tests, conditions, 1));
    text += everywhere("missing functions", psReportList(tests, conditions, -1));

    // A different count for each code, so that a sum that forgets or doubles one shows.
    for (int code = 0; code < psNumResults; ++code) {
        tests.m_numResult[code] = 1 << code;
        tests.m_numTests += 1 << code;
    }
    text += everywhere("end", psReportEnd(tests));
    for (std::size_t const length : {0, 128, 129}) {
        text +=
            psReportEnd::timeValue(std::string(length, '1').c_str()).c_str() + std::string("\n");
    }
    EXPECT_TRUE(matchesStored("pstest/reports", text));
}

} // namespace
