// exp.cpp - timing tests of the Exp family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Exp);
