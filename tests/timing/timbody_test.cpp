// timbody_test.cpp - the measured body, with rows that hold functions of the test.
#include <vector>

#include "pstool/psctrl.h"
#include "timing/timfixture.h"

namespace {

// What the fake functions have seen.
struct Calls {
    std::vector<void const*> arguments; // of the last call
    std::vector<int> lengths;           // of every call
    std::vector<bool> clear;            // the status before each call of unary
};
Calls calls;

ZolStatus unary(float const* source, float* destination, int length) {
    calls.arguments = {source, destination};
    calls.lengths.push_back(length);
    calls.clear.push_back((ps_get_ssx() & 0x603fU) == 0);
    ps_set_ssx(0x2001, 0x6001); // a rounding mode and a flag left behind
    return zolStsNullPtrErr;    // nobody looks at it
}

ZolStatus ternary(float const* first, float* second, float* third, int length) {
    calls.arguments = {first, second, third};
    calls.lengths.push_back(length);
    return zolStsNoErr;
}

// Doubles the Length, and hands the row over to unary.
ZolStatus changing(float const*, float*, int length) {
    calls.lengths.push_back(length);
    len.setValue(2 * length);
    defFunc[0].func = reinterpret_cast<vtsFunc>(unary);
    return zolStsNoErr;
}

class TimBody : public TimFixture {
protected:
    TimBody() {
        calls = Calls();
        len.init(timFirstLength, timLastLength, 2, StepMul, "Length");
        len.firstValue();
        timAllocVectors(sizeof(float), sizeof(float));
        timAlignVectors();
    }

    template <typename Function>
    static psResult run(char const* tag, Function* function, int loops) {
        defFunc[0].text = tag;
        defFunc[0].func = reinterpret_cast<vtsFunc>(function);
        tool.m_numClocks = -1;
        return TimReal32::body(tool, loops, tag, "zolsTest_32f");
    }

    static inline psTool tool;
};

} // namespace

TEST_F(TimBody, SixteenCallsToWarmUpThenTheLoops) {
    ps_set_ssx(0x2001, 0x6001);
    unsigned long long const before = psCpuTicker::rdtsc();
    EXPECT_EQ(run("sTest", unary, 5), psResOk);
    EXPECT_LT(tool.m_numClocks, psCpuTicker::rdtsc() - before);
    EXPECT_EQ(calls.lengths, std::vector<int>(16 + 5, 32));
    EXPECT_EQ(calls.arguments, (std::vector<void const*>{pSrc, pDst}));
    EXPECT_GT(tool.m_numClocks, 0);
    // The status is cleared before, between and behind the calls.
    std::vector<bool> clear(16 + 5, false);
    clear[0] = clear[16] = true;
    EXPECT_EQ(calls.clear, clear);
    EXPECT_EQ(ps_get_ssx() & 0x603fU, 0U);
    EXPECT_EQ(console(), "");
    EXPECT_EQ(run("sTest", unary, 0), psResOk);
    EXPECT_EQ(calls.lengths.size(), 16U + 5 + 16);
}

TEST_F(TimBody, TheShapeFollowsFromTheTag) {
    EXPECT_EQ(run("sAdd", ternary, 1), psResOk);
    EXPECT_EQ(calls.arguments, (std::vector<void const*>{pSrc, pSrc2, pDst}));
    EXPECT_EQ(run("sSinCos_HA", ternary, 1), psResOk);
    EXPECT_EQ(calls.arguments, (std::vector<void const*>{pSrc, pDst, pDst2}));
    for (char const* const tag : {"sLinearFrac_HA", "qTest"}) { // empty loops, no shape at all
        EXPECT_EQ(run(tag, unary, 1), psResOk);
        EXPECT_EQ(calls.lengths.size(), 2U * 17) << tag;
    }
}

TEST_F(TimBody, FunctionAndLengthAreReadAnewInEveryRound) {
    EXPECT_EQ(run("sTest", changing, 1), psResOk);
    ASSERT_EQ(calls.lengths.size(), 17U);
    EXPECT_EQ(calls.lengths[0], 32);
    EXPECT_EQ(calls.lengths[1], 64);
    EXPECT_EQ(calls.arguments.size(), 2U); // by unary
}

TEST_F(TimBody, NoRowIsAFailure) {
    EXPECT_EQ(TimReal32::body(tool, 1, "sNope", "zolsTest_32f"), psResFail);
    EXPECT_EQ(console(), "Cannot find inc file for function: sNope");
}
