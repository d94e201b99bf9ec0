// add.cpp - timing tests of the Add family.
#include "timing/timregister.h"

PS_REGISTER_BEST_REAL(Add);
PS_REGISTER_BEST_COMPLEX(Add);
