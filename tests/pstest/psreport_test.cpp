// psreport_test.cpp - the five reports, as whole texts on each kind of stream.
#include "pstest/psreport.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "pscpu/pscputicker.h"
#include "pscpu/pshost.h"
#include "pscpu/pszolentry.h"
#include "pstest/psconditions.h"
#include "pstest/psrunmode.h"
#include "support/messagecapture.h"

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

std::string const bar = std::string("+").append(77, '-') + "+\n";

std::string framed(std::string text) {
    text = "| " + text;
    if (text.size() > 78) {
        return text + "\n";
    }
    text.resize(78, ' ');
    return text + "|\n";
}

class PsReport : public testing::Test {
protected:
    PsReport() {
        setenv("TZ", "UTC", 1);
        tzset();
        g_ostrm.setOutLevel(7);
        psCpuTicker::m_freqMHz = 2933; // else the estimate takes seconds
        psRunMode::exePath = "/opt/bin/ps_zolvm";
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
        psRunMode::exePath = oldPath;
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
    psString oldPath = psRunMode::exePath;
};

TEST_F(PsReport, TitleTellsTheMachine) {
    psRegLibInfo("libone, 1.0, Jan 1 2020");
    psRegLibInfo("libtwo, 2.0, Jan 2 2020");
    psReportTitle const title(tests);
    std::string const cpu = cpuInfo().c_str();
    std::string const system = os.text();
    std::string const computer = host.name();
    EXPECT_EQ(bar + framed("CPU      : " + cpu) + framed("OS       : " + system) +
                  framed("Computer : " + computer) + framed("Library  : libone, 1.0, Jan 1 2020") +
                  framed("Library  : libtwo, 2.0, Jan 2 2020") + framed("Test     : Timing") +
                  framed(std::string(52, ' ') + "Sun Sep  9 01:46:40 2001") + bar,
              console(title, 1));
    std::string const pairs = "CPU," + cpu + "\nOS," + system + "\nComputer," + computer +
                              "\nLibrary,libone, 1.0, Jan 1 2020\n"
                              "Library,libtwo, 2.0, Jan 2 2020\nStart,Sun Sep  9 01:46:40 2001\n";
    EXPECT_EQ(pairs, written<psUStream>(title));
    EXPECT_EQ(pairs, written<psCStream>(title));
}

TEST_F(PsReport, TestTitleGrowsWithTheLevel) {
    std::string const first =
        framed("Function  : __psInfo" + std::string(32, ' ') + "Sun Sep  9 01:46:40 2001");
    psReportTestTitle const full(infoTest);
    EXPECT_EQ(first, console(full, 1, MSG_ERR)); // also of a report that holds more
    EXPECT_EQ(bar + first + framed("Test      : info") + framed("Source    : info.cpp") +
                  framed("Description : Information of a kind") + bar,
              console(full, 3, MSG_ERR));
    EXPECT_EQ(9, psReportTestTitle(absTest).size()); // no description, no line
}

TEST_F(PsReport, ResultClosesTheTest) {
    absTest->m_result = psResExcptFail;
    psReportTestResult const result(absTest);
    std::string const line =
        framed("-EXCPTFAIL  zolsAbs_32f_A24" + std::string(25, ' ') + "Sun Sep  9 01:46:45 2001");
    EXPECT_EQ(line, console(result, 1));
    EXPECT_EQ(bar + line + bar, console(result, 7));
    absTest->m_result = psResUndefined;
    EXPECT_STREQ("--No measurements have been done\n", psReportTestResult(absTest).m_note.c_str());
}

TEST_F(PsReport, SummaryRowStandsUnderItsHeader) {
    EXPECT_EQ("Function,Class,Control87,Status87,ControlSSX,StatusSSX,Test,Time (sec.),SrcName,"
              "Result,ExeName\n",
              written<psUStream>(psReportTestResult(nullptr)));
    absTest->m_result = psResOk;
    absTest->m_badSSX = true;
    EXPECT_EQ("zolsAbs_32f_A24,Timing,", written<psUStream>(psReportTestTitle(absTest)));
    EXPECT_EQ("-,-,-,?,absTest,5,abs.cpp,OK,ps_zolvm\n",
              written<psUStream>(psReportTestResult(absTest)));
    EXPECT_EQ("__psInfo,Information,", written<psUStream>(psReportTestTitle(infoTest)));
}

TEST_F(PsReport, ListOfTests) {
    conditions.insert(conditions.end(), new RunCondition_f("zols"));
    psReportList const list(tests, conditions, 0);
    EXPECT_EQ("   #\tFunction\tTest\tSource\t\n"
              "   1\tzolsAbs_32f_A24\tabsTest\tabs.cpp\t\n"
              "   2\tzolsAdd_64f_A53\taddTest\tadd.cpp\t\n",
              console(list, 4)); // a stream's first message level
    EXPECT_EQ("", console(list, 1));
    EXPECT_EQ("   #,Function,Test,Source,\n,   1,zolsAbs_32f_A24,absTest,abs.cpp,\n"
              ",   2,zolsAdd_64f_A53,addTest,add.cpp,\n",
              written<psUStream>(list));
    EXPECT_EQ("   #,Function,Test,Source\n   1,zolsAbs_32f_A24,absTest,abs.cpp\n"
              "   2,zolsAdd_64f_A53,addTest,add.cpp\n",
              written<psCStream>(list));
}

TEST_F(PsReport, ListOfLibraryFunctionsAgainstTests) {
    for (char const* name :
         {"zolsAbs_32f_A24", "zolsMissing", "zolsGetMean", "Forget_x", "zolsResetMean", "Free"}) {
        psRegLibFunc(name);
    }
    std::string const missing = "-,zolsMissing\n-,Forget_x\n-,zolsResetMean\n";
    EXPECT_EQ("Exist,Function\n+,zolsAbs_32f_A24\n" + missing,
              written<psCStream>(psReportList(tests, conditions, 1)));
    EXPECT_EQ("Exist,Function\n" + missing,
              written<psCStream>(psReportList(tests, conditions, -1)));
}

// A different count for each code, so that a sum that forgets or doubles one shows.
TEST_F(PsReport, EndSumsTheCodes) {
    int total = 0;
    for (int code = 0; code < psNumResults; ++code) {
        tests.m_numResult[code] = 1 << code;
        total += 1 << code;
    }
    tests.m_numTests = total;
    psReportEnd const end(tests);
    EXPECT_EQ(bar + framed("PS Summary") + framed(".Number of tests : 4095") +
                  framed(".Successes       : 2") + framed(".Failures        : 1980") +
                  framed("...Fails         : 1920") + framed(".....-FAIL       : 896") +
                  framed(".....-EXCPTFAIL  : 1024") + framed("...Warnings      : 60") +
                  framed(".....-WARNING    : 52") + framed(".....-BADSTSWRN  : 8") +
                  framed("...Undefined     : 2113") + framed(".Total time      : 01:01:01") + bar,
              console(end, 1));
    std::string const pairs =
        "END_DATA\n.Number of tests,4095\n.Successes      ,2\n.Failures       ,1980\n"
        "...Fails        ,1920\n.....-FAIL      ,896\n.....-EXCPTFAIL ,1024\n"
        "...Warnings     ,60\n.....-WARNING   ,52\n.....-BADSTSWRN ,8\n...Undefined    ,2113\n"
        ".Total time     ,01:01:01\n";
    EXPECT_EQ(pairs, written<psUStream>(end));
    EXPECT_EQ(pairs, written<psCStream>(end));
}

} // namespace
