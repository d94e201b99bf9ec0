// round.cpp - timing tests of the Round family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Round);
