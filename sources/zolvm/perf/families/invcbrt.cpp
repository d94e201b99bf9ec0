// invcbrt.cpp - timing tests of the InvCbrt family.
#include "timing/timregister.h"

PS_REGISTER_SIX_REAL(InvCbrt);
