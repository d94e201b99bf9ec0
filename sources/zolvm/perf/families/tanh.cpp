// tanh.cpp - timing tests of the Tanh family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Tanh);
