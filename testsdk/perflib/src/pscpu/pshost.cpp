// pshost.cpp - what the run records about its machine.
#include "pscpu/pshost.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sys/utsname.h>
#include <unistd.h>

#include "pscpu/cpucache.h"
#include "pscpu/pscputicker.h"
#include "pscpu/pszolentry.h"

psOS os;
psHost host;

namespace {

// The library passes CPUID through when its result comes in holding this word.
bool libraryCpuid(unsigned leaf, Zol32u registers[4]) {
    if (zol_GetCpuFeatures == nullptr) {
        return false;
    }
    Zol64u word;
    static_assert(sizeof word == 8);
    std::memcpy(&word, "mixcadre", sizeof word);
    registers[0] = leaf;
    return zol_GetCpuFeatures(&word, registers) == zolStsNoErr;
}

psString brandText() {
    char const* const unknown = "Unknown CPU";
    Zol32u registers[4] = {};
    if (!libraryCpuid(0x80000000U, registers) || (registers[0] & 0x80000000U) == 0) {
        return unknown;
    }
    char brand[3 * sizeof registers + 1] = {};
    for (unsigned i = 0; i < 3; ++i) {
        if (!libraryCpuid(0x80000002U + i, registers)) {
            return unknown;
        }
        std::memcpy(brand + i * sizeof registers, registers, sizeof registers);
    }
    return brand;
}

} // namespace

psOS::psOS() : m_text{} {
    utsname name{};
    uname(&name);
    std::snprintf(m_text, sizeof m_text, "%s (%s, %s)", name.sysname, name.release, name.machine);
}

psHost::psHost() : m_name{} { gethostname(m_name, sizeof m_name - 1); }

int psGetNumOfProcessors() { return static_cast<int>(std::max(1L, sysconf(_SC_NPROCESSORS_ONLN))); }

int psGetMaxCacheSizeB() {
    int bytes = 0;
    if (zol_GetMaxCacheSizeB != nullptr && zol_GetMaxCacheSizeB(&bytes) == zolStsNoErr &&
        bytes > 0) {
        return bytes;
    }
    return largestCacheBytes(readCpuid, false);
}

psString cpuInfo() {
    return cpuInfoLine(brandText(), psGetNumOfProcessors(), psCpuTicker::getFreq(),
                       psGetMaxCacheSizeB());
}

psString cpuInfoLine(psString const& brand, int processors, int freqMHz, int cacheBytes) {
    psString line(brand);
    line << ", ";
    if (processors != 1) {
        line << processors << "x";
    }
    if (freqMHz > 999) {
        line << freqMHz / 1000.0 << " GHz";
    } else {
        line << freqMHz << " MHz";
    }
    line << ", ";
    if (cacheBytes != 0) {
        line << "Max cache size " << cacheBytes / 1024 << " K";
    }
    return line;
}
