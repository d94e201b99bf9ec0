// zolvmkernels.h - the kernels of one code path as a table of pointers, one for each function of
// the interface.
#ifndef ZOLVM_ZOLVMKERNELS_H
#define ZOLVM_ZOLVMKERNELS_H

#include "zolvm.h"

// The kernels themselves: namespaces sse2, avx2 and avx512 hold a function of each name.
#define ZOLVM_DECLARE_PATH(path)                                                                   \
    namespace zolvm::path {                                                                        \
    ZOLVM_UNARY(ZOLVM_DECLARE_UNARY)                                                               \
    ZOLVM_BINARY(ZOLVM_DECLARE_BINARY)                                                             \
    ZOLVM_SCALAR(ZOLVM_DECLARE_SCALAR)                                                             \
    ZOLVM_TWO_RESULTS(ZOLVM_DECLARE_TWO_RESULTS)                                                   \
    }

#define ZOLVM_FIELD_UNARY(name, S, D) ZolStatus (*name)(S const*, D*, int);
#define ZOLVM_FIELD_BINARY(name, S, D) ZolStatus (*name)(S const*, S const*, D*, int);
#define ZOLVM_FIELD_SCALAR(name, S, D) ZolStatus (*name)(S const*, S, D*, int);
#define ZOLVM_FIELD_TWO_RESULTS(name, S, D) ZolStatus (*name)(S const*, D*, D*, int);

struct zolvmKernels {
    Zol64u needs;  // features that the path uses
    bool needsFma; // the feature mask has no bit for it
    ZOLVM_UNARY(ZOLVM_FIELD_UNARY)
    ZOLVM_BINARY(ZOLVM_FIELD_BINARY)
    ZOLVM_SCALAR(ZOLVM_FIELD_SCALAR)
    ZOLVM_TWO_RESULTS(ZOLVM_FIELD_TWO_RESULTS)
};

#endif
