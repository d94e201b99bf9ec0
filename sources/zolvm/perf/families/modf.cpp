// modf.cpp - timing tests of the Modf family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Modf);
