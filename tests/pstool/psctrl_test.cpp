// psctrl_test.cpp - names of control and status words, default modes, recorded flags.
#include "pstool/psctrl.h"

#include <cstring>
#include <gtest/gtest.h>

#include "psmemory/messagecapture.h"
#include "pstool/scriptedtiming.h"

namespace {

using PsCtrl = ScriptedTiming;

} // namespace

TEST_F(PsCtrl, WordsAreNamedByTheirTables) {
    struct {
        unsigned value;
        char const* text;
    } const control87[] = {{0x23b, "Near 53 Invalid Denormal Overflow Underflow Inexact "},
                           {0xf04, "Zero 64 Zerodivide "},
                           {0x800, "Up 24 "},
                           {0x500, "Down "}}, // a precision without a name
        controlSSX[] = {{0x9f80, "Near Invalid Denormal Zerodivide Overflow Underflow Inexact "
                                 "FlushToZero "},
                        {0x6000, "Zero NoFlushToZero "},
                        {0xc0ff, "Up Invalid FlushToZero "},
                        {0x3000, "Down Inexact NoFlushToZero "}},
            status[] = {{0xffc0, "Ok"},
                        {0x20, "_Inexact "},
                        {0x21, "?Invalid _Inexact "},
                        {0x1e, "?Denormal ?Zerodivide ?Overflow ?Underflow "}};
    tsSSXBase const ssx(true);
    for (int i = 0; i < 4; ++i) {
        EXPECT_STREQ(ts87Base::strCW(control87[i].value).c_str(), control87[i].text);
        EXPECT_STREQ(ssx.strCW(controlSSX[i].value).c_str(), controlSSX[i].text);
        EXPECT_STREQ(ts87Base::strSW(status[i].value).c_str(), status[i].text);
        EXPECT_STREQ(ssx.strExceptionState(status[i].value).c_str(), status[i].text);
    }
}

TEST_F(PsCtrl, WithoutSSENothingIsTouched) {
    unsigned const before = ps_get_ssx();
    tsSSXBase none(false);
    none.set(0x6000, 0x6000);
    none.setDefault();
    EXPECT_EQ(ps_get_ssx(), before);
    EXPECT_EQ(none.get(), 0U);
    EXPECT_STREQ(none.strCW(0x1f80).c_str(), "cpu has not SSX extension");
    EXPECT_STREQ(none.strExceptionState(1).c_str(), "cpu has not SSX extension");
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

TEST_F(PsCtrl, UnmaskingWaitsForTheNextInit) {
    is_W_flagUsed = true;
    for (unsigned masked : {0x1f80U, 0x1000U}) {
        psInitCtrlStatus();
        unsigned const cw = ps_get_cw_fpu();
        unsigned const mxcsr = ps_get_ssx();
        ps_set_cw_fpu(0x3f, 0x3f); // before anything computes
        ps_set_ssx(0x1f80, 0x1f80);
        EXPECT_EQ(cw & 0x3fU, masked == 0x1000 ? 0x20U : 0x3bU);
        EXPECT_EQ(mxcsr & 0x1f80U, masked);
    }
}

TEST_F(PsCtrl, InexactJoinsWhatEachUnitMasks) {
    ts87Base base87;
    raiseInvalid87();
    base87.disableInexactException(); // from the raised flags
    unsigned const cw = ps_get_cw_fpu();
    base87.clear();
    base87.disableExceptions();
    EXPECT_EQ(cw & 0x3fU, 0x21U);

    tsSSXBase ssx(true);
    ssx.enableExceptions();
    ssx.disableInexactException();
    unsigned const masked = ps_get_ssx();
    ssx.disableExceptions();
    EXPECT_EQ(masked & 0x1f80U, 0x1000U);
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
    EXPECT_TRUE(g_ctrl87.badStatus());
    EXPECT_EQ(g_ctrl87.getCW() & 0xf3fU, 0x23bU);
    ps87 copy(g_ctrl87);
    EXPECT_TRUE(copy.badStatus());
    copy = ps87();
    EXPECT_FALSE(copy.badStatus());
    g_ctrl87.clear();
    EXPECT_EQ(g_ctrl87.getCW() | g_ctrl87.getSW(), 0U);
}

TEST_F(PsCtrl, TheSSERecordShowsAllSinceInit) {
    raiseInvalidSSX();
    g_ssx.start(); // leaves the flags
    g_ssx.stop();
    EXPECT_TRUE(g_ssx.badStatus());
    psSSX const copy(g_ssx); // has loaded the modes anew and copied the record
    EXPECT_TRUE(copy.badStatus());
    EXPECT_EQ(ps_get_ssx() & 0x3fU, 0U);
    raiseInvalidSSX();
    g_ssx.clear();
    EXPECT_EQ(g_ssx.get(), 0U);
    EXPECT_EQ(ps_get_ssx() & 0x3fU, 0U);
}

TEST_F(PsCtrl, BadStatusIsToldUnitByUnit) {
    bool bad87 = true;
    bool badSSX = true;
    EXPECT_FALSE(psBadCtrlStatus(bad87, badSSX));
    EXPECT_FALSE(bad87 || badSSX);
    raiseInvalid87();
    g_ctrl87.stop();
    EXPECT_TRUE(psBadCtrlStatus(bad87, badSSX));
    EXPECT_TRUE(bad87 && !badSSX);
    MessageCapture messages(MSG_WARN);
    psPrintCtrlStatus(true, false);
    psPrintCtrlStatus(false, true);
    EXPECT_EQ(messages.text(), "-- Status    87: ?Invalid \n-- Status    SSX: Ok\n");
}

TEST_F(PsCtrl, DestroyFillsRegistersAndRaisesNothing) {
    unsigned char last[16] = {};
    unsigned char ones[16];
    std::memset(ones, 0xff, sizeof ones);
    unsigned const before = ps_get_ssx();
    asm volatile("movq %0, %%xmm0" : : "r"(0x7ff0000000000001ULL) : "xmm0"); // a signalling NaN
    ps_destroy_ssx();
    asm volatile("movups %%xmm15, %0" : "=m"(last));
    EXPECT_EQ(std::memcmp(last, ones, sizeof ones), 0);
    EXPECT_EQ(ps_get_ssx(), before);
}
