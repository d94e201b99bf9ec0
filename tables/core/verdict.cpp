// verdict.cpp - verdicts from pairs.
#include "core/verdict.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tables {

namespace {

// The samples of all points that passes of these kinds have read, in the order of the list. Tables
// that were measured by hand have no kind.
std::vector<Sample> samplesOf(Passes const& passes, std::vector<std::string> const& kinds) {
    std::vector<Sample> all(passes.points.size());
    std::map<long, std::size_t> groups; // by length
    for (Pass const& pass : passes.list) {
        std::string const& kind = pass.head.get(key::kind);
        if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
            continue;
        }
        for (Reading const& reading : pass.readings) {
            if (reading.ratio > 0) {
                all[reading.point].logs.push_back(std::log(reading.ratio));
            }
        }
    }
    for (std::uint32_t i = 0; i < all.size(); ++i) {
        all[i].point = i;
        all[i].group = groups.emplace(passes.points[i].length, groups.size()).first->second;
    }
    std::erase_if(all, [](Sample const& sample) { return sample.logs.empty(); });
    return all;
}

// A point strays if all its readings of the control lie on one side, further out than the
// threshold and than any of its other readings from their center. Were the control's readings like
// the others, so many points would do so at most: the two are the farthest of all with a chance
// of 2/((n+1)(n+2)), and on one side in half of the cases. Twice that is allowed, since points of
// one pass have company.
Control judgeControl(std::vector<Sample> const& samples, std::vector<Sample> const& controls,
                     double threshold) {
    Control control;
    double expected = 0;
    auto sample = samples.begin();
    for (Sample const& itself : controls) {
        while (sample != samples.end() && sample->point < itself.point) {
            ++sample;
        }
        if (sample == samples.end()) {
            break;
        }
        if (sample->point != itself.point || itself.logs.size() < 2) {
            continue;
        }
        double const center = trimmedMean(sample->logs).center;
        double farthest = std::log1p(threshold);
        for (double const log : sample->logs) {
            farthest = std::max(farthest, std::fabs(log - center));
        }
        auto const [least, most] = std::minmax_element(itself.logs.begin(), itself.logs.end());
        control.strayed += *least > farthest || *most < -farthest;
        double const count = static_cast<double>(sample->logs.size());
        expected += 1 / ((count + 1) * (count + 2));
        ++control.points;
    }
    control.allowed = static_cast<int>(std::ceil(2 * expected)) + 1;
    return control;
}

// What was called is as fresh passes say; where these contradict, nothing is known.
void takeConfirmed(std::vector<Judgement>& judgements, std::vector<Sample> fresh,
                   VerdictSettings const& settings) {
    if (fresh.empty()) {
        return;
    }
    std::map<std::uint32_t, Judgement*> open;
    for (Judgement& judgement : judgements) {
        if (judgement.called()) {
            open[judgement.point] = &judgement;
        }
    }
    std::erase_if(fresh, [&open](Sample const& one) { return !open.contains(one.point); });
    std::vector<Judgement> const again = judge(fresh, settings);
    for (auto const& entry : open) {
        Judgement& before = *entry.second;
        Call const call = before.call;
        auto const now = std::find_if(again.begin(), again.end(), [&before](Judgement const& one) {
            return one.point == before.point;
        });
        if (now != again.end()) {
            before = *now;
            before.again = true;
        }
        if (!before.again || (before.called() && before.call != call)) {
            before.call = Call::undecided;
        }
    }
}

} // namespace

char const* callName(Call call) {
    static char const* const names[] = {"same", "undecided", "faster", "slower"};
    return names[static_cast<int>(call)];
}

std::vector<Judgement> judge(std::vector<Sample> const& samples, VerdictSettings const& settings) {
    std::vector<Location> locations;
    std::vector<std::size_t> groups;
    for (Sample const& sample : samples) {
        locations.push_back(trimmedMean(sample.logs));
        groups.push_back(sample.group);
    }
    Prior const prior = fitPrior(locations, groups);
    std::vector<Judgement> judgements;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        Judgement one{.point = samples[i].point,
                      .passes = static_cast<int>(samples[i].logs.size())};
        if (locations[i].kept > 1) {
            setEstimate(one, moderated(locations[i], prior, groups[i]), settings.level);
        } else {
            one.ratio = std::exp(locations[i].center);
        }
        judgements.push_back(one);
    }
    decide(judgements, settings);
    return judgements;
}

void setEstimate(Judgement& judgement, Estimate const& estimate, double level) {
    double const half = estimate.halfWidth(level);
    judgement.ratio = std::exp(estimate.center);
    judgement.low = std::exp(estimate.center - half);
    judgement.high = std::exp(estimate.center + half);
    judgement.chance = estimate.chance();
}

void decide(std::vector<Judgement>& judgements, VerdictSettings const& settings) {
    std::vector<double> chances;
    chances.reserve(judgements.size());
    for (Judgement const& one : judgements) {
        chances.push_back(one.chance);
    }
    double const limit = discoveryLimit(chances, settings.falseShare);
    double const most = 1 + settings.threshold;
    for (Judgement& one : judgements) {
        bool const matters = one.ratio > most || one.ratio < 1 / most;
        if (one.chance <= limit && matters) {
            one.call = one.ratio > 1 ? Call::slower : Call::faster;
        } else if (one.low >= 1 / most && one.high <= most) {
            one.call = Call::same;
        }
    }
}

int Verdict::count(Call call) const {
    return static_cast<int>(std::count_if(
        points.begin(), points.end(), [call](Judgement const& one) { return one.call == call; }));
}

std::unordered_map<std::uint32_t, Judgement const*> judgementsOf(Verdict const& verdict) {
    std::unordered_map<std::uint32_t, Judgement const*> judgements;
    for (Judgement const& one : verdict.points) {
        judgements[one.point] = &one;
    }
    return judgements;
}

Verdict judgePairs(Passes const& passes, VerdictSettings const& settings) {
    Verdict verdict;
    std::vector<Sample> const samples = samplesOf(passes, {"pair", "more", ""});
    verdict.points = judge(samples, settings);
    takeConfirmed(verdict.points, samplesOf(passes, {"confirm"}), settings);
    verdict.control = judgeControl(samples, samplesOf(passes, {"control"}), settings.threshold);
    double readings = 0;
    double quiet = 0;
    for (Pass const& pass : passes.list) {
        for (Reading const& reading : pass.readings) {
            readings += reading.ratio > 0;
            quiet += reading.ratio > 0 && reading.quiet;
        }
    }
    verdict.machine = passes.list.empty() ? "" : passes.list.front().machine();
    verdict.passes = static_cast<int>(passes.list.size());
    verdict.quietShare = readings > 0 ? quiet / readings : -1;
    return verdict;
}

std::vector<std::string> functionsOf(PointList const& points, Verdict const& verdict,
                                     bool undecided) {
    std::vector<std::string> functions;
    for (Judgement const& one : verdict.points) {
        std::string const name = points[one.point].function();
        // Points of a function stand together.
        if ((one.called() || (undecided && one.call == Call::undecided)) &&
            (functions.empty() || functions.back() != name)) {
            functions.push_back(name);
        }
    }
    return functions;
}

} // namespace tables
