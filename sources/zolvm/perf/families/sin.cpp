// sin.cpp - timing tests of the Sin family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Sin);
