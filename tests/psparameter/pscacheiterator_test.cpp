// pscacheiterator_test.cpp - the arithmetic of the adjustments. The trials themselves are driven
// through the run loop of a test.
#include "psparameter/pscacheiterator.h"

#include <gtest/gtest.h>
#include <iterator>

namespace {

class SizeParameter : public psDefault_NSC<ZoliSize> {
public:
    SizeParameter(int width, int height) : psDefault_NSC<ZoliSize>({width, height}, "Size") {}
};

} // namespace

TEST(PsCacheIterator, IntegersJumpThenCreep) {
    struct {
        int value;
        int size;
        int limit;
        bool bySteps;
        int wanted; // 0: refused
    } const rows[] = {
        {32, 1000, 100000, false, 2048}, // 64 times is the last power of two below the limit
        {32, 100000, 100000, false, 16}, // at least one halving
        {32, 90000, 100000, false, 32},  {4096, 100000, 1000, false, 32},
        {1, 100000, 1000, false, 0},     {32, 100, 1000, true, 64},
        {32, 1000, 100, true, 16},       {1 << 30, 1, 1000, true, 0}, // no int holds it
        {1 << 20, 1, 1 << 30, false, 0},                              // nor this
        {32, 0, 1000, false, 0},   // no factor changes nothing into something
        {1024, 1000, 0, false, 1}, // an unknown cache: down as far as the size goes
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        psDefault<int> parm(row.value, "N");
        psCacheIteratorInt iterator(parm, nullptr, nullptr);
        EXPECT_EQ(iterator.setNewValueToParm(row.size, row.limit, row.bySteps), row.wanted != 0);
        EXPECT_EQ(parm.value(), row.wanted != 0 ? row.wanted : row.value);
    }
}

TEST(PsCacheIterator, TwoDimensionsTakeTurns) {
    struct {
        ZoliSize value;
        int size;
        int limit;
        bool bySteps;
        bool changed;
        ZoliSize wanted;
    } const rows[] = {
        {{16, 16}, 1000, 9000, false, true, {64, 32}}, // up 2 and 2, down 1 at the second
        {{64, 64}, 9000, 1000, false, true, {16, 16}}, {{2, 1}, 9000, 1000, false, false, {2, 1}},
        {{16, 16}, 100, 1000, true, true, {32, 16}},   {{32, 16}, 1000, 100, true, true, {16, 16}},
        {{16, 16}, 1000, 100, true, true, {16, 8}},    {{1, 1}, 1000, 100, true, false, {1, 1}},
        {{0, 8}, 1000, 100, true, false, {0, 8}}, // the other field is nothing
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        SizeParameter parm(row.value.width, row.value.height);
        psCacheIteratorSize iterator(parm, nullptr, nullptr);
        EXPECT_EQ(iterator.setNewValueToParm(row.size, row.limit, row.bySteps), row.changed);
        EXPECT_EQ(parm.value().width, row.wanted.width);
        EXPECT_EQ(parm.value().height, row.wanted.height);
    }
}
