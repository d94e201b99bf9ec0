// psctrl_test.cpp - names of control and status words, default modes, recorded flags.
#include "pstool/psctrl.h"

#include <gtest/gtest.h>

#include "pstool/scriptedtiming.h"
#include "support/messagecapture.h"

using PsCtrl = ScriptedTiming;

TEST_F(PsCtrl, WordsAreNamedByTheirTables) {
    struct {
        unsigned value;
        char const* text;
    } const control87[] = {{0x23b, "Near 53 Invalid Denormal Overflow Underflow Inexact "},
                           {0xf04, "Zero 64 Zerodivide "},
                           {0x500, "Down "}}, // a precision without a name
        controlSSX[] = {{0x9f80, "Near Invalid Denormal Zerodivide Overflow Underflow Inexact "
                                 "FlushToZero "},
                        {0xc0ff, "Up Invalid FlushToZero "},
                        {0x3000, "Down Inexact NoFlushToZero "}},
            status[] = {{0xffc0, "Ok"},
                        {0x21, "?Invalid _Inexact "},
                        {0x1e, "?Denormal ?Zerodivide ?Overflow ?Underflow "}};
    tsSSXBase const ssx(true);
    for (int i = 0; i < 3; ++i) {
        EXPECT_STREQ(ts87Base::strCW(control87[i].value).c_str(), control87[i].text);
        EXPECT_STREQ(ssx.strCW(controlSSX[i].value).c_str(), controlSSX[i].text);
        EXPECT_STREQ(ts87Base::strSW(status[i].value).c_str(), status[i].text);
        EXPECT_STREQ(ssx.strExceptionState(status[i].value).c_str(), status[i].text);
    }
}

TEST_F(PsCtrl, InitLoadsTheDefaultModes) {
    for (unsigned denormalsAreZero : {0U, 0x40U}) {
        raiseInvalidSSX();
        ps_set_cw_fpu(0xc7f, 0xf3f);
        ps_set_ssx(0x7f80 | denormalsAreZero, 0xffc0);
        psInitCtrlStatus();
        EXPECT_EQ(ps_get_cw_fpu() & 0xf3fU, 0x23bU);
        EXPECT_EQ(ps_get_ssx(), 0x9f80U | denormalsAreZero);
    }
}

TEST_F(PsCtrl, TheX87RecordAddsUpBatches) {
    raiseInvalid87();
    g_ctrl87.start(); // not to be blamed on the batch
    g_ctrl87.stop();
    EXPECT_FALSE(g_ctrl87.badStatus());
    raiseInvalid87();
    g_ctrl87.stop();
    g_ctrl87.start(); // the record stays
    g_ctrl87.stop();
    EXPECT_STREQ(g_ctrl87.strSW().c_str(), "?Invalid ");
    EXPECT_EQ(g_ctrl87.getCW() & 0xf3fU, 0x23bU);
}

TEST_F(PsCtrl, TheSSERecordShowsAllSinceInit) {
    raiseInvalidSSX();
    g_ssx.start(); // leaves the flags
    g_ssx.stop();
    EXPECT_TRUE(g_ssx.badStatus());
    g_ssx.clear();
    EXPECT_EQ(g_ssx.get(), 0U);
    EXPECT_EQ(ps_get_ssx() & 0x3fU, 0U);
}

TEST_F(PsCtrl, BadStatusIsToldUnitByUnit) {
    bool bad87 = false;
    bool badSSX = true;
    raiseInvalid87();
    g_ctrl87.stop();
    EXPECT_TRUE(psBadCtrlStatus(bad87, badSSX));
    EXPECT_TRUE(bad87 && !badSSX);
    MessageCapture messages(MSG_WARN);
    psPrintCtrlStatus(true, false);
    psPrintCtrlStatus(false, true);
    EXPECT_EQ(messages.text(), "-- Status    87: ?Invalid \n-- Status    SSX: Ok\n");
}
