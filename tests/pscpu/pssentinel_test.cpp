#include "pscpu/pssentinel.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

TEST(PsSentinel, TheLevelIsLowAndAllowsForTheClockAndTheCountersStep) {
    // readings: clocks, how often
    std::tuple<char const*, std::vector<std::pair<unsigned, int>>, double, unsigned> const cases[] =
        {{"quiet", {{500, 90}, {502, 10}}, 500, 2},
         {"one odd least reading is no level", {{400, 1}, {500, 99}}, 500, 100},
         {"a twentieth is", {{400, 5}, {500, 95}}, 400, 100},
         {"shared for most of the time", {{500, 10}, {900, 90}}, 500, 100},
         {"coarse counter", {{1222, 50}, {1248, 50}}, 1222, 26},
         {"an interrupt", {{500, 99}, {2000001, 1}}, 500, 1},
         {"longer than all bins", {{4096, 1}, {100000, 1}}, 4095, 32}};
    for (auto const& [what, readings, quantile, step] : cases) {
        SCOPED_TRACE(what);
        psQuietLevel level;
        EXPECT_EQ(level.bound(), 0.0);
        for (auto const& [clocks, times] : readings) {
            for (int i = 0; i < times; ++i) {
                level.add(clocks);
            }
        }
        EXPECT_EQ(level.quantile(0.05), quantile);
        EXPECT_EQ(level.step(), step);
        EXPECT_DOUBLE_EQ(level.bound(), quantile * 1.2 + step);
    }
}

TEST(PsSentinel, ItsWorkTakesTime) {
    // 3840 additions: no processor makes more than eight of them in a clock of its own, which is
    // at most a few times the counter's.
    EXPECT_GT(psSentinelClocks(), 100U);
}
