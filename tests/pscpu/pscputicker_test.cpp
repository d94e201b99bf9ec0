// pscputicker_test.cpp - the arithmetic of the frequency estimate, and the frequency given from
// outside. The estimate itself takes seconds and is made once.
#include "pscpu/pscputicker.h"

#include <chrono>
#include <climits>
#include <cstdlib>

#include "support/storedtext.h"

TEST(PsCpuTicker, EstimatesSnapToANearNominalFrequency) {
    int const cases[][2] = {{0, 0},       {60, 60},       {70, 70},     {2995, 3060}, {2950, 2950},
                            {2530, 2530}, {2515, 2500},   {2516, 2530}, {3154, 3060}, {3155, 3155},
                            {4200, 4200}, {33333, 33333}, {33334, 60},  {INT_MAX, 60}};
    for (auto const& [estimate, wanted] : cases) {
        EXPECT_EQ(nominalFreqMHz(estimate), wanted) << estimate;
    }
    std::string nominal; // what draws its neighbours to itself
    for (int estimate = 1; estimate < 4000; ++estimate) {
        int const drawn = nominalFreqMHz(estimate);
        nominal += drawn == estimate + 1 ? std::to_string(drawn) + "\n" : "";
    }
    EXPECT_TRUE(matchesStored("pscpu/nominal_mhz", nominal));
}

TEST(PsCpuTicker, SamplesAreAddedInSinglePrecision) {
    EXPECT_EQ(cpuFreqFromSamples(2'499'000'000ULL, 2'499'900'000ULL), 2499); // cut, not rounded
    EXPECT_EQ(cpuFreqFromSamples(2'600'000'000ULL, 2'599'999'900ULL), 2600); // not so in double
    EXPECT_EQ(cpuFreqFromSamples(0, 0), 0);
    EXPECT_EQ(GETrdtscMultiplier(), 1);
    for (int const multiplier : {3, 1}) { // kept, and no more
        EXPECT_EQ(SETrdtscMultiplier(multiplier), multiplier);
        EXPECT_EQ(GETrdtscMultiplier(), multiplier);
    }
    EXPECT_EQ(cpuFreqFromSamples(ULLONG_MAX, ULLONG_MAX), INT_MAX);
}

TEST(PsCpuTicker, AGivenFrequencyIsTakenAndABadOneIsToldAndEstimated) {
    std::tuple<char const*, int> const cases[] = {
        {"1", 1},        {"2599.5", 2600}, {"2599.4", 2599}, {"100000", 100000}, {"0.99", 0},
        {"100000.1", 0}, {"", 0},          {".", 0},         {"2600MHz", 0},     {"+2600", 0},
        {" 2600", 0},    {"2.6e3", 0},     {"2600.0.", 0},   {"0x10", 0},        {"inf", 0}};
    for (auto const& [text, wanted] : cases) {
        EXPECT_EQ(cpuFreqFromText(text), wanted) << text;
    }
    for (auto const& [text, told] : {std::pair{"0", 1}, std::pair{"1234.5", 0}}) {
        setenv("PS_CPU_MHZ", text, 1);
        psCpuTicker::m_freqMHz = 0;
        testing::internal::CaptureStderr();
        auto const begin = std::chrono::steady_clock::now();
        unsigned long long const clocks = psCpuTicker::rdtsc();
        int const freq = psCpuTicker::getFreq();
        auto const time =
            std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin);
        double const real = static_cast<double>(psCpuTicker::rdtsc() - clocks) / time.count();
        EXPECT_NEAR(freq, told ? real : 1235, told ? real / 10 : 0);
        EXPECT_EQ(psCpuTicker::getFreq(), freq); // told once
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  told ? "-- PS_CPU_MHZ isn't a number from 1 to 100000: ignored\n" : "");
    }
}
