// cdfnorminv.cpp - timing tests of the CdfNormInv family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(CdfNormInv);
