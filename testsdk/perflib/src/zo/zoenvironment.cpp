// zoenvironment.cpp - ties the framework to the library that the program is linked with.
#include "zo/zoenvironment.h"

#include "ps/psregister.h"
#include "pscpu/pszolentry.h"
#include "zo/zosession.h"
#include "zolvm.h"

// Weak references: a library that lacks a function must not keep the program from loading.
#pragma weak zolInit
#pragma weak zolGetCpuFeatures
#pragma weak zolGetEnabledCpuFeatures
#pragma weak zolSetCpuFeatures
#pragma weak zolGetMaxCacheSizeB
#pragma weak zolGetStatusString
#pragma weak zolSetNumThreads
#pragma weak zolGetNumThreads
#pragma weak zolvmGetLibVersion

namespace {

[[maybe_unused]] int const b_zoSession = psRegSession(new zoSession);

template <typename Entry>
void setEntry(Entry& entry, Entry function) {
    if (function != nullptr) {
        entry = function;
    }
}

} // namespace

void zoSetZolEnvironment() {
    setEntry(zol_Init, zolInit);
    setEntry(zol_GetCpuFeatures, zolGetCpuFeatures);
    setEntry(zol_GetEnabledCpuFeatures, zolGetEnabledCpuFeatures);
    setEntry(zol_SetCpuFeatures, zolSetCpuFeatures);
    setEntry(zol_GetMaxCacheSizeB, zolGetMaxCacheSizeB);
    setEntry(zol_GetStatusString, zolGetStatusString);
    setEntry(zol_SetNumThreads, zolSetNumThreads);
    setEntry(zol_GetNumThreads, zolGetNumThreads);
}

ZolLibraryVersion const* zoGetZolVersion_zolvm() {
    static ZolLibraryVersion const unknown{0, 0, 0, "libzolvm", "unknown version", "unknown date"};
    // Through a variable: the compiler takes a function's own address for never null.
    ZolLibraryVersion const* (*const version)(void) = zolvmGetLibVersion;
    ZolLibraryVersion const* const told = version != nullptr ? version() : nullptr;
    return told != nullptr ? told : &unknown;
}
