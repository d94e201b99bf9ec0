// atanh.cpp - timing tests of the Atanh family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Atanh);
