// ceil.cpp - timing tests of the Ceil family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Ceil);
