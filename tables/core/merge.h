// merge.h - several passes become one: what stands for a point that was read several times.
#ifndef CORE_MERGE_H
#define CORE_MERGE_H

#include <string>
#include <vector>

#include "core/table.h"

namespace tables {

// One pass that stands for several, and what is to be said of each of its readings.
struct Merged {
    Pass pass;
    std::vector<std::string> words; // for the comment column: passes=5, spread=1.2%, apart
    int apart = 0;                  // points whose passes stayed far apart
};

// Clocks of one point: the reading that stands for the passes, and how far they lie from it.
struct Standing {
    double clocks;
    double spread; // share of the clocks
};

// Of at least one reading; the order of the readings changes nothing.
Standing standingOf(std::vector<double> clocks);

// The passes as one table. Points come in the order of the first pass that has them. Ratios of
// pairs become the ratio of their middle.
Merged mergePasses(Passes const& passes);

} // namespace tables

#endif
