// pshost_test.cpp - the line of the processor, and where its parts come from.
#include "pscpu/pshost.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "pscpu/cpucache.h"
#include "pscpu/pscputicker.h"
#include "pscpu/pszolentry.h"

namespace {

// A library that passes recorded registers through.
unsigned failingLeaf;
unsigned largestExLeaf;
char const brand[48] = "  Norvo(R) Hexa(TM) CPU 1234 @ 2.40GHz";

ZolStatus recordedFeatures(Zol64u* mask, Zol32u registers[4]) {
    unsigned const leaf = registers[0];
    if (std::memcmp(mask, "mixcadre", 8) != 0 || leaf == failingLeaf || leaf > 0x80000004U) {
        return -1;
    }
    if (leaf == 0x80000000U) {
        registers[0] = largestExLeaf;
    } else {
        std::memcpy(registers, brand + 16 * (leaf - 0x80000002U), 16);
    }
    return 0;
}

int constexpr cacheAnswer = 3072 * 1024;
template <ZolStatus status>
ZolStatus recordedCache(int* bytes) {
    *bytes = cacheAnswer;
    return status;
}
ZolStatus emptyCache(int* bytes) { return *bytes = 0; }

class PsHost : public testing::Test {
protected:
    void SetUp() override {
        failingLeaf = 0;
        largestExLeaf = 0x80000008U;
        psCpuTicker::m_freqMHz = 2400;
        zol_GetCpuFeatures = recordedFeatures;
        zol_GetMaxCacheSizeB = recordedCache<0>;
    }
    void TearDown() override {
        psCpuTicker::m_freqMHz = 0;
        zol_GetCpuFeatures = nullptr;
        zol_GetMaxCacheSizeB = nullptr;
    }
};

std::string line(char const* name) {
    return cpuInfoLine(name, psGetNumOfProcessors(), 2400, cacheAnswer).c_str();
}

} // namespace

TEST_F(PsHost, TheLineLeavesOutWhatIsNotKnown) {
    EXPECT_STREQ(cpuInfoLine("X", 8, 2933, 12582912).c_str(),
                 "X, 8x2.93 GHz, Max cache size 12288 K");
    EXPECT_STREQ(cpuInfoLine("X", 1, 999, 1023).c_str(), "X, 999 MHz, Max cache size 0 K");
    EXPECT_STREQ(cpuInfoLine("X", 1, 1000, 0).c_str(), "X, 1 GHz, ");
}

TEST_F(PsHost, TheBrandComesThroughTheLibrary) {
    EXPECT_EQ(cpuInfo().c_str(), line(brand));
    failingLeaf = 0x80000004U;
    EXPECT_EQ(cpuInfo().c_str(), line("Unknown CPU"));
    failingLeaf = 0;
    largestExLeaf = 4;
    EXPECT_EQ(cpuInfo().c_str(), line("Unknown CPU"));
    zol_GetCpuFeatures = nullptr;
    EXPECT_EQ(cpuInfo().c_str(), line("Unknown CPU"));
}

TEST_F(PsHost, SystemAndHostAsTheKernelNamesThem) {
    std::string name;
    std::ifstream("/proc/sys/kernel/hostname") >> name;
    EXPECT_EQ(host.name(), name);
    std::string release;
    std::ifstream("/proc/sys/kernel/osrelease") >> release;
    EXPECT_EQ(os.text(), "Linux (" + release + ", x86_64)");
}

TEST_F(PsHost, TheCacheIsTheProcessorsOwnWhereTheLibraryKnowsNone) {
    EXPECT_EQ(psGetMaxCacheSizeB(), cacheAnswer);
    for (auto* entry : {recordedCache<-1>, emptyCache, static_cast<ZolStatus (*)(int*)>(nullptr)}) {
        zol_GetMaxCacheSizeB = entry;
        EXPECT_EQ(psGetMaxCacheSizeB(), largestCacheBytes(readCpuid, false));
    }
}
