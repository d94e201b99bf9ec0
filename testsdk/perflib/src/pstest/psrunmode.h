// psrunmode.h - what the session sets and tests and reports read: modes of the name table
// and the path of the executable. The session's members of the same names refer to these.
#ifndef PSTEST_PSRUNMODE_H
#define PSTEST_PSRUNMODE_H

#include "psbase/psstring.h"

struct psRunMode {
    static int nameMode;  // bit 1: names into the result table, bit 2: into a table of their own
    static bool nameExit; // names only, no measuring
    static psString exePath;
};

extern psStringList* g_pHotList; // names of hot functions; null until registered or run

#endif
