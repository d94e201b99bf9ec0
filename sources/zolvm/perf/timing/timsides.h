// timsides.h - the two sides of a timing test's function, where two libraries are read in turns.
#ifndef TIMING_TIMSIDES_H
#define TIMING_TIMSIDES_H

#include "psbase/psstring.h"

// The test of the named function begins: its body reads the function's address from place, and
// each side's is put there for its turns. Without a Baseline nothing happens; a function that the
// baseline lacks is told, and measured alone.
void timBeginSides(void (**place)(), psString const& funcName);

// Puts the linked library's function back. Also for a test that a signal ended.
void timEndSides();

#endif
