// zolvm.cpp - libzolvm's interface: version, choice of the code path, and the exported functions,
// each one indirect call into the table of the path.
#pragma GCC visibility push(default)
#include "zolvm.h"
#pragma GCC visibility pop

#include "zolcore/zoldispatch.h"
#include "zolvm/zolvmkernels.h"

// A zolcore of somebody else has no such function; the path then follows the processor alone.
#pragma weak zolcoreOnSelect

ZOLVM_DECLARE_PATH(sse2)
ZOLVM_DECLARE_PATH(avx2)
ZOLVM_DECLARE_PATH(avx512)

namespace {

constexpr Zol64u avx2Features = zolCPUID_AVX | zolCPUID_AVX2;
constexpr Zol64u avx512Features = avx2Features | zolCPUID_AVX512F | zolCPUID_AVX512CD |
                                  zolCPUID_AVX512BW | zolCPUID_AVX512DQ | zolCPUID_AVX512VL;

} // namespace

#define ZOLVM_POINTER(shape, name, S, D, family, kind) .name = name,
#define ZOLVM_PATH_TABLE(path, features, fma)                                                      \
    namespace zolvm::path {                                                                        \
    static constinit zolvmKernels const kernels = {                                                \
        .needs = features, .needsFma = fma, ZOLVM_FUNCTIONS(ZOLVM_POINTER)};                       \
    }
ZOLVM_PATH_TABLE(sse2, 0, false)
ZOLVM_PATH_TABLE(avx2, avx2Features, true)
ZOLVM_PATH_TABLE(avx512, avx512Features, true)

namespace {

// Best first. The last row needs nothing, so the search always ends on a row.
zolvmKernels const* const candidates[] = {&zolvm::avx512::kernels, &zolvm::avx2::kernels,
                                          &zolvm::sse2::kernels};

constinit zolvmKernels const* kernels = &zolvm::sse2::kernels;

void select(Zol64u enabled) {
    bool const fma = __builtin_cpu_supports("fma") != 0;
    for (zolvmKernels const* const candidate : candidates) {
        if ((candidate->needs & ~enabled) == 0 && (fma || !candidate->needsFma)) {
            kernels = candidate;
            return;
        }
    }
}

// A program may call a function without zolInit: it gets the best path, too.
[[gnu::constructor]] void selectAtLoad() {
    __builtin_cpu_init();
    if (zolcoreOnSelect != nullptr) {
        zolcoreOnSelect(select);
    } else {
        select(zolGetEnabledCpuFeatures());
    }
}

} // namespace

ZolLibraryVersion const* zolvmGetLibVersion(void) {
    static constexpr ZolLibraryVersion version = {
        .major = ZOLVM_MAJOR,
        .minor = ZOLVM_MINOR,
        .build = ZOLVM_PATCH,
        .name = "ZOL Vector Math",
        .version = ZOLVM_VERSION " (built-in)",
        .buildDate = __DATE__,
    };
    return &version;
}

#define ZOLVM_EXPORT(shape, name, S, D, family, kind)                                              \
    ZolStatus name ZOLVM_PARAMETERS_##shape(S, D) { return kernels->name ZOLVM_ARGUMENTS_##shape; }
ZOLVM_FUNCTIONS(ZOLVM_EXPORT)
