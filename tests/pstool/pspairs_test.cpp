#include "pstool/pspairs.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

constexpr double bound = 550.0;

using Disturb = std::function<void(psPair& pair, int index)>;

// Readings of a function 3% slower than the baseline, with half a percent of noise.
std::vector<psPair> readings(int count, Disturb const& disturb) {
    std::mt19937 generator(1);
    std::normal_distribution<double> noise(1.0, 0.005);
    std::vector<psPair> pairs;
    for (int i = 0; i < count; ++i) {
        pairs.push_back({1030 * noise(generator), 1000 * noise(generator), 500, 500});
        disturb(pairs.back(), i);
    }
    return pairs;
}

Disturb sharedFrom(int first) {
    return [first](psPair& pair, int i) { pair.after = i >= first ? 900 : pair.after; };
}

// Both sides of a pair slower by the same factor.
void slow(psPair& pair, double factor) {
    pair.tested *= factor;
    pair.baseline *= factor;
}

} // namespace

TEST(PsPairs, TheRatioHoldsWhateverTheMachineDoes) {
    std::tuple<char const*, Disturb, int, bool> const cases[] = {
        {"quiet", [](psPair&, int) {}, 60, true},
        {"doubled spells, on both sides of a pair",
         [](psPair& pair, int i) { slow(pair, i / 10 % 2 + 1); }, 60, true},
        {"a neighbour who slows one side more, seen by the sentinels",
         [](psPair& pair, int i) {
             if (i % 3 != 0) {
                 pair.tested *= 1.8;
                 pair.baseline *= 1.2;
                 (i % 3 == 1 ? pair.before : pair.after) = 551;
             }
         },
         20, true},
        {"too few quiet pairs: all decide", sharedFrom(psEnoughQuietPairs - 1), 60, false},
        {"just enough", sharedFrom(psEnoughQuietPairs), psEnoughQuietPairs, true},
        {"a clock that drifts by a tenth", [](psPair& pair, int i) { slow(pair, 1 + i / 600.0); },
         60, true},
        {"outliers on one side", [](psPair& pair, int i) { pair.tested *= i % 4 == 0 ? 30 : 1; },
         60, true},
        {"a counter in steps of 24 clocks, 10 calls a reading",
         [](psPair& pair, int) {
             pair.tested = std::round(pair.tested / 2.4) * 2.4;
             pair.baseline = std::round(pair.baseline / 2.4) * 2.4;
         },
         60, true},
        {"readings without clocks don't count",
         [](psPair& pair, int i) {
             if (i < 20) {
                 (i % 2 == 0 ? pair.tested : pair.baseline) = 0;
             }
         },
         40, true}};
    for (auto const& [what, disturb, decided, quiet] : cases) {
        SCOPED_TRACE(what);
        std::vector<psPair> pairs = readings(60, disturb);
        psPairResult const result = psJudgePairs(pairs.data(), 60, bound);
        EXPECT_NEAR(result.ratio, 1.03, 0.006);
        EXPECT_LT(result.lo, result.ratio);
        EXPECT_GT(result.hi, result.ratio);
        EXPECT_LT(result.hi - result.lo, 0.02);
        EXPECT_EQ(result.pairs, decided);
        EXPECT_EQ(result.quiet, quiet);
        EXPECT_NEAR(result.tested, 1015, 15); // the least, not the middle
        EXPECT_NEAR(result.baseline, 988, 12);
    }
}

TEST(PsPairs, SidesChangedRoundGiveTheReciprocal) {
    for (int const count : {1, 2, 12, 13}) {
        std::vector<psPair> pairs = readings(count, [](psPair&, int) {});
        std::vector<psPair> turned;
        for (psPair const& pair : pairs) {
            turned.push_back({pair.baseline, pair.tested, pair.before, pair.after});
        }
        psPairResult const one = psJudgePairs(pairs.data(), count, bound);
        psPairResult const other = psJudgePairs(turned.data(), count, bound);
        EXPECT_DOUBLE_EQ(one.ratio, 1 / other.ratio);
        EXPECT_DOUBLE_EQ(one.lo, 1 / other.hi);
        EXPECT_EQ(one.tested, other.baseline);
    }
}

TEST(PsPairs, NothingUsableGivesNoPairs) {
    psPair pairs[] = {{0, 5, 1, 1}, {5, 0, 1, 1}, {-3, 5, 1, 1}};
    EXPECT_EQ(psJudgePairs(pairs, 3, bound).pairs, 0);
    EXPECT_EQ(psJudgePairs(pairs, 0, bound).ratio, 0.0);
}

// Exact ranks of the binomial distribution: at most 2.5% below, and one more would be over.
TEST(PsPairs, TheIntervalsRankIsTheBinomialOne) {
    int const ranks[][2] = {{1, 0},  {5, 0},  {6, 0},   {9, 1},   {12, 2},
                            {17, 4}, {20, 5}, {60, 22}, {100, 40}};
    for (auto const& [count, rank] : ranks) {
        EXPECT_NEAR(psMedianRank(count), rank, count < 17 ? 0 : 1) << count;
    }
}
