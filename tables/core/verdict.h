// verdict.h - faster, slower, same or undecided: from the readings of many points in several
// passes. docs/verdicts.md has the reasons and the figures.
#ifndef CORE_VERDICT_H
#define CORE_VERDICT_H

#include <cstdint>
#include <string>
#include <vector>

#include "core/table.h"

namespace tables {

// undecided: more passes would tell.
enum class Call { same, undecided, faster, slower };
char const* callName(Call call);

struct VerdictSettings {
    double threshold = 0.01;  // what matters, as a share
    double falseShare = 0.05; // of the points called, at most so many wrongly
    double level = 0.95;      // of the intervals
};

// What is known of one point.
struct Judgement {
    std::uint32_t point = 0;
    int passes = 0;
    double ratio = 1; // library under test divided by baseline
    double low = 0;   // interval
    double high = 0;
    double chance = 1; // of such readings if nothing had changed
    Call call = Call::undecided;
    bool confirmed = false; // by passes of their own
};

// Logarithms of ratios, one a pass, of one point.
struct Sample {
    std::uint32_t point;
    std::vector<double> logs;
};

// Judges all points at once: scales borrow from each other, and the false calls are held over all.
std::vector<Judgement> judge(std::vector<Sample> const& samples, VerdictSettings const& settings);

// How the baseline read against itself.
struct Control {
    int points = 0;
    int strayed = 0; // points that look changed though nothing was
    int allowed = 0;
    bool asExpected() const { return strayed <= allowed; }
};

// The verdict on one machine's passes.
struct Verdict {
    std::string machine;
    std::vector<Judgement> points; // in the order of the list
    Control control;               // without points: there was none
    int passes = 0;
    double quietShare = 0; // of the readings of pairs

    int count(Call call) const;
};

// Passes of pairs: of the kinds pair and more, held against those of the kind control; where there
// are passes of the kind confirm, what was called is only reported if they say the same.
Verdict judgePairs(Passes const& passes, VerdictSettings const& settings);

// Two sets of plain passes, measured at different times: the second compared with the first, over
// the points that both have.
Verdict judgeTables(Passes const& before, Passes const& after, VerdictSettings const& settings);

} // namespace tables

#endif
