// show.h - a verdict as a text for people, for a page or for programs.
#ifndef CORE_SHOW_H
#define CORE_SHOW_H

#include <string>
#include <vector>

#include "core/table.h"
#include "core/verdict.h"

namespace tables {

// Neighbouring lengths of a function that are called alike.
struct CalledRange {
    std::string family;
    std::string function;
    long first = 0; // lengths
    long last = 0;
    int points = 0;
    double ratio = 1; // of their geometric mean
    double low = 0;   // holds the intervals of all
    double high = 0;
    Call call = Call::same;
};

// The lengths of a range: "64" or "64..512".
std::string lengthsText(CalledRange const& range);

// Worst first: the slowest ahead, the fastest at the end; ranges of a function stand together.
std::vector<CalledRange> calledRanges(PointList const& points, Verdict const& verdict);

// The geometric mean of some points' ratios.
struct Mean {
    std::string name;
    int points = 0;
    double ratio = 1;
};
// Over the points of a verdict, in the order of the names or of the lengths.
std::vector<Mean> meansByFamily(PointList const& points, Verdict const& verdict);
std::vector<Mean> meansByLength(PointList const& points, Verdict const& verdict);
// Of no points, 1.
Mean meanOfAll(Verdict const& verdict);

// What is shown. Verdicts are one for each machine.
struct Shown {
    PointList const& points;
    std::vector<Verdict> const& verdicts;
    std::string before{}; // what was compared with what
    std::string after{};
    double seconds = 0;               // that it took; 0: not known
    std::vector<std::string> notes{}; // what went wrong
    VerdictSettings settings{};
    std::size_t rows = 40; // called ranges at most; 0: all
    bool colour = false;
};

// For a terminal, and for a page of text: machine by machine, the called ranges and the means.
std::string showText(Shown const& shown);
std::string showMarkdown(Shown const& shown);
// For programs: all points, called or not; rows and colour count for nothing.
std::string showCsv(Shown const& shown);
std::string showJson(Shown const& shown);

// How far a ratio is from 1: "+2.1%".
std::string percent(double ratio);

} // namespace tables

#endif
