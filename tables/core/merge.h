// merge.h - several passes become one: what stands for a point that was read several times.
#ifndef CORE_MERGE_H
#define CORE_MERGE_H

#include <string>
#include <vector>

#include "core/table.h"
#include "core/verdict.h"

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

// The passes, at least one, as one table. Points come in the order of the first pass that has them.
// The ratio of pairs is that of the middle pass, its interval holds all. Control passes are left
// out.
Merged mergePasses(Passes const& passes);

// Ratios and their intervals become those of the verdict, whose word is added to each reading.
void setVerdict(Merged& merged, Verdict const& verdict);

} // namespace tables

#endif
