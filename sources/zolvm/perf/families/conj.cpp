// conj.cpp - timing tests of the Conj family.
#include "timing/timregister.h"

PS_REGISTER_BEST_COMPLEX(Conj);
