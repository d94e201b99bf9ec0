// psregister.h - what test modules hand to the session before main. Each call stores and
// returns 1: it prints nothing, opens nothing and reads no other module's object.
#ifndef PS_PSREGISTER_H
#define PS_PSREGISTER_H

#include "psparameter/psparameter.h"
#include "pstool/pstool.h"
#include "zolcore.h"

class psSession;

using psVersionFunction = ZolLibraryVersion const* (*)();

int psRegSession(psSession* session);
int psRegParm(psParameter& parm);
int psRegParmFunc(void (*function)()); // the last call wins
int psRegCmdLine(psString text);       // appended to the built-in command line
int psRegHotFunction(psString name);
int psRegQKeys();                                      // the name table keys are there anyway
int psRegTimingMethod(void (*function)(psTool& tool)); // presets the method; the last call wins
int psRegZolVersion(psVersionFunction function);
int psRegZolEnvironment(void (*function)()); // fills the entry points; the last call wins

extern psSession* pSession;
extern psString* pCmdLine;
extern void (*s_parmFunc)();
extern void (*initTimingMethod)(psTool& tool);
extern void (*zolEnvironment)();
extern psList<psVersionFunction>* zolVersionList;
extern int qKeys;

#endif
