// zotest_test.cpp - the library's test base: names, status lines, memory dump.
#include "zo/zotest.h"

#include <gtest/gtest.h>
#include <string>

#include "pscpu/pszolentry.h"
#include "psmemory/messagecapture.h"
#include "psmemory/psmemory.h"
#include "zo/zosession.h"
#include "zo/zovector.h"

namespace {

class Probe : public zoTest {
public:
    explicit Probe(char const* name, double flops = 1.0)
        : zoTest(static_cast<psFuncOld>(nullptr), name, "dir/file.cpp", "body/note/PS_MACRO_PS_"),
          m_flops(flops) {}
    double getFlops() override { return m_flops; }
    bool canStart() override {
        m_seed = zoVector::m_seed;
        m_errorsOnly = m_checkErrorsOnly;
        return false;
    }
    double m_flops;
    unsigned m_seed = 0;
    bool m_errorsOnly = true;
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
                       {-1, "f", 7, 10, 9, 10, "--ZOL ERROR. status = -1 in f: Error\n"},
                       {19, "f", 7, 1, 5, 5, "--ZOL WARNING. status = 19 in f: Warning\n"},
                       {19, "f", 7, 9, 5, 9, "--ZOL WARNING. status = 19 in f: Warning\n"},
                       {19, "f", 1, 0, 5, 1, ""}, // not shown: counts as success
                       {19, "f", 1, 4, 5, 4, ""}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.status << " at level " << c.level);
        MessageCapture capture(c.level);
        int const messageLevel = g_ostrm.getMsgLevel();
        psTest::m_currentResult = c.before;
        EXPECT_EQ(c.result, zoTest::checkFuncStatus(c.status, c.name));
        EXPECT_EQ(c.after, psTest::m_currentResult);
        EXPECT_EQ(c.line, capture.text());
        EXPECT_EQ(messageLevel, g_ostrm.getMsgLevel());
    }
    MessageCapture capture(7);
    zoTest::m_checkErrorsOnly = true;
    psTest::m_currentResult = psResOk;
    EXPECT_EQ(psResOk, zoTest::checkStatus(19, "f"));
    EXPECT_EQ(psResOk, psTest::m_currentResult);
    Probe const test("zolsAbs_32f_A24");
    EXPECT_EQ(psResFuncFail, test.checkStatus(-1));
    EXPECT_EQ("--ZOL ERROR. status = -1 in zolsAbs_32f_A24: Error\n", capture.text());
}

TEST(ZoTest, RunResetsWhatTestsShare) {
    Probe test("zolsAbs_32f_A24");
    MessageCapture capture(1);
    zoTest::m_checkErrorsOnly = true;
    zoVector::m_seed = 99;
    test.run();
    EXPECT_EQ(7U, test.m_seed);
    EXPECT_FALSE(test.m_errorsOnly);
}

TEST(ZoTest, NamesOrderUnitsAndKind) {
    Probe test("zolsAbs_32f_A24");
    Probe complexTest("zolsAbs_32fc_A11");
    EXPECT_LT(test.compareFunc(&complexTest), 0);
    EXPECT_GT(complexTest.compareFunc(&test), 0);
    EXPECT_TRUE(test.isFloatFunction());
    EXPECT_FALSE(Probe("zolsAbs_32f_A24", -1.0).isFloatFunction());
    EXPECT_FALSE(Probe("zolsAbs_16s").isFloatFunction());
    EXPECT_NE(-1, test.regInfo().find("by PP_MACRO_PS_ macro", 0)) << test.regInfo().c_str();
    EXPECT_STREQ("e", zoTest::unitStr(1).c_str());
    EXPECT_STREQ("pxch_kp", zoTest::unitStr(7).c_str());
    EXPECT_STREQ(" ", zoTest::unitStr(8).c_str());

    g_cstrm.tableFlush();
    zoSession().funcTitleToCStream();
    test.funcToCstrm();
    EXPECT_EQ(6, g_cstrm.nextColm);
    char const* const cells[] = {"funcBase", "funcDataType", "funcDescriptor",
                                 "zolsAbs",  "32f",          "A24"};
    for (int i = 0; i < 6; ++i) {
        psString cell;
        g_cstrm.getColm(i, cell);
        EXPECT_STREQ(cells[i], cell.c_str());
    }
    g_cstrm.tableFlush();
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
    psObject plain;
    void* const hidden[] = {psTest::allocate(2, 0, MEM_OBJECT_IS_SUBOBJECT),
                            psMalloc(2, 0, 0, nullptr)};
    void* const owned = psTest::allocate(4, 0, &plain);
    MessageCapture capture(MSG_DATA);
    EXPECT_EQ(3, test.printAllMemoryBlocks("at start"));
    EXPECT_EQ("======== OBJECTS OUTPUT START === at start === OBJECTS OUTPUT START ========\n"
              "======== Object 1: Vector 16s len=3\n      1      2      3\n\n"
              "======== Object 2: MemoryBlock size=2\n 0A FF\n\n"
              "======== Object 3: \n\n\n"
              "======== OBJECTS OUTPUT END === at start === OBJECTS OUTPUT END ========\n",
              capture.text());
    for (void* block : {static_cast<void*>(bytes), hidden[0], hidden[1], owned}) {
        psFree(block);
    }
}

} // namespace
