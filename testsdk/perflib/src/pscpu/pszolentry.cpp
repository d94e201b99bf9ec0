// pszolentry.cpp - the entry points of the library, their replacements, and the lists
// of what the library told.
#include "pscpu/pszolentry.h"

#include "pscpu/cpucache.h"

ZolStatus (*zol_GetCpuFeatures)(Zol64u*, Zol32u[4]) = nullptr;
Zol64u (*zol_GetEnabledCpuFeatures)(void) = nullptr;
ZolStatus (*zol_GetMaxCacheSizeB)(int*) = nullptr;
char const* (*zol_GetStatusString)(ZolStatus) = nullptr;
ZolStatus (*zol_Init)(void) = nullptr;
ZolStatus (*zol_SetCpuFeatures)(Zol64u) = nullptr;
ZolStatus (*zol_SetNumThreads)(int) = nullptr;
ZolStatus (*zol_GetNumThreads)(int*) = nullptr;

constinit psStringList* g_pLibInfoList = nullptr;
constinit psStringList* g_pLibFuncList = nullptr;

namespace {

template <typename Entry>
void fill(Entry& entry, Entry replacement) {
    if (entry == nullptr) {
        entry = replacement;
    }
}

void append(psStringList*& list, psString const& text) {
    if (list == nullptr) {
        list = new psStringList;
    }
    list->insert(list->end(), text);
}

} // namespace

void psFillZolEntries() {
    fill(zol_GetCpuFeatures, s_zolGetCpuFeatures);
    fill(zol_GetEnabledCpuFeatures, s_zolGetEnabledCpuFeatures);
    fill(zol_GetMaxCacheSizeB, ps_zolGetMaxCacheSizeB);
    fill(zol_GetStatusString, s_zolGetStatusString);
    fill(zol_Init, s_zolInit);
    fill(zol_SetCpuFeatures, s_zolSetCpuFeatures);
    fill(zol_SetNumThreads, s_zolSetNumThreads);
    fill(zol_GetNumThreads, s_zolGetNumThreads);
}

ZolStatus s_zolGetCpuFeatures(Zol64u* /*mask*/, Zol32u[4] /*registers*/) {
    return zolStsNotSupported;
}

Zol64u s_zolGetEnabledCpuFeatures(void) { return 0; }

char const* s_zolGetStatusString(ZolStatus status) {
    if (status < 0) {
        return "Error";
    }
    return status > 0 ? "Warning" : "OK";
}

ZolStatus s_zolInit(void) { return zolStsNotSupported; }
ZolStatus s_zolSetCpuFeatures(Zol64u /*mask*/) { return zolStsNotSupported; }
ZolStatus s_zolSetNumThreads(int /*threads*/) { return zolStsNotSupported; }
ZolStatus s_zolGetNumThreads(int* /*threads*/) { return zolStsNotSupported; }

ZolStatus ps_zolGetMaxCacheSizeB(int* bytes) {
    static ZolStatus status = 1; // 1: not computed yet
    static int size = 0;
    if (status == 1) {
        status = zol_has_cpuid() ? makersCacheBytes(readCpuid, &size) : zolStsUnsupportedCpu;
    }
    *bytes = size;
    return status;
}

int psRegLibInfo(psString text) {
    if (g_pLibInfoList != nullptr) {
        for (psString const& line : *g_pLibInfoList) {
            if (line == text) {
                return 0;
            }
        }
    }
    append(g_pLibInfoList, text);
    return 1;
}

int psRegLibFunc(psString name) {
    if (name.empty()) {
        return 0;
    }
    append(g_pLibFuncList, name);
    return 1;
}
