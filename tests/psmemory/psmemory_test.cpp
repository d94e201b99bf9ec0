// psmemory_test.cpp - where blocks lie, and the book of the live ones.
#include "psmemory/psmemory.h"

#include <cstdint>
#include <cstdlib>
#include <malloc.h>

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

    // Takes a block, checks its place and its size, and gives it back.
    static void checkBlock(int align, int misalign, int shift, int size) {
        SCOPED_TRACE(testing::Message() << align << ' ' << misalign << ' ' << shift << ' ' << size);
        void* const block = psMalloc(size, misalign, shift, nullptr);
        ASSERT_NE(block, nullptr);
        std::intptr_t const place = reinterpret_cast<std::intptr_t>(block);
        auto* const base = static_cast<void**>(pAddressList->begin()->address);
        std::intptr_t const start = reinterpret_cast<std::intptr_t>(base);
        EXPECT_EQ(start % align, 0);
        EXPECT_EQ(place, (start + shift + align - 1) & (misalign % align - align));
        std::intptr_t const raw = reinterpret_cast<std::intptr_t>(base[-16]);
        EXPECT_LE(place + size - raw, static_cast<std::intptr_t>(malloc_usable_size(base[-16])));
        EXPECT_GE(start - raw, 128);
        psFree(block); // finds malloc's pointer untouched
    }
};

} // namespace

TEST_F(PsMemory, BlocksLieWhereShiftAndMisalignmentPutThem) {
    checkBlock(64, 0, 0, 1); // with nothing set
    EXPECT_EQ(psGetVectorAlign(), 0);
    EXPECT_EQ(psGetVectorShift(), 512);
    EXPECT_TRUE(psGetAlignSrc() && psGetAlignByByte());
    psSetAlignMax(48); // stored as it is
    psSetVectorAlign(70);
    EXPECT_EQ(psGetVectorAlign(), 22);
    psSetVectorAlign(0);
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

TEST_F(PsMemory, ImpossibleRequestsAreToldAndLeaveNothing) {
    MessageCapture messages(MSG_ERR);
    EXPECT_EQ(psMalloc(-1, 0, 0, nullptr), nullptr);
    EXPECT_EQ(psMalloc(8, 0, -4096, nullptr), nullptr);
    EXPECT_EQ(psMalloc(7, 4, -128, nullptr), nullptr); // into what psFree needs
    psFree(psMalloc(7, 8, -128, nullptr));             // just behind it
    EXPECT_EQ(messages.text(), "-- Memory error: can't allocate -1 bytes\n"
                               "-- Memory error: can't allocate 8 bytes\n"
                               "-- Memory error: can't allocate 7 bytes\n");
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), nullptr);
}

TEST_F(PsMemory, TheBookKnowsTheLiveBlocksInOrder) {
    int size = -1;
    void* owner = nullptr;
    void* const first = psMalloc(10, 0, 0, MEM_OBJECT_IS_BUFFER);
    void* second = nullptr;
    EXPECT_EQ(psMalloc(second, 20, 0, 0), second);
    EXPECT_NE(second, nullptr);
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
    EXPECT_EQ(size, 10); // untouched at the end
    psFree(second);
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), first);
}

TEST_F(PsMemory, FreeAllForgetsTheBlocks) {
    void* const old = psMalloc(16, 0, 0, nullptr);
    Address const entry = *pAddressList->begin();
    EXPECT_EQ(psFreeAll(), 0);
    EXPECT_FALSE(psMallocInfo(old, nullptr, nullptr));
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), nullptr);
    EXPECT_EQ(psMallocNext(nullptr, nullptr), nullptr);
    psFree(old);
    void* const fresh = psMalloc(16, 0, 0, nullptr);
    EXPECT_EQ(psMallocNext(nullptr, nullptr), nullptr); // no walk has begun
    psFree(old);
    EXPECT_EQ(psMallocFirst(nullptr, nullptr), fresh);
    std::free(static_cast<void**>(entry.address)[-16]); // the word that psFree would have used
}

TEST_F(PsMemory, EachOwnerIsAskedAndTheAnswersAddUp) {
    class Owner : public psObject {
    public:
        int reserveCopy() override { return 3; }
        int setReservedCopy() override { return 5; }
    } object;
    EXPECT_EQ(psReserveAllVectors(), 0);
    psObject* const owners[] = {&object, MEM_OBJECT_IS_BUFFER, nullptr, MEM_OBJECT_IS_SUBOBJECT,
                                &object};
    for (psObject* owner : owners) {
        psMalloc(8, 0, 0, owner);
    }
    EXPECT_EQ(psReserveAllVectors(), 6);
    EXPECT_EQ(psResetAllVectors(), 10);
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
