// cos.cpp - timing tests of the Cos family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Cos);
