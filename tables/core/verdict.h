// verdict.h - faster, slower, same or undecided: from the readings of many points in several
// passes. docs/verdicts.md has the reasons and the figures.
#ifndef CORE_VERDICT_H
#define CORE_VERDICT_H

#include <cmath>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/statistics.h"
#include "core/table.h"

namespace tables {

// undecided: more passes would tell.
enum class Call { same, undecided, faster, slower };
// The word for it: "same" and so on.
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
    double high = HUGE_VAL;
    double chance = 1; // of such readings if nothing had changed
    Call call = Call::undecided;
    bool again = false; // measured again, and this is what the fresh passes say

    bool called() const { return call == Call::faster || call == Call::slower; }
};

// Logarithms of ratios, one a pass, of one point. Points of a group have similar scales.
struct Sample {
    std::uint32_t point = 0;
    std::size_t group = 0;
    std::vector<double> logs;
};

// Judges all points at once: scales borrow from each other, and the false calls are held over all.
std::vector<Judgement> judge(std::vector<Sample> const& samples, VerdictSettings const& settings);

// Ratio, interval and chance of a logarithm that is known so well.
void setEstimate(Judgement& judgement, Estimate const& estimate, double level);

// The calls of points whose chances, ratios and intervals are known, all at once.
void decide(std::vector<Judgement>& judgements, VerdictSettings const& settings);

// How the baseline read against itself.
struct Control {
    int points = 0;  // 0: there was no control
    int strayed = 0; // that look changed though nothing was
    int allowed = 0;
    bool asExpected() const { return strayed <= allowed; }
};

// The verdict on one machine's passes.
struct Verdict {
    std::string machine;
    std::vector<Judgement> points; // in the order of the list
    Control control;
    int passes = 0;
    double quietShare = -1; // of the readings of pairs; below 0: there are none

    int count(Call call) const;
};

// The judgements by their points, which not all points have. They are the verdict's own.
std::unordered_map<std::uint32_t, Judgement const*> judgementsOf(Verdict const& verdict);

// Passes of pairs: of the kinds pair and more, held against those of the kind control; where there
// are passes of the kind confirm, what was called is as they say.
Verdict judgePairs(Passes const& passes, VerdictSettings const& settings);

// Functions with a point that is called, or with undecided one that is called or undecided.
std::vector<std::string> functionsOf(PointList const& points, Verdict const& verdict,
                                     bool undecided);

} // namespace tables

#endif
