// invsqrt.cpp - timing tests of the InvSqrt family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(InvSqrt);
