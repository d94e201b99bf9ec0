// tan.cpp - timing tests of the Tan family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Tan);
