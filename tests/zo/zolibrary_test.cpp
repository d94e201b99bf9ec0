// zolibrary_test.cpp - copies of a library, here of the C library, in one process.
#include "zo/zolibrary.h"

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "pstest/pstestlist.h"
#include "support/tempdirectory.h"
#include "zo/zotest.h"

namespace {

class ZoLibrary : public testing::Test {
protected:
    ZoLibrary() { psRegTest(&m_test); }
    ~ZoLibrary() override { pTestList->clear(); }

private:
    zoTest m_test{static_cast<psFuncOld>(nullptr), "gnu_get_libc_version", "", ""};
};

TEST_F(ZoLibrary, ALinkedLibraryMayLackAllButOneFunction) {
    zoLibrary linked;
    linked.openLinked();
    EXPECT_TRUE(linked.files().vm.contains("/libc")) << linked.files().vm.c_str();
    EXPECT_STREQ(linked.files().core.c_str(), "");
    EXPECT_EQ(linked.countFunctions(), 1);
    EXPECT_EQ(linked.start({5, 2}), 0); // nothing to start
    EXPECT_STREQ(linked.version().c_str(), "libzolvm, unknown version, unknown date");
}

TEST_F(ZoLibrary, ABareNameIsThatOfAFileHere) {
    TempDirectory const dir;
    writeFile(dir.path + "a.so", "");
    writeFile(dir.path + "libzolcore.so", "");
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path);
    zoLibraryFiles files;
    psString error;
    EXPECT_TRUE(files.find("a.so", error));
    std::filesystem::current_path(before);
    EXPECT_EQ(files.vm + " " + files.core, psString("./a.so ./libzolcore.so"));
}

#ifndef __SANITIZE_ADDRESS__ // whose run time knows one name space
TEST_F(ZoLibrary, WhatThisProcessCannotHoldWantsAnother) {
    zoLibraryFiles files = zoLibraryFiles::linked();
    psString error;
    for (int round = 0; round < 2; ++round) { // the first one's are given back
        zoLibrary copies[20]; // each wants static thread-local storage and a name space
        int held = 0;
        while (held < 20 && copies[held].open(files, error)) {
            ++held;
        }
        ASSERT_TRUE(held > 0 && held < 20);
        EXPECT_TRUE(copies[held].wantsProcess()) << error.c_str();
        EXPECT_NE(copies[0].function("puts"), dlsym(RTLD_DEFAULT, "puts"));
    }
    zoLibrary none;
    files.vm = "/no/where.so";
    EXPECT_FALSE(none.open(files, error));
    EXPECT_FALSE(none.wantsProcess());
}
#endif

} // namespace
