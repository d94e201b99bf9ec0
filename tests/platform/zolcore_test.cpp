// zolcore_test.cpp - start-up, feature masks, cache sizes, texts and threads.
#include <algorithm>
#include <array>
#include <climits>
#include <cpuid.h>
#include <cstring>

#include <gtest/gtest.h>

#include "support/storedtext.h"
#include "zolcore/zolcpu.h"
#include "zolvm_catalogue.h"

namespace {

Zol64u const enabledAtLoad = zolGetEnabledCpuFeatures(); // before any zolInit

using Zolcore = ZolvmFixture;

TEST_F(Zolcore, CountsOnlyFeaturesWhoseRegistersTheSystemSaves) {
    ZolCpuid const leaf1{0, 0, 0x7fffffffU, 0xffffffffU};
    ZolCpuid const leaf7{0, 0xffffffffU, 0, 0};
    ZolCpuid const extended{0, 0, 0x100, 0};
    Zol64u const basic = zolCPUID_MMX | zolCPUID_SSE | zolCPUID_SSE2 | zolCPUID_SSE3 |
                         zolCPUID_SSSE3 | zolCPUID_MOVBE | zolCPUID_SSE41 | zolCPUID_SSE42 |
                         zolCPUID_AES | zolCPUID_CLMUL | zolCPUID_RDRAND | zolCPUID_ADCOX |
                         zolCPUID_RDSEED | zolCPUID_PREFETCHW | zolCPUID_SHA;
    Zol64u const wide = zolCPUID_AVX | zolAVX_ENABLEDBYOS | zolCPUID_F16C | zolCPUID_AVX2;
    Zol64u const widest = 0x7f00000;
    EXPECT_EQ(zolFeatureMask(leaf1, leaf7, extended, 0), basic);
    EXPECT_EQ(zolFeatureMask(leaf1, leaf7, extended, 0x7), basic | wide);
    EXPECT_EQ(zolFeatureMask(leaf1, leaf7, extended, 0x67), basic | wide);
    EXPECT_EQ(zolFeatureMask(leaf1, leaf7, extended, 0xe7), basic | wide | widest);
    EXPECT_EQ(zolFeatureMask({}, {}, {}, 0xe7), zolAVX_ENABLEDBYOS);
    EXPECT_EQ(zolFeatureMask({}, {}, {}, 0), 0U);
    Zol64u const here = zolReadFeatures();
    EXPECT_EQ((here & zolCPUID_AVX2) != 0, __builtin_cpu_supports("avx2") != 0);
    EXPECT_EQ((here & zolCPUID_AVX512F) != 0, __builtin_cpu_supports("avx512f") != 0);
}

TEST_F(Zolcore, EachFeatureHasTheBitThatTheCompilerKnows) {
    struct {
        Zol64u mask;
        int word; // leaf 1 ECX and EDX, leaf 7 EBX, first extended leaf ECX
        Zol32u bit;
    } const features[] = {
        {zolCPUID_MMX, 1, bit_MMX},           {zolCPUID_SSE, 1, bit_SSE},
        {zolCPUID_SSE2, 1, bit_SSE2},         {zolCPUID_SSE3, 0, bit_SSE3},
        {zolCPUID_SSSE3, 0, bit_SSSE3},       {zolCPUID_MOVBE, 0, bit_MOVBE},
        {zolCPUID_SSE41, 0, bit_SSE4_1},      {zolCPUID_SSE42, 0, bit_SSE4_2},
        {zolCPUID_AVX, 0, bit_AVX},           {zolCPUID_AES, 0, bit_AES},
        {zolCPUID_CLMUL, 0, bit_PCLMUL},      {zolCPUID_RDRAND, 0, bit_RDRND},
        {zolCPUID_F16C, 0, bit_F16C},         {zolCPUID_AVX2, 2, bit_AVX2},
        {zolCPUID_ADCOX, 2, bit_ADX},         {zolCPUID_RDSEED, 2, bit_RDSEED},
        {zolCPUID_PREFETCHW, 3, bit_PRFCHW},  {zolCPUID_SHA, 2, bit_SHA},
        {zolCPUID_AVX512F, 2, bit_AVX512F},   {zolCPUID_AVX512CD, 2, bit_AVX512CD},
        {zolCPUID_AVX512ER, 2, bit_AVX512ER}, {zolCPUID_AVX512PF, 2, bit_AVX512PF},
        {zolCPUID_AVX512BW, 2, bit_AVX512BW}, {zolCPUID_AVX512DQ, 2, bit_AVX512DQ},
        {zolCPUID_AVX512VL, 2, bit_AVX512VL}};
    for (auto const& [mask, word, bit] : features) {
        Zol32u words[4] = {};
        words[word] = bit;
        EXPECT_EQ(zolFeatureMask({0, 0, words[0], words[1]}, {0, words[2], 0, 0},
                                 {0, 0, words[3], 0}, 0xe7),
                  mask | zolAVX_ENABLEDBYOS);
    }
}

TEST_F(Zolcore, CacheSubleaves) {
    // 8 ways of 64 sets of 64 bytes, and 16 ways of 2^15 sets in one partition.
    EXPECT_EQ(zolCacheBytes({0x21, (7U << 22) | 63, 63, 0}), 32768);
    EXPECT_EQ(zolCacheBytes({0x63, (15U << 22) | 63, 32767, 0}), 32LL << 20);
    EXPECT_EQ(zolCacheBytes({0x63, (15U << 22) | (1U << 12) | 63, 0xffffffU, 0}), 32LL << 30);
    EXPECT_EQ(zolCacheBytes({0x22, (7U << 22) | 63, 63, 0}), 0);
    EXPECT_EQ(zolCacheBytes({0, 0, 0, 0}), -1);
    int bytes = 0;
    EXPECT_EQ(zolGetMaxCacheSizeB(&bytes), zolStsNoErr);
    EXPECT_GE(bytes, 16 * 1024);
    long long largest = 0; // of those that the processor tells of
    for (Zol32u subleaf = 0; subleaf < 32; ++subleaf) {
        largest = std::max(largest, zolCacheBytes(zolCpuid(4, subleaf)));
    }
    EXPECT_TRUE(largest == 0 || bytes == std::min<long long>(largest, INT_MAX)) << bytes;
    EXPECT_EQ(zolGetMaxCacheSizeB(nullptr), zolStsNullPtrErr);
}

TEST_F(Zolcore, PassesCpuidThroughWhenAskedByTheWord) {
    Zol64u mask = 0;
    std::memcpy(&mask, "mixcadre", sizeof mask);
    Zol32u registers[4] = {0x80000000U, 1, 2, 3};
    ASSERT_EQ(zolGetCpuFeatures(&mask, registers), zolStsNoErr);
    ZolCpuid const wanted = zolCpuid(0x80000000U, 0);
    EXPECT_EQ(std::to_array(registers),
              (std::array{wanted.eax, wanted.ebx, wanted.ecx, wanted.edx}));
    std::memcpy(&mask, "mixcadre", sizeof mask);
    EXPECT_EQ(zolGetCpuFeatures(&mask, nullptr), zolStsNullPtrErr);
    EXPECT_EQ(zolGetCpuFeatures(nullptr, registers), zolStsNullPtrErr);
    mask = 0;
    ASSERT_EQ(zolGetCpuFeatures(&mask, registers), zolStsNoErr);
    EXPECT_EQ(mask & 0x7, 0x7U);
    EXPECT_EQ(registers[0], zolCpuid(1, 0).eax);
}

TEST_F(Zolcore, EnablesWhatTheMaskAndTheProcessorShare) {
    Zol64u features = 0;
    zolGetCpuFeatures(&features, nullptr);
    EXPECT_EQ(enabledAtLoad, features);
    zolInit();
    EXPECT_EQ(zolGetEnabledCpuFeatures(), features);
    EXPECT_EQ(zolSetCpuFeatures(0x7), zolStsNoErr);
    EXPECT_EQ(zolGetEnabledCpuFeatures(), 0x7U);
    Zol64u const missing = 1ULL << 40;
    EXPECT_EQ(zolSetCpuFeatures(0x7 | missing), zolStsCpuFeatureMissing);
    EXPECT_EQ(zolGetEnabledCpuFeatures(), 0x7U);
    EXPECT_EQ(zolInit(), zolStsNoErr);
    EXPECT_EQ(zolInit(), zolStsNoErr);
    EXPECT_EQ(zolGetEnabledCpuFeatures(), features);
}

TEST_F(Zolcore, ThreadsAndTexts) {
    int threads = 0;
    EXPECT_EQ(zolGetNumThreads(&threads), zolStsNoErr);
    EXPECT_EQ(threads, 1);
    EXPECT_EQ(zolGetNumThreads(nullptr), zolStsNullPtrErr);
    EXPECT_EQ(zolSetNumThreads(1), zolStsNoErr);
    EXPECT_LT(zolSetNumThreads(0), 0);
    EXPECT_GT(zolSetNumThreads(2), 0);
    std::string texts;
    for (ZolStatus status = -10; status <= 40; ++status) {
        texts += std::to_string(status) + " " + zolGetStatusString(status) + "\n";
    }
    EXPECT_TRUE(matchesStored("platform/status", texts));
    EXPECT_STREQ(zolvmGetLibVersion()->name, "ZOL Vector Math");
}

} // namespace
