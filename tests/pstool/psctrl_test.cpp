// psctrl_test.cpp - names of control and status words, default modes, recorded flags.
#include "pstool/psctrl.h"

#include <algorithm>
#include <memory>

#include "pstool/scriptedtiming.h"
#include "support/messagecapture.h"

using PsCtrl = ScriptedTiming;

TEST_F(PsCtrl, WordsAreNamedByTheirTables) {
    std::pair<unsigned, char const*> const
        control87[] = {{0x23b, "Near 53 Invalid Denormal Overflow Underflow Inexact "},
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
        EXPECT_STREQ(ts87Base::strCW(control87[i].first).c_str(), control87[i].second);
        EXPECT_STREQ(ssx.strCW(controlSSX[i].first).c_str(), controlSSX[i].second);
        EXPECT_STREQ(ts87Base::strSW(status[i].first).c_str(), status[i].second);
        EXPECT_STREQ(ssx.strExceptionState(status[i].first).c_str(), status[i].second);
    }
    tsSSXBase none(false); // a processor without the unit
    none.set(0x6000, 0x6000);
    EXPECT_EQ(ps_get_ssx() & 0x6000U, 0U);
    EXPECT_EQ(none.get(), 0U);
    EXPECT_STREQ((none.strCW(0x1f80) + none.strExceptionState(1)).c_str(),
                 "cpu has not SSX extensioncpu has not SSX extension");
}

TEST_F(PsCtrl, InitAndTheEndOfARecordLoadTheDefaultModes) {
    for (unsigned denormalsAreZero : {0U, 0x40U}) {
        auto x87 = std::make_unique<ps87>();
        auto ssx = std::make_unique<psSSX>();
        raiseInvalidSSX();
        ps_set_cw_fpu(0xc7f, 0xf3f);
        ps_set_ssx(0x7f80 | denormalsAreZero, 0xffc0);
        if (denormalsAreZero == 0) {
            psInitCtrlStatus();
        } else {
            x87.reset();
            ssx.reset();
        }
        EXPECT_EQ(ps_get_cw_fpu() & 0xf3fU, 0x23bU);
        EXPECT_EQ(ps_get_ssx(), 0x9f80U | denormalsAreZero);
    }
}

TEST_F(PsCtrl, ExceptionsAreMaskedAsAsked) {
    ts87Base x87;
    tsSSXBase ssx;
    unsigned masks[8]; // judged at the end, when no exception can be raised by it
    auto note = [&masks, i = 0]() mutable {
        masks[i++] = ps_get_cw_fpu() & 0x3fU;
        masks[i++] = ps_get_ssx() & 0x1f80U;
    };
    x87.enableExceptions();
    ssx.enableExceptions();
    note();
    x87.disableExceptions();
    ssx.disableInexactException();
    note();
    ssx.disableExceptions();
    raiseInvalid87();
    x87.disableInexactException(); // what has happened stays masked
    note();
    is_W_flagUsed = true; // the first of the two still loads the default
    psInitCtrlStatus();
    EXPECT_EQ(ps_get_cw_fpu() & 0x3fU, 0x3bU);
    psInitCtrlStatus();
    note();
    is_W_flagUsed = false;
    ts87Base::Exception = 0x3b;
    tsSSXBase::Exception = 0x1f80;
    psInitCtrlStatus();
    unsigned const wanted[] = {0, 0, 0x3f, 0x1000, 0x21, 0x1f80, 0x20, 0x1000};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(masks[i], wanted[i]) << i;
    }
}

TEST_F(PsCtrl, NoVectorRegisterKeepsItsValue) {
    unsigned long long registers[32] = {};
    ps_destroy_ssx();
    asm volatile(".irp n,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15\n\t"
                 "movdqu %%xmm\\n, 16*\\n(%0)\n\t"
                 ".endr"
                 :
                 : "r"(registers)
                 : "memory");
    EXPECT_EQ(std::count(registers, registers + 32, ~0ULL), 32);
    if (__builtin_cpu_supports("avx")) { // no upper half that slows down what follows
        asm volatile("vcmptrueps %%ymm15, %%ymm15, %%ymm15" : : : "xmm15");
        ps_destroy_ssx();
        asm volatile("vextractf128 $1, %%ymm15, (%0)" : : "r"(registers) : "memory");
        EXPECT_EQ(registers[0] | registers[1], 0U);
    }
}

TEST_F(PsCtrl, CopiesKeepTheRecord) {
    auto const check = []<typename Unit>(Unit unit, void (*raiseInvalid)(), unsigned (*modes)()) {
        raiseInvalid();
        unit.stop();
        Unit copy(unit);
        Unit assigned;
        ps_set_cw_fpu(0x800, 0xc00);
        ps_set_ssx(0x4000, 0x6000);
        assigned = unit;
        EXPECT_EQ(modes(), 0U) << "default modes again";
        for (Unit* const each : {&copy, &assigned}) {
            EXPECT_TRUE(each->badStatus());
            EXPECT_STREQ(each->strCW().c_str(), unit.strCW().c_str());
        }
    };
    check(ps87(), raiseInvalid87, [] { return ps_get_cw_fpu() & 0xc00U; });
    check(psSSX(), raiseInvalidSSX, [] { return ps_get_ssx() & 0x6000U; });
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
    psClearCtrlStatus();
    EXPECT_EQ(g_ctrl87.getCW() + g_ctrl87.getSW() + (ps_get_sw_fpu() & 0x3fU), 0U);
}

TEST_F(PsCtrl, TheSSERecordShowsAllSinceInit) {
    raiseInvalidSSX();
    g_ssx.start(); // leaves the flags
    g_ssx.stop();
    EXPECT_TRUE(g_ssx.badStatus());
    double left = 0.0;
    asm volatile("xorps %%xmm15, %%xmm15" : : : "xmm15");
    psClearCtrlStatus();
    asm volatile("movsd %%xmm15, %0" : "=m"(left)); // destroyed, as before each measurement
    EXPECT_NE(left, 0.0);
    EXPECT_EQ(g_ssx.get(), 0U);
    EXPECT_EQ(ps_get_ssx() & 0x3fU, 0U);
}

TEST_F(PsCtrl, BadStatusIsToldUnitByUnit) {
    bool bad87 = false, badSSX = true;
    raiseInvalid87();
    g_ctrl87.stop();
    EXPECT_TRUE(psBadCtrlStatus(bad87, badSSX));
    EXPECT_TRUE(bad87 && !badSSX);
    MessageCapture messages(MSG_WARN);
    psPrintCtrlStatus(true, false);
    psPrintCtrlStatus(false, true);
    EXPECT_EQ(messages.text(), "-- Status    87: ?Invalid \n-- Status    SSX: Ok\n");
}
