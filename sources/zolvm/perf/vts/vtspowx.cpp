// vtspowx.cpp - the adaptors, and which library function stands behind each.
#include "vts/vtspowx.h"

#include "vts/vtsdefs.h"
#include "vts/vtsweak.h"

constinit int b_index = 0;

#define VTS_POWX_DEFINE(adaptor, function, T)                                                      \
    static vtsFunc adaptor##_function = reinterpret_cast<vtsFunc>(function);                       \
    ZolStatus adaptor(T const* source, T const* second, T* destination, int length) {              \
        using Function = ZolStatus (*)(T const*, T, T*, int);                                      \
        return reinterpret_cast<Function>(adaptor##_function)(source, second[b_index],             \
                                                              destination, length);                \
    }
VTS_POWX_ROWS(VTS_POWX_DEFINE)

vtsFunc* vtsGetLibraryFunc(int row) {
#define VTS_POWX_PAIR(adaptor, function, T)                                                        \
    {reinterpret_cast<vtsFunc>(adaptor), &adaptor##_function},
    struct Pair {
        vtsFunc adaptor;
        vtsFunc* function;
    };
    static Pair const pairs[] = {VTS_POWX_ROWS(VTS_POWX_PAIR)};
    for (Pair const& pair : pairs) {
        if (pair.adaptor == defFunc[row].func) {
            return pair.function;
        }
    }
    return &defFunc[row].func;
}
