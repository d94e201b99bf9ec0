// log1p.cpp - timing tests of the Log1p family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Log1p);
