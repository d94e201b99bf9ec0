// zolcpu.cpp - reading of CPUID and what is computed from it.
#include "zolcore/zolcpu.h"

#include <cstdio>
#include <unistd.h>

namespace {

// Where a feature bit stands: leaf 1, leaf 7 or the first extended leaf.
enum Source { leaf1Ecx, leaf1Edx, leaf7Ebx, extendedEcx };
// Which register state the system has to save for it.
enum State { none, ymm, zmm };

struct Feature {
    Zol64u mask;
    Source source;
    int bit;
    State state;
};

Feature const features[] = {
    {zolCPUID_MMX, leaf1Edx, 23, none},         {zolCPUID_SSE, leaf1Edx, 25, none},
    {zolCPUID_SSE2, leaf1Edx, 26, none},        {zolCPUID_SSE3, leaf1Ecx, 0, none},
    {zolCPUID_SSSE3, leaf1Ecx, 9, none},        {zolCPUID_MOVBE, leaf1Ecx, 22, none},
    {zolCPUID_SSE41, leaf1Ecx, 19, none},       {zolCPUID_SSE42, leaf1Ecx, 20, none},
    {zolCPUID_AVX, leaf1Ecx, 28, ymm},          {zolCPUID_AES, leaf1Ecx, 25, none},
    {zolCPUID_CLMUL, leaf1Ecx, 1, none},        {zolCPUID_RDRAND, leaf1Ecx, 30, none},
    {zolCPUID_F16C, leaf1Ecx, 29, ymm},         {zolCPUID_AVX2, leaf7Ebx, 5, ymm},
    {zolCPUID_ADCOX, leaf7Ebx, 19, none},       {zolCPUID_RDSEED, leaf7Ebx, 18, none},
    {zolCPUID_PREFETCHW, extendedEcx, 8, none}, {zolCPUID_SHA, leaf7Ebx, 29, none},
    {zolCPUID_AVX512F, leaf7Ebx, 16, zmm},      {zolCPUID_AVX512CD, leaf7Ebx, 28, zmm},
    {zolCPUID_AVX512ER, leaf7Ebx, 27, zmm},     {zolCPUID_AVX512PF, leaf7Ebx, 26, zmm},
    {zolCPUID_AVX512BW, leaf7Ebx, 30, zmm},     {zolCPUID_AVX512DQ, leaf7Ebx, 17, zmm},
    {zolCPUID_AVX512VL, leaf7Ebx, 31, zmm},
};

constexpr Zol32u osxsaveBit = 1U << 27;
constexpr Zol64u ymmState = 0x06; // bits of the extended control register
constexpr Zol64u zmmState = 0xe6;

// The extended control register 0, which tells the register state that the system saves.
Zol64u readXcr0(ZolCpuid leaf1) {
    if ((leaf1.ecx & osxsaveBit) == 0) {
        return 0;
    }
    Zol32u low = 0;
    Zol32u high = 0;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return (static_cast<Zol64u>(high) << 32) | low;
}

// A leaf, zeros where the processor's leaves end below it.
ZolCpuid leafOrNone(Zol32u leaf, Zol32u subleaf = 0) {
    Zol32u const highest = zolCpuid(leaf & 0x80000000U, 0).eax;
    return leaf <= highest ? zolCpuid(leaf, subleaf) : ZolCpuid{};
}

// The largest cache over the subleaves of one leaf, 0 if it describes none.
long long largestCache(Zol32u leaf) {
    long long largest = 0;
    for (Zol32u subleaf = 0; subleaf < 32; ++subleaf) {
        long long const bytes = zolCacheBytes(leafOrNone(leaf, subleaf));
        if (bytes < 0) {
            break;
        }
        largest = bytes > largest ? bytes : largest;
    }
    return largest;
}

// What the system knows when the processor says nothing, as under some hypervisors.
long long systemCache() {
    int const levels[] = {_SC_LEVEL3_CACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL1_DCACHE_SIZE};
    for (int const level : levels) {
        long const bytes = sysconf(level);
        if (bytes > 0) {
            return bytes;
        }
    }
    long long largest = 0;
    for (int index = 0; index < 8; ++index) {
        char path[80];
        std::snprintf(path, sizeof path, "/sys/devices/system/cpu/cpu0/cache/index%d/size", index);
        std::FILE* const file = std::fopen(path, "r");
        if (file == nullptr) {
            break;
        }
        long long size = 0;
        char unit = ' ';
        if (std::fscanf(file, "%lld%c", &size, &unit) >= 1) {
            size *= unit == 'K' ? 1024 : unit == 'M' ? 1024 * 1024 : 1;
            largest = size > largest ? size : largest;
        }
        std::fclose(file);
    }
    return largest;
}

} // namespace

ZolCpuid zolCpuid(Zol32u leaf, Zol32u subleaf) {
    ZolCpuid regs{};
    asm volatile("cpuid"
                 : "=a"(regs.eax), "=b"(regs.ebx), "=c"(regs.ecx), "=d"(regs.edx)
                 : "a"(leaf), "c"(subleaf));
    return regs;
}

Zol64u zolFeatureMask(ZolCpuid leaf1, ZolCpuid leaf7, ZolCpuid extended1, Zol64u xcr0) {
    bool const saved[] = {true, (xcr0 & ymmState) == ymmState, (xcr0 & zmmState) == zmmState};
    Zol32u const words[] = {leaf1.ecx, leaf1.edx, leaf7.ebx, extended1.ecx};
    Zol64u mask = saved[ymm] ? zolAVX_ENABLEDBYOS : 0;
    for (Feature const& feature : features) {
        if (((words[feature.source] >> feature.bit) & 1U) != 0 && saved[feature.state]) {
            mask |= feature.mask;
        }
    }
    return mask;
}

Zol64u zolReadFeatures() {
    ZolCpuid const leaf1 = zolCpuid(1, 0);
    return zolFeatureMask(leaf1, leafOrNone(7), leafOrNone(0x80000001U), readXcr0(leaf1));
}

long long zolCacheBytes(ZolCpuid subleaf) {
    Zol32u const type = subleaf.eax & 0x1fU;
    if (type == 0) {
        return -1;
    }
    if (type == 2) { // instruction cache
        return 0;
    }
    long long const line = (subleaf.ebx & 0xfffU) + 1LL;
    long long const partitions = ((subleaf.ebx >> 12) & 0x3ffU) + 1LL;
    long long const ways = (subleaf.ebx >> 22) + 1LL;
    return line * partitions * ways * (subleaf.ecx + 1LL);
}

long long zolReadMaxCache() {
    long long bytes = largestCache(4);
    if (bytes == 0) {
        bytes = largestCache(0x8000001dU);
    }
    return bytes != 0 ? bytes : systemCache();
}
