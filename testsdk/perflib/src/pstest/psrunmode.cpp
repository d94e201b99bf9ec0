// psrunmode.cpp - definitions of what the session sets for tests and reports.
#include "pstest/psrunmode.h"

int psRunMode::nameMode = 0;
bool psRunMode::nameExit = false;
psString psRunMode::exePath;

constinit psStringList* g_pHotList = nullptr;
