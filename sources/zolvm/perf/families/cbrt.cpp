// cbrt.cpp - timing tests of the Cbrt family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Cbrt);
