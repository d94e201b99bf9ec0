// pow2o3.cpp - timing tests of the Pow2o3 family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(Pow2o3);
