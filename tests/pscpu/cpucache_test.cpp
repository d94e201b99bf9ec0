// cpucache_test.cpp - cache sizes from recorded leaves.
#include "pscpu/cpucache.h"

#include <cstring>
#include <vector>

#include "support/storedtext.h"

namespace {

constexpr int K = 1024;

// What the reader answers.
struct Machine {
    unsigned maxLeaf;
    char const* vendor;
    CPUID leaf2;
    std::vector<CPUID> leaf4; // the last one repeats
};
Machine const* machine = nullptr;

CPUID readMachine(unsigned leaf, unsigned subleaf) {
    if (leaf == 0) {
        unsigned letters[3];
        std::memcpy(letters, machine->vendor, sizeof letters);
        return {machine->maxLeaf, letters[0], letters[2], letters[1]};
    }
    std::vector<CPUID> const& records = machine->leaf4;
    return leaf == 2                  ? machine->leaf2
           : subleaf < records.size() ? records[subleaf]
                                      : records.back();
}

CPUID const data32K(0x1C004121, 0x01C0003F, 0x3F, 0);
CPUID const code64K(0x1C004122, 0x03C0003F, 0x3F, 0);
CPUID const unified256K(0x1C004143, 0x01C0003F, 0x1FF, 0);
CPUID const negative(0x1C03C163, 0x03C0003F, 0x1FFFFF, 6);
CPUID const end(0, 0, 0, 0);

} // namespace

TEST(CpuCache, Leaf4GivesTheLargestUpToTheEnd) {
    auto largest = [](std::vector<CPUID> const& leaf4, bool skipInstruction) {
        Machine const given{4, "GenuineNorvo", end, leaf4};
        machine = &given;
        return largestCacheBytes(readMachine, skipInstruction);
    };
    EXPECT_EQ(largest({end}, false), 0);
    EXPECT_EQ(largest({data32K, code64K, end, unified256K}, false), 64 * K);
    EXPECT_EQ(largest({data32K, code64K, end, unified256K}, true), 32 * K);
    EXPECT_EQ(largest({data32K, unified256K, code64K, end}, true), 256 * K);
    EXPECT_EQ(largest({data32K, negative, end}, false), 32 * K);
    EXPECT_EQ(largest({data32K}, false), 32 * K); // never ends
}

TEST(CpuCache, DescriptorsGiveTheLargestKnownDataCache) {
    // The low byte of EAX counts, a register with its top bit set holds nothing, and 0x30 is a
    // cache for instructions.
    EXPECT_EQ(descriptorCacheBytes({0x665B5087, 0, 0, 0x007A7000}), 256 * K);
    EXPECT_EQ(descriptorCacheBytes({0x05B0B101, 0x005657F0, 0, 0x2CB43048}), 3072 * K);
    EXPECT_EQ(descriptorCacheBytes({0x00000001, 0x800000EC, 0, 0x0000000A}), 8 * K);
    EXPECT_EQ(descriptorCacheBytes({0x00005B01, 0, 0, 0x30}), 0);
    std::string known; // each descriptor alone, with its size in K
    for (unsigned descriptor = 1; descriptor < 256; ++descriptor) {
        int const bytes = descriptorCacheBytes({descriptor << 8, 0, 0, 0});
        known +=
            bytes != 0 ? std::to_string(descriptor) + " " + std::to_string(bytes / K) + "\n" : "";
    }
    EXPECT_TRUE(matchesStored("pscpu/descriptors", known));
}

TEST(CpuCache, OnlyTheMakersProcessorsTellTheirCache) {
    std::tuple<Machine, ZolStatus, int> const cases[] = {
        {{1, "GenuineNorvo", {0x7A01, 0, 0, 0}, {data32K, end}}, 36, 0},
        {{4, "AnotherMaker", {0x7A01, 0, 0, 0}, {data32K, end}}, 36, 0},
        {{2, "GenuineNorvo", {0x7A01, 0, 0, 0}, {data32K, end}}, 0, 256 * K},
        {{3, "GenuineNorvo", end, {data32K, end}}, 37, 0},
        {{4, "GenuineNorvo", end, {data32K, code64K, end}}, 0, 32 * K},
        {{13, "GenuineNorvo", {0x7A01, 0, 0, 0}, {code64K, end}}, 37, 0}};
    for (auto const& [given, status, wanted] : cases) {
        machine = &given;
        int bytes = -1;
        EXPECT_EQ(makersCacheBytes(readMachine, &bytes), status);
        EXPECT_EQ(bytes, wanted);
    }
}
