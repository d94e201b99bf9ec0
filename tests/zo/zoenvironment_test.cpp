// zoenvironment_test.cpp - the tie to a library that lacks everything.
#include "zo/zoenvironment.h"

#include <gtest/gtest.h>

#include "ps/psregister.h"
#include "pscpu/pszolentry.h"
#include "pstest/pstestlist.h"
#include "zo/zolibrary.h"
#include "zo/zosession.h"
#include "zo/zotest.h"

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

TEST(ZoEnvironment, ALinkedLibraryMayLackAllButOneFunction) {
    zoTest test(static_cast<psFuncOld>(nullptr), "gnu_get_libc_version", "", "");
    psRegTest(&test);
    zoLibrary linked;
    linked.openLinked();
    EXPECT_TRUE(linked.files().vm.contains("/libc")) << linked.files().vm.c_str();
    EXPECT_STREQ(linked.files().core.c_str(), "");
    EXPECT_EQ(linked.countFunctions(), 1);
    EXPECT_EQ(linked.start({5, 2}), 0); // nothing to start
    EXPECT_STREQ(linked.version().c_str(), "libzolvm, unknown version, unknown date");
    pTestList->clear();
}

} // namespace
