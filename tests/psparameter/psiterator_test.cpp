// psiterator_test.cpp - the grammar of lists and loops, and the values that they give.
#include "psparameter/psiterator.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>

#include "psbase/psexception.h"

namespace {

// The values of one walk, at most the first eight.
template <typename Parm>
std::string walk(Parm& parm) {
    std::string values;
    int count = 0;
    for (bool more = parm.firstValue(); more && count < 8; more = parm.nextValue(), ++count) {
        values += count > 0 ? " " : "";
        values += std::to_string(parm.value());
    }
    return values;
}

std::string refusal(psParameter& parm, char const* text) {
    try {
        parm.translate(text);
    } catch (psException const& failure) {
        return failure.info();
    }
    return "accepted";
}

} // namespace

TEST(PsIterator, ListsAndTheirRefusals) {
    psIterator<int> list;
    list.init("L");
    EXPECT_FALSE(list.firstValue());
    list.translate("64; 0x100 ;;1024;");
    EXPECT_EQ(walk(list), "64 256 1024");
    EXPECT_EQ(list.value(), 0) << "behind the end";
    EXPECT_STREQ(list.description().c_str(), "L = 64; 256; 1024");

    EXPECT_EQ(refusal(list, ""), "Empty iterator definition");
    EXPECT_EQ(refusal(list, ";;"), "Empty iterator definition");
    EXPECT_EQ(refusal(list, "  "), "Invalid value of L = ");
    EXPECT_EQ(refusal(list, "1; x ;3"), "Invalid value of L = x");
    EXPECT_EQ(walk(list), "64 256 1024") << "nothing of a refused definition is stored";

    psIterator<ZoliSize> sizes;
    sizes.init("S");
    sizes.translate("64x32; 8 x 4");
    EXPECT_STREQ(sizes.defaultString().c_str(), "64x32; 8x4");
    EXPECT_EQ(refusal(sizes, "64x32; 16"), "Invalid value of S = 16");
    EXPECT_TRUE(sizes.firstValue() && sizes.nextValue() && !sizes.nextValue());
    EXPECT_STREQ(sizes.valueString().c_str(), "0x0");
    list.firstValue();
    list.reset();
    EXPECT_FALSE(list.nextValue());
    EXPECT_EQ(list.value(), 0);
    list.add(7);
    list.init("M");
    EXPECT_STREQ(list.description().c_str(), "M = ");
}

TEST(PsStepIterator, DefinitionsAndTheirValues) {
    std::tuple<char const*, char const*, char const*> const rows[] = {
        {"64; 1024; *2", "64 128 256 512 1024", "for (S = 64; S <= 1024; S *= 2)"},
        {"10 1 -3", "10 7 4 1", "for (S = 10; S >= 1; S -= 3)"},
        {"1; 10; +0x2", "1 3 5 7 9", "for (S = 1; S <= 10; S += 2)"},
        {"10; 1; +-4", "10 6 2", "for (S = 10; S >= 1; S += -4)"},
        {"1;2;3", "1 2 3", "S = 1; 2; 3"},
        {"1 2 3", "1", "S = 1"},
        {"1; 2; 3; 4", "1 2 3 4", "S = 1; 2; 3; 4"},
        {"5", "5", "S = 5"},
        {"8; 8; *2", "8", "for (S = 8; S <= 8; S *= 2)"},
        {"-1; -8; *2", "-1 -2 -4 -8", "for (S = -1; S >= -8; S *= 2)"},
        {"10; 1; +0", "10 10 10 10 10 10 10 10", "for (S = 10; S >= 1; S += 0)"},
        {"1; 2147483647; *100000", "1 100000", "for (S = 1; S <= 2147483647; S *= 100000)"},
        {"-1073741824; -2147483648; *2", "-1073741824 -2147483648",
         "for (S = -1073741824; S >= -2147483648; S *= 2)"},
        {"2147483640; 2147483647; +7", "2147483640 2147483647",
         "for (S = 2147483640; S <= 2147483647; S += 7)"}};
    psStepIterator<int> step;
    step.init("S", 1, 2, 1, StepAdd);
    for (auto const& [text, values, description] : rows) {
        SCOPED_TRACE(text);
        step.translate(text);
        EXPECT_EQ(walk(step), values);
        EXPECT_STREQ(step.description().c_str(), description);
        EXPECT_STREQ(step.prompt().c_str(), description[0] == 'f' ? "for S" : "S");
        psStepIterator<int> again;          // the default text is itself a valid definition
        again.init("S", 0, 0, 0, StepNone); // of a list that is still empty
        again.translate(step.defaultString());
        EXPECT_EQ(walk(again), values);
    }
}

TEST(PsStepIterator, RefusalsLeaveTheDefinition) {
    std::vector<std::pair<char const*, char const*>> rows = {
        {"x; 3; +1", "Invalid first value = x"},
        {"1; y; +1", "Invalid last value = y"},
        {"1; 3; +z", "Invalid step = z"},
        {"1; 3; *", "Invalid step = "},
        {"1; 2; q", "Invalid value of S = q"}};
    for (char const* text : {"1;3;-1", "3;1;+1", "3; 1; -0", "1; 3; +0", "-8; -8; *2", "8; 1; *2",
                             "1; 10; *1", "0; 10; *2", "0; -8; *2"}) {
        rows.emplace_back(text, "Conflict between iterator limits and operation");
    }
    psStepIterator<int> step;
    EXPECT_THROW(step.init("S", 16, 2, 2, StepMul), psException);
    step.init(2, 16, 2, StepMul, "S");
    for (auto const& [text, wanted] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(refusal(step, text), wanted);
        EXPECT_STREQ(step.defaultString().c_str(), "2; 16; *2");
        EXPECT_EQ(walk(step), "2 4 8 16");
    }
}
