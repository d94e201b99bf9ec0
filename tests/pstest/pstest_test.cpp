// pstest_test.cpp - the test object: its names, its vectors, its choice of a timing function.
#include "pstest/pstest.h"

#include "psmemory/psmemory.h"
#include "runfixture.h"
#include "support/storedtext.h"

TEST(PsTestInfo, CutAtTheFirstTwoSlashes) {
    char const* const cases[][4] = {{"a", "a", "", ""},
                                    {"a/b", "a", "b", ""},
                                    {"a/b/c/d", "a", "b", "c/d"},
                                    {"/b/c", "", "b", "c"},
                                    {"/", "", "", ""}};
    for (auto const& [text, name, note, macro] : cases) {
        SCOPED_TRACE(text);
        psTestInfo const cut(text);
        EXPECT_STREQ(cut.m_name.c_str(), name);
        EXPECT_STREQ(cut.m_note.c_str(), note);
        EXPECT_STREQ(cut.m_macro.c_str(), macro);
    }
}

class PsTest : public RunFixture {};

TEST_F(PsTest, VectorsAreShiftedAndOnlyTheFirstMisaligned) {
    psSetVectorAlign(4);
    psTest::m_vectorNum = 0;
    psTest::m_vectorShift = 0;
    auto const offset = [](void* vector) { return reinterpret_cast<unsigned long>(vector) % 64; };
    void* const first = psTest::allocate(100, -2);
    void* const second = psTest::allocate(100, -2);
    void* const fixed = psTest::allocate(100, 16);
    EXPECT_EQ(offset(first), 8U);
    EXPECT_EQ(offset(second), 0U);
    EXPECT_EQ(offset(fixed), 16U);
    EXPECT_EQ(psTest::m_vectorShift, 3 * 512);
    psTest::m_vectorShift = 32768 - 100;
    void* const last = psTest::allocate(100, -1);
    EXPECT_EQ(psTest::m_vectorShift, 0);
    for (void* vector : {first, second, fixed, last}) {
        psTest::deallocate(vector);
    }
    psSetVectorAlign(0);
}

TEST_F(PsTest, RegistrationNamesTheCallableThatWillBeUsed) {
    psFuncLoop const loop = ScriptedTest::loop;
    psFuncStat const stat = [](int*, long long*) { return psResult{psResOk}; };
    psFuncCall const call = [] { return 0; };
    psString text;
    auto const note = [&text](psTest& test, int method, bool flag) {
        test.m_tool.m_method = method;
        (method == psTool::Loop ? test.m_tool.m_setAndUse : test.m_tool.m_useCalls) = flag;
        text << test.regInfo() << "\n";
    };
    psTest both(loop, stat, "zT", "zt.cpp", "t/n/PS_MACRO");
    note(both, psTool::Auto, false);
    note(both, psTool::Stat, false);
    note(both, psTool::Best, true);
    psTest statOnly(nullptr, stat, "zT", "zt.cpp", "t");
    note(statOnly, psTool::Auto, false);
    psTest loopCall(call, nullptr, loop, nullptr, "zT", "zt.cpp", "t");
    note(loopCall, psTool::Loop, true);
    note(loopCall, psTool::Loop, false);
    psTest callOnly(call, nullptr, nullptr, nullptr, "zT", "zt.cpp", "t");
    note(callOnly, psTool::Auto, false);
    psTest toolForm([](psTool&, int) { return psResult{psResOk}; }, "zT", "zt.cpp", "t");
    note(toolForm, psTool::Auto, false);
    psTest none(static_cast<psFuncOld>(nullptr), "zT", "zt.cpp", "t");
    note(none, psTool::Auto, false);
    EXPECT_TRUE(matchesStored("pstest/registration", text.c_str()));
    EXPECT_EQ(none.run(), psResFail) << "nothing to measure is an internal problem";
}

TEST_F(PsTest, ATestBeginsWithNothingOfAnEarlierRun) {
    ScriptedTest test;
    psIterator<int> length;
    psTest::m_cache = true;
    test.regCacheParm(length, nullptr, nullptr);
    test.m_firstData = false;
    test.m_bad87 = test.m_badSSX = test.m_cacheRetry = test.m_deprecated = true;
    psTest::m_currentResult = psResFail;
    test.beginTest();
    EXPECT_TRUE(test.m_firstData && test.m_parms.empty() && test.m_cacheIterator == nullptr);
    EXPECT_FALSE(test.m_bad87 || test.m_badSSX || test.m_cacheRetry || test.m_deprecated);
    EXPECT_EQ(psTest::m_currentResult, psResUndefined);
}

TEST_F(PsTest, MacroWordTurnsInitAndCheckOn) {
    for (auto const& [text, on] : {std::pair{"t/n/PS_IbsTest", true}, {"t/Ibs/PS_Test", false}}) {
        ScriptedTest test("zT", text);
        test.run();
        EXPECT_EQ(test.m_tool.m_initAndCheck, on);
    }
}
