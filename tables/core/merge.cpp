// merge.cpp - what stands for a point that was read several times.
#include "core/merge.h"

#include <algorithm>
#include <cmath>

#include "core/text.h"

namespace tables {

namespace {

// Points whose middle reading lies further from the one that stands for them didn't come to rest.
constexpr double restLimit = 0.05;

double middle(std::vector<double>& sorted) {
    std::sort(sorted.begin(), sorted.end());
    std::size_t const half = sorted.size() / 2;
    return sorted.size() % 2 != 0 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2;
}

// All readings of a point.
struct Gathered {
    std::vector<double> clocks;
    std::vector<double> ratios;
    Reading sum; // the first reading, with the pairs of all and what holds for all

    void add(Reading const& reading);
    // That stands for all. Puts the ratios in order.
    Reading reading(Standing const& standing);
};

void Gathered::add(Reading const& reading) {
    if (clocks.empty()) {
        sum = reading;
        sum.pairs = 0;
        sum.quiet = true;
    }
    clocks.push_back(reading.clocks);
    sum.accuracy = std::min(sum.accuracy, reading.accuracy); // the best that was reached
    if (reading.ratio > 0) {
        ratios.push_back(reading.ratio);
        sum.pairs += reading.pairs;
        sum.quiet = sum.quiet && reading.quiet;
    }
}

Reading Gathered::reading(Standing const& standing) {
    Reading one = sum;
    one.usec *= standing.clocks / one.clocks;
    one.clocks = standing.clocks;
    if (!ratios.empty()) {
        one.ratio = middle(ratios);
        one.low = ratios.front();
        one.high = ratios.back();
        one.base = one.clocks / one.ratio;
    }
    return one;
}

} // namespace

Standing standingOf(std::vector<double> clocks) {
    double const median = middle(clocks);
    // Disturbances only add clocks; but one process may be quick by luck, so the least counts only
    // where there is no choice.
    double const standing = clocks.size() < 3 ? clocks[0] : clocks[1];
    return {standing, median / standing - 1};
}

Merged mergePasses(Passes const& passes) {
    Merged merged;
    merged.pass.head = passes.list.front().head;
    for (char const* const ofOne : {key::pass, key::kind, key::first, key::ended}) {
        merged.pass.head.remove(ofOne);
    }
    merged.pass.head.set(key::passes, std::to_string(passes.list.size()));
    std::vector<Gathered> all(passes.points.size());
    std::vector<std::uint32_t> order;
    for (Pass const& pass : passes.list) {
        if (pass.control()) {
            continue;
        }
        for (Reading const& reading : pass.readings) {
            Gathered& point = all[reading.point];
            if (point.clocks.empty()) {
                order.push_back(reading.point);
            }
            point.add(reading);
        }
    }
    for (std::uint32_t const number : order) {
        Gathered& point = all[number];
        Standing const standing = standingOf(point.clocks);
        merged.pass.readings.push_back(point.reading(standing));
        merged.words.push_back(format("passes=%zu spread=%.1f%%%s", point.clocks.size(),
                                      standing.spread * 100,
                                      standing.spread > restLimit ? " apart" : ""));
        merged.apart += standing.spread > restLimit;
    }
    return merged;
}

void setVerdict(Merged& merged, Verdict const& verdict) {
    auto const judgements = judgementsOf(verdict);
    for (std::size_t i = 0; i < merged.words.size(); ++i) {
        Reading& reading = merged.pass.readings[i];
        if (auto const place = judgements.find(reading.point); place != judgements.end()) {
            Judgement const& one = *place->second;
            reading.ratio = one.ratio;
            reading.base = reading.clocks / one.ratio;
            if (one.passes > 1) {
                reading.low = one.low;
                reading.high = one.high;
            }
            merged.words[i] += std::string(" ") + callName(one.call);
        }
    }
}

} // namespace tables
