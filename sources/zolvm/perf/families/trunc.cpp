// trunc.cpp - timing tests of the Trunc family.
#include "timing/timregister.h"

PS_REGISTER_PLAIN(Trunc);
