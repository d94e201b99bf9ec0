// history.h - tables of many dates in order, and the steps between them. docs/verdicts.md has the
// reasons and the figures.
#ifndef CORE_HISTORY_H
#define CORE_HISTORY_H

#include <set>
#include <string>
#include <vector>

#include "core/show.h"
#include "core/table.h"
#include "core/verdict.h"

namespace tables {

// What one machine measured at a date.
struct HistoryDate {
    std::string label;
    std::string machine;
    std::vector<double> logs; // by point: of clocks, or of the ratio; NaN: not measured
    Verdict changes;          // from the date before it; empty where there is no step
    std::string table{};      // the file
    long place = 0;           // in the order of all: seconds since 1970, or the label's number
};

struct History {
    PointList points;
    std::vector<HistoryDate> dates; // in order
    bool chain = false;             // of ratios, not of clocks
    VerdictSettings settings{};
    std::vector<std::string> notes{};
};

// Neighbouring lengths of a function that step together.
struct Step {
    HistoryDate const* date;
    CalledRange range;
};

// Seconds since 1970 of a head's Start line. Throws Failure where it is no date.
long startOf(Head const& head);

// Date and library of a head.
std::string labelOf(Head const& head);

// Adds a date for each machine of a table of absolute numbers; in a chain, the verdict of pairs,
// which are of one machine. Throws Failure where they cannot be had.
void addDate(History& history, Passes const& passes, std::string const& label);

// Finds the steps of absolute numbers, machine by machine; multiplies the ratios of a chain.
void findSteps(History& history);

// Of all machines, worst first.
std::vector<Step> stepsOf(History const& history);

// Their names, each once.
std::set<std::string> machinesOf(History const& history);

// How many dates from when to when; how many steps in how many functions.
std::string datesText(History const& history);
std::string stepsText(History const& history);

// Steps, worst first, as text with so many rows (0: all) or as csv; and, with the line of each
// function, as JSON.
std::string historyText(History const& history, std::size_t rows);
std::string historyCsv(History const& history);
std::string historyJson(History const& history);

} // namespace tables

#endif
