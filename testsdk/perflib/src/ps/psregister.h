// psregister.h - what test modules hand to the session before main. Each call stores and
// returns 1: it prints nothing, opens nothing and reads no other module's object.
#ifndef PS_PSREGISTER_H
#define PS_PSREGISTER_H

#include "psparameter/psparameter.h"
#include "pstool/pstool.h"
#include "zolcore.h"

class psSession;

using psVersionFunction = ZolLibraryVersion const* (*)();

int psRegSession(psSession* session);  // in the place of main's own; the last call wins
int psRegParm(psParameter& parm);      // a common parameter, asked once for all tests
int psRegParmFunc(void (*function)()); // called ahead of the dialogue; the last call wins
int psRegCmdLine(psString text);       // appended to the built-in command line
int psRegHotFunction(psString name);   // of interest, see -H
int psRegQKeys();                      // the name table keys are there anyway
int psRegTimingMethod(void (*function)(psTool& tool)); // presets the method; the last call wins
int psRegZolVersion(psVersionFunction function);       // each tells a line of the report's title
int psRegZolEnvironment(void (*function)());           // fills the entry points; the last call wins

// What was handed over; null where nothing was.
extern psSession* pSession;
extern psString* pCmdLine;
extern void (*s_parmFunc)();
extern void (*initTimingMethod)(psTool& tool);
extern void (*zolEnvironment)();
extern psList<psVersionFunction>* zolVersionList;
extern int qKeys;

#endif
