// pscputicker_test.cpp - the arithmetic of the frequency estimate. The estimate itself
// takes seconds and is never made here.
#include "pscpu/pscputicker.h"

#include <climits>
#include <gtest/gtest.h>

TEST(PsCpuTicker, EstimatesSnapToANearNominalFrequency) {
    int const cases[][2] = {{0, 0},       {60, 60},       {70, 70},     {2995, 3060}, {2950, 2950},
                            {2530, 2530}, {2515, 2500},   {2516, 2530}, {3154, 3060}, {3155, 3155},
                            {4200, 4200}, {33333, 33333}, {33334, 60},  {INT_MAX, 60}};
    for (auto const& [estimate, wanted] : cases) {
        EXPECT_EQ(nominalFreqMHz(estimate), wanted) << estimate;
    }
}

TEST(PsCpuTicker, SamplesAreAddedInSinglePrecision) {
    EXPECT_EQ(cpuFreqFromSamples(2'499'000'000ULL, 2'499'900'000ULL), 2499); // cut, not rounded
    EXPECT_EQ(cpuFreqFromSamples(2'600'000'000ULL, 2'599'999'900ULL), 2600); // not so in double
    EXPECT_EQ(cpuFreqFromSamples(0, 0), 0);
    EXPECT_EQ(cpuFreqFromSamples(ULLONG_MAX, ULLONG_MAX), INT_MAX);
}
