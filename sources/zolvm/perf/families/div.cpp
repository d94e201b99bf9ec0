// div.cpp - timing tests of the Div family.
#include "timing/timregister.h"

PS_REGISTER_TWELVE(Div);
