// history.cpp - the page's texts and data. All steps were found before.
#include "page/history.h"

#include <nlohmann/json.hpp>

#include "core/text.h"
#include "page/page.h"

namespace tables {

namespace {

using Json = nlohmann::ordered_json;

std::string summary(History const& history, std::vector<Step> const& steps) {
    std::string machines;
    for (std::string const& machine : machinesOf(history)) {
        machines += (machines.empty() ? " on " : "; ") + machine;
    }
    bool const slower = !steps.empty() && steps.front().range.ratio > 1;
    std::string const mood = slower ? "slower" : steps.empty() ? "same" : "faster";
    std::string html = "<section class=\"summary\">";
    html += "<p class=\"sides\">" + escaped(datesText(history) + machines) + "</p>";
    html += "<p class=\"verdict " + mood + "\">" + escaped(stepsText(history));
    if (!steps.empty()) {
        auto const& [date, range] = slower ? steps.front() : steps.back();
        html +=
            escaped(std::string(slower ? ", worst " : ", fastest ") + range.function + " at " +
                    lengthsText(range) + " by " + percent(range.ratio) + " from " + date->label);
    }
    std::vector<std::pair<std::string, std::string>> tables;
    for (HistoryDate const& date : history.dates) {
        tables.emplace_back(date.label, date.table);
    }
    html += ".</p><details><summary>What was read</summary>" + factList(tables) +
            "</details></section>";
    for (std::string const& note : history.notes) {
        html += "<p class=\"note\">" + escaped(note) + "</p>";
    }
    return html;
}

// What is there without scripts.
std::string fallback(std::vector<Step> const& steps) {
    std::string html = "<div class=\"scroll\"><table><tr>";
    for (char const* const title :
         {"Function", "Lengths", "From", "Change", "Low", "High", "Machine"}) {
        html += std::string("<th scope=\"col\">") + title + "</th>";
    }
    html += "</tr>";
    for (auto const& [date, range] : steps) {
        html += "\n<tr><th scope=\"row\">" + escaped(range.function) + "</th>";
        for (std::string const& text : {lengthsText(range), date->label, percent(range.ratio),
                                        percent(range.low), percent(range.high), date->machine}) {
            html += element("td", text);
        }
        html += "</tr>";
    }
    return html + "</table></div>";
}

// As the command prints it, in digits enough to draw.
std::string dataText(History const& history) {
    Json json = Json::parse(historyJson(history));
    for (Json& line : json["functions"]) {
        for (Json& value : line) {
            value = value.is_null() ? value : Json(rounded(value));
        }
    }
    return scriptData(json);
}

} // namespace

std::string historyPage(History const& history) {
    std::vector<Step> const steps = stepsOf(history);
    return filledPage(parts::history, {{"title", "When did it change?"},
                                       {"summary", summary(history, steps)},
                                       {"fallback", fallback(steps)},
                                       {"data", dataText(history)}});
}

} // namespace tables
