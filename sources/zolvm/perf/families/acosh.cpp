// acosh.cpp - timing tests of the Acosh family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Acosh);
