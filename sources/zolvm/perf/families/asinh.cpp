// asinh.cpp - timing tests of the Asinh family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Asinh);
