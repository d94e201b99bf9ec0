// psconditions_test.cpp - the kinds of pattern and how they combine.
#include "pstest/psconditions.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

template <typename Plain, typename Must, typename Not, typename Equal>
RunCondition* ofKind(psString pattern) {
    switch (getCondition(pattern)) {
    case 0:
        return new Plain(pattern);
    case 1:
        return new Must(pattern);
    case 2:
        return new Not(pattern);
    default:
        return new Equal(pattern);
    }
}

// Whether the test passes words such as "f+Abs t-x".
bool passes(psTest const& test, std::string const& words, int logic) {
    psConditions conditions;
    conditions.m_logic = logic;
    std::istringstream in(words);
    for (std::string word; in >> word;) {
        auto const make =
            word[0] == 'f'
                ? ofKind<RunCondition_f, RunCondition_fAnd, RunCondition_fNot, RunCondition_fEqual>
            : word[0] == 't'
                ? ofKind<RunCondition_t, RunCondition_tAnd, RunCondition_tNot, RunCondition_tEqual>
                : ofKind<RunCondition_s, RunCondition_sAnd, RunCondition_sNot, RunCondition_sEqual>;
        conditions.insert(conditions.end(), make(word.c_str() + 1));
    }
    return conditions.tobeRun(&test);
}

} // namespace

TEST(PsConditions, PatternsAndTheirLogic) {
    psTest const test(nullptr, nullptr, "zolsAbs_32f_A24", "perf/abs.cpp", "absTiming");
    struct {
        char const* words;
        bool withAnd;
        bool withOr;
    } const rows[] = {
        {"", true, true},
        {"fAbs", true, true},
        {"fAbs f-32f", false, false},
        {"fAbs f-64f", true, true},
        {"f=zolsAbs_32f_A24 f-Abs", true, true},
        {"f=zolsAbs", false, false},
        {"f=zolsAbs f-64f", true, true},
        {"f=zolsAbs f=zolsAbs_32f_A24", true, true},
        {"f+Abs f+64f", false, false},
        {"fSin fAbs", true, true},
        {"fSin f+Abs", false, false},
        {"fSin tTiming", false, true},
        {"tTiming mabs.cpp", true, true},
        {"t=absTiming m=abs.cpp", true, true},
        {"m+perf", false, false},
        {"t+abs m-abs", false, true},
        {"t-sin", true, true},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(passes(test, row.words, psConditions::And), row.withAnd);
        EXPECT_EQ(passes(test, row.words, psConditions::Or), row.withOr);
    }
}

TEST(PsConditions, AKeyWithoutPattern) {
    for (char const* text : {"", "=", "+", "-"}) {
        psString arg(text);
        EXPECT_EQ(getCondition(arg), 4) << text;
    }
    psString arg("+-");
    EXPECT_EQ(getCondition(arg), 1);
    EXPECT_STREQ(arg.c_str(), "-");
}
