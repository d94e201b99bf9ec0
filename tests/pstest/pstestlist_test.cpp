// pstestlist_test.cpp - order, choice and count of tests.
#include "runfixture.h"

namespace {

class PsTestList : public RunFixture {
protected:
    ~PsTestList() override {
        for (psTest* test : list) {
            delete test;
        }
        psTestList::m_startFunc = "";
    }

    ScriptedTest& add(char const* name, char const* note = "t") {
        auto* const test = new ScriptedTest(name, note);
        test->onTiming = [this, test] {
            ran += std::string(test->m_funcName.c_str()) + " ";
            EXPECT_EQ(psTestList::m_pCurrentTest, test);
            return result;
        };
        list.insert(list.end(), test);
        return *test;
    }

    std::string order() {
        std::string names;
        for (psTest* test : list) {
            names += std::string(test->m_funcName.c_str()) + test->m_info.m_note.c_str() + " ";
        }
        return names;
    }

    psTestList list;
    psConditions conditions;
    std::string ran;
    psResult result = psResOk;
};

} // namespace

TEST_F(PsTestList, SortIsStable) {
    list.sortFunc();
    EXPECT_EQ(order(), "");
    add("b", "t/1");
    list.sortFunc();
    add("a", "t/2");
    add("b", "t/3");
    add("a", "t/4");
    add("__x", "t/5");
    add("a", "t/6");
    list.sortFunc();
    std::string wanted = "__x5 a2 a4 a6 b1 b3 ";
    EXPECT_EQ(order(), wanted);
    for (int i = 0; i < 1000; ++i) { // 37 has no common factor with 1000: each number once
        add(("c" + std::to_string(1000 + i * 37 % 1000)).c_str());
        wanted += "c";
        wanted += std::to_string(1000 + i);
        wanted += " ";
    }
    list.sortFunc();
    EXPECT_EQ(order(), wanted);
}

TEST_F(PsTestList, InformationGoesFirst) {
    for (char const* name : {"a", "__p", "b", "_q", "c"}) {
        add(name);
    }
    list.startWithCpuTest();
    EXPECT_EQ(order(), "__p _q a b c ");
    add("_r");
    list.startWithCpuTest();
    EXPECT_EQ(order(), "__p _q _r a b c ");
}

TEST_F(PsTestList, RunsWhatIsSelectedFromTheStartFunctionOn) {
    add("zAbs_32f");
    add("zSin_32f");
    add("zAbs_64f");
    psTestList::m_startFunc = "Sin";
    EXPECT_FALSE(list.runTests(conditions));
    EXPECT_EQ(ran, "zSin_32f zAbs_64f ");
    EXPECT_EQ(list.m_numTests, 2);
    EXPECT_EQ(psTestList::m_pCurrentTest, nullptr);

    ran.clear();
    conditions.insert(conditions.end(), new RunCondition_f("Abs"));
    psTestList::m_startFunc = "Sin";
    EXPECT_FALSE(list.runTests(conditions));
    EXPECT_EQ(ran, "") << "the start function itself has to be selected";

    result = psResDataFail;
    psTestList::m_startFunc = "";
    EXPECT_TRUE(list.runTests(conditions));
    EXPECT_EQ(ran, "zAbs_32f zAbs_64f ");
    EXPECT_EQ(list.m_numResult[psResDataFail], 2);
    EXPECT_EQ(list.m_numResult[psResOk], 2);
}

TEST_F(PsTestList, ATestRefusedByTheIniFileIsNotCounted) {
    add("zAbs");
    fill("p.ini", "[other]\n");
    g_istrm.setIniFile(path("p.ini").c_str(), false);
    psTest::m_pressing = true;
    list.runTests(conditions);
    EXPECT_EQ(list.m_numTests, 0);
    psTest::m_pressing = false;
    psTest::m_cache = true; // without support for it: counted as undefined
    list.runTests(conditions);
    EXPECT_EQ(list.m_numTests, 1);
    EXPECT_EQ(list.m_numResult[psResUndefined], 1);
}

TEST_F(PsTestList, CountsAddUpToTheirFamilies) {
    for (psResult code = -1; code <= 12; ++code) {
        list.plus(code);
    }
    EXPECT_EQ(list.m_numTests, 14);
    int const wanted[psNumResults] = {1, 1, 1, 1, 1, 1, 5, 1, 1, 1, 1, 5};
    for (int code = 0; code < psNumResults; ++code) {
        EXPECT_EQ(list.m_numResult[code], wanted[code]) << code;
    }
}

TEST_F(PsTestList, CommonParametersOfSelectedTestsStay) {
    psIterator<int> parms[4];
    psList<psParameter*> common;
    for (psIterator<int>& parm : parms) {
        parm.init("P");
        common.insert(common.end(), &parm);
    }
    addParm(add("zAbs"), parms[0]);
    addParm(add("zSin"), parms[1]);
    ScriptedTest& sized = add("zAbsSized");
    psTest::m_cache = true;
    sized.onStart = [&] {
        sized.regCacheParm(parms[2], nullptr, nullptr);
        return true;
    };
    conditions.insert(conditions.end(), new RunCondition_f("Abs"));
    list.selectCommonParms(conditions, common);
    ASSERT_EQ(common.size(), 2);
    EXPECT_EQ(*common.begin(), &parms[0]);
    EXPECT_EQ(*++common.begin(), &parms[2]) << "found behind its cache iterator";
    EXPECT_TRUE(parms[0].m_toRead);
    EXPECT_FALSE(parms[1].m_toRead);
    EXPECT_TRUE(sized.m_parms.empty());
}

TEST(PsRegTest, TheFirstCallMakesTheList) {
    ScriptedTest test;
    psTestList* const before = pTestList;
    pTestList = nullptr;
    EXPECT_EQ(psRegTest(&test), 1);
    EXPECT_EQ(*pTestList->begin(), &test);
    delete pTestList;
    pTestList = before;
}
