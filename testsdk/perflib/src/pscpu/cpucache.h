// cpucache.h - sizes of data caches from CPUID registers. All that is computed takes its
// registers through a reader, so that recorded ones can stand in for the processor's. The
// built-in library's walk over its caches is another one, see cpuid.h.
#ifndef PSCPU_CPUCACHE_H
#define PSCPU_CPUCACHE_H

#include "pscpu/cpuid.h"
#include "zolcore.h"

// Gives the registers of a leaf and subleaf.
using cpuidReader = CPUID (*)(unsigned leaf, unsigned subleaf);

// Bound on a walk over the subleaves of leaf 4: a host that ignores the subleaf never ends it.
constexpr unsigned maxCacheSubleaves = 32;

CPUID readCpuid(unsigned leaf, unsigned subleaf); // of this processor

// Largest cache in bytes that the subleaves of leaf 4 tell of, up to the first of type 0; 0 if
// there is none. Instruction caches count unless they are to be skipped.
int largestCacheBytes(cpuidReader read, bool skipInstruction);

// Largest data or unified cache in bytes among the descriptors of leaf 2; 0 if none is known.
int descriptorCacheBytes(CPUID const& leaf2);

// The vendor's twelve letters of leaf 0 and a terminator.
void cpuVendor(CPUID const& leaf0, char vendor[13]);

// The largest data cache of a processor of the maker. bytes is 0 unless the status is.
ZolStatus makersCacheBytes(cpuidReader read, int* bytes);

#endif
