// pow3o2.cpp - timing tests of the Pow3o2 family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Pow3o2);
