// asin.cpp - timing tests of the Asin family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Asin);
