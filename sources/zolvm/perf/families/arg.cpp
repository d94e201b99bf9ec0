// arg.cpp - timing tests of the Arg family.
#include "timing/timregister.h"

PS_REGISTER_32FC(TimComplexToReal32, Arg);
PS_REGISTER_64FC(TimComplexToReal64, Arg);
