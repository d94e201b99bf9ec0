// nearbyint.cpp - timing tests of the NearbyInt family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(NearbyInt);
