// zoenvironment.h - ties the framework to the library that the program is linked with.
#ifndef ZO_ZOENVIRONMENT_H
#define ZO_ZOENVIRONMENT_H

#include "zolcore.h"

// Points the framework's entries to the library's functions. What the library lacks is left as it
// is, and keeps the framework's replacement.
void zoSetZolEnvironment();
ZolLibraryVersion const* zoGetZolVersion_zolvm(); // version of the measured library, never null

#endif
