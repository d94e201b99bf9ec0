// erf.cpp - timing tests of the Erf family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Erf);
