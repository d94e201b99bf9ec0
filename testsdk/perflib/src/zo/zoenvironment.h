// zoenvironment.h - ties the framework to the library that the program is linked with.
#ifndef ZO_ZOENVIRONMENT_H
#define ZO_ZOENVIRONMENT_H

#include "zolcore.h"

void zoSetZolEnvironment();                          // all entry points to the library's functions
ZolLibraryVersion const* zoGetZolVersion_zolvm();    // version of the measured library

#endif
