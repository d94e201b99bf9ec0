/* zolcore.h - the C interface of libzolcore: types, status codes, start-up, processor
 * features, threads. A library of one's own implements this file and zolvm.h. */
#ifndef ZOLCORE_H
#define ZOLCORE_H

#ifdef __cplusplus
extern "C" {
#endif

typedef float Zol32f;
typedef double Zol64f;
typedef unsigned int Zol32u;
typedef unsigned long long Zol64u;

/* Complex elements, real part first. */
typedef struct {
    Zol32f re;
    Zol32f im;
} Zol32fc;
typedef struct {
    Zol64f re;
    Zol64f im;
} Zol64fc;

/* Negative: error, nothing was computed. Positive: warning, the result stands. */
typedef int ZolStatus;
enum {
    zolStsNoErr = 0,
    zolStsNotSupported = -2,
    zolStsSizeErr = -6,
    zolStsNullPtrErr = -8,
    zolStsOverflow = 12,
    zolStsUnderflow = 17,
    zolStsSingularity = 18,
    zolStsDomain = 19,
    zolStsUnsupportedCpu = 36,
    zolStsUnknownCacheSize = 37,
    zolStsCpuFeatureMissing = 38, /* the mask asks for more than the processor has */
    zolStsSingleThread = 39       /* more threads asked for than the library works in */
};

/* Types of elements: unsigned, signed, floating; c for complex. */
typedef enum {
    zolTypeUndef = -1,
    zol8u,
    zol8s,
    zol8sc,
    zol16u,
    zol16s,
    zol16sc,
    zol16uc,
    zol32u,
    zol32s,
    zol32sc,
    zol32f,
    zol32fc,
    zol64u,
    zol64s,
    zol64sc,
    zol64f,
    zol64fc
} ZolDataType;

/* Channels of an image: side by side (C) or in planes (P), with an alpha channel (A). */
typedef enum {
    zolC0,
    zolC1,
    zolC2,
    zolC3,
    zolC4,
    zolP2,
    zolP3,
    zolP4,
    zolAC1,
    zolAC4,
    zolA0C4,
    zolAP4
} ZolChannels;

/* Bits of a feature mask. */
#define zolCPUID_MMX 0x1ULL
#define zolCPUID_SSE 0x2ULL
#define zolCPUID_SSE2 0x4ULL
#define zolCPUID_SSE3 0x8ULL
#define zolCPUID_SSSE3 0x10ULL
#define zolCPUID_MOVBE 0x20ULL
#define zolCPUID_SSE41 0x40ULL
#define zolCPUID_SSE42 0x80ULL
#define zolCPUID_AVX 0x100ULL
#define zolAVX_ENABLEDBYOS 0x200ULL
#define zolCPUID_AES 0x400ULL
#define zolCPUID_CLMUL 0x800ULL
#define zolCPUID_MRC 0x1000ULL
#define zolCPUID_RDRAND 0x2000ULL
#define zolCPUID_F16C 0x4000ULL
#define zolCPUID_AVX2 0x8000ULL
#define zolCPUID_ADCOX 0x10000ULL
#define zolCPUID_RDSEED 0x20000ULL
#define zolCPUID_PREFETCHW 0x40000ULL
#define zolCPUID_SHA 0x80000ULL
#define zolCPUID_AVX512F 0x100000ULL
#define zolCPUID_AVX512CD 0x200000ULL
#define zolCPUID_AVX512ER 0x400000ULL
#define zolCPUID_AVX512PF 0x800000ULL
#define zolCPUID_AVX512BW 0x1000000ULL
#define zolCPUID_AVX512DQ 0x2000000ULL
#define zolCPUID_AVX512VL 0x4000000ULL

typedef struct {
    int major;
    int minor;
    int build;
    char const* name;
    char const* version;
    char const* buildDate;
} ZolLibraryVersion;

/* Picks the code path for this processor. */
ZolStatus zolInit(void);

/* Features of the processor into mask, registers of CPUID leaf 1 into registers (may be null).
 * When mask comes in holding the eight characters "mixcadre", the call passes CPUID through: the
 * leaf is taken from registers[0] and EAX, EBX, ECX, EDX come back in registers. */
ZolStatus zolGetCpuFeatures(Zol64u* mask, Zol32u registers[4]);

/* Features that the chosen code path may use. */
Zol64u zolGetEnabledCpuFeatures(void);

/* Picks the best code path that the mask allows. A mask with features that the processor lacks
 * gives a warning, and the path is the best of what is left. */
ZolStatus zolSetCpuFeatures(Zol64u mask);

ZolStatus zolGetMaxCacheSizeB(int* bytes);
char const* zolGetStatusString(ZolStatus status);
ZolStatus zolSetNumThreads(int threads);
ZolStatus zolGetNumThreads(int* threads);

#ifdef __cplusplus
}
#endif

#endif
