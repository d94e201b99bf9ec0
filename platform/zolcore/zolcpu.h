// zolcpu.h - what the processor tells about itself: the CPUID instruction, the feature mask and
// the cache size made of its registers. The harness reads the same by rules of its own
// (pscpu/cpuid.h, pscpu/cpucache.h) and may not share this code: another library can take the place
// of this one, so that neither may lean on the other.
#ifndef ZOLCORE_ZOLCPU_H
#define ZOLCORE_ZOLCPU_H

#include "zolcore.h"

// Registers of one CPUID leaf, in the order in which the interface passes them.
struct ZolCpuid {
    Zol32u eax;
    Zol32u ebx;
    Zol32u ecx;
    Zol32u edx;
};

// One CPUID instruction. Valid on every x86-64 processor; a leaf above the highest gives whatever
// the processor gives.
ZolCpuid zolCpuid(Zol32u leaf, Zol32u subleaf);

// Mask of the features in these leaves. A feature whose registers the system doesn't save (by
// xcr0, the value of the extended control register) isn't counted.
Zol64u zolFeatureMask(ZolCpuid leaf1, ZolCpuid leaf7, ZolCpuid extended1, Zol64u xcr0);

// The mask of this processor under this system.
Zol64u zolReadFeatures();

// Bytes of the cache that a subleaf of CPUID leaf 4 (or of 0x8000001D, which has the same shape)
// describes; 0 for an instruction cache, -1 behind the last subleaf.
long long zolCacheBytes(ZolCpuid subleaf);

// The largest data or unified cache of this machine in bytes, 0 if nobody tells.
long long zolReadMaxCache();

#endif
