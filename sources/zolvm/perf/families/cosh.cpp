// cosh.cpp - timing tests of the Cosh family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Cosh);
