// psresultline_test.cpp - number formats and texts of a result line.
#include <cmath>

#include "pstest/psrunmode.h"
#include "runfixture.h"

class PsResultLine : public RunFixture {
protected:
    ScriptedTest test;
};

TEST_F(PsResultLine, AboutThreeSignificantDigits) {
    std::pair<double, char const*> const formats[] = {
        {0.0, ""},          {0.00005, "5.000e-05"}, {0.0001, "0.000100"}, {0.001, "0.00100"},
        {0.0123, "0.0123"}, {0.1, "0.100"},         {1.0, "1.00"},        {12.34, "12.3"},
        {99.96, "100.0"},   {1e7, "10000000"},      {1.1e7, "1.100e+07"}, {HUGE_VAL, "inf"}};
    for (auto const& [clocks, text] : formats) {
        EXPECT_STREQ(test.formatClocks(clocks).c_str(), text);
    }
}

TEST_F(PsResultLine, AccuracyOnlyOfTheMethodsThatJudgeIt) {
    test.m_tool.m_funcTicks = 4096.0;
    EXPECT_EQ(test.performance(true), 0.0) << "no number of operations";
    test.m_tool.m_actualAccuracy = 0.012;
    test.m_tool.m_comment = "nLps=128";
    std::string const rest = "  nLps=128    perf=  4.1e+03/        8=      512 clocks";
    for (auto [method, accuracy] :
         {std::pair(0, "  acc=1.2% "), {1, ""}, {2, ""}, {3, "  acc=1.2% "}}) {
        test.m_tool.m_method = method;
        EXPECT_EQ(std::string(test.testResultString().c_str()), accuracy + rest);
    }
}

TEST_F(PsResultLine, InformationHasNoNameLine) {
    psRunMode::m_nameMode = psRunMode::namesIntoResults;
    ScriptedTest("__psKind").putTableName();
    test.putTableName();
    psRunMode::m_nameMode = 0;
    EXPECT_EQ(rows(), "zScript,-,parmNames,-,-,-,-\n");
}

TEST_F(PsResultLine, APairHasItsRatioAndWhetherTheCoreWasQuiet) {
    for (bool const quiet : {true, false}) {
        test.m_tool.m_pairResult = {30.0, 24.0, 1.25, 1.2, 1.3, 9, quiet};
        EXPECT_EQ(test.pairString().c_str(), "base=3.00 ratio=1.2500 lo=1.2000 hi=1.3000 nPrs=9 " +
                                                 std::string(quiet ? "quiet" : "shared"));
    }
}
