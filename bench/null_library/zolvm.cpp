// zolvm.cpp - all measured functions, none of which does anything.
#include "zolvm.h"

ZolLibraryVersion const* zolvmGetLibVersion(void) {
    static constexpr ZolLibraryVersion version = {0, 0, 0, "null library", "0.0.0", ""};
    return &version;
}

#define DEFINE_UNARY(name, S, D)                                                                   \
    ZolStatus name(S const*, D*, int) { return zolStsNoErr; }
#define DEFINE_BINARY(name, S, D)                                                                  \
    ZolStatus name(S const*, S const*, D*, int) { return zolStsNoErr; }
#define DEFINE_SCALAR(name, S, D)                                                                  \
    ZolStatus name(S const*, S, D*, int) { return zolStsNoErr; }
#define DEFINE_TWO_RESULTS(name, S, D)                                                             \
    ZolStatus name(S const*, D*, D*, int) { return zolStsNoErr; }

ZOLVM_UNARY(DEFINE_UNARY)
ZOLVM_BINARY(DEFINE_BINARY)
ZOLVM_SCALAR(DEFINE_SCALAR)
ZOLVM_TWO_RESULTS(DEFINE_TWO_RESULTS)
