/* zolvm.c - the measured half: three functions, and the version that a run's title shows. */
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include "zolvm.h"

ZolLibraryVersion const* zolvmGetLibVersion(void) {
    static ZolLibraryVersion const version = {1,      0, 0, "Own Vector Math", "1.0.0 of my own",
                                              "today"};
    return &version;
}

ZolStatus zolsAbs_32f_A24(Zol32f const* pSrc, Zol32f* pDst, int len) {
    int i;
    for (i = 0; i < len; ++i) {
        pDst[i] = pSrc[i] < 0.0f ? -pSrc[i] : pSrc[i];
    }
    return zolStsNoErr;
}

ZolStatus zolsSqr_64f_A53(Zol64f const* pSrc, Zol64f* pDst, int len) {
    int i;
    for (i = 0; i < len; ++i) {
        pDst[i] = pSrc[i] * pSrc[i];
    }
    return zolStsNoErr;
}

static char const* wanted;

/* What a call of this one does, the environment says: it returns at once, faults, or ends the
 * process. A process that called it and ends in order says so on request, and stays. */
ZolStatus zolsAbs_64f_A53(Zol64f const* pSrc, Zol64f* pDst, int len) {
    if (wanted == 0) {
        wanted = getenv("OWN_ABS");
        wanted = wanted != 0 ? wanted : "";
        usleep(*wanted == 'q' ? 200000 : 0);
    }
    (void)pSrc;
    (void)pDst;
    if (*wanted == 'f' && len == 64) {
        raise(SIGSEGV);
    }
    if (*wanted == 'e' && len == 64) {
        _exit(3);
    }
    return zolStsNoErr;
}

__attribute__((destructor)) static void sayEnd(void) {
    if (wanted != 0 && *wanted == 'q') {
        fputs("in order\n", stderr);
        pause();
    }
}
