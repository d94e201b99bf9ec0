// page.h - what the pages share: elements, data, and the filling in of a page's parts.
#ifndef PAGE_PAGE_H
#define PAGE_PAGE_H

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "page/parts.h"

namespace tables {

// An html element that holds a text.
std::string element(char const* name, std::string const& text);

// Names with their values, one below the other.
std::string factList(std::vector<std::pair<std::string, std::string>> const& facts);

// Four digits: short enough that nothing is lost to see.
double rounded(double value);

// For a script element: nothing in it can end the element.
std::string scriptData(nlohmann::ordered_json const& json);

// The page with its names filled in; style, script and the policy that lets these two alone run
// come from its parts.
std::string filledPage(PageParts const& parts, std::map<std::string_view, std::string> values);

} // namespace tables

#endif
