// psmemory.cpp - aligned blocks and their book. From the low address upward a block is:
// slack of the rounding, the header with malloc's pointer in its first word, the base,
// the caller's shift, the caller's bytes.
#include "psmemory/psmemory.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "psstream/psostream.h"

constinit int PS_ALIGN_MAX = PS_ALIGN_DEF;
constinit AddressList* pAddressList = nullptr;

namespace {

constexpr int headerBytes = 128; // between malloc's pointer, 16 words below, and the base

// The first rounding has its own copies of the alignment.
constinit int ALIGN_BYTES = PS_ALIGN_DEF;
constinit int ALIGN_MASK = -PS_ALIGN_DEF;

constinit int VectorAlign = 0;
constinit int VectorShift = 512;
constinit bool AlignSrc = true;
constinit bool AlignByByte = true;

void** mallocWord(void* base) {
    return reinterpret_cast<void**>(static_cast<char*>(base) - headerBytes);
}

void* noMemory(int size) {
    g_ostrm << MSG_ERR << "-- Memory error: can't allocate " << size << " bytes\n" << MSG_RESTORE;
    return nullptr;
}

void printAddress(Address const& entry) {
    g_ostrm << "size:" << entry.size << "  address:" << entry.address
            << "  alignedPointer:" << entry.alignedPointer;
}

AddressList::iterator findAddress(AddressList& list, void const* pointer) {
    AddressList::iterator place = list.begin();
    while (place != list.end() && place->alignedPointer != pointer) {
        ++place;
    }
    return place;
}

void giveEntry(Address const& entry, int* size, void** owner) {
    if (size != nullptr) {
        *size = entry.size;
    }
    if (owner != nullptr) {
        *owner = entry.owner;
    }
}

// Sum of what one operation answers for the owner of each live block.
int sumOverOwners(int (psObject::*operation)()) {
    int sum = 0;
    void* owner = nullptr;
    for (void* block = psMallocFirst(nullptr, &owner); block != nullptr;
         block = psMallocNext(nullptr, &owner)) {
        if (owner != nullptr) {
            sum += (static_cast<psObject*>(owner)->*operation)();
        }
    }
    return sum;
}

} // namespace

void* psMalloc(int size, int misalign, int shift, void* owner) {
    int const r = misalign % PS_ALIGN_MAX;
    long long const bytes =
        static_cast<long long>(size) + shift + 256 + std::max(r, 0) + 2LL * PS_ALIGN_MAX;
    void* const raw =
        size < 0 || bytes <= 0 ? nullptr : std::malloc(static_cast<std::size_t>(bytes));
    if (raw == nullptr) {
        return noMemory(size);
    }
    // One expression rounds up and misaligns: with a shift that is a multiple of the alignment
    // the low bits of the sum are all ones, and the mask leaves those of r.
    std::intptr_t const baseAddress =
        (reinterpret_cast<std::intptr_t>(raw) + ALIGN_BYTES + headerBytes) & ALIGN_MASK;
    std::intptr_t const result = (baseAddress + shift + PS_ALIGN_MAX - 1) & (r - PS_ALIGN_MAX);
    // A negative shift or misalignment can lead down to the word that psFree needs.
    std::intptr_t const wordEnd =
        baseAddress - headerBytes + static_cast<std::intptr_t>(sizeof(void*));
    if (result < wordEnd) {
        std::free(raw);
        return noMemory(size);
    }
    void* const base = reinterpret_cast<void*>(baseAddress);
    *mallocWord(base) = raw;

    if (pAddressList == nullptr) {
        pAddressList = new AddressList;
        pAddressList->cursor = pAddressList->end();
    }
    Address const entry{base, reinterpret_cast<void*>(result), size, owner};
    pAddressList->insert(pAddressList->end(), entry);
    g_ostrm << MSG_MEMORY << " - psMalloc: ";
    printAddress(entry);
    g_ostrm << "\n" << MSG_RESTORE_FLUSH;
    return entry.alignedPointer;
}

void* psMalloc(void*& target, int size, int misalign, int shift) {
    target = psMalloc(size, misalign, shift, nullptr);
    return target;
}

void psFree(void* pointer) {
    if (pAddressList == nullptr || pointer == nullptr) {
        return;
    }
    AddressList::iterator const place = findAddress(*pAddressList, pointer);
    bool const known = place != pAddressList->end();
    g_ostrm << MSG_MEMORY << " - psFree: ";
    if (known) {
        printAddress(*place);
    }
    g_ostrm << "\n" << MSG_RESTORE_FLUSH;
    if (!known) {
        return;
    }
    void* const base = place->address;
    bool const underCursor = place == pAddressList->cursor;
    AddressList::iterator const next = pAddressList->erase(place);
    if (underCursor) {
        pAddressList->cursor = next; // a walk may free what it meets
    }
    std::free(*mallocWord(base));
}

int psFreeAll() {
    delete pAddressList;
    pAddressList = nullptr;
    return 0;
}

bool psMallocInfo(void* pointer, int* size, void** owner) {
    if (pAddressList == nullptr) {
        return false;
    }
    AddressList::iterator const place = findAddress(*pAddressList, pointer);
    if (place == pAddressList->end()) {
        return false;
    }
    giveEntry(*place, size, owner);
    return true;
}

void* psMallocFirst(int* size, void** owner) {
    if (pAddressList == nullptr) {
        return nullptr;
    }
    pAddressList->cursor = pAddressList->begin();
    return psMallocNext(size, owner);
}

void* psMallocNext(int* size, void** owner) {
    if (pAddressList == nullptr || pAddressList->cursor == pAddressList->end()) {
        return nullptr;
    }
    Address const& entry = *pAddressList->cursor++;
    giveEntry(entry, size, owner);
    return entry.alignedPointer;
}

void psSetAlignMax(int bytes) {
    PS_ALIGN_MAX = bytes;
    ALIGN_BYTES = bytes;
    ALIGN_MASK = -bytes;
}

int psGetVectorAlign() { return VectorAlign; }
void psSetVectorAlign(int step) { VectorAlign = step % PS_ALIGN_MAX; }
int psGetVectorShift() { return VectorShift; }
void psSetVectorShift(int bytes) { VectorShift = bytes; }
bool psGetAlignSrc() { return AlignSrc; }
void psSetAlignSrc(bool firstOnly) { AlignSrc = firstOnly; }
bool psGetAlignByByte() { return AlignByByte; }
void psSetAlignByByte(bool byByte) { AlignByByte = byByte; }

int psResetAllVectors() { return sumOverOwners(&psObject::setReservedCopy); }
int psReserveAllVectors() { return sumOverOwners(&psObject::reserveCopy); }
