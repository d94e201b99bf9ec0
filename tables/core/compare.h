// compare.h - two sets of passes with absolute numbers, measured at different times.
// docs/verdicts.md has the reasons and the figures.
#ifndef CORE_COMPARE_H
#define CORE_COMPARE_H

#include <span>
#include <string>
#include <vector>

#include "core/statistics.h"
#include "core/verdict.h"

namespace tables {

// Logarithm of a point's undisturbed clocks, from those of its passes. Disturbances only add
// clocks: the second least stands for it, and how far its neighbours lie says how surely.
Location floorOf(std::vector<double> clocks);

// The second set held against the first, over the points that both have.
struct Comparison {
    Verdict verdict;
    int onlyBefore = 0; // points
    int onlyAfter = 0;
    double common = 1; // ratio in the middle of all points: the machine's, or the whole library's
    double inflation = 1;   // of the errors, for what differs between the sets but not within them
    double singleLimit = 0; // sets of one pass: from this share on a difference is called
    std::vector<std::string> differences; // of the heads
};

// Sets of at least one pass each, all of one machine or of one machine each; readings are numbered
// by these points.
Comparison compareTables(PointList const& points, std::span<Pass const> before,
                         std::span<Pass const> after, VerdictSettings const& settings);

} // namespace tables

#endif
