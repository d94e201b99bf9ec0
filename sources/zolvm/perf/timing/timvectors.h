// timvectors.h - the vectors and the Length that all timing tests share: a test holds them
// from canStart to flushStart, so only one test can.
#ifndef TIMING_TIMVECTORS_H
#define TIMING_TIMVECTORS_H

#include <cstddef>

#include "psparameter/psiterator.h"

constexpr int timVectorElements = 262144 + 1024; // room for longer lengths than are measured
constexpr int timFirstLength = 32;
constexpr int timLastLength = 32768; // and so many source elements are written
constexpr int timPoolSize = 1000;    // values of a pool that the sources are drawn from

// Hidden, so that the timed loop reads them where they are, without the table of addresses, which
// would take its registers.
#pragma GCC visibility push(hidden)

extern psStepIterator<int> len; // "Length", elements of a vector

// Two sources and two destinations: as malloc gave them, and on a 16-byte boundary.
extern void* pSrcO;
extern void* pSrc2O;
extern void* pDstO;
extern void* pDst2O;
extern void* pSrc;
extern void* pSrc2;
extern void* pDst;
extern void* pDst2;

// Scalars of the shape with scalar parameters, of the real tests alone; likewise.
extern void* xA;
extern void* xB;
extern void* xC;
extern void* xD;
extern void* x_A;
extern void* x_B;
extern void* x_C;
extern void* x_D;

#pragma GCC visibility pop

// False when there is no memory; what was allocated by then stays for timFreeVectors.
bool timAllocVectors(size_t sourceElement, size_t destinationElement);
bool timAllocScalars(size_t element);
void timAlignVectors();
void timSetVectors(void* const* vectors); // sources and destinations that another process holds
void timFreeVectors();

#endif
