// psrunmode.cpp - definitions of what the session sets for tests and reports.
#include "pstest/psrunmode.h"

int psRunMode::m_nameMode = 0;
bool psRunMode::m_nameExit = false;
psString psRunMode::m_exePath;

constinit psStringList* g_pHotList = nullptr;
