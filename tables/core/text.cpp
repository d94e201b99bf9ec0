// text.cpp - numbers and texts made into texts.
#include "core/text.h"

#include <cstdarg>
#include <cstdio>

namespace tables {

std::string format(char const* how, ...) {
    va_list values;
    va_list again;
    va_start(values, how);
    va_copy(again, values);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it takes the lines above for nothing
    std::string text(static_cast<std::size_t>(std::vsnprintf(nullptr, 0, how, values)), '\0');
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    (void)std::vsnprintf(text.data(), text.size() + 1, how, again);
    va_end(again);
    va_end(values);
    return text;
}

std::string counted(std::size_t count, std::string const& what) {
    char const* const ending = count == 1 ? "" : what.ends_with('s') ? "es" : "s";
    return std::to_string(count) + ' ' + what + ending;
}

std::string escaped(std::string_view text) {
    std::string markup;
    for (char const c : text) {
        switch (c) {
        case '<':
            markup += "&lt;";
            break;
        case '>':
            markup += "&gt;";
            break;
        case '&':
            markup += "&amp;";
            break;
        case '"':
            markup += "&quot;";
            break;
        default:
            markup += (c >= 0 && c < ' ') || c == 127 ? ' ' : c;
        }
    }
    return markup;
}

std::string quotedCell(std::string text) {
    for (std::size_t at = 0; (at = text.find('"', at)) != std::string::npos; at += 2) {
        text.insert(at, 1, '"');
    }
    return '"' + text + '"';
}

} // namespace tables
