// vtsrandom_test.cpp - the generator's sequence and the maps of its draws.
#include "vtsfixture.h"

using VtsRandom = VtsFixture;

TEST_F(VtsRandom, SequenceFromASeed) {
    for (unsigned const seed : {1U, 0U, 0x7fffffffU, 0x80000000U}) {
        MCG31m1Init(seed);
        EXPECT_EQ(iBrngMCG31m1(), 1U) << seed;
        EXPECT_EQ(iBrngMCG31m1(), 1132489760U);
        EXPECT_EQ(iBrngMCG31m1(), 826537482U);
    }
}

TEST_F(VtsRandom, UniformFills) {
    int codes[3] = {9, 9, 9};
    vtsiFillFixed(codes, 2, 5);
    EXPECT_EQ(codes[1] + codes[2], 5 + 9);
    constexpr double second = 1132489760.0 / 2147483647.0;
    float singles[4] = {9, 9, 9, 9};
    MCG31m1Init(1);
    vtssFillInterval(singles, 2, 3.0F, -5.0F); // downward
    EXPECT_EQ(singles[0], static_cast<float>(3.0 - 8.0 / 2147483647.0));
    EXPECT_EQ(singles[1], static_cast<float>(3.0 - 8.0 * second));
    EXPECT_EQ(singles[2], 9.0F);
    double doubles[2];
    MCG31m1Init(1);
    vtsUniformDouble(doubles, 2, -1.0, 1.0);
    EXPECT_EQ(doubles[1], -1.0 + 2.0 * second);
    // The span is a single: 1 - 2^-24 to 2^25 has another one in double.
    MCG31m1Init(1);
    vtssFillInterval(singles, 2, 0.99999994F, 33554432.0F);
    EXPECT_EQ(
        singles[1],
        static_cast<float>(0.99999994F + static_cast<double>(33554432.0F - 0.99999994F) * second));
}

TEST_F(VtsRandom, TheUniformFloatMapIsOfItsOwn) {
    // -1 + 2^31 * draw of 1: above 0 with the generator's modulus, below 0 with the odd divisor.
    float plain[1];
    float odd[1];
    MCG31m1Init(1);
    vtssFillInterval(plain, 1, -1.0F, 2147483648.0F);
    MCG31m1Init(1);
    vtsUniformFloat(odd, 1, -1.0F, 2147483648.0F);
    EXPECT_EQ(plain[0], static_cast<float>(-1.0 + 2147483648.0 / 2147483647.0));
    EXPECT_EQ(odd[0], static_cast<float>(-1.0 + 2147483648.0 / 2147483649.0));
    // The draw itself goes through single precision: 1132489760 becomes 1132489728.
    MCG31m1Init(1132489760);
    vtsUniformFloat(odd, 1, -1132489728.0F, 1014993921.0F);
    EXPECT_EQ(odd[0],
              static_cast<float>(-1132489728.0 + 2147483648.0 * (1132489728.0 / 2147483649.0)));
}
