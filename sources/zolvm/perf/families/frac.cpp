// frac.cpp - timing tests of the Frac family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Frac);
