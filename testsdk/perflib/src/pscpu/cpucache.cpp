// cpucache.cpp - cache sizes from CPUID leaf 4, or from the descriptors of leaf 2 on
// processors that have no leaf 4.
#include "pscpu/cpucache.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr unsigned instructionCache = 2;
constexpr int K = 1024;

struct CacheDescriptor {
    unsigned char descriptor;
    int bytes;
};

// Data and unified caches by their descriptor byte; ends with descriptor 0.
constexpr CacheDescriptor tableCache[] = {
    // first level, data
    {0x0a, 8 * K},
    {0x0c, 16 * K},
    {0x0d, 16 * K},
    {0x0e, 24 * K},
    {0x2c, 32 * K},
    {0x60, 16 * K},
    {0x66, 8 * K},
    {0x67, 16 * K},
    {0x68, 32 * K},
    // second level
    {0x1d, 128 * K},
    {0x21, 256 * K},
    {0x24, 1024 * K},
    {0x39, 128 * K},
    {0x3a, 192 * K},
    {0x3b, 128 * K},
    {0x3c, 256 * K},
    {0x3d, 384 * K},
    {0x3e, 512 * K},
    {0x41, 128 * K},
    {0x42, 256 * K},
    {0x43, 512 * K},
    {0x44, 1024 * K},
    {0x45, 2048 * K},
    {0x48, 3072 * K},
    {0x4e, 6144 * K},
    {0x78, 1024 * K},
    {0x79, 128 * K},
    {0x7a, 256 * K},
    {0x7b, 512 * K},
    {0x7c, 1024 * K},
    {0x7d, 2048 * K},
    {0x7f, 512 * K},
    {0x80, 512 * K},
    {0x82, 256 * K},
    {0x83, 512 * K},
    {0x84, 1024 * K},
    {0x85, 2048 * K},
    {0x86, 512 * K},
    {0x87, 1024 * K},
    // third level; 0x49 is a second level of the same size on some processors
    {0x22, 512 * K},
    {0x23, 1024 * K},
    {0x25, 2048 * K},
    {0x29, 4096 * K},
    {0x46, 4096 * K},
    {0x47, 8192 * K},
    {0x49, 4096 * K},
    {0x4a, 6144 * K},
    {0x4b, 8192 * K},
    {0x4c, 12288 * K},
    {0x4d, 16384 * K},
    {0xd0, 512 * K},
    {0xd1, 1024 * K},
    {0xd2, 2048 * K},
    {0xd6, 1024 * K},
    {0xd7, 2048 * K},
    {0xd8, 4096 * K},
    {0xdc, 1536 * K},
    {0xdd, 3072 * K},
    {0xde, 6144 * K},
    {0xe2, 2048 * K},
    {0xe3, 4096 * K},
    {0xe4, 8192 * K},
    {0xea, 12288 * K},
    {0xeb, 18432 * K},
    {0xec, 24576 * K},
    {0x00, 0},
};

int bytesOfDescriptor(unsigned descriptor) {
    CacheDescriptor const* row = tableCache;
    while (row->descriptor != 0 && row->descriptor != descriptor) {
        ++row;
    }
    return row->bytes;
}

} // namespace

CPUID readCpuid(unsigned leaf, unsigned subleaf) { return CPUID(leaf, subleaf); }

int largestCacheBytes(cpuidReader read, bool skipInstruction) {
    int largest = 0; // so a product that came out negative never counts
    for (unsigned subleaf = 0; subleaf < maxCacheSubleaves; ++subleaf) {
        CPUID const record = read(4, subleaf);
        unsigned const type = record.getBits(0, 4, 0);
        if (type == 0) {
            break;
        }
        if (!skipInstruction || type != instructionCache) {
            largest = std::max(largest, cacheBytes(record));
        }
    }
    return largest;
}

int descriptorCacheBytes(CPUID const& leaf2) {
    int largest = 0;
    for (int index = 0; index < 4; ++index) {
        if (leaf2.getBit(index, 31) != 0) { // this register holds no descriptors
            continue;
        }
        // The low byte of EAX counts how often the leaf is to be read.
        for (int byte = index == 0 ? 1 : 0; byte < 4; ++byte) {
            largest = std::max(largest, bytesOfDescriptor(leaf2.getByte(index, byte)));
        }
    }
    return largest;
}

void cpuVendor(CPUID const& leaf0, char vendor[13]) {
    constexpr int order[] = {1, 3, 2}; // EBX, EDX, ECX
    for (int const word : order) {
        unsigned const letters = leaf0.reg(word);
        std::memcpy(vendor, &letters, sizeof letters);
        vendor += sizeof letters;
    }
    *vendor = '\0';
}

ZolStatus makersCacheBytes(cpuidReader read, int* bytes) {
    *bytes = 0;
    CPUID const leaf0 = read(0, 0);
    unsigned const maxLeaf = leaf0.reg(0);
    char vendor[13];
    cpuVendor(leaf0, vendor);
    if (maxLeaf <= 1 || std::strcmp(vendor, "GenuineNorvo") != 0) {
        return zolStsUnsupportedCpu;
    }
    *bytes = maxLeaf < 4 ? descriptorCacheBytes(read(2, 0)) : largestCacheBytes(read, true);
    return *bytes == 0 ? zolStsUnknownCacheSize : zolStsNoErr;
}
