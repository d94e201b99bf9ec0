// rint.cpp - timing tests of the Rint family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Rint);
