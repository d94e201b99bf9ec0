// sinh.cpp - timing tests of the Sinh family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Sinh);
