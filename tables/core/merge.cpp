// merge.cpp - what stands for a point that was read several times.
#include "core/merge.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

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

} // namespace

Standing standingOf(std::vector<double> clocks) {
    double const median = middle(clocks);
    // Disturbances only add clocks; but one process may be quick by luck, so the least counts only
    // where there is no choice.
    double const standing = clocks.size() < 3 ? clocks[0] : clocks[1];
    return {standing, median / standing - 1};
}

Merged mergePasses(Passes const& passes) {
    struct Gathered {
        std::vector<double> clocks;
        std::vector<double> ratios;
        Reading sum;
    };
    Merged merged;
    merged.pass.head = passes.list.front().head;
    for (char const* const ofOne : {key::pass, key::kind, key::first, key::ended}) {
        merged.pass.head.remove(ofOne);
    }
    merged.pass.head.set(key::passes, std::to_string(passes.list.size()));
    std::vector<Gathered> all(passes.points.size());
    std::vector<std::uint32_t> order;
    for (Pass const& pass : passes.list) {
        if (pass.head.get(key::kind) == "control") {
            continue;
        }
        for (Reading const& reading : pass.readings) {
            Gathered& point = all[reading.point];
            if (point.clocks.empty()) {
                order.push_back(reading.point);
                point.sum = reading;
                point.sum.pairs = 0;
                point.sum.quiet = true;
            }
            point.clocks.push_back(reading.clocks);
            point.sum.accuracy = std::min(point.sum.accuracy, reading.accuracy);
            if (reading.ratio > 0) {
                point.ratios.push_back(reading.ratio);
                point.sum.pairs += reading.pairs;
                point.sum.quiet = point.sum.quiet && reading.quiet;
            }
        }
    }
    for (std::uint32_t const number : order) {
        Gathered& point = all[number];
        Standing const standing = standingOf(point.clocks);
        Reading reading = point.sum;
        reading.usec *= standing.clocks / reading.clocks;
        reading.clocks = standing.clocks;
        if (!point.ratios.empty()) {
            reading.ratio = middle(point.ratios);
            reading.low = point.ratios.front();
            reading.high = point.ratios.back();
            reading.base = reading.clocks / reading.ratio;
        }
        merged.pass.readings.push_back(reading);
        merged.words.push_back(format("passes=%zu spread=%.1f%%%s", point.clocks.size(),
                                      standing.spread * 100,
                                      standing.spread > restLimit ? " apart" : ""));
        merged.apart += standing.spread > restLimit;
    }
    return merged;
}

void setVerdict(Merged& merged, Verdict const& verdict) {
    std::unordered_map<std::uint32_t, Judgement const*> judgements;
    for (Judgement const& one : verdict.points) {
        judgements[one.point] = &one;
    }
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
