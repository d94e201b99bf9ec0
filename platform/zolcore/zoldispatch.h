// zoldispatch.h - how a library of functions learns which code path zolcore has chosen.
// Not part of the public interface: a zolcore of somebody else may lack it.
#ifndef ZOLCORE_ZOLDISPATCH_H
#define ZOLCORE_ZOLDISPATCH_H

#include "zolcore.h"

// Picks the code path for a mask of enabled features.
typedef void (*ZolSelect)(Zol64u enabled);

// Keeps select, calls it at once, and again whenever the enabled features are set.
extern "C" void zolcoreOnSelect(ZolSelect select);

#endif
