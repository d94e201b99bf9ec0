// expm1.cpp - timing tests of the Expm1 family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Expm1);
