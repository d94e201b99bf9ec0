// atan.cpp - timing tests of the Atan family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Atan);
