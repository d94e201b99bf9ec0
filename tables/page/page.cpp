// page.cpp - elements, data, policy and filling in.
#include "page/page.h"

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "core/text.h"

namespace tables {

namespace {

// How a content security policy names a text: the sum's bytes in base 64.
std::string source(std::string_view hexSum) {
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text = "'sha256-";
    for (std::size_t i = 0; i < hexSum.size(); i += 6) { // six hexadecimal digits make four
        std::string group(hexSum.substr(i, 6));
        std::size_t const digitsUsed = group.size() * 4 / 6 + (group.size() % 6 != 0 ? 1 : 0);
        group.resize(6, '0');
        unsigned long const bits = std::strtoul(group.c_str(), nullptr, 16);
        for (std::size_t k = 0; k < 4; ++k) {
            text += k < digitsUsed ? digits[bits >> (18 - 6 * k) & 63] : '=';
        }
    }
    return text + '\'';
}

} // namespace

std::string element(char const* name, std::string const& text) {
    return std::string("<") + name + '>' + escaped(text) + "</" + name + ">";
}

std::string factList(std::vector<std::pair<std::string, std::string>> const& facts) {
    std::string html = "<dl class=\"facts\">";
    for (auto const& [name, value] : facts) {
        html += "<div>" + element("dt", name) + element("dd", value) + "</div>";
    }
    return html + "</dl>";
}

double rounded(double value) { return std::strtod(format("%.4g", value).c_str(), nullptr); }

std::string scriptData(nlohmann::ordered_json const& json) {
    std::string const plain =
        json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    std::string text;
    for (char const c : plain) {
        text += c == '<' ? "\\u003c" : std::string(1, c);
    }
    return text;
}

std::string filledPage(PageParts const& parts, std::map<std::string_view, std::string> values) {
    values["policy"] = "default-src 'none'; script-src " + source(parts.scriptSum) +
                       "; style-src " + source(parts.styleSum) +
                       "; img-src data: blob:; base-uri 'none'; form-action 'none'";
    values["style"] = parts.style;
    values["script"] = parts.script;
    // What is filled in is never searched for names again.
    std::string page;
    std::string_view rest = parts.html;
    for (std::size_t open; (open = rest.find("{{")) != std::string_view::npos;) {
        std::size_t const close = rest.find("}}", open);
        page.append(rest.substr(0, open));
        page += values.at(rest.substr(open + 2, close - open - 2));
        rest.remove_prefix(close + 2);
    }
    return page.append(rest);
}

} // namespace tables
