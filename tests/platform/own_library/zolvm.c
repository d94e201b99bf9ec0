/* zolvm.c - the measured half: two functions, and the version that a run's title shows. */
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
