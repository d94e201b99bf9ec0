// vtsstatus_test.cpp - the print routine and its streams, and the floating-point status.
#include "pstool/psctrl.h"

#include "vtsfixture.h"

using VtsStatus = VtsFixture;

TEST_F(VtsStatus, ConsoleShowsTheStreamsOfItsMask) {
    testing::internal::CaptureStdout();
    vtsPrintConsole(vtsStreamLstTxt, "shown");
    vtsPrintConsole(vtsStreamErrTxt, "hidden");
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "shown");
    EXPECT_EQ(GetStream("_csv"), 1); // the first name with this part
    EXPECT_EQ(GetStream("BWR_TXT"), 16384);
    EXPECT_EQ(GetStream("Lst"), -1);
    EXPECT_EQ(GetStream(""), -1);
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
