// history.h - one html file to look at: the steps of a history, worst first, and the curves of its
// functions over the dates.
#ifndef PAGE_HISTORY_H
#define PAGE_HISTORY_H

#include <string>

#include "core/history.h"

namespace tables {

// The whole page, of at least one date.
std::string historyPage(History const& history);

} // namespace tables

#endif
