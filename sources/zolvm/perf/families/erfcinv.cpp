// erfcinv.cpp - timing tests of the ErfcInv family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(ErfcInv);
