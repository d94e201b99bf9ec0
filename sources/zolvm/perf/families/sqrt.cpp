// sqrt.cpp - timing tests of the Sqrt family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Sqrt);
