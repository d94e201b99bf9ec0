// pspriority.cpp - the nice value, changed and put back around each measurement.
#include "pstool/pspriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace {

int _bSavedPrio = 0; // a change is pending
int _prio = 0;       // nice value from before the change

bool isRoot() { return getuid() == 0; }

} // namespace

int getPriority(psString const& arg) {
    switch (arg[0]) {
    case 'L':
        return 3;
    case 'N':
        return 2;
    case 'H':
        return 1;
    default:
        return 0;
    }
}

void psSetPriority(int priority) {
    constexpr int niceValues[] = {-20, 0, 10}; // high, normal, low
    _bSavedPrio = priority != 0 ? 1 : 0;
    if (_bSavedPrio == 0 || !isRoot()) {
        return;
    }
    _prio = getpriority(PRIO_PROCESS, 0);
    if (priority >= 1 && priority <= 3) {
        setpriority(PRIO_PROCESS, 0, niceValues[priority - 1]);
    }
}

void psResetPriority() {
    if (_bSavedPrio == 0) {
        return;
    }
    _bSavedPrio = 0;
    if (isRoot()) {
        setpriority(PRIO_PROCESS, 0, _prio);
    }
}
