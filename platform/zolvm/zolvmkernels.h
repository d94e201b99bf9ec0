// zolvmkernels.h - the kernels of one code path as a table of pointers, one for each function of
// the interface.
#ifndef ZOLVM_ZOLVMKERNELS_H
#define ZOLVM_ZOLVMKERNELS_H

#include "zolvm.h"

// The kernels themselves: namespaces sse2, avx2 and avx512 hold a function of each name.
#define ZOLVM_DECLARE_PATH(path)                                                                   \
    namespace zolvm::path {                                                                        \
    ZOLVM_FUNCTIONS(ZOLVM_DECLARE)                                                                 \
    }

#define ZOLVM_FIELD(shape, name, S, D, family, kind)                                               \
    ZolStatus(*name) ZOLVM_PARAMETERS_##shape(S, D);

struct zolvmKernels {
    Zol64u needs;  // features that the path uses
    bool needsFma; // the feature mask has no bit for it
    ZOLVM_FUNCTIONS(ZOLVM_FIELD)
};

#endif
