// psreport.cpp - the five reports of a run.
#include "pstest/psreport.h"

#include <cstdio>
#include <ctime>

#include "pscpu/pshost.h"
#include "pscpu/pszolentry.h"
#include "pstest/psreportformat.h"
#include "pstest/psrunmode.h"

namespace {

char const startLabel[] = "Start";
char const lineEnd[] = "\n"; // as a cell
char const endOfData[] = "END_DATA";

psString timeText(time_t time) { return cutoffNL(ctime(&time)); }

int elapsedSeconds(time_t start, time_t stop) { return static_cast<int>(difftime(stop, start)); }

void addPair(psStringList& report, psString const& label, psString const& value) {
    report.insert(report.end(), label);
    report.insert(report.end(), value);
}

void addPair(psStringList& report, psString const& label, int value) {
    psString text;
    text << value;
    addPair(report, label, text);
}

void addCells(psStringList& report, psString const& a, psString const& b, psString const& c) {
    addPair(report, a, b);
    report.insert(report.end(), c);
}

// Walks a list of label and value by turns.
template <typename Action>
void forEachPair(psStringList const& report, Action action) {
    psString const* label = nullptr;
    for (psString const& text : report) {
        if (label == nullptr) {
            label = &text;
        } else {
            action(*label, text);
            label = nullptr;
        }
    }
}

void pairsToUStream(psUStream& out, psStringList const& report) {
    forEachPair(report, [&out](psString const& label, psString const& value) {
        out << label << "," << value << "\n";
    });
    out.flush();
}

void pairsToCStream(psCStream& out, psStringList const& report) {
    forEachPair(report, [&out](psString const& label, psString const& value) {
        out << label << value;
        out.lineOut(0);
    });
}

bool holdsAny(psString const& name, char const* const* words, int count) {
    for (int i = 0; i < count; ++i) {
        if (name.contains(words[i])) {
            return true;
        }
    }
    return false;
}

// Functions that the library needs but nobody measures.
bool isAuxiliary(psString const& name) {
    static char const* const words[] = {"Init",   "Close",        "Alloc",       "Malloc",  "Free",
                                        "PutVal", "RotateCenter", "ResizeShift", "DrawText"};
    return holdsAny(name, words, sizeof words / sizeof words[0]) ||
           (name.contains("Get") && !name.contains("Get_")) ||
           (name.contains("Set") && !name.contains("Set_"));
}

} // namespace

psReportTitle::psReportTitle(psTestList const& tests) {
    addPair(*this, "CPU", cpuInfo());
    addPair(*this, "OS", os.text());
    addPair(*this, "Computer", host.name());
    if (g_pLibInfoList != nullptr) {
        for (psString const& line : *g_pLibInfoList) {
            addPair(*this, "Library", line);
        }
    }
    addPair(*this, startLabel, timeText(tests.m_startTime));
}

psOStream& operator<<(psOStream& out, psReportTitle const& report) {
    psReportFormat format(0, 4, 1, 11, 13, -79, -79, -79);
    psString start;
    out << MSG_ERR << format.firstLine();
    forEachPair(report, [&](psString const& label, psString const& value) {
        if (label == startLabel) { // the last pair
            start = value;
        } else {
            out << format.getLine(label, ":", value);
        }
    });
    out << format.getLine("Test", ":", "Timing");
    if (!start.empty()) {
        out << format.getLine("", "", "", start);
    }
    return out << format.lastLine() << MSG_RESTORE_FLUSH;
}

psUStream& operator<<(psUStream& out, psReportTitle const& report) {
    pairsToUStream(out, report);
    return out;
}

psCStream& operator<<(psCStream& out, psReportTitle const& report) {
    pairsToCStream(out, report);
    return out;
}

psReportList::psReportList(psTestList& tests, psConditions& conditions, int exist) {
    if (exist != 0 && createFuncList(*this)) {
        for (iterator place = begin(); place != end();) {
            bool const present = presentInTestList(tests, *place);
            if (present && exist < 1) {
                place = erase(place);
                continue;
            }
            insert(place, present ? "+" : "-");
            insert(++place, lineEnd);
        }
        iterator const first = begin();
        insert(first, "Exist");
        insert(first, "Function");
        insert(first, lineEnd);
        return;
    }
    addCells(*this, "   #", "Function", "Test");
    addPair(*this, "Source", lineEnd);
    int count = 0;
    for (psTest* test : tests) {
        if (test->tobeRun(conditions)) {
            char number[16];
            snprintf(number, sizeof number, "%4d", ++count);
            addCells(*this, number, test->m_funcName, test->m_info.m_name);
            addPair(*this, test->m_fileName, lineEnd);
        }
    }
}

bool psReportList::createFuncList(psStringList& names) {
    if (g_pLibFuncList == nullptr) {
        return false;
    }
    for (psString const& name : *g_pLibFuncList) {
        if (!isAuxiliary(name)) {
            names.insert(names.end(), name);
        }
    }
    return !names.empty();
}

bool psReportList::presentInTestList(psTestList& tests, psString const& name) {
    for (psTest const* test : tests) {
        if (test->m_funcName == name) {
            return true;
        }
    }
    return false;
}

psOStream& operator<<(psOStream& out, psReportList const& report) {
    for (psString const& cell : report) {
        out << cell << (cell == lineEnd ? "" : "\t");
    }
    return out;
}

psUStream& operator<<(psUStream& out, psReportList const& report) {
    char const* separator = "";
    for (psString const& cell : report) {
        out << separator << cell; // line ends are cells like others: "," stands on both sides
        separator = ",";
    }
    return out;
}

