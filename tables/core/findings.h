// findings.h - what tables say when all judging is done: for pages and for other tools' formats.
#ifndef CORE_FINDINGS_H
#define CORE_FINDINGS_H

#include <string>
#include <vector>

#include "core/table.h"
#include "core/verdict.h"

namespace tables {

// What one machine measured.
struct MachineFindings {
    Passes passes;              // of the library under test, or of both in pairs
    std::vector<Pass> before{}; // of the other table, where two are compared
    Verdict verdict{};          // without points: absolute numbers of one table
};

struct Findings {
    std::vector<MachineFindings> machines{};
    std::string before{}; // what was compared with what; both "" for one table
    std::string after{};
    VerdictSettings settings{};
    std::vector<std::string> notes{};
};

} // namespace tables

#endif
