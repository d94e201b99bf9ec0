// psmemory.h - memory for measured vectors: blocks at a chosen distance from an
// alignment boundary, and the book of all that are alive.
#ifndef PSMEMORY_PSMEMORY_H
#define PSMEMORY_PSMEMORY_H

#include "psmemory/psobject.h"

inline constexpr int PS_ALIGN_DEF = 64;
extern int PS_ALIGN_MAX; // the alignment in bytes

// One live block.
struct Address {
    void* address;        // the block base
    void* alignedPointer; // what the caller got
    int size;             // bytes as asked
    void* owner;          // a psObject or one of the marks; may be null
};

class AddressList : public psList<Address> {
public:
    iterator cursor; // next entry of psMallocNext
};

extern AddressList* pAddressList; // made by the first psMalloc

// size bytes, shift bytes behind a block base, at misalign bytes from the alignment. Null, told at
// the error level, when there is no memory. The pair with psFree; each line at the memory level.
void* psMalloc(int size, int misalign, int shift, void* owner);
void* psMalloc(void*& target, int size, int misalign, int shift);
void psFree(void* pointer); // null and unknown pointers are left alone
int psFreeAll();            // drops the book, not the blocks; for the end of the process

bool psMallocInfo(void* pointer, int* size, void** owner);
void* psMallocFirst(int* size, void** owner); // walks the live blocks; null at the end
void* psMallocNext(int* size, void** owner);

void psSetAlignMax(int bytes); // stored as it is; blocks are aligned to a power of two
int psGetVectorAlign();        // misalignment step
void psSetVectorAlign(int step);
int psGetVectorShift(); // bytes that each further vector of a test is set apart
void psSetVectorShift(int bytes);
bool psGetAlignSrc(); // misalign only the first vector of a test
void psSetAlignSrc(bool firstOnly);
bool psGetAlignByByte(); // count the misalignment in bytes, not elements
void psSetAlignByByte(bool byByte);

// Over all live blocks: the data reset, or the data saving, of each owner. The sum of the answers.
int psResetAllVectors();
int psReserveAllVectors();

#endif
