// zolcore.cpp - start-up functions that do nothing.
#include "zolcore.h"

ZolStatus zolInit(void) { return zolStsNoErr; }
ZolStatus zolGetCpuFeatures(Zol64u* mask, Zol32u*) {
    *mask = 0;
    return zolStsNotSupported;
}
Zol64u zolGetEnabledCpuFeatures(void) { return 0; }
ZolStatus zolSetCpuFeatures(Zol64u) { return zolStsNoErr; }
ZolStatus zolGetMaxCacheSizeB(int* bytes) {
    *bytes = 0;
    return zolStsUnknownCacheSize;
}
char const* zolGetStatusString(ZolStatus) { return ""; }
ZolStatus zolSetNumThreads(int) { return zolStsNoErr; }
ZolStatus zolGetNumThreads(int* threads) {
    *threads = 1;
    return zolStsNoErr;
}
