// report.h - one html file to look at: what was measured, the verdict, a heat map, curves and a
// table. It needs no network, holds its own script and style, and treats all texts as data.
#ifndef PAGE_REPORT_H
#define PAGE_REPORT_H

#include <string>

#include "core/findings.h"

namespace tables {

// The whole page, of at least one machine.
std::string reportPage(Findings const& findings);

} // namespace tables

#endif
