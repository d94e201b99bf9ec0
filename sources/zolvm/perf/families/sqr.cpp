// sqr.cpp - timing tests of the Sqr family.
#include "timing/timregister.h"

PS_REGISTER_BEST_REAL(Sqr);
