// log10.cpp - timing tests of the Log10 family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Log10);
