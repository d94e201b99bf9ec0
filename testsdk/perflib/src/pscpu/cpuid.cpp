// cpuid.cpp - the instructions CPUID and XGETBV, and what is cut out of their registers.
#include "pscpu/cpuid.h"

namespace {

constexpr unsigned firstExLeaf = 0x80000000U;
constexpr unsigned long long idFlag = 1ULL << 21; // of the flags register

} // namespace

// The instruction exists where the identification flag can be changed.
bool zol_has_cpuid() {
    unsigned long long const before = __builtin_ia32_readeflags_u64();
    __builtin_ia32_writeeflags_u64(before ^ idFlag);
    unsigned long long const after = __builtin_ia32_readeflags_u64();
    __builtin_ia32_writeeflags_u64(before);
    return ((before ^ after) & idFlag) != 0;
}

unsigned zol_max_cpuid_input() {
    unsigned registers[4];
    zol_get_cpuid(0, 0, registers);
    return registers[0];
}

void zol_get_cpuid(unsigned leaf, unsigned subleaf, unsigned registers[4]) {
    asm volatile("cpuid"
                 : "=a"(registers[0]), "=b"(registers[1]), "=c"(registers[2]), "=d"(registers[3])
                 : "a"(leaf), "c"(subleaf));
}

unsigned zol_get_xcr0() {
    if (CPUID(1).getBit(2, 27) == 0) { // the operating system has not turned XGETBV on
        return 0;
    }
    unsigned low;
    unsigned high;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

CPUID::CPUID(unsigned leaf, unsigned subleaf) : m_reg{0, 0, 0, 0} {
    if (validFunction(leaf)) {
        zol_get_cpuid(leaf, subleaf, m_reg);
    }
}

unsigned CPUID::getBits(int index, int high, int low) const {
    unsigned const mask = 0xffffffffU >> (31 - (high - low));
    return (m_reg[index] >> low) & mask;
}

unsigned CPUID::largestFunction() { return zol_max_cpuid_input(); }

unsigned CPUID::largestExFunction() { return CPUID(firstExLeaf).reg(0); }

bool CPUID::validFunction(unsigned leaf) {
    if (leaf == 0 || leaf == firstExLeaf) {
        return true;
    }
    return leaf <= (leaf > firstExLeaf ? largestExFunction() : largestFunction());
}

int cacheBytes(CPUID const& leaf4) {
    unsigned const lineBytes = leaf4.getBits(1, 11, 0) + 1;
    unsigned const partitions = leaf4.getBits(1, 21, 12) + 1;
    unsigned const ways = leaf4.getBits(1, 31, 22) + 1;
    unsigned const sets = leaf4.reg(2) + 1;
    return static_cast<int>(sets * lineBytes * partitions * ways);
}
