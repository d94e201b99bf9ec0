// acos.cpp - timing tests of the Acos family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Acos);
