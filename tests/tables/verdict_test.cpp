// verdict_test.cpp - tests core/statistics.h and core/verdict.h on readings whose truth is known.
#include "core/verdict.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "core/statistics.h"

using namespace tables;

namespace {

// Ratios of a run, drawn with a fixed seed: scales differ from point to point, tails are heavy,
// some points lie in one of two states in each process, and some passes are noisy as a whole.
struct Noise {
    double scale = 0.0007; // of the middle point
    double twoStates = 0.01;
    double noisyPasses = 0.1;
};

std::vector<Sample> draw(unsigned seed, std::size_t count, int passes, double shift,
                         Noise const& noise = {}) {
    std::mt19937 random(seed);
    std::normal_distribution<> normal;
    std::uniform_real_distribution<> share;
    std::student_t_distribution<> heavy(3);
    std::vector<double> passScale;
    for (int i = 0; i < passes; ++i) {
        passScale.push_back(share(random) < noise.noisyPasses ? 3 : 1);
    }
    std::vector<Sample> samples(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        samples[i].point = i;
        samples[i].group = i % 11;
        double const lengthScale = 1 + 2.0 / (1 + i % 11);
        double const scale = noise.scale * std::exp(0.8 * normal(random)) * lengthScale;
        double const apart = share(random) < noise.twoStates ? 0.02 + 0.05 * share(random) : 0;
        for (int pass = 0; pass < passes; ++pass) {
            double const states = (share(random) < 0.3) - (share(random) < 0.3);
            double const log = std::log1p(shift) + apart * states +
                               scale * passScale[static_cast<std::size_t>(pass)] * heavy(random);
            samples[i].logs.push_back(std::log(std::round(std::exp(log) * 1e4) / 1e4));
        }
    }
    return samples;
}

double share(std::vector<Judgement> const& judgements, Call call, std::size_t first = 0,
             std::size_t count = 1 << 30) {
    count = std::min(count, judgements.size() - first);
    double found = 0;
    for (std::size_t i = first; i < first + count; ++i) {
        found += judgements[i].call == call;
    }
    return found / static_cast<double>(count);
}

} // namespace

TEST(Verdict, UnchangedCodeIsNotCalled) {
    int called = 0;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        std::vector<Judgement> const judged = judge(draw(seed, 4312, 18, 0), {});
        called += static_cast<int>(
            4312 * (share(judged, Call::faster) + share(judged, Call::slower)) + 0.5);
        EXPECT_GT(share(judged, Call::same), 0.97) << seed;
    }
    EXPECT_LE(called, 10);
    for (int const passes : {1, 2, 3, 4, 6, 9}) {
        for (Noise const noise : {Noise{}, Noise{0.01, 0.2, 0.3}}) {
            std::vector<Judgement> const judged = judge(draw(5, 4312, passes, 0, noise), {});
            EXPECT_LE(share(judged, Call::faster) + share(judged, Call::slower), 4 / 4312.)
                << passes << ' ' << noise.scale;
        }
    }
    EXPECT_EQ(1, share(judge(draw(5, 4312, 1, 0.5), {}), Call::undecided)) << "of a single pass";
}

TEST(Verdict, KnownChangesAreFound) {
    std::pair<double, double> const cases[] = {{0.05, 0.995}, {0.02, 0.98}, {0.015, 0.8}};
    for (auto const& [change, wanted] : cases) {
        for (double const side : {1, -1}) {
            double const shift = side > 0 ? change : 1 / (1 + change) - 1;
            std::vector<Sample> samples = draw(21, 440, 18, shift);
            for (Sample& rest : draw(22, 3872, 18, 0)) {
                samples.push_back(std::move(rest));
            }
            std::vector<Judgement> const judged = judge(samples, {});
            Call const call = side > 0 ? Call::slower : Call::faster;
            EXPECT_GT(share(judged, call, 0, 440), wanted) << shift;
            EXPECT_LE(share(judged, call, 440), 2 / 3872.) << shift;
        }
    }
    std::vector<Judgement> const little = judge(draw(23, 4312, 18, 0.003), {});
    EXPECT_LE(share(little, Call::slower), 0.01);
    EXPECT_GT(share(judge(draw(24, 4312, 4, 0.05), {}), Call::slower), 0.9) << "of four passes";
    EXPECT_GT(share(judge(draw(25, 11, 18, 0.05), {}), Call::slower), 0.9) << "of one function";
}

TEST(Verdict, TheIntervalHoldsTheTruthAsOftenAsItSays) {
    for (int const passes : {4, 9, 18}) {
        int inside = 0;
        for (Judgement const& one : judge(draw(31, 4312, passes, 0.02, {0.002, 0, 0}), {})) {
            inside += one.low <= 1.02 && 1.02 <= one.high;
        }
        EXPECT_NEAR(0.95, inside / 4312., 0.025) << passes;
    }
}

