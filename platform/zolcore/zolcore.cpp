// zolcore.cpp - libzolcore: start-up, processor features, cache size, status texts, threads.
#pragma GCC visibility push(default)
#include "zolcore/zoldispatch.h"
#pragma GCC visibility pop

#include <climits>
#include <cstring>

#include "zolcore/zolcpu.h"

namespace {

ZolSelect selectPath = nullptr;

Zol64u processorFeatures() {
    static Zol64u const features = zolReadFeatures();
    return features;
}

// Until they are set, all that the processor has.
Zol64u& enabledFeatures() {
    static Zol64u features = processorFeatures();
    return features;
}

void enable(Zol64u features) {
    enabledFeatures() = features;
    if (selectPath != nullptr) {
        selectPath(features);
    }
}

struct StatusText {
    ZolStatus status;
    char const* text;
};

StatusText const statusTexts[] = {
    {zolStsNoErr, "No error"},
    {zolStsNotSupported, "The function is not supported"},
    {zolStsSizeErr, "The length is below 1"},
    {zolStsNullPtrErr, "A pointer is null"},
    {zolStsOverflow, "A result overflowed"},
    {zolStsUnderflow, "A result underflowed"},
    {zolStsSingularity, "An argument is a singularity of the function"},
    {zolStsDomain, "An argument is outside the function's domain"},
    {zolStsUnsupportedCpu, "The processor is not supported"},
    {zolStsUnknownCacheSize, "The cache size is not known"},
    {zolStsCpuFeatureMissing, "The processor lacks some of the features asked for"},
    {zolStsSingleThread, "The library works in one thread"},
};

} // namespace

void zolcoreOnSelect(ZolSelect select) {
    selectPath = select;
    select(zolGetEnabledCpuFeatures());
}

ZolStatus zolInit(void) {
    enable(processorFeatures());
    return zolStsNoErr;
}

ZolStatus zolGetCpuFeatures(Zol64u* mask, Zol32u registers[4]) {
    if (mask == nullptr) {
        return zolStsNullPtrErr;
    }
    bool const passThrough = std::memcmp(mask, "mixcadre", sizeof *mask) == 0;
    if (!passThrough) {
        *mask = processorFeatures();
    } else if (registers == nullptr) {
        return zolStsNullPtrErr;
    }
    if (registers != nullptr) {
        ZolCpuid const regs = zolCpuid(passThrough ? registers[0] : 1U, 0);
        registers[0] = regs.eax;
        registers[1] = regs.ebx;
        registers[2] = regs.ecx;
        registers[3] = regs.edx;
    }
    return zolStsNoErr;
}

Zol64u zolGetEnabledCpuFeatures(void) { return enabledFeatures(); }

ZolStatus zolSetCpuFeatures(Zol64u mask) {
    enable(mask & processorFeatures());
    return (mask & ~processorFeatures()) == 0 ? zolStsNoErr : zolStsCpuFeatureMissing;
}

ZolStatus zolGetMaxCacheSizeB(int* bytes) {
    if (bytes == nullptr) {
        return zolStsNullPtrErr;
    }
    long long const largest = zolReadMaxCache();
    *bytes = static_cast<int>(largest < INT_MAX ? largest : INT_MAX);
    return largest > 0 ? zolStsNoErr : zolStsUnknownCacheSize;
}

char const* zolGetStatusString(ZolStatus status) {
    for (StatusText const& row : statusTexts) {
        if (row.status == status) {
            return row.text;
        }
    }
    return status < 0 ? "Unknown error" : "Unknown warning";
}

ZolStatus zolSetNumThreads(int threads) {
    if (threads < 1) {
        return zolStsSizeErr;
    }
    return threads == 1 ? zolStsNoErr : zolStsSingleThread;
}

ZolStatus zolGetNumThreads(int* threads) {
    if (threads == nullptr) {
        return zolStsNullPtrErr;
    }
    *threads = 1;
    return zolStsNoErr;
}
