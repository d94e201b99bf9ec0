// cdfnorm.cpp - timing tests of the CdfNorm family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(CdfNorm);
