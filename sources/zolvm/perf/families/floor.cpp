// floor.cpp - timing tests of the Floor family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Floor);
