// hypot.cpp - timing tests of the Hypot family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Hypot);
