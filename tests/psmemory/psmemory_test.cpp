// psmemory_test.cpp - where blocks lie, and the book of the live ones.
#include "psmemory/psmemory.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

#include "support/messagecapture.h"

namespace {

class PsMemory : public testing::Test {
protected:
    void TearDown() override {
        while (void* block = psMallocFirst(nullptr, nullptr)) {
            psFree(block);
        }
        psFreeAll();
        psSetAlignMax(PS_ALIGN_DEF);
    }

    // Takes a block, fills it, checks its place and gives it back.
    static void checkBlock(int align, int misalign, int shift, int size) {
        SCOPED_TRACE(testing::Message() << align << ' ' << misalign << ' ' << shift << ' ' << size);
        void* const block = psMalloc(size, misalign, shift, nullptr);
        ASSERT_NE(block, nullptr);
        std::memset(block, 0x5a, static_cast<std::size_t>(size)); // must be ours
        std::intptr_t const base = reinterpret_cast<std::intptr_t>(pAddressList->begin()->address);
        EXPECT_EQ(base % align, 0);
        int const r = misalign % align;
        std::intptr_t const past = reinterpret_cast<std::intptr_t>(block) - base;
        if (r >= 0) {
            EXPECT_GE(past, shift);
            EXPECT_LT(past, shift + align);
            EXPECT_EQ(past % align & ~r, 0);
            EXPECT_TRUE(shift % align != 0 || past % align == r) << past;
        }
        psFree(block); // finds malloc's pointer untouched
    }
};

} // namespace

TEST_F(PsMemory, BlocksLieWhereShiftAndMisalignmentPutThem) {
    for (int align : {16, 64, 4096}) {
        psSetAlignMax(align);
        for (int misalign : {0, 1, 6, 15, 63, 64, 70, -1, -6}) {
            for (int shift : {0, 1, 8, 100, 512, 4096, 32256}) {
                for (int size : {0, 1, 7, 4097}) {
                    checkBlock(align, misalign, shift, size);
                }
            }
        }
    }
}

TEST_F(PsMemory, TheAlignmentIsStoredAsItIs) {
    psSetAlignMax(48);
    psSetVectorAlign(70);
    EXPECT_EQ(psGetVectorAlign(), 22);
    psSetVectorAlign(0);
}

TEST_F(PsMemory, ImpossibleRequestsAreToldAndLeaveNothing) {
    MessageCapture messages(MSG_ERR);
    EXPECT_EQ(psMalloc(-1, 0, 0, nullptr), nullptr);
    EXPECT_EQ(psMalloc(8, 0, -4096, nullptr), nullptr);
    EXPECT_EQ(messages.text(), "-- Memory error: can't allocate -1 bytes\n"
                               "-- Memory error: can't allocate 8 bytes\n");
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), nullptr);
}

TEST_F(PsMemory, TheBookKnowsTheLiveBlocksInOrder) {
    int size = -1;
    void* owner = nullptr;
    void* const first = psMalloc(10, 0, 0, MEM_OBJECT_IS_BUFFER);
    void* second = nullptr;
    EXPECT_EQ(psMalloc(second, 20, 0, 0), second);
    void* const third = psMalloc(30, 0, 0, MEM_OBJECT_IS_SUBOBJECT);

    EXPECT_TRUE(psMallocInfo(third, &size, &owner));
    EXPECT_EQ(size, 30);
    EXPECT_EQ(owner, MEM_OBJECT_IS_SUBOBJECT);
    EXPECT_FALSE(psMallocInfo(&size, nullptr, nullptr));
    EXPECT_EQ(psMallocFirst(&size, &owner), first);
    EXPECT_EQ(size, 10);
    EXPECT_EQ(owner, MEM_OBJECT_IS_BUFFER);
    psFree(second); // the block that the walk would meet next
    EXPECT_EQ(psMallocNext(nullptr, nullptr), third);
    EXPECT_EQ(psMallocNext(&size, &owner), nullptr);
    psFree(second);
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), first);
}

TEST_F(PsMemory, FreeAllForgetsTheBlocks) {
    void* const old = psMalloc(16, 0, 0, nullptr);
    Address const entry = *pAddressList->begin();
    EXPECT_EQ(psFreeAll(), 0);
    psFree(old);
    void* const fresh = psMalloc(16, 0, 0, nullptr);
    psFree(old);
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), fresh);
    std::free(static_cast<void**>(entry.address)[-16]); // the word that psFree would have used
}

TEST_F(PsMemory, EachBlockIsToldAtTheMemoryLevel) {
    MessageCapture messages(MSG_MEMORY);
    void* const block = psMalloc(24, 0, 512, nullptr);
    psString fields;
    fields << "size:24  address:" << pAddressList->begin()->address << "  alignedPointer:" << block;
    psFree(block);
    psFree(&fields);
    psFree(nullptr);
    std::string const known = fields.c_str();
    EXPECT_EQ(messages.text(),
              " - psMalloc: " + known + "\n - psFree: " + known + "\n - psFree: \n");
}
