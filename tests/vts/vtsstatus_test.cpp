// vtsstatus_test.cpp - the print routine and its streams, and the floating-point status.
#include <algorithm>

#include "pstool/psctrl.h"

#include "vtsfixture.h"

using VtsStatus = VtsFixture;

TEST_F(VtsStatus, ConsoleShowsTheStreamsOfItsMask) {
    testing::internal::CaptureStdout();
    vtsPrintConsole(vtsStreamLstTxt, "shown");
    vtsPrintConsole(vtsStreamErrTxt, "hidden");
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "shown");
    std::string streams;
    for (char const* word : {"SUM_TXT", "LST_TXT", "PER_TXT", "ACC_TXT", "ERR_TXT", "SVS_TXT",
                             "SUM_CSV", "LST_CSV", "PER_CSV", "ACC_CSV", "ERR_CSV", "SVS_CSV",
                             "PFG_CSV", "BWR_CSV", "BWR_TXT", "", "Lst", "_csv"}) {
        std::string small = word;
        std::transform(small.begin(), small.end(), small.begin(), tolower);
        EXPECT_EQ(GetStream(small.c_str()), small == "lst" ? 8 : GetStream(word));
        streams += std::to_string(GetStream(word)) + " ";
    }
    // The last: the first name with this part.
    EXPECT_EQ(streams, "2 8 128 512 32 2048 1 4 64 256 16 1024 4096 8192 16384 -1 -1 1 ");
    for (char const* name : pcTestNames) {
        streams += name + std::string(" ");
    }
    EXPECT_TRUE(streams.ends_with(
        " 1 Badargs Unalign Inplace Unrolling Safety Threads Special Accuracy Timing "));
}

TEST_F(VtsStatus, FlagsHaveLettersAndAreCleared) {
    char fpu[vtsNameSize];
    char xmm[vtsNameSize];
    int fpuStatus = 0;
    int xmmStatus = 0;
    ps_set_ssx(0x20 | 0x8 | 0x2, 0x3f);
    vtsGetStatusString(fpu, xmm, &fpuStatus, &xmmStatus);
    EXPECT_STREQ(fpu, "iuozvd");
    EXPECT_STREQ(xmm, "IuOzvD");
    EXPECT_EQ(xmmStatus & 0x3f, 0x2a);
    ps_set_ssx(0x2000, 0x6000); // another rounding, which has to go too
    vtsClearStatus();
    EXPECT_EQ(vtsGetXMMStatus() & 0x603f, 0);
    EXPECT_EQ(vtsGetFPUStatus() & 0x3f, 0);
}
