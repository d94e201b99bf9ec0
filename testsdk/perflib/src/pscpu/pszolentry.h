// pszolentry.h - the library's entry points as the framework calls them, with the
// replacements of a build without the library, and what the library tells of itself.
#ifndef PSCPU_PSZOLENTRY_H
#define PSCPU_PSZOLENTRY_H

#include "psbase/psstring.h"
#include "zolcore.h"

// Null until psFillZolEntries or the environment function of a test module sets them.
extern ZolStatus (*zol_GetCpuFeatures)(Zol64u* mask, Zol32u registers[4]);
extern Zol64u (*zol_GetEnabledCpuFeatures)(void);
extern ZolStatus (*zol_GetMaxCacheSizeB)(int* bytes);
extern char const* (*zol_GetStatusString)(ZolStatus status);
extern ZolStatus (*zol_Init)(void);
extern ZolStatus (*zol_SetCpuFeatures)(Zol64u mask);
extern ZolStatus (*zol_SetNumThreads)(int threads);
extern ZolStatus (*zol_GetNumThreads)(int* threads);

// Gives each entry point that is still null its replacement.
void psFillZolEntries();

// The replacements. -2 stands for what this build cannot do.
ZolStatus s_zolGetCpuFeatures(Zol64u* mask, Zol32u registers[4]);
Zol64u s_zolGetEnabledCpuFeatures(void);
char const* s_zolGetStatusString(ZolStatus status);
ZolStatus s_zolInit(void);
ZolStatus s_zolSetCpuFeatures(Zol64u mask);
ZolStatus s_zolSetNumThreads(int threads);
ZolStatus s_zolGetNumThreads(int* threads);

// Size of the largest data cache of a processor of the maker, by CPUID, found once. 0, or 36 for
// another processor, 37 when no cache is told; the size is 0 then.
ZolStatus ps_zolGetMaxCacheSizeB(int* bytes);

extern psStringList* g_pLibInfoList; // lines of the report title; made at first use
extern psStringList* g_pLibFuncList; // the library's functions; made at first use
int psRegLibInfo(psString text);     // 1 if added, 0 if it was there
int psRegLibFunc(psString name);     // 0 for an empty name, else added and 1

#endif
