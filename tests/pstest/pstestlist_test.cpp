// pstestlist_test.cpp - order, choice and count of tests.
#include "runfixture.h"
#include "support/leaksofjumps.h"

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

TEST_F(PsTestList, SortIsStableAndInformationGoesFirst) {
    list.sortFunc();
    int count = 0;
    for (char const* name : {"b", "__p", "b", "_q", "b", "a"}) {
        add(name, ("t/" + std::to_string(++count)).c_str());
    }
    list.startWithCpuTest();
    EXPECT_EQ(order(), "__p2 _q4 b1 b3 b5 a6 ");
    list.sortFunc();
    EXPECT_EQ(order(), "__p2 _q4 a6 b1 b3 b5 ");
}

TEST_F(PsTestList, RunsWhatIsSelectedFromTheStartFunctionOn) {
    add("zAbs_32f");
    add("zSin_32f");
    add("zAbs_64f");
    psTestList::m_startFunc = "Sin";
    EXPECT_FALSE(list.runTests(conditions));
    EXPECT_EQ(ran, "zSin_32f zAbs_64f ");
    EXPECT_EQ(list.m_numTests, 2);

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

TEST_F(PsTestList, CommonParametersAreThoseThatSelectedTestsUse) {
    psDefault<int> used(1, "Used");
    psDefault<int> unused(2, "Unused");
    psIterator<int> size;
    size.init("Size");
    std::string started;
    for (char const* name : {"other", "zSignals", "zUses", "zCached", "zLast", "zNever"}) {
        std::string const text = name;
        ScriptedTest& test = add(name);
        test.onStart = [&started, &size, &test, text] {
            started += text + " ";
            if (text == "zCached") {
                test.regCacheParm(size, nullptr, nullptr);
            }
            return text != "zSignals" || raise(SIGFPE) != 0;
        };
        if (text == "zUses") {
            test.registered.insert(test.registered.end(), &used);
        }
    }
    conditions.insert(conditions.end(), new RunCondition_f("z"));
    psTest::m_cache = true;
    psList<psParameter*> common;
    common.insert(common.end(), &used);
    common.insert(common.end(), &unused);
    common.insert(common.end(), &size);
    list.selectCommonParms(conditions, common);
    EXPECT_EQ(started, "zSignals zUses zCached zLast zNever ");
    EXPECT_EQ(common.size(), 2);
    EXPECT_TRUE(used.m_toRead && size.m_toRead && !unused.m_toRead);
    EXPECT_EQ(g_ostrm.getOutLevel(), 7);
    EXPECT_EQ(lines(), "--ZOL. Signal: FP error, such as overflow, division by zero, invalid "
                       "operation. in startAndStop of zSignals test\n");
    started.clear();
    unblockSignals();
    list.selectCommonParms(conditions, common); // all are found before the last test
    EXPECT_EQ(started, "zSignals zUses zCached zLast ");
    unblockSignals();
}