psCStream& operator<<(psCStream& out, psReportList const& report) {
    for (psString const& cell : report) {
        out << cell;
    }
    return out;
}

psReportTestTitle::psReportTestTitle(psTest const* test) {
    addCells(*this, "Function", test->m_funcName, timeText(test->m_startTime));
    if (!g_ostrm.admits(MSG_WARN)) {
        return;
    }
    addCells(*this, "Test", test->m_info.m_name, "");
    addCells(*this, "Source", test->m_fileName, "");
    if (!test->m_info.m_note.empty()) {
        addCells(*this, "Description", test->m_info.m_note, "");
    }
}

psOStream& operator<<(psOStream& out, psReportTestTitle const& report) {
    psReportFormat format(1, 4, 1, 12, 14, -79, -79, -79);
    bool const full = out.getOutLevel() > MSG_WARN;
    if (full) {
        out << format.firstLine();
    }
    for (auto cell = report.begin(); cell != report.end(); ++cell) {
        psString const& label = *cell;
        psString const& value = *++cell;
        out << format.getLine(label, ":", value, *++cell);
        if (!full) {
            break; // the function alone
        }
    }
    if (full) {
        out << format.lastLine();
    }
    out.flush();
    return out;
}

psUStream& operator<<(psUStream& out, psReportTestTitle const& report) {
    psString const& function = *++report.begin();
    bool const information = function.find("__ps", 0) == 0;
    // Not flushed: the row reaches the disk whole, with the result.
    out << function << "," << (information ? "Information" : "Timing") << ",";
    return out;
}

psReportTestResult::psReportTestResult(psTest const* test) {
    if (test == nullptr) {
        m_summary = "Function,Class,Control87,Status87,ControlSSX,StatusSSX,Test,Time (sec.),"
                    "SrcName,Result,ExeName";
        return;
    }
    m_word = resultWord(test->m_result);
    m_function = test->m_funcName;
    m_stopTime = timeText(test->m_stopTime);
    if (test->m_result == psResUndefined) {
        m_note = "--No measurements have been done\n";
    }
    m_summary << "-," << (test->m_bad87 ? "?" : "-") << ",-," << (test->m_badSSX ? "?" : "-") << ","
              << test->m_info.m_name << "," << elapsedSeconds(test->m_startTime, test->m_stopTime)
              << "," << test->m_fileName << "," << m_word << ","
              << psRunMode::m_exePath.getFileName();
}

psOStream& operator<<(psOStream& out, psReportTestResult const& report) {
    psReportFormat format(1, 3, 1, 14, -79, -79, -79, -79);
    bool const full = out.getOutLevel() > MSG_WARN;
    out << MSG_ERR;
    if (full) {
        out << format.firstLine();
    }
    out << format.getLine(psString("-") + report.m_word, report.m_function, report.m_stopTime);
    if (full) {
        out << format.lastLine();
    }
    return out << MSG_RESTORE_FLUSH;
}

psUStream& operator<<(psUStream& out, psReportTestResult const& report) {
    out << report.m_summary << "\n";
    out.flush();
    return out;
}

// The plain codes of a warning and a failure count in no sum: they show as undefined.
psReportEnd::psReportEnd(psTestList const& tests) {
    int const* const count = tests.m_numResult;
    int const fails = count[psResAccurFail] + count[psResDataFail] + count[psResFuncFail];
    int const exceptions = count[psResExcptFail];
    int const warnings = count[psResAccurWrn] + count[psResDataWrn] + count[psResFuncWrn];
    int const badStatus = count[psResBadStsWrn];
    int const successes = count[psResOk];
    int const failures = fails + exceptions + warnings + badStatus;
    addPair(*this, ".Number of tests", tests.m_numTests);
    addPair(*this, ".Successes      ", successes);
    addPair(*this, ".Failures       ", failures);
    addPair(*this, "...Fails        ", fails + exceptions);
    addPair(*this, ".....-FAIL      ", fails);
    addPair(*this, ".....-EXCPTFAIL ", exceptions);
    addPair(*this, "...Warnings     ", warnings + badStatus);
    addPair(*this, ".....-WARNING   ", warnings);
    addPair(*this, ".....-BADSTSWRN ", badStatus);
    addPair(*this, "...Undefined    ", tests.m_numTests - successes - failures);
    int const seconds = elapsedSeconds(tests.m_startTime, tests.m_stopTime);
    addPair(*this, ".Total time     ", timeValue(psReportFormat::getTimeStr(seconds)));
}

psString psReportEnd::timeValue(psString const& time) {
    if (time.size() > 128) {
        return "UNKNOWN (Very large value)";
    }
    return time.empty() ? psString("NULL") : time;
}

psOStream& operator<<(psOStream& out, psReportEnd const& report) {
    psReportFormat format(0, 3, 1, 33, 34, -79, -79, -79);
    out << MSG_ERR << format.firstLine() << format.getLine("PS Summary");
    forEachPair(report, [&](psString const& label, psString const& value) {
        out << format.getLine(label + " : " + value);
    });
    return out << format.lastLine() << MSG_RESTORE_FLUSH;
}

psUStream& operator<<(psUStream& out, psReportEnd const& report) {
    out << endOfData << "\n";
    pairsToUStream(out, report);
    return out;
}

psCStream& operator<<(psCStream& out, psReportEnd const& report) {
    out << endOfData;
    out.lineOut(0);
    pairsToCStream(out, report);
    return out;
}
