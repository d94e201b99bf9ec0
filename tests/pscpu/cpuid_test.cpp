// cpuid_test.cpp - the fields of recorded registers, and leaves that do not exist.
#include "pscpu/cpuid.h"

#include <cpuid.h>
#include <gtest/gtest.h>

TEST(Cpuid, CutsFieldsAtTheirBits) {
    CPUID const leaf1(0x000306A9U, 0x05100800U, 0xFFBAE3FFU, 0xBFEBFBFFU);
    EXPECT_EQ(leaf1.getBits(0, 27, 20) + leaf1.getBits(0, 11, 8), 6U);        // family
    EXPECT_EQ((leaf1.getBits(0, 19, 16) << 4) + leaf1.getBits(0, 7, 4), 58U); // model
    EXPECT_EQ(leaf1.getBits(0, 3, 0), 9U);                                    // stepping
    EXPECT_EQ(leaf1.getBits(1, 31, 0), 0x05100800U);
    EXPECT_EQ(leaf1.getByte(1, 2), 0x10U);
    EXPECT_EQ(leaf1.getBit(2, 28), 1U);
    EXPECT_EQ(leaf1.getBit(2, 22), 0U);
}

TEST(Cpuid, RegistersAreSavedWhereTheSystemTurnedXgetbvOn) {
    unsigned leaf1[4];
    zol_get_cpuid(1, 0, leaf1);
    EXPECT_EQ(zol_get_xcr0() & 1U, leaf1[2] >> 27 & 1U); // x87's, always among them
}

TEST(Cpuid, LeavesBeyondTheLargestReadAsZeros) {
    ASSERT_TRUE(zol_has_cpuid());
    EXPECT_EQ(CPUID::largestFunction(), __get_cpuid_max(0, nullptr));
    for (unsigned leaf : {CPUID::largestFunction(), CPUID::largestExFunction()}) {
        EXPECT_TRUE(CPUID::validFunction(leaf));
        EXPECT_FALSE(CPUID::validFunction(leaf + 1));
        CPUID const beyond(leaf + 1);
        EXPECT_EQ(beyond.reg(0) | beyond.reg(1) | beyond.reg(2) | beyond.reg(3), 0U);
    }
}
