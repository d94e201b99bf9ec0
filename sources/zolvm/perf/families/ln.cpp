// ln.cpp - timing tests of the Ln family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Ln);
