// cpuid.h - the CPUID instruction and its registers cut into fields. The built-in library reads
// the same by rules of its own (platform/zolcore/zolcpu.h) and may not share this code: another
// library can take its place, so that neither may lean on the other.
#ifndef PSCPU_CPUID_H
#define PSCPU_CPUID_H

bool zol_has_cpuid();           // whether the instruction exists
unsigned zol_max_cpuid_input(); // EAX of leaf 0
// Registers in the order EAX, EBX, ECX, EDX.
void zol_get_cpuid(unsigned leaf, unsigned subleaf, unsigned registers[4]);
// Low half of the extended control register 0; 0 where the instruction is missing.
unsigned zol_get_xcr0();

// Registers of one leaf. A leaf that the processor does not have reads as zeros.
class CPUID {
public:
    explicit CPUID(unsigned leaf, unsigned subleaf = 0);
    // Given values instead of the processor's.
    CPUID(unsigned eax, unsigned ebx, unsigned ecx, unsigned edx) : m_reg{eax, ebx, ecx, edx} {}

    unsigned reg(int index) const { return m_reg[index]; }
    unsigned getBits(int index, int high, int low) const; // field from high to low, both included
    unsigned getBit(int index, int bit) const { return (m_reg[index] >> bit) & 1U; }
    unsigned getByte(int index, int byte) const { return (m_reg[index] >> (8 * byte)) & 0xffU; }

    static unsigned largestFunction();
    static unsigned largestExFunction();
    static bool validFunction(unsigned leaf);

private:
    unsigned m_reg[4];
};

// Bytes of the cache that a leaf 4 record tells of: sets, line size, partitions, ways. Signed, as
// its callers skip what does not fit an int.
int cacheBytes(CPUID const& leaf4);

#endif
