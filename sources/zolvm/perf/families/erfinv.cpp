// erfinv.cpp - timing tests of the ErfInv family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(ErfInv);
