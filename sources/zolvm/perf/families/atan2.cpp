// atan2.cpp - timing tests of the Atan2 family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Atan2);
