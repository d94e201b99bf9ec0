// psreport.h - the five reports of a run. Each collects its text once; an operator per
// kind of stream lays it out.
#ifndef PSTEST_PSREPORT_H
#define PSTEST_PSREPORT_H

#include "psstream/pscstream.h"
#include "psstream/psostream.h"
#include "pstest/pstestlist.h"

// Machine and start time: label and value by turns.
class psReportTitle : public psStringList {
public:
    explicit psReportTitle(psTestList const& tests);
};
psOStream& operator<<(psOStream& out, psReportTitle const& report);
psUStream& operator<<(psUStream& out, psReportTitle const& report);
psCStream& operator<<(psCStream& out, psReportTitle const& report);

// The tests, or the library's functions against the tests: cells, with "\n" as line end.
class psReportList : public psStringList {
public:
    psReportList(psTestList& tests, psConditions& conditions, int exist);

private:
    static bool createFuncList(psStringList& names);
    static bool presentInTestList(psTestList& tests, psString const& name);
};
psOStream& operator<<(psOStream& out, psReportList const& report);
psUStream& operator<<(psUStream& out, psReportList const& report);
psCStream& operator<<(psCStream& out, psReportList const& report);

// One test at its start: label, value and right-hand text by turns. How much is collected goes by
// the level of g_ostrm, as it is when the report is made; how much is laid out, by the level of the
// stream that it is written to, as it is then. Where the console is quiet, another stream gets the
// function alone, whatever its own level.
class psReportTestTitle : public psStringList {
public:
    explicit psReportTestTitle(psTest const* test);
};
psOStream& operator<<(psOStream& out, psReportTestTitle const& report);
psUStream& operator<<(psUStream& out, psReportTestTitle const& report);

// One test at its end. Of a null test it is the header of the summary table.
class psReportTestResult {
public:
    explicit psReportTestResult(psTest const* test);

    psString m_word;
    psString m_function;
    psString m_stopTime;
    psString m_note;    // of a test that did not run; kept with the report, on no stream
    psString m_summary; // continues the row that the title began
};
psOStream& operator<<(psOStream& out, psReportTestResult const& report);
psUStream& operator<<(psUStream& out, psReportTestResult const& report);

// Totals of the run: label and value by turns.
class psReportEnd : public psStringList {
public:
    explicit psReportEnd(psTestList const& tests);
    static psString timeValue(psString const& time); // a word in place of an unusable text
};
psOStream& operator<<(psOStream& out, psReportEnd const& report);
psUStream& operator<<(psUStream& out, psReportEnd const& report);
psCStream& operator<<(psCStream& out, psReportEnd const& report);

#endif
