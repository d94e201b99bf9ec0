// compare_test.cpp - tests core/compare.h on invented clocks.
#include "core/compare.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace tables;

namespace {

struct Machine {
    double noise = 0.005;    // disturbances, which only add
    double states = 0;       // of the passes, so many run on a core that clocks 9% slower
    double drift = 0;        // of the second set
    std::size_t changed = 0; // points, by 10%
};

// Two sets of passes of 4312 points; in each, the first points are changed.
Comparison compare(unsigned seed, int passes, Machine const& machine) {
    std::mt19937 random(seed);
    std::exponential_distribution<> disturbance(1);
    std::uniform_real_distribution<> share;
    PointList points;
    std::vector<Pass> all(static_cast<std::size_t>(2 * passes));
    std::vector<double> truth(4312);
    for (std::size_t i = 0; i < truth.size(); ++i) {
        truth[i] = 0.5 + 20 * share(random);
        points.add({"F" + std::to_string(i / 11), "32f", "A24", 32 << (i % 11), "-", "e"});
    }
    for (std::size_t pass = 0; pass < all.size(); ++pass) {
        bool const second = pass >= all.size() / 2;
        double const state =
            (share(random) < machine.states ? 1.09 : 1) * (second ? 1 + machine.drift : 1);
        for (std::uint32_t i = 0; i < truth.size(); ++i) {
            double const change = second && i < machine.changed ? 1.1 : 1;
            double const clocks =
                truth[i] * change * state *
                (1 + machine.noise * (1 + 2.0 / (1 + i % 11)) * disturbance(random));
            Reading reading;
            reading.point = i;
            reading.clocks = std::strtod(formatClocks(clocks).c_str(), nullptr);
            all[pass].readings.push_back(reading);
        }
    }
    std::span<Pass const> const span = all;
    VerdictSettings settings;
    settings.threshold = 0.03;
    return compareTables(points, span.first(all.size() / 2), span.subspan(all.size() / 2),
                         settings);
}

int called(Comparison const& comparison) {
    return comparison.verdict.count(Call::slower) + comparison.verdict.count(Call::faster);
}

} // namespace

TEST(Compare, UnchangedCodeIsNotCalled) {
    Machine const machines[] = {
        {}, {0.03, 0, 0, 0}, {0.005, 0.3, 0, 0}, {0.02, 0.5, 0, 0}, {0.005, 0, 0.05, 0}};
    for (Machine const& machine : machines) {
        for (int const passes : {1, 2, 3, 5}) {
            for (unsigned seed = 1; seed <= 2; ++seed) {
                EXPECT_LE(called(compare(seed, passes, machine)), 4)
                    << machine.noise << ' ' << machine.states << ' ' << machine.drift << ' '
                    << passes;
            }
        }
    }
}

TEST(Compare, OnAQuietMachineChangesAreFoundAndTheRestIsTheSame) {
    Comparison const comparison = compare(11, 5, {.changed = 200});
    EXPECT_GT(comparison.verdict.count(Call::slower), 196);
    EXPECT_GT(comparison.verdict.count(Call::same), 4000);
    EXPECT_LT(comparison.inflation, 1.5);
    Comparison const drifted = compare(12, 5, {.drift = 0.05});
    EXPECT_GT(drifted.inflation, 1.5);
    EXPECT_NEAR(1.05, drifted.common, 0.005);
    EXPECT_NEAR(0.3, compare(13, 1, {}).singleLimit, 0.01);
}

TEST(Compare, AFloorIsTheSecondLeastAndItsNeighboursSayHowSurely) {
    struct {
        std::vector<double> clocks;
        double floor;
        double apart; // of the neighbours that count
        double kept;
    } const cases[] = {{{3}, 3, 0, 1},
                       {{4, 3}, 3, std::log(4 / 3.), 3},
                       {{9, 3, 5, 4}, 4, std::log(5 / 3.) / 1.4, 3}};
    for (auto const& [clocks, floor, apart, kept] : cases) {
        Location const location = floorOf(clocks);
        EXPECT_DOUBLE_EQ(std::log(floor), location.center);
        EXPECT_EQ(kept, location.kept);
        EXPECT_NEAR(apart * apart * kept, location.variance, 1e-4);
    }
}
