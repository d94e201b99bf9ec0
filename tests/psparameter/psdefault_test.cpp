// psdefault_test.cpp - texts of single values.
#include "psparameter/psdefault.h"

#include <gtest/gtest.h>

#include "psbase/psexception.h"

namespace {

template <typename Parm>
void expectValues(Parm& parm, std::initializer_list<std::pair<char const*, int>> rows) {
    for (auto const& [text, wanted] : rows) {
        SCOPED_TRACE(text);
        parm.translate(text);
        EXPECT_EQ(parm.value(), wanted);
    }
}

} // namespace

TEST(PsDefault, NumbersFromText) {
    psDefault<int> parm(5, "N");
    expectValues(parm, {{"12abc", 12}, {"0x10", 16}, {"0X1f", 31}, {"-3", -3}});
    EXPECT_THROW(parm.translate("abc"), psException);
    EXPECT_EQ(parm.value(), -3);
    EXPECT_TRUE(parm.firstValue());
    EXPECT_FALSE(parm.nextValue());
    EXPECT_TRUE(parm.firstValue());
    parm.reset();
    EXPECT_EQ(parm.value(), 0);
    EXPECT_TRUE(parm.nextValue()) << "the iteration starts anew";
}

TEST(PsDefault, AlignmentsAreBentToTheLimit) {
    DefaultAlign align(0, "A");
    expectValues(align, {{"70", 6}, {"64", 0}, {"-1", -1}, {"63", 63}});
    DefaultShift shift(0, "S");
    expectValues(shift, {{"100", 64}, {"512", 512}, {"63", 0}, {"-1", -64}});
}

TEST(PsMapDefault, NamesAreAbbreviatedInAnyCaseFirstEntryWins) {
    psMapDefault<int> map;
    map.add(0, "Auto");
    map.add(1, "Manual");
    map.add(2, "Medium");
    map.add(1, "Mean");
    map.init(2, "M");
    EXPECT_STREQ(map.prompt().c_str(), "M {Auto|Mean|Medium}");
    expectValues(map, {{"m", 1}, {"MED", 2}, {"aut", 0}, {"Mean", 1}, {"", 0}, {"Mean", 1}});
    EXPECT_THROW(map.translate("Manual"), psException);
    EXPECT_STREQ(map.valueString().c_str(), "Mean");
    EXPECT_TRUE(map.firstValue());
    map.m_toRead = false;
    map.m_flags = psParameter::textInQuotes;
    map.init(0, "Again");
    EXPECT_TRUE(map.m_toRead && map.m_flags == 0 && map.nextValue() && map.value() == 0);
}
