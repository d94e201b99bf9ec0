// powx.cpp - timing tests of the Powx family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Powx);
