// cis.cpp - timing tests of the CIS family.
#include "timing/timregister.h"

PS_REGISTER_32FC(TimRealToComplex32, CIS);
PS_REGISTER_64FC(TimRealToComplex64, CIS);
