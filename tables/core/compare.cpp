// compare.cpp - two sets of passes with absolute numbers, measured at different times.
#include "core/compare.h"

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <map>

namespace tables {

namespace {

// Of the points, so many are taken for unchanged when it is learned how far sets lie apart anyway.
constexpr double unchanged = 0.9;
// What single runs do even on a quiet machine: one point in a hundred is off by so much.
constexpr double singleRuns = 0.3;
constexpr double singleSafety = 4; // times what most points of these two runs do

// Of the second least of three and more, and of the least of two.
constexpr double freedoms = 2;

// Half a step of the last digit that tables write, as a share.
double roundingError(double clocks) {
    double const step = std::pow(10, std::floor(std::log10(clocks)) - 2);
    return step / std::sqrt(12) / clocks;
}

// By point, the clocks of all passes but the control's, whose library is another one.
std::vector<std::vector<double>> clocksOf(PointList const& points, std::span<Pass const> passes) {
    std::vector<std::vector<double>> clocks(points.size());
    for (Pass const& pass : passes) {
        if (!pass.control()) {
            for (Reading const& reading : pass.readings) {
                clocks[reading.point].push_back(reading.clocks);
            }
        }
    }
    return clocks;
}

// Both floors of the points that both sets have.
struct Floors {
    std::vector<std::uint32_t> points;
    std::vector<std::size_t> groups; // by length
    std::vector<int> passes;
    std::vector<Location> sides[2];
    bool single = true; // none has been read more than once on both sides
};

// Counts in the comparison the points that only one side has.
Floors floorsOf(PointList const& points, std::span<Pass const> before, std::span<Pass const> after,
                Comparison& comparison) {
    std::vector<std::vector<double>> const clocks[2] = {clocksOf(points, before),
                                                        clocksOf(points, after)};
    Floors floors;
    std::map<long, std::size_t> groups;
    for (std::uint32_t i = 0; i < points.size(); ++i) {
        std::size_t const counts[2] = {clocks[0][i].size(), clocks[1][i].size()};
        comparison.onlyBefore += counts[0] > 0 && counts[1] == 0;
        comparison.onlyAfter += counts[1] > 0 && counts[0] == 0;
        if (counts[0] > 0 && counts[1] > 0) {
            floors.points.push_back(i);
            floors.groups.push_back(groups.emplace(points[i].length, groups.size()).first->second);
            floors.passes.push_back(static_cast<int>(std::min(counts[0], counts[1])));
            for (int const side : {0, 1}) {
                floors.sides[side].push_back(floorOf(clocks[side][i]));
            }
            floors.single = floors.single && floors.passes.back() == 1;
        }
    }
    return floors;
}

// From which share on a difference of single runs is called: what most points do tells.
double singleLimitOf(std::vector<double> const& logs) {
    std::vector<double> away(logs.size());
    std::transform(logs.begin(), logs.end(), away.begin(),
                   [](double log) { return std::fabs(log); });
    double const most = singleSafety * quantileOf(std::move(away), unchanged);
    return std::max(singleRuns, std::expm1(most));
}

Estimate difference(Estimate const& before, Estimate const& after) {
    double const a = before.error * before.error;
    double const b = after.error * after.error;
    return {after.center - before.center, std::sqrt(a + b),
            (a + b) * (a + b) / (a * a / before.freedom + b * b / after.freedom)};
}

// How many times further most points lie apart than their errors say.
double inflationOf(std::vector<Estimate> const& estimates) {
    std::vector<double> excess;
    for (Estimate const& one : estimates) {
        double const expected = quantile(boost::math::students_t(one.freedom), (1 + unchanged) / 2);
        excess.push_back(std::fabs(one.center) / one.error / expected);
    }
    return excess.empty() ? 1 : std::max(1.0, quantileOf(std::move(excess), unchanged));
}

std::vector<std::string> differencesOf(Pass const& before, Pass const& after) {
    std::vector<std::string> differences;
    if (before.machine() != after.machine()) {
        differences.push_back("other machine: " + before.machine() + ", then " + after.machine());
    }
    for (char const* const name : {key::os, key::library, key::keys, key::environment}) {
        std::string const& old = before.head.get(name);
        std::string const& now = after.head.get(name);
        if (old != now) {
            differences.push_back(std::string("other ") + name + ": '");
            differences.back().append(old).append("', then '").append(now).append("'");
        }
    }
    return differences;
}

} // namespace

Location floorOf(std::vector<double> clocks) {
    std::sort(clocks.begin(), clocks.end());
    std::size_t const count = clocks.size();
    if (count == 1) {
        return {std::log(clocks[0]), 0, 1};
    }
    double const floor = count == 2 ? clocks[0] : clocks[1];
    // Three and more: the distance of the two neighbours is about 1.4 times the error.
    double const apart =
        count == 2 ? std::log(clocks[1] / clocks[0]) : std::log(clocks[2] / clocks[0]) / 1.4;
    double const rounding = roundingError(floor);
    double const kept = freedoms + 1;
    return {std::log(floor), kept * (apart * apart + rounding * rounding), kept};
}

Comparison compareTables(PointList const& points, std::span<Pass const> before,
                         std::span<Pass const> after, VerdictSettings const& settings) {
    Comparison comparison;
    comparison.differences = differencesOf(before.front(), after.front());
    Floors const floors = floorsOf(points, before, after, comparison);
    Prior const priors[2] = {fitPrior(floors.sides[0], floors.groups),
                             fitPrior(floors.sides[1], floors.groups)};
    std::vector<Judgement>& judgements = comparison.verdict.points;
    std::vector<Estimate> estimates;
    std::vector<double> logs;
    for (std::size_t i = 0; i < floors.points.size(); ++i) {
        Location const& old = floors.sides[0][i];
        Location const& now = floors.sides[1][i];
        logs.push_back(now.center - old.center);
        judgements.push_back({.point = floors.points[i], .passes = floors.passes[i]});
        judgements.back().ratio = std::exp(logs.back());
        if (floors.passes[i] > 1) {
            estimates.push_back(difference(moderated(old, priors[0], floors.groups[i]),
                                           moderated(now, priors[1], floors.groups[i])));
        }
    }
    if (!logs.empty()) {
        comparison.common = std::exp(medianOf(logs));
    }
    comparison.inflation = inflationOf(estimates);
    if (floors.single && !logs.empty()) {
        comparison.singleLimit = singleLimitOf(logs);
    }
    auto estimate = estimates.begin();
    for (std::size_t i = 0; i < judgements.size(); ++i) {
        Judgement& one = judgements[i];
        if (one.passes > 1) {
            estimate->error *= comparison.inflation;
            setEstimate(one, *estimate++, settings.level);
        } else if (floors.single && std::fabs(logs[i]) > std::log1p(comparison.singleLimit)) {
            one.chance = 0;
        }
    }
    decide(judgements, settings);
    comparison.verdict.machine = after.front().machine();
    comparison.verdict.passes = static_cast<int>(before.size() + after.size());
    return comparison;
}

} // namespace tables
