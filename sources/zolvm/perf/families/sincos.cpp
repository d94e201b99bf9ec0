// sincos.cpp - timing tests of the SinCos family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(SinCos);
