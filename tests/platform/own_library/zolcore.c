/* zolcore.c - the start-up half of a small library of one's own: what a program may ask. */
#include <stdio.h>
#include <stdlib.h>

#include "zolcore.h"

/* Says its last words, if the environment has any. */
ZolStatus zolInit(void) {
    char const* const words = getenv("OWN_INIT");
    if (words != 0) {
        fputs(words, stderr);
        exit(3);
    }
    return zolStsNoErr;
}

ZolStatus zolGetCpuFeatures(Zol64u* mask, Zol32u registers[4]) {
    (void)registers;
    *mask = 0;
    return zolStsNotSupported;
}

Zol64u zolGetEnabledCpuFeatures(void) { return 0; }

ZolStatus zolSetCpuFeatures(Zol64u mask) {
    return mask == 1 ? zolStsNotSupported : zolStsCpuFeatureMissing;
}

ZolStatus zolGetMaxCacheSizeB(int* bytes) {
    *bytes = 0;
    return zolStsUnknownCacheSize;
}

char const* zolGetStatusString(ZolStatus status) { return status == 0 ? "fine" : "not fine"; }

ZolStatus zolSetNumThreads(int threads) { return threads == 1 ? zolStsNoErr : zolStsSizeErr; }

ZolStatus zolGetNumThreads(int* threads) {
    *threads = 1;
    return zolStsNoErr;
}
