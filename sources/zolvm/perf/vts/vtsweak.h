// vtsweak.h - the library's functions as weak references: the program also loads beside a
// library that lacks some of them, whose addresses then are null.
#ifndef VTS_VTSWEAK_H
#define VTS_VTSWEAK_H

#include "zolvm.h"

#define VTS_WEAK(shape, name, S, D, family, kind) extern "C" [[gnu::weak]] decltype(name) name;
ZOLVM_FUNCTIONS(VTS_WEAK)
#undef VTS_WEAK

#endif
