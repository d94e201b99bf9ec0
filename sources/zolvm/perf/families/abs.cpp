// abs.cpp - timing tests of the Abs family.
#include "timing/timregister.h"

PS_REGISTER_BEST_REAL(Abs);
PS_REGISTER_32FC(TimComplexToReal32, Abs);
PS_REGISTER_64FC(TimComplexToReal64, Abs);
