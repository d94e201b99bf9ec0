// zotest_test.cpp - the library's test base: names, status lines, memory dump.
#include "zo/zotest.h"

#include <gtest/gtest.h>
#include <string>

#include "pscpu/pszolentry.h"
#include "psmemory/psmemory.h"
#include "support/messagecapture.h"
#include "zo/zosession.h"
#include "zo/zovector.h"

namespace {

class Probe : public zoTest {
public:
    explicit Probe(char const* name, double flops = 1.0)
        : zoTest(static_cast<psFuncOld>(nullptr), name, "dir/file.cpp", "body/note/PS_MACRO_PS_"),
          m_flops(flops) {}
    double getFlops() override { return m_flops; }

private:
    double m_flops;
};

TEST(ZoTest, StatusLinesAndMerges) {
    psFillZolEntries();
    struct {
        ZolStatus status;
        char const* name;
        OutputLevel level;
        psResult before;
        psResult result;
        psResult after;
        char const* line;
    } const cases[] = {{0, "f", 127, 1, 1, 1, ""},
                       {-1, "f", 7, 1, 9, 9, "--ZOL ERROR. status = -1 in f: Error\n"},
                       {-6, "", 1, 0, 9, 9, "--ZOL ERROR. status = -6: Error\n"},
                       {19, "f", 7, 1, 5, 5, "--ZOL WARNING. status = 19 in f: Warning\n"},
                       {19, "f", 1, 0, 5, 1, ""}, // not shown: counts as success
                       {19, "f", 1, 4, 5, 4, ""}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.status << " at level " << c.level);
        MessageCapture capture(c.level);
        psTest::m_currentResult = c.before;
        EXPECT_EQ(c.result, zoTest::checkFuncStatus(c.status, c.name));
        EXPECT_EQ(c.after, psTest::m_currentResult);
        EXPECT_EQ(c.line, capture.text());
    }
    MessageCapture capture(7);
    zoTest::m_checkErrorsOnly = true;
    psTest::m_currentResult = psResOk;
    EXPECT_EQ(psResOk, zoTest::checkStatus(19, "f"));
    Probe test("zolsAbs_32f_A24");
    EXPECT_EQ(psResFuncFail, test.checkStatus(-1));
    EXPECT_EQ("--ZOL ERROR. status = -1 in zolsAbs_32f_A24: Error\n", capture.text());
    zoVector::m_seed = 1;
    test.run(); // each begins with the same seed and all warnings
    EXPECT_EQ(zoVector::startSeed, zoVector::m_seed);
    EXPECT_FALSE(zoTest::m_checkErrorsOnly);
}

TEST(ZoTest, NamesOrderUnitsAndKind) {
    Probe test("zolsAbs_32f_A24");
    Probe complexTest("zolsAbs_32fc_A11");
    EXPECT_LT(test.compareFunc(&complexTest), 0);
    EXPECT_GT(complexTest.compareFunc(&test), 0);
    EXPECT_TRUE(test.isFloatFunction());
    EXPECT_TRUE(Probe("zolsAbs_64f").isFloatFunction());
    EXPECT_FALSE(Probe("zolsAbs_16s").isFloatFunction());
    EXPECT_FALSE(Probe("zolsAbs_32f_A24", -1.0).isFloatFunction());
    EXPECT_NE(-1, test.regInfo().find("by PP_MACRO_PS_ macro", 0)) << test.regInfo().c_str();
    std::string units;
    for (int index = -1; index <= 8; ++index) {
        units += std::string(zoTest::unitStr(index).c_str()) + "|";
    }
    EXPECT_EQ(" | |e|px|pxch|cpMac|e_kp|px_kp|pxch_kp| |", units);
    StreamCapture const table(g_cstrm);
    complexTest.funcToCstrm();
    g_cstrm.lineOut(0);
    zoSession().funcTitleToCStream();
    g_cstrm.lineOut(0);
    EXPECT_EQ("zolsAbs,32fc,A11\nfuncBase,funcDataType,funcDescriptor\n", table.text());
}

TEST(ZoTest, TheFirstSizeIsSteeredByTheCache) {
    Probe test("zoliCopy_8u_C1R");
    psIterator<ZoliSize> size;
    size.init("Size");
    size.translate("16x16; 8x4");
    test.regCacheParm(size, nullptr);
    EXPECT_EQ(nullptr, test.m_cacheIterator);
    psTest::m_cache = true;
    test.regCacheParm(size, nullptr);
    psCacheIterator* const wrapped = test.m_cacheIterator;
    test.regCacheParm(size, nullptr, nullptr);
    psTest::m_cache = false;
    ASSERT_NE(nullptr, wrapped);
    EXPECT_EQ(wrapped, test.m_cacheIterator);
    EXPECT_EQ(3, test.m_parms.size());
    EXPECT_TRUE(wrapped->firstValue());
    EXPECT_TRUE(wrapped->setNewValueToParm(1000, 9000, false));
    EXPECT_STREQ("64x32", wrapped->valueString().c_str());
}

TEST(ZoTest, DumpsTheBlocksOfObjectsAndBuffers) {
    Probe test("zolsAbs_32f_A24");
    MessageCapture quiet(7);
    EXPECT_EQ(0, test.printAllMemoryBlocks("nothing"));
    EXPECT_EQ("", quiet.text());
    zoVector vector(zo16s);
    vector.createVector(3, zoVector::setModeSequence, 1.0, 1.0);
    auto* const bytes = static_cast<unsigned char*>(psTest::allocate(2, 0));
    bytes[0] = 0x0A;
    bytes[1] = 0xFF;
    void* const hidden = psTest::allocate(2, 0, MEM_OBJECT_IS_SUBOBJECT);
    MessageCapture capture(MSG_DATA);
    EXPECT_EQ(2, test.printAllMemoryBlocks("at start"));
    EXPECT_EQ("======== OBJECTS OUTPUT START === at start === OBJECTS OUTPUT START ========\n"
              "======== Object 1: Vector 16s len=3\n      1      2      3\n\n"
              "======== Object 2: MemoryBlock size=2\n 0A FF\n\n"
              "======== OBJECTS OUTPUT END === at start === OBJECTS OUTPUT END ========\n",
              capture.text());
    psFree(bytes);
    psFree(hidden);
}

} // namespace
