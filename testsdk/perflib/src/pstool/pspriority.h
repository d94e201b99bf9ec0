// pspriority.h - process priority around a measurement. Only root changes it; nobody is told.
#ifndef PSTOOL_PSPRIORITY_H
#define PSTOOL_PSPRIORITY_H

#include "psbase/psstring.h"

int getPriority(psString const& arg); // 3 low, 2 normal, 1 high by the first letter; else 0
void psSetPriority(int priority);     // 0 leaves it alone
void psResetPriority();

#endif
