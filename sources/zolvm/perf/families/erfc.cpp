// erfc.cpp - timing tests of the Erfc family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Erfc);
