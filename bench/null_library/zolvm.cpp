// zolvm.cpp - all measured functions, none of which does anything.
#include "zolvm.h"

ZolLibraryVersion const* zolvmGetLibVersion(void) {
    static constexpr ZolLibraryVersion version = {0, 0, 0, "null library", "0.0.0", ""};
    return &version;
}

#pragma GCC diagnostic ignored "-Wunused-parameter"
#define DEFINE(shape, name, S, D, family, kind)                                                    \
    ZolStatus name ZOLVM_PARAMETERS_##shape(S, D) { return zolStsNoErr; }
ZOLVM_FUNCTIONS(DEFINE)
