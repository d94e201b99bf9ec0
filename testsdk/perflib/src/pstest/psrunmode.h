// psrunmode.h - what the session sets and tests and reports read: modes of the name table
// and the path of the executable.
#ifndef PSTEST_PSRUNMODE_H
#define PSTEST_PSRUNMODE_H

#include "psbase/psstring.h"

// A base of the session, which has these as members of its own.
struct psRunMode {
    enum NameMode { namesIntoResults = 1, namesIntoOwnTable = 2 };

    static int m_nameMode;     // where lines of parameter names go: a union of NameMode bits
    static bool m_nameExit;    // names only, no measuring
    static psString m_exePath; // of this program, as it was called
};

extern psStringList* g_pHotList; // names of hot functions; null until registered or run

#endif
