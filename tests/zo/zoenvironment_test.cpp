// zoenvironment_test.cpp - the tie to a library that lacks everything.
#include "zo/zoenvironment.h"

#include <gtest/gtest.h>

#include "ps/psregister.h"
#include "pscpu/pszolentry.h"
#include "zo/zosession.h"

namespace {

TEST(ZoEnvironment, MissingFunctionsKeepTheReplacements) {
    EXPECT_NE(nullptr, dynamic_cast<zoSession*>(pSession)); // registered before main
    psFillZolEntries();
    zoSetZolEnvironment();
    ASSERT_NE(nullptr, zol_Init);
    EXPECT_EQ(-2, zol_Init());
    ASSERT_NE(nullptr, zoGetZolVersion_zolvm());
    EXPECT_STREQ("unknown version", zoGetZolVersion_zolvm()->version);
}

} // namespace
