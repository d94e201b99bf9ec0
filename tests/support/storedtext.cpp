// storedtext.cpp - the comparison with a stored copy, and its renewal.
#include "support/storedtext.h"

#include <algorithm>
#include <regex>

#include "support/tempdirectory.h"

namespace {

std::string lineAt(std::string const& text, std::string::size_type place) {
    auto const end = std::min(text.find('\n', place), text.size());
    auto const begin = place == 0 ? 0 : text.rfind('\n', place - 1) + 1;
    return testing::PrintToString(text.substr(begin, end - begin));
}

} // namespace

std::string storedText(std::string const& name) { return readFile(PS_GOLDEN + name + ".txt"); }

testing::AssertionResult matchesStored(std::string const& name, std::string const& text) {
    std::filesystem::path const path = PS_GOLDEN + name + ".txt";
    if (std::getenv("PS_RENEW_TEXTS") != nullptr) {
        std::filesystem::create_directories(path.parent_path());
        writeFile(path, text);
    }
    std::string const stored = storedText(name);
    if (text == stored) {
        return testing::AssertionSuccess();
    }
    auto const differs = std::mismatch(text.begin(), text.end(), stored.begin(), stored.end());
    auto const place = static_cast<std::string::size_type>(differs.first - text.begin());
    return testing::AssertionFailure()
           << "line " << 1 + std::count(text.begin(), differs.first, '\n') << " of " << path
           << "\n  is     " << lineAt(text, place) << "\n  stored " << lineAt(stored, place)
           << "\nIf the new text is wanted: PS_RENEW_TEXTS=1 ./test.sh, then look at the change.";
}

std::string masked(std::string const& text) {
    std::pair<char const*, char const*> const masks[] = {
        {R"(\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4})", "Day Mon dd hh:mm:ss yyyy"},
        {R"(\w{3} [ \d]\d \d{4})", "Mon dd yyyy"},
        {R"(\d\d:\d\d:\d\d)", "hh:mm:ss"},
        {R"(_test,\d+,)", "_test,s,"}, // in the summary
        {R"((^|\n)(\| )?(CPU|OS|Computer)( +: |,).*)", "$1$2$3$4..."}};
    std::string result = text;
    for (auto const& [pattern, mask] : masks) {
        result = std::regex_replace(result, std::regex(pattern), mask);
    }
    return result;
}
