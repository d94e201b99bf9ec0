// pszolentry_test.cpp - what runs in place of a missing library, and what a library told.
#include "pscpu/pszolentry.h"

#include <gtest/gtest.h>

#include "pscpu/cpucache.h"

namespace {

ZolStatus ownInit() { return 5; }

} // namespace

TEST(PsZolEntry, ReplacementsFillOnlyWhatIsMissing) {
    zol_Init = ownInit;
    psFillZolEntries();
    EXPECT_EQ(zol_Init(), 5);
    EXPECT_EQ(s_zolInit(), -2);
    Zol64u mask = 0;
    EXPECT_EQ(zol_GetCpuFeatures(&mask, nullptr), -2);
    EXPECT_EQ(zol_SetCpuFeatures(1) + zol_SetNumThreads(1) + zol_GetNumThreads(nullptr), -6);
    EXPECT_STREQ(zol_GetStatusString(1), "Warning");
    EXPECT_STREQ(zol_GetStatusString(-1), "Error");
    EXPECT_STREQ(zol_GetStatusString(0), "OK");
    EXPECT_EQ(zol_GetEnabledCpuFeatures(), 0U);
    int wanted = -1;
    ZolStatus const status = makersCacheBytes(readCpuid, &wanted);
    for (int call = 0; call < 2; ++call) { // computed, then kept
        int bytes = -1;
        EXPECT_EQ(zol_GetMaxCacheSizeB(&bytes), status);
        EXPECT_EQ(bytes, wanted);
    }
    zol_GetCpuFeatures = nullptr; // as the other tests expect them
    zol_GetMaxCacheSizeB = nullptr;
    zol_Init = nullptr;
}

TEST(PsZolEntry, LibraryLinesAreKeptOnceAndFunctionsAlways) {
    EXPECT_EQ(psRegLibInfo("zolvm, 1.0"), 1);
    EXPECT_EQ(psRegLibInfo("zolvm, 1.0"), 0);
    EXPECT_EQ(g_pLibInfoList->size(), 1);
    EXPECT_EQ(psRegLibFunc(""), 0);
    EXPECT_EQ(g_pLibFuncList, nullptr);
    EXPECT_EQ(psRegLibFunc("zolsAbs_32f_A24") + psRegLibFunc("zolsAbs_32f_A24"), 2);
    EXPECT_EQ(g_pLibFuncList->size(), 2);
}
