// sub.cpp - timing tests of the Sub family.
#include "timing/timregister.h"

PS_REGISTER_BEST_REAL(Sub);
PS_REGISTER_BEST_COMPLEX(Sub);
