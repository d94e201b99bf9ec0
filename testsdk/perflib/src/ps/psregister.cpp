// psregister.cpp - what was handed to the session before main.
#include "ps/psregister.h"

#include "pstest/psrunmode.h"
#include "pstest/pstest.h"

constinit psSession* pSession = nullptr;
constinit psString* pCmdLine = nullptr;
void (*s_parmFunc)() = nullptr;
void (*initTimingMethod)(psTool& tool) = nullptr;
void (*zolEnvironment)() = nullptr;
constinit psList<psVersionFunction>* zolVersionList = nullptr;
constinit int qKeys = 1;

namespace {

// The first call makes the list.
template <typename List, typename Item>
int append(List*& list, Item const& item) {
    if (list == nullptr) {
        list = new List;
    }
    list->insert(list->end(), item);
    return 1;
}

} // namespace

int psRegSession(psSession* session) {
    pSession = session;
    return 1;
}

int psRegParm(psParameter& parm) { return append(g_pParmList, &parm); }

int psRegParmFunc(void (*function)()) {
    s_parmFunc = function;
    return 1;
}

int psRegCmdLine(psString text) {
    if (pCmdLine == nullptr) {
        pCmdLine = new psString;
    }
    *pCmdLine += " ";
    *pCmdLine += text;
    return 1;
}

int psRegHotFunction(psString name) { return append(g_pHotList, name); }

int psRegQKeys() {
    qKeys = 1;
    return 1;
}

int psRegTimingMethod(void (*function)(psTool& tool)) {
    initTimingMethod = function;
    return 1;
}

int psRegZolVersion(psVersionFunction function) { return append(zolVersionList, function); }

int psRegZolEnvironment(void (*function)()) {
    zolEnvironment = function;
    return 1;
}
