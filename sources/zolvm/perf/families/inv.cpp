// inv.cpp - timing tests of the Inv family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Inv);
