// timvectors.cpp - memory of the timing tests.
#include "timing/timvectors.h"

#include <cstdint>
#include <cstdlib>
#include <malloc.h>

#include "zo/zopeer.h"
#include "zo/zosides.h"

psStepIterator<int> len;

constinit void* pSrcO = nullptr;
constinit void* pSrc2O = nullptr;
constinit void* pDstO = nullptr;
constinit void* pDst2O = nullptr;
constinit void* pSrc = nullptr;
constinit void* pSrc2 = nullptr;
constinit void* pDst = nullptr;
constinit void* pDst2 = nullptr;
constinit void* xA = nullptr;
constinit void* xB = nullptr;
constinit void* xC = nullptr;
constinit void* xD = nullptr;
constinit void* x_A = nullptr;
constinit void* x_B = nullptr;
constinit void* x_C = nullptr;
constinit void* x_D = nullptr;

namespace {

struct Vector {
    void*& raw;
    void*& aligned;
};
constexpr Vector sources[] = {{pSrcO, pSrc}, {pSrc2O, pSrc2}};
constexpr Vector destinations[] = {{pDstO, pDst}, {pDst2O, pDst2}};
constexpr Vector scalars[] = {{xA, x_A}, {xB, x_B}, {xC, x_C}, {xD, x_D}};

template <int N>
bool allocate(Vector const (&vectors)[N], size_t size) {
    bool all = true;
    for (Vector const& vector : vectors) {
        vector.raw = malloc(size);
        all = all && vector.raw != nullptr;
    }
    return all;
}

// Those that a second process shares, from the index given on.
template <int N>
bool share(Vector const (&vectors)[N], int index, size_t size) {
    bool all = true;
    for (Vector const& vector : vectors) {
        vector.raw = g_sides.peer()->vector(index++, size);
        all = all && vector.raw != nullptr;
    }
    return all;
}

template <int N>
void align(Vector const (&vectors)[N]) {
    for (Vector const& vector : vectors) {
        size_t const offset = -reinterpret_cast<uintptr_t>(vector.raw) & 15U;
        vector.aligned = vector.raw != nullptr ? static_cast<char*>(vector.raw) + offset : nullptr;
    }
}

template <int N>
void release(Vector const (&vectors)[N], bool isShared = false) {
    for (Vector const& vector : vectors) {
        if (!isShared) {
            free(vector.raw);
        }
        vector.raw = nullptr;
        vector.aligned = nullptr;
    }
}

} // namespace

bool timAllocVectors(size_t sourceElement, size_t destinationElement) {
    if (g_sides.peer() != nullptr) {
        bool const sharesSources = share(sources, 0, timVectorElements * sourceElement);
        return share(destinations, 2, timVectorElements * destinationElement) && sharesSources;
    }
    // A mapping of its own for each vector, so that all begin at the same place in a page. Left to
    // itself malloc maps only those of a run's first tests and cuts the others from the heap, at
    // distances where loads wait for stores to other addresses: the same function would read
    // differently alone and behind others.
    mallopt(M_MMAP_THRESHOLD, static_cast<int>(timVectorElements * sizeof(float)));
    bool const hasSources = allocate(sources, timVectorElements * sourceElement);
    return allocate(destinations, timVectorElements * destinationElement) && hasSources;
}

bool timAllocScalars(size_t element) { return allocate(scalars, 0x400 + element); }

void timAlignVectors() {
    align(sources);
    align(destinations);
    align(scalars);
}

void timSetVectors(void* const* vectors) {
    for (Vector const* group : {sources, destinations}) {
        for (int i = 0; i < 2; ++i) {
            group[i].raw = *vectors++;
        }
    }
    timAlignVectors();
}

void timFreeVectors() {
    bool const isShared = g_sides.peer() != nullptr;
    release(sources, isShared);
    release(destinations, isShared);
    release(scalars);
}
