// mulbyconj.cpp - timing tests of the MulByConj family.
#include "timing/timregister.h"

PS_REGISTER_SIX_COMPLEX(MulByConj);
