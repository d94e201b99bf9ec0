// zovector_test.cpp - typed vectors: fills, limits, texts, copies.
#include "zo/zovector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <vector>

#include "psmemory/psmemory.h"
#include "pstest/pstest.h"
#include "support/storedtext.h"

namespace {

using Values = std::vector<double>;

zoType const types[] = {zo8u,   zo8s,  zo8sc, zo16u,  zo16s, zo16sc, zo16uc, zo32u, zo32s,
                        zo32sc, zo64u, zo64s, zo64sc, zo32f, zo32fc, zo64f,  zo64fc};

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
    std::ostringstream text;
    text << std::setprecision(17);
    for (zoType const type : types) {
        zoVector vector(type);
        ASSERT_TRUE(vector.createVector(2, zoVector::setModeConst2, -1.0, 2.0));
        text << vector.objectInfo().c_str() << ": " << zoVector::getMinValue(type) << " to "
             << zoVector::getMaxValue(type) << ", " << zoVector::elementSize(type) << " bytes,"
             << vector.getString().c_str() << "\n";
    }
    EXPECT_TRUE(matchesStored("zo/types", text.str()));
    float const third = 1.0F / 3.0F;
    EXPECT_STREQ("      0.333333", zoVector::getDataString(zo32f, &third, 1).c_str());
    double const fine = -1.0e-7 / 3.0;
    EXPECT_STREQ("  -3.33333333333e-08", zoVector::getDataString(zo64f, &fine, 1).c_str());
    EXPECT_STREQ("", zoVector::getDataString(zo64f, nullptr, 1).c_str());
    EXPECT_STREQ("", zoVector::getByteString(nullptr, 1).c_str());
    EXPECT_EQ(1.0, zoVector::getMinAbsValue(zo16sc));
    EXPECT_EQ(0x1p-126, zoVector::getMinAbsValue(zo32fc));
    EXPECT_EQ(0x1p-1022, zoVector::getMinAbsValue(zo64f));
    EXPECT_EQ(0, zoVector::elementSize(0)); // no type
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
}

TEST(ZoVector, FillsByMode) {
    Values const wanted[] = {
        {0, 0, 0, 0}, {5, 6, 5, 6}, {5, 6, 5, 6},  {127, 127, 127, 127}, {-128, -128, -128, -128},
        {5, 6, 5, 6}, {},           {5, 7, 11, 7}, {1, 1, 1, 1}};
    zoVector vector(zo8sc);
    for (int mode : {0, 1, 2, 3, 4, 5, 7, 8}) {
        vector.createVector(2, zoVector::setModeConst2, 1.0, 1.0);
        vector.setVector(mode, 5.0, 6.0, 7.0);
        EXPECT_EQ(wanted[mode], values(vector)) << mode;
    }
    vector.setVector(zoVector::setModeSequence, 127.0, 1.0, 0.0); // stops at the limit
    EXPECT_EQ((Values{127, 0, 127, 0}), values(vector));
    vector.setSequence(126.0, 1.0, 0.0, true); // begins again
    EXPECT_EQ((Values{126, 0, 127, 0}), values(vector));
    vector.setIndex();
    EXPECT_EQ((Values{0, 0, 1, 0}), values(vector));
    std::memset(static_cast<char*>(vector.data()) - 2, 1, 8); // and an element on either side
    for (int const outside : {-1, 2}) {
        double re = 1.0;
        double im = 1.0;
        vector.getIndex(outside, re, im);
        EXPECT_TRUE(re == 0.0 && im == 0.0) << outside;
    }
}

// Whatever the type, the chirp is the sine of the squared index, within the type's range.
TEST(ZoVector, JaehneFill) {
    int const length = 64;
    for (zoType const type : types) {
        SCOPED_TRACE(zoFunc::typeToString(type).c_str());
        double const low = zoVector::getMinValue(type);
        double const high = zoVector::getMaxValue(type);
        double const offset = low == 0.0 ? high / 2 : 0.0;
        double const slack = (type & zoFloating) != 0 ? 1e-4 : 0.5 + offset * 1e-15;
        zoVector vector(type);
        vector.createVector(length);
        vector.setJaehne(100.0);
        for (int i = 0; i < length; ++i) {
            double const chirp = std::sin(i * i * 1.5707963267948966 / length) * 100.0 + offset;
            EXPECT_NEAR(chirp, vector.getIndex(i), slack);
        }
        vector.setJaehne();
        Values const all = values(vector);
        EXPECT_GT(*std::max_element(all.begin(), all.end()), 0.99 * high);
        EXPECT_LE(*std::max_element(all.begin(), all.end()), high); // no infinity
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
    vector.setVector(zoVector::setModeRandom, 0.0, 5.0, 0.0);
    EXPECT_GT(vector.getIndex(0), 1.0); // of the range given
    // Without a range: -1 to 1, integers over all they hold.
    std::pair<zoType, double> const ranges[] = {{zo64f, 1.0}, {zo32f, 1.0}, {zo16s, 32768.0}};
    for (auto const& [type, most] : ranges) {
        zoVector ranged(type);
        ranged.createVector(1000, zoVector::setModeRandom, 0.0, 0.0);
        Values const all = values(ranged);
        auto const [low, high] = std::minmax_element(all.begin(), all.end());
        EXPECT_TRUE(*low >= -most && *low<-0.9 * most&& * high <= most&& * high> 0.9 * most);
    }
}

TEST(ZoVector, KeepsACopy) {
    zoVector vector(zo32s);
    vector.createVector(2, zoVector::setModeSequence, 1.0, 1.0);
    EXPECT_EQ(0, vector.setReservedCopy());
    EXPECT_EQ(1, vector.reserveCopy());
    vector.setConst(9.0, 0.0);
    EXPECT_EQ(1, vector.setReservedCopy());
    EXPECT_EQ((Values{1.0, 2.0}), values(vector));
    EXPECT_EQ(8, vector.objectSize());
    vector.createVector(1); // the copy went with the data
    EXPECT_EQ(0, vector.setReservedCopy());
    vector.deleteVector();
    EXPECT_EQ(0, vector.reserveCopy());
    EXPECT_FALSE(vector.createVector(0));
    EXPECT_FALSE(vector.createVector(0, zoVector::setModeConst, 0.0, 0.0));
    EXPECT_EQ(0, vector.size() + zoVector(zo32s).size());
}

TEST(ZoVector, BlocksBelongToTheirVector) {
    psSetVectorAlign(3);
    zoVector vector(zoFunc("zoliReal_32fc_AC4C1"), zoDst);
    EXPECT_STREQ("_32f_C1", vector.name().c_str());
    psSetAlignByByte(false);
    psTest::m_vectorNum = 0;
    psTest::m_vectorShift = 0;
    ASSERT_TRUE(vector.createVector(5));
    EXPECT_EQ(12U, reinterpret_cast<std::uintptr_t>(vector.data()) % 64); // 3 elements of 4 bytes
    psSetAlignByByte(true);
    psSetVectorAlign(0);
    int size = 0;
    void* owner = nullptr;
    ASSERT_TRUE(psMallocInfo(vector.data(), &size, &owner));
    EXPECT_EQ(20, size);
    EXPECT_EQ(static_cast<psObject*>(&vector), owner);
}

} // namespace
