// zovector_test.cpp - typed vectors: fills, limits, texts, copies.
#include "zo/zovector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "psmemory/messagecapture.h"
#include "psmemory/psmemory.h"
#include "pstest/pstest.h"

namespace {

using Values = std::vector<double>;

// Of each type: its limits, its size, and the field of an element of -1 or, if complex, (-1, 2).
struct {
    zoType type;
    double low;
    double high;
    int bytes;
    char const* field;
} const types[] = {
    {zo8u, 0, 255, 1, "   0"},
    {zo8s, -128, 127, 1, "   -1"},
    {zo8sc, -128, 127, 2, " (   -1,    2)"},
    {zo16u, 0, 65535, 2, "     0"},
    {zo16s, -32768, 32767, 2, "     -1"},
    {zo16sc, -32768, 32767, 4, " (     -1,      2)"},
    {zo16uc, 0, 65535, 4, " (     0,     2)"},
    {zo32u, 0, 4294967295.0, 4, "          0"},
    {zo32s, -0x1p31, 0x7FFFFFFF, 4, "          -1"},
    {zo32sc, -0x1p31, 0x7FFFFFFF, 8, " (          -1,           2)"},
    {zo64u, 0, 0x1p64, 8, "                       0"},
    {zo64s, -0x1p63, 0x1p63, 8, "                      -1"},
    {zo64sc, -0x1p63, 0x1p63, 16, " (                      -1,                       2)"},
    {zo32f, -0x1.fffffep127, 0x1.fffffep127, 4, "            -1"},
    {zo32fc, -0x1.fffffep127, 0x1.fffffep127, 8, " (            -1,             2)"},
    {zo64f, -0x1.fffffffffffffp1023, 0x1.fffffffffffffp1023, 8, "                  -1"},
    {zo64fc, -0x1.fffffffffffffp1023, 0x1.fffffffffffffp1023, 16,
     " (                  -1,                   2)"}};

// Real and imaginary parts of all elements.
Values values(zoVector& vector) {
    Values all;
    for (int i = 0; i < vector.size(); ++i) {
        double re = 0.0;
        double im = 0.0;
        vector.getIndex(i, re, im);
        all.push_back(re);
        if ((vector.type() & zoComplex) != 0) {
            all.push_back(im);
        }
    }
    return all;
}

TEST(ZoVector, LimitsAndFormatsOfEveryType) {
    for (auto const& [type, low, high, bytes, field] : types) {
        SCOPED_TRACE(zoFunc::typeToString(type).c_str());
        EXPECT_EQ(low, zoVector::getMinValue(type));
        EXPECT_EQ(high, zoVector::getMaxValue(type));
        EXPECT_EQ(bytes, zoVector::elementSize(type));
        zoVector vector(type);
        ASSERT_TRUE(vector.createVector(2, zoVector::setModeConst2, -1.0, 2.0));
        EXPECT_EQ(std::string(field) + field, vector.getString().c_str());
        EXPECT_EQ(std::string("Vector ") + zoFunc::typeToString(type).c_str() + " len=2",
                  vector.objectInfo().c_str());
    }
    EXPECT_EQ(0, zoVector::elementSize(zo8u | zoComplex));
    EXPECT_EQ(1.0, zoVector::getMinAbsValue(zo16sc));
    EXPECT_EQ(0x1p-126, zoVector::getMinAbsValue(zo32fc));
    float const third = 1.0F / 3.0F;
    EXPECT_STREQ("      0.333333", zoVector::getDataString(zo32f, &third, 1).c_str());
    double const fine = -1.0e-7 / 3.0;
    EXPECT_STREQ("  -3.33333333333e-08", zoVector::getDataString(zo64f, &fine, 1).c_str());
    unsigned char const bytes[] = {0x0A, 0xFF};
    EXPECT_STREQ(" 0A FF", zoVector::getByteString(bytes, 2).c_str());
    EXPECT_STREQ("", zoVector::getByteString(bytes, -1).c_str());
    EXPECT_STREQ("", zoVector::getByteString(nullptr, 2).c_str());
}

TEST(ZoVector, ConstantsRoundAndStopAtTheLimits) {
    struct {
        zoType type;
        double given;
        double kept;
    } const cases[] = {{zo8u, 2.6, 3.0},
                       {zo8u, 1e300, 255.0},
                       {zo8s, 127.5, 127.0},
                       {zo16s, -1e9, -32768.0},
                       {zo64s, 1e19, 0x1p63},
                       {zo64u, 2e19, 0x1p64},
                       {zo32s, NAN, 0.0},
                       {zo32s, HUGE_VAL, 2147483647},
                       {zo32f, 1e300, 0x1.fffffep127},
                       {zo32f, -HUGE_VAL, -HUGE_VAL}};
    for (auto const& [type, given, kept] : cases) {
        SCOPED_TRACE(testing::Message() << zoFunc::typeToString(type).c_str() << " " << given);
        zoVector vector(type);
        ASSERT_TRUE(vector.createVector(1, zoVector::setModeConst1, given, 0.0));
        EXPECT_EQ(kept, vector.getIndex(0));
    }
    zoVector wide(zo64sc); // more than a double holds
    wide.createVector(1);
    wide.setConst_64s(INT64_MAX, INT64_MIN + 1);
    EXPECT_STREQ(" (     9223372036854775807,    -9223372036854775807)", wide.getString().c_str());
    zoVector narrow(zo16uc);
    narrow.createVector(1);
    narrow.setConst_64s(70000, -1);
    EXPECT_EQ((Values{65535.0, 0.0}), values(narrow));
}

TEST(ZoVector, FillsByMode) {
    Values const wanted[] = {
        {0, 0, 0, 0}, {5, 6, 5, 6}, {5, 6, 5, 6},  {127, 127, 127, 127}, {-128, -128, -128, -128},
        {5, 6, 5, 6}, {},           {5, 7, 11, 7}, {1, 1, 1, 1}};
    for (int mode : {0, 1, 2, 3, 4, 5, 7, 8}) {
        zoVector vector(zo8sc);
        vector.createVector(2, zoVector::setModeConst2, 1.0, 1.0);
        vector.setVector(mode, 5.0, 6.0, 7.0);
        EXPECT_EQ(wanted[mode], values(vector)) << mode;
    }
}

TEST(ZoVector, SequencesStopOrWrapAtTheLimits) {
    zoVector vector(zo8s);
    vector.createVector(6);
    vector.setSequence(125.0, 1.0);
    EXPECT_EQ((Values{125, 126, 127, 127, 127, 127}), values(vector));
    vector.setSequence(-126.0, -1.0);
    EXPECT_EQ((Values{-126, -127, -128, -128, -128, -128}), values(vector));
    vector.setSequence(125.0, 1.0, 0.0, true);
    EXPECT_EQ((Values{125, 126, 127, 125, 126, 127}), values(vector));
    zoVector wide(zo64f);
    wide.createVector(2);
    wide.setSequence(1e308, 1e308);
    EXPECT_EQ(std::numeric_limits<double>::max(), wide.getIndex(1));
}

// Whatever the type, the chirp is the sine of the squared index, within the type's range.
TEST(ZoVector, JaehneFill) {
    int const length = 64;
    for (auto const& [type, low, high, bytes, field] : types) {
        SCOPED_TRACE(zoFunc::typeToString(type).c_str());
        double const offset = low == 0.0 ? high / 2 : 0.0;
        double const slack = (type & zoFloating) != 0 ? 1e-4 : 0.5 + offset * 1e-15;
        zoVector vector(type);
        vector.createVector(length);
        vector.setJaehne(100.0);
        for (int i = 0; i < length; ++i) {
            double const chirp = std::sin(i * i * 1.5707963267948966 / length) * 100.0 + offset;
            EXPECT_NEAR(chirp, vector.getIndex(i), slack);
        }
        vector.setConst(1.0, 1.0);
        vector.setJaehne(-1.0); // refused
        EXPECT_EQ(1.0, vector.getIndex(length / 2));
        vector.setJaehne();
        Values const all = values(vector);
        EXPECT_GT(*std::max_element(all.begin(), all.end()), 0.99 * high);
        EXPECT_LE(*std::max_element(all.begin(), all.end()), high); // no infinity
    }
    zoVector empty(zo32f);
    empty.setJaehne(1.0);
    empty.setRandom();
    EXPECT_STREQ("", empty.getString().c_str());
}

TEST(ZoVector, RandomFillsRepeatAndSpread) {
    for (auto const& [type, least, most, bytes, field] : types) {
        SCOPED_TRACE(zoFunc::typeToString(type).c_str());
        zoVector vector(type);
        vector.createVector(4000);
        zoVector::m_seed = zoVector::startSeed;
        vector.setRandom();
        Values const once = values(vector);
        vector.setRandom(); // goes on with the stream
        EXPECT_NE(once, values(vector));
        zoVector::m_seed = zoVector::startSeed;
        vector.setRandom();
        EXPECT_EQ(once, values(vector));
        for (double value : once) {
            EXPECT_TRUE((type & zoFloating) != 0 ? std::fabs(value) <= 1.0
                                                 : value >= least && value <= most);
        }
    }
}

// The steps are fixed: numbers of a calculation apart from this code.
TEST(ZoVector, RandomStreamIsFixed) {
    zoVector vector(zo64f);
    vector.createVector(1000);
    vector.setRandom(-3.0, 5.0, 7);
    EXPECT_EQ(2.873547380790117, vector.getIndex(0));
    EXPECT_EQ(-1.0674124211072953, vector.getIndex(1));
    EXPECT_EQ(-2.3654591701924854, vector.getIndex(2));
    EXPECT_EQ(598547721U, zoVector::m_seed);
    vector.setRandom(-HUGE_VAL, HUGE_VAL); // a range beyond the largest double
    EXPECT_TRUE(std::isfinite(vector.getIndex(0)) && std::fabs(vector.getIndex(0)) > 1e300);
    zoVector bytes(zo8u);
    bytes.createVector(1000);
    bytes.setRandom(-1e9, 3.0, 1);
    for (double value : values(bytes)) {
        EXPECT_TRUE(value >= 0.0 && value <= 3.0) << value;
    }
}

TEST(ZoVector, KeepsACopy) {
    zoVector vector(zo32s);
    EXPECT_EQ(0, vector.reserveCopy());
    vector.createVector(2, zoVector::setModeSequence, 1.0, 1.0);
    EXPECT_EQ(0, vector.setReservedCopy());
    EXPECT_EQ(1, vector.reserveCopy());
    vector.setConst(9.0, 0.0);
    EXPECT_EQ(1, vector.setReservedCopy());
    EXPECT_EQ((Values{1.0, 2.0}), values(vector));
}

TEST(ZoVector, BlocksBelongToTheirVector) {
    psSetVectorAlign(3);
    zoVector vector(zoFunc("zoliReal_32fc_AC4C1"), zoDst);
    EXPECT_STREQ("_32f_C1", vector.name().c_str());
    for (bool byByte : {true, false}) { // three bytes, or three elements of four bytes
        psSetAlignByByte(byByte);
        psTest::m_vectorNum = 0;
        psTest::m_vectorShift = 0;
        ASSERT_TRUE(vector.createVector(5));
        EXPECT_EQ(byByte ? 3U : 12U, reinterpret_cast<std::uintptr_t>(vector.data()) % 64);
    }
    psSetAlignByByte(true);
    psSetVectorAlign(0);
    int size = 0;
    void* owner = nullptr;
    ASSERT_TRUE(psMallocInfo(vector.data(), &size, &owner));
    EXPECT_EQ(20, size);
    EXPECT_EQ(static_cast<psObject*>(&vector), owner);
    void* const block = vector.data();
    vector.deleteVector();
    EXPECT_FALSE(psMallocInfo(block, &size, &owner));
}

TEST(ZoVector, TellsOfSizesThatItCannotGive) {
    zoVector vector(zo64f);
    for (auto const& [length, bytes] : {std::pair{0, "0"}, {-1, "-8"}, {1 << 30, "8589934592"}}) {
        MessageCapture capture(1);
        EXPECT_FALSE(vector.createVector(length));
        EXPECT_EQ(std::string("-- Memory error: can't allocate ") + bytes + " bytes\n",
                  capture.text());
        EXPECT_EQ(0, vector.objectSize());
    }
}

} // namespace
