// text.h - how texts are made of numbers and of other texts, for all that prints or writes.
#ifndef CORE_TEXT_H
#define CORE_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tables {

// As printf prints it, whole however long it gets: names are the user's.
__attribute__((format(printf, 1, 2))) std::string format(char const* how, ...);

// "1 step", "2 steps", "3 passes".
std::string counted(std::size_t count, std::string const& what);

// A text as html and XML show it, within an attribute's quotes, too. Control characters, of which
// XML takes hardly any, become blanks; other bytes stay, so XML wants its text in UTF-8 before.
std::string escaped(std::string_view text);

// A csv's cell in quotes, those of the text doubled.
std::string quotedCell(std::string text);

} // namespace tables

#endif
