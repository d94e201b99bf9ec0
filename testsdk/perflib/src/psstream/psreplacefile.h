// psreplacefile.h - a new text for a whole file, of which no moment leaves half.
#ifndef PSSTREAM_PSREPLACEFILE_H
#define PSSTREAM_PSREPLACEFILE_H

#include "psbase/psstring.h"

// Gives the file this text; one that was absent appears with all of it. The text is written beside
// it and renamed over it, with its mode and owner; what a symbolic link names is replaced, the link
// stays. Where nothing can be put beside or over it, it is written in place, once there is room for
// all. False, told once, with the old text untouched, if that fails.
bool psReplaceFile(psString const& path, psString const& text);

#endif
