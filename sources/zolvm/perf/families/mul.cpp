// mul.cpp - timing tests of the Mul family.
#include "timing/timregister.h"

PS_REGISTER_BEST_REAL(Mul);
PS_REGISTER_SIX_COMPLEX(Mul);
