// pscpufeatures_test.cpp - labels to masks and back.
#include "pscpu/pscpufeatures.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "support/storedtext.h"

TEST(PsCpuFeatures, MasksFindTheirFirstRow) {
    EXPECT_STREQ(psCpuFeatures::cpuLabel(0x3).c_str(), "SSE");
    EXPECT_STREQ(psCpuFeatures::cpuLabel(0x2).c_str(), "Undefined");
    EXPECT_STREQ(psCpuFeatures::cpuName(0x6cdf).c_str(), "ZOL Q5+ library version");
    EXPECT_STREQ(psCpuFeatures::cpuName(0x100000001dfULL).c_str(), "Unknown processor");
}

TEST(PsCpuFeatures, ListsJoinTheLabelsThatFitExactly) {
    std::tuple<char const*, unsigned long long> const cases[] = {
        {"", 0},      {",", 0},        {"SSE2,AES", 0x407},  {"SSE2, AES", 0x7},      {"sse2", 0},
        {"Q5", 0xdf}, {"Q5+", 0x6cdf}, {",,R3,", 0x73081df}, {"SSE2,no,SHA", 0x80007}};
    for (auto const& [list, mask] : cases) {
        EXPECT_EQ(psCpuFeatures::cpuFeatures(list), mask) << list;
    }
}

TEST(PsCpuFeatures, EachRowHasItsMaskAndItsLine) {
    std::string text;
    std::istringstream list(psCpuFeatures::optimizedList().c_str());
    for (std::string line; std::getline(list, line);) {
        psString mask;
        mask << reinterpret_cast<void const*>(
            psCpuFeatures::cpuFeatures(line.substr(0, line.find_first_of(" :")).c_str()));
        text += std::string(mask.c_str()) + " " + line + "\n";
    }
    EXPECT_TRUE(matchesStored("pscpu/features", text));
}
