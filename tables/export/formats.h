// formats.h - tables in the formats of other tools, and one of these back.
#ifndef EXPORT_FORMATS_H
#define EXPORT_FORMATS_H

#include <string>
#include <string_view>
#include <vector>

#include "core/findings.h"

namespace tables {

// Which library's readings, where a table holds those of two.
enum class Side { library, baseline };

struct SideReading {
    Point const* point;
    Reading const* reading;
    double clocks; // of this side
    double usec;
};
struct SidePass {
    Head const* head;
    std::vector<SideReading> readings;
};
// All passes of one side but the control's. Pointers are into the findings.
std::vector<SidePass> passesOf(MachineFindings const& machine, Side side);
// The same of all machines; throws Failure if there is no such side.
std::vector<SidePass> passesOf(Findings const& findings, Side side);

// Google Benchmark's JSON: a benchmark for each point, a repetition for each pass.
std::string gbenchText(Findings const& findings, Side side);
// Go's benchmark text: a line for each reading.
std::string gobenchText(Findings const& findings, Side side);
// All readings, one a row, with what was decided of their points. The fields are the same in both;
// the JSON says what they mean.
std::string longCsv(Findings const& findings);
std::string longJson(Findings const& findings);
// JUnit's XML: a test case for each point; what was called slower fails, with fasterFails what was
// called faster, too. Throws Failure where nothing was compared.
std::string junitText(Findings const& findings, bool fasterFails);

// The table of Google Benchmark's JSON: a pass for each repetition, clocks of its time and the
// frequency of the processor, or the one given. Throws Failure.
Passes readGbench(std::string_view text, std::string const& name, double mhz = 0);

} // namespace tables

#endif
