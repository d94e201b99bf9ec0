// timzolvm_test.cpp - what a test prepares, how it steers the Length, and what it leaves.
#include <malloc.h>

#include <cstdint>
#include <vector>

#include "timing/timfixture.h"
#include "vts/vtsrandom.h"

namespace {

using TimZolVMTest = TimFixture;

std::vector<float> firstSources() {
    auto const* const values = static_cast<float const*>(pSrc);
    return {values, values + timLastLength};
}

} // namespace

TEST_F(TimZolVMTest, LengthsArePowersOfTwo) {
    auto test = make<TimReal32>("sAbs");
    for (int run = 0; run < 2; ++run) { // the second start begins anew
        ASSERT_TRUE(test.canStart());
        std::vector<int> lengths;
        while (test.canContinue()) {
            lengths.push_back(len);
            EXPECT_EQ(test.getDivisor(), lengths.back());
        }
        EXPECT_EQ(lengths,
                  (std::vector<int>{32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, 32768}));
        ASSERT_TRUE(test.canContinue());
        ASSERT_TRUE(test.canContinue());
    }
    test.parmsToOstrm();
    EXPECT_EQ(console(), "Length=64 ");
    EXPECT_STREQ(test.getUnit().c_str(), "e");
    StreamCapture const table(g_cstrm);
    test.funcToCstrm();
    test.parmsToCstrm();
    g_cstrm.lineOut(0);
    EXPECT_EQ(table.text(), "Test,32f,-,64\n");
}

TEST_F(TimZolVMTest, SourcesAreDrawnFromThePool) {
    auto test = make<TimReal64>("dAtan2_HA");
    ASSERT_TRUE(test.canStart());
    EXPECT_EQ(defData.n, 2002);
    // The generator starts with 1, fills both pools, and then picks from the first 1000 values.
    MCG31m1Init(1);
    std::vector<double> pools[2];
    for (std::vector<double>& pool : pools) {
        pool.resize(2002);
        vtsdFillInterval(pool.data(), 2002, -10000.0, 10000.0);
    }
    auto const draw = [] { return static_cast<size_t>(1000 * vtsDraw()); };
    for (int index = 0; index < timLastLength; ++index) {
        ASSERT_EQ(static_cast<double*>(pSrc)[index], pools[0][draw()]) << index;
        ASSERT_EQ(static_cast<double*>(pSrc2)[index], pools[1][draw()]) << index;
    }
}

TEST_F(TimZolVMTest, EqualIntervalsGiveEqualSources) {
    auto sine = make<TimReal32>("sSin_LA");
    ASSERT_TRUE(sine.canStart()); // n was 1001 before this and is 2002 from now on
    auto const first = firstSources();
    sine.flushStart();
    ASSERT_TRUE(sine.canStart());
    EXPECT_EQ(firstSources(), first);
    auto cosine = make<TimReal32>("sCos_LA");
    ASSERT_TRUE(cosine.canStart()); // without the flush, as after a signal
    EXPECT_EQ(firstSources(), first);
}

TEST_F(TimZolVMTest, ComplexSourcesHaveBothHalves) {
    auto test = make<TimComplexToReal64>("zAbs_EP");
    ASSERT_TRUE(test.canStart());
    auto const* const pool = static_cast<_KRV_Complex16 const*>(defData.arg1);
    MCG31m1Init(1);
    for (int i = 0; i < 2 * 2002; ++i) {
        iBrngMCG31m1();
    }
    int const i = static_cast<int>(1000 * vtsDraw());
    EXPECT_EQ(static_cast<_KRV_Complex16 const*>(pSrc)[0].re, pool[i].re);
    EXPECT_EQ(static_cast<_KRV_Complex16 const*>(pSrc)[0].im, pool[i].im);
    EXPECT_EQ(xA, nullptr); // scalars are for real tests
}

TEST_F(TimZolVMTest, VectorsHaveTheirSizesAndGo) {
    auto test = make<TimRealToComplex32>("cCIS_LA");
    size_t const mappings = mallinfo2().hblks;
    ASSERT_TRUE(test.canStart());
    auto const holds = [](void* vector, size_t size) {
        return malloc_usable_size(vector) >= size && malloc_usable_size(vector) < size + 0x2000;
    };
    EXPECT_TRUE(holds(pSrc2O, 0x101000));
    EXPECT_TRUE(holds(pDst2O, 0x202000));
    EXPECT_TRUE(holds(xD, 0x404));
    for (void* const view : {pSrc, pSrc2, pDst, pDst2, x_A, x_D}) {
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(view) % 16, 0U);
    }
    test.flushStart();
    for (void* const pointer : {pSrcO, pSrc2O, pDstO, pDst2O, pSrc, pSrc2, pDst, pDst2, xA, x_D,
                                defData.block1, defData.arg1}) {
        EXPECT_EQ(pointer, nullptr);
    }
    EXPECT_EQ(mallinfo2().hblks, mappings);
}

TEST_F(TimZolVMTest, NoStartWithoutRowOrFunction) {
    auto test = make<TimReal32>("sNope_HA");
    EXPECT_FALSE(test.canStart());
    EXPECT_EQ(pSrcO, nullptr);
    test.flushStart(); // follows all the same
    defFunc[vtsFindFunc("sSin_HA")].func = nullptr;
    EXPECT_FALSE(make<TimReal32>("sSin_HA").canStart());
    EXPECT_EQ(console(), "Cannot find inc file for function: sNope_HA"
                         "-- Function zolsTest_32f is missing in the library\n");
}

#ifndef __SANITIZE_ADDRESS__ // which ends the process instead
TEST_F(TimZolVMTest, MissingMemoryIsTold) {
    class Greedy : public TimReal32 {
    public:
        using TimReal32::TimReal32;
        bool start(size_t source, size_t result, size_t scalar) {
            return allocateAll(source, result, scalar);
        }
    };
    auto test = make<Greedy>("sAbs");
    testing::internal::CaptureStdout();
    constexpr size_t much = 1ULL << 40U;
    EXPECT_FALSE(test.start(much, 4, 4) || test.start(4, much, 0) || test.start(4, 4, much << 20U));
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Malloc failed!\nMalloc failed!\nMalloc failed!\n");
}
#endif
