// pow.cpp - timing tests of the Pow family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Pow);