TEST(Statistics, TheMiddleOfTheValuesDecides) {
    EXPECT_EQ(0, trimmedMean({}).kept);
    EXPECT_EQ(2.5, trimmedMean({1, 2, 3, 4}).center);
    Location const location = trimmedMean({100, 3, 1, 2, -50, 4, 5, 9});
    EXPECT_EQ(3.5, location.center); // 2, 3, 4, 5
    EXPECT_EQ(4, location.kept);
    // winsorised: 2 2 2 3 4 5 5 5
    EXPECT_NEAR((3 * 2.25 + 0.25 + 0.25 + 3 * 2.25) / 3, location.variance, 1e-6);
    EXPECT_EQ(0.02, discoveryLimit({0.9, 0.001, 0.02, 0.5}, 0.05));
    EXPECT_EQ(-1, discoveryLimit({0.9, 0.5, 0.06}, 0.05));
    EXPECT_EQ(2.5, medianOf({4, 1, 3, 2}));
    // Beyond some freedom the distribution is as good as normal.
    EXPECT_EQ((Estimate{3, 1, 1e6}.chance()), (Estimate{3, 1, 1e9}.chance()));
    std::vector<Judgement> judged = {{.ratio = 2, .low = 1.5, .chance = 0.06}};
    decide(judged, {});
    EXPECT_EQ(Call::undecided, judged[0].call);
    judged[0].chance = 0.05;
    decide(judged, {});
    EXPECT_EQ(Call::slower, judged[0].call);
}

namespace {

// A pass of so many points that all read these ratios, but for one.
Pass passOf(PointList& points, std::string const& kind, double ratio, double ofFirst) {
    Pass pass;
    pass.head.set(key::kind, kind);
    for (int i = 0; i < 40; ++i) {
        Reading reading;
        reading.point = points.add({"F" + std::to_string(i), "32f", "A24", 32, "-", "e"});
        reading.ratio = i == 0 ? ofFirst : ratio;
        pass.readings.push_back(reading);
    }
    return pass;
}

Passes pairsOf(double ofFirst, double jitter = 0.002) {
    Passes passes;
    for (int i = 0; i < 18; ++i) {
        double const one = 1 + (i % 2 == 0 ? jitter : -jitter) * (i % 3);
        passes.list.push_back(passOf(passes.points, "pair", one, one * ofFirst));
    }
    return passes;
}

} // namespace

TEST(Verdict, WhatWasCalledIsAsFreshPassesSay) {
    struct {
        double fresh;
        Call wanted;
    } const cases[] = {{1.05, Call::slower}, {1.001, Call::same}, {0.95, Call::undecided}};
    for (auto const& [fresh, wanted] : cases) {
        Passes passes = pairsOf(1.04);
        EXPECT_EQ(Call::slower, judgePairs(passes, {}).points[0].call);
        EXPECT_EQ(std::vector<std::string>{"F0_32f_A24"},
                  functionsOf(passes.points, judgePairs(passes, {}), false));
        for (double const jitter : {0.999, 1.0, 1.0, 1.001, 1.0, 1.0}) {
            passes.list.push_back(passOf(passes.points, "confirm", 1.5, fresh * jitter));
        }
        Verdict const verdict = judgePairs(passes, {});
        EXPECT_EQ(wanted, verdict.points[0].call) << fresh;
        EXPECT_NEAR(fresh, verdict.points[0].ratio, 0.001);
        EXPECT_EQ(39 + (wanted == Call::same), verdict.count(Call::same));
    }
    Passes lost = pairsOf(1.04);
    Pass other = passOf(lost.points, "confirm", 1, 1);
    other.readings.erase(other.readings.begin()); // the function failed there
    lost.list.push_back(other);
    EXPECT_EQ(Call::undecided, judgePairs(lost, {}).points[0].call);
}

TEST(Verdict, AControlThatReadsUnchangedCodeAsChangedIsSeen) {
    struct {
        double first, second; // what the two passes of the control read
        int strayed;
    } const cases[] = {
        {1.03, 1.03, 40}, {0.97, 0.96, 40}, {1.03, 0.97, 0}, {1.03, 1.001, 0}, {1.009, 1.009, 0}};
    for (auto const& [first, second, strayed] : cases) {
        Passes passes = pairsOf(1);
        passes.list.push_back(passOf(passes.points, "control", first, first));
        passes.list.push_back(passOf(passes.points, "control", second, second));
        Control const control = judgePairs(passes, {}).control;
        EXPECT_EQ(strayed, control.strayed) << first << ' ' << second;
        EXPECT_EQ(strayed == 0, control.asExpected());
        EXPECT_EQ(40, control.points);
        EXPECT_EQ(2, control.allowed); // 1 and twice 40/(19*20), rounded up
    }
    // Against itself the baseline has to read as 1, also where the library under test does not.
    Passes moved = pairsOf(1.04);
    moved.list.push_back(passOf(moved.points, "control", 1, 1.03));
    moved.list.push_back(passOf(moved.points, "control", 1, 1.03));
    EXPECT_EQ(1, judgePairs(moved, {}).control.strayed);
    // Where the other passes scatter as much, so may the control.
    Passes wild = pairsOf(1, 0.04);
    wild.list.push_back(passOf(wild.points, "control", 1.03, 1.03));
    wild.list.push_back(passOf(wild.points, "control", 1.03, 1.03));
    EXPECT_TRUE(judgePairs(wild, {}).control.asExpected());
    EXPECT_EQ(0, judgePairs(pairsOf(1), {}).control.points);
}
