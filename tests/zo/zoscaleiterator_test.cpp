// zoscaleiterator_test.cpp - the scale factor parameter.
#include "zo/zoscaleiterator.h"

#include <gtest/gtest.h>

#include "pstest/pstest.h"

namespace {

TEST(ZoScaleIterator, ListsValuesInTheLastLeadingColumn) {
    int const factors[] = {0, 1, -3, 4, 5, 6, 7};
    zoScaleIterator scale;
    scale.init(7, factors);
    EXPECT_STREQ("0; 1; -3; 4; 5; 6", scale.defaultString().c_str());
    EXPECT_EQ(psTest::m_numParmsColm - 1, scale.colmIndex());
    EXPECT_TRUE(zoScaleIterator::isScaled(zoFunc("zolsAdd_16s_ISfs")));
    EXPECT_TRUE(zoScaleIterator::isScaled(zoFunc("zolsExp_16s_Fix")));
    EXPECT_FALSE(zoScaleIterator::isScaled(zoFunc("zolsFixSfs_32f_A24")));
}

} // namespace
