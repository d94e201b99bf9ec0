// report.cpp - the page's texts and data. All judging was done before.
#include "page/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "core/merge.h"
#include "core/show.h"
#include "core/text.h"
#include "page/page.h"

namespace tables {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t mostReadings = 24; // of a point and side that the page shows
constexpr Call calls[] = {Call::slower, Call::faster, Call::same, Call::undecided};

// One row of the page.
struct Row {
    std::uint32_t point = 0;
    double clocks = 0;
    double before = 0; // 0: there is no other side
    double low = 0;    // of the ratio
    double high = 0;
    int call = -1;
    std::vector<double> after{}; // readings of the passes
    std::vector<double> earlier{};
    double spread = 0; // of the middle reading from the clocks, as a share
};

// The readings of both sides go to the rows of their points.
void addReadings(std::vector<Row*> const& rowOf, MachineFindings const& set) {
    for (Pass const& pass : set.passes.list) {
        if (pass.control()) {
            continue;
        }
        for (Reading const& reading : pass.readings) {
            Row* const row = rowOf[reading.point];
            if (row != nullptr && row->after.size() < mostReadings) {
                row->after.push_back(reading.clocks);
                if (set.before.empty() && reading.ratio > 0) {
                    row->earlier.push_back(reading.clocks / reading.ratio);
                }
            }
        }
    }
    for (Pass const& pass : set.before) {
        for (Reading const& reading : pass.readings) {
            Row* const row = rowOf[reading.point];
            if (row != nullptr && row->earlier.size() < mostReadings) {
                row->earlier.push_back(reading.clocks);
            }
        }
    }
}

std::vector<Row> rowsOf(MachineFindings const& set) {
    auto const judgements = judgementsOf(set.verdict);
    std::vector<Row> rows;
    for (Reading const& reading : mergePasses(set.passes).pass.readings) {
        Row row{.point = reading.point, .clocks = reading.clocks};
        if (auto const place = judgements.find(reading.point); place != judgements.end()) {
            Judgement const& one = *place->second;
            row.before = reading.clocks / one.ratio;
            row.low = one.low;
            row.high = one.high;
            row.call = static_cast<int>(one.call);
        } else if (!set.verdict.points.empty()) {
            continue; // nothing to compare with
        }
        rows.push_back(row);
    }
    std::vector<Row*> rowOf(set.passes.points.size());
    for (Row& row : rows) {
        rowOf[row.point] = &row;
    }
    addReadings(rowOf, set);
    for (Row& row : rows) {
        if (row.after.size() > 1) {
            row.spread = standingOf(row.after).spread;
        }
    }
    return rows;
}

// Readings as thousandths that they lie off their point: short, and as exact as a chart shows.
Json deviations(std::vector<double> const& readings, double from) {
    Json json = Json::array();
    for (double const reading : readings) {
        json.push_back(std::lround((reading / from - 1) * 1000));
    }
    return json;
}

Json jsonOf(MachineFindings const& set, std::vector<Row> const& rows) {
    std::map<std::array<std::string, 5>, std::size_t> known;
    Json functions = Json::array();
    Json columns;
    for (char const* const name :
         {"f", "n", "c", "b", "r", "lo", "hi", "v", "spread", "after", "earlier"}) {
        columns[name] = Json::array();
    }
    for (Row const& row : rows) {
        Point const& point = set.passes.points[row.point];
        std::array<std::string, 5> const function = {point.base, point.type, point.accuracy,
                                                     point.parms, point.unit};
        auto const [place, isNew] = known.emplace(function, known.size());
        if (isNew) {
            functions.push_back(function);
        }
        columns["f"].push_back(place->second);
        columns["n"].push_back(point.length);
        columns["c"].push_back(rounded(row.clocks));
        columns["spread"].push_back(rounded(row.spread));
        columns["after"].push_back(deviations(row.after, row.clocks));
        if (row.call >= 0) {
            columns["b"].push_back(rounded(row.before));
            // Clocks of four digits don't make a ratio of five.
            columns["r"].push_back(std::round(row.clocks / row.before * 1e5) / 1e5);
            columns["lo"].push_back(std::round(row.low * 1e5) / 1e5);
            columns["hi"].push_back(std::round(row.high * 1e5) / 1e5); // null: not bounded
            columns["v"].push_back(row.call);
            columns["earlier"].push_back(deviations(row.earlier, row.before));
        }
    }
    Json json;
    json["machine"] =
        set.verdict.points.empty() ? set.passes.list.front().machine() : set.verdict.machine;
    json["paired"] = set.before.empty() && !set.verdict.points.empty();
    json["functions"] = std::move(functions);
    json["rows"] = std::move(columns);
    return json;
}

std::string dataText(Findings const& findings, std::vector<std::vector<Row>> const& rows) {
    Json json;
    json["compared"] = !findings.after.empty();
    json["threshold"] = findings.settings.threshold;
    json["calls"] = {callName(Call::same), callName(Call::undecided), callName(Call::faster),
                     callName(Call::slower)};
    json["sets"] = Json::array();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        json["sets"].push_back(jsonOf(findings.machines[i], rows[i]));
    }
    return scriptData(json);
}

std::string rangeText(CalledRange const& range) {
    return range.function + " at " + lengthsText(range) + " by " + percent(range.ratio);
}

// The verdict in one sentence.
std::string sentence(Findings const& findings, MachineFindings const& set) {
    Verdict const& verdict = set.verdict;
    std::string const threshold = format("%g%%", findings.settings.threshold * 100);
    if (!verdict.control.asExpected()) {
        return "This machine cannot be trusted today: unchanged code strayed at " +
               std::to_string(verdict.control.strayed) + " of " +
               std::to_string(verdict.control.points) + " points.";
    }
    int const slower = verdict.count(Call::slower);
    int const faster = verdict.count(Call::faster);
    int const undecided = verdict.count(Call::undecided);
    std::string const points = std::to_string(verdict.points.size()) + " points";
    if (slower + faster == 0) {
        return undecided == 0 ? "Nothing changed by more than " + threshold + " at " + points + "."
                              : "No change of more than " + threshold + " was found; " +
                                    std::to_string(undecided) + " of " + points + " are undecided.";
    }
    std::vector<CalledRange> const ranges = calledRanges(set.passes.points, verdict);
    auto const [fastest, slowest] =
        std::minmax_element(ranges.begin(), ranges.end(),
                            [](auto const& x, auto const& y) { return x.ratio < y.ratio; });
    std::string text;
    if (slower > 0) {
        text = "Slower at " + std::to_string(slower) + " of " + points + ", worst " +
               rangeText(*slowest);
    }
    if (faster > 0) {
        text += text.empty() ? "Faster at " + std::to_string(faster) + " of " + points
                             : "; faster at " + std::to_string(faster);
        text += ", most " + rangeText(*fastest);
    }
    return text + '.';
}

// The heads' lines that say what was measured, each value once.
std::string facts(MachineFindings const& set) {
    std::vector<std::pair<std::string, std::string>> lines;
    auto const add = [&lines](std::string const& name, std::string const& value) {
        if (!value.empty() &&
            std::find(lines.begin(), lines.end(), std::pair(name, value)) == lines.end()) {
            lines.emplace_back(name, value);
        }
    };
    constexpr std::string_view ofOnePass[] = {key::pass,  key::kind,     key::first,
                                              key::ended, key::baseline, key::passes};
    for (auto const& [passes, side] :
         {std::pair(&set.passes.list, ""), std::pair(&set.before, ", before")}) {
        if (passes->empty()) {
            continue;
        }
        std::size_t counted = 0;
        for (Pass const& pass : *passes) {
            counted += !pass.control() ? 1 : 0;
        }
        Head const& head = passes->front().head;
        for (auto const& [name, value] : head.entries()) {
            if (std::find(std::begin(ofOnePass), std::end(ofOnePass), name) ==
                std::end(ofOnePass)) {
                add(name + side, value);
            }
        }
        std::string const& merged = head.get(key::passes);
        add(std::string("Passes") + side, merged.empty() ? std::to_string(counted) : merged);
    }
    if (set.verdict.quietShare >= 0) {
        add("Sharing", format("%.0f%% of the readings had the core to themselves",
                              set.verdict.quietShare * 100));
        Control const& control = set.verdict.control;
        add("Control", control.points == 0
                           ? "none"
                           : std::to_string(control.strayed) + " of " +
                                 std::to_string(control.points) + " points strayed, " +
                                 std::to_string(control.allowed) + " may");
    }
    return factList(lines);
}

std::string summary(Findings const& findings, std::vector<std::vector<Row>> const& rows) {
    std::string html;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        MachineFindings const& set = findings.machines[i];
        std::string const machine = set.passes.list.front().machine();
        bool const compared = !set.verdict.points.empty();
        html += "<section class=\"summary\">";
        if (compared) {
            html += "<p class=\"sides\"><b>" + escaped(findings.after) + "</b> against <b>" +
                    escaped(findings.before) + "</b> on " + escaped(machine) + "</p>";
            char const* const mood = !set.verdict.control.asExpected()     ? "bad"
                                     : set.verdict.count(Call::slower) > 0 ? "slower"
                                     : set.verdict.count(Call::faster) > 0 ? "faster"
                                                                           : "same";
            html += std::string("<p class=\"verdict ") + mood + "\">" +
                    escaped(sentence(findings, set)) + "</p><ul class=\"counts\">";
            for (Call const call : calls) {
                html += std::string("<li class=\"") + callName(call) + "\"><b>" +
                        std::to_string(set.verdict.count(call)) + "</b> " + callName(call) +
                        "</li>";
            }
            html += "<li><b>" +
                    format("%+.2f%%", // no -0.00%
                           std::round((meanOfAll(set.verdict).ratio - 1) * 1e4) / 100 + 0.0) +
                    "</b> mean</li></ul>";
        } else {
            std::set<std::string> functions;
            for (Row const& row : rows[i]) {
                functions.insert(set.passes.points[row.point].function());
            }
            html += "<p class=\"sides\">Absolute numbers of " + escaped(machine) + "</p>";
            html += "<p class=\"verdict same\">" + std::to_string(functions.size()) +
                    " functions, measured at " + std::to_string(rows[i].size()) + " points.</p>";
        }
        html += "<details><summary>What was measured</summary>" + facts(set) + "</details>";
        html += "</section>";
    }
    for (std::string const& note : findings.notes) {
        html += "<p class=\"note\">" + escaped(note) + "</p>";
    }
    return html;
}

// What is there without scripts: functions by length.
std::string fallback(Findings const& findings, std::vector<std::vector<Row>> const& rows) {
    std::string html;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        MachineFindings const& set = findings.machines[i];
        bool const compared = !set.verdict.points.empty();
        std::set<long> lengths;
        std::map<std::string, std::map<long, std::string>> cells;
        for (Row const& row : rows[i]) {
            Point const& point = set.passes.points[row.point];
            lengths.insert(point.length);
            std::string& cell = cells[point.function()][point.length];
            cell += (cell.empty() ? "" : " ") +
                    (compared ? percent(row.clocks / row.before) : formatClocks(row.clocks));
            cell += row.call == static_cast<int>(Call::undecided)  ? "?"
                    : row.call > static_cast<int>(Call::undecided) ? "!"
                                                                   : "";
        }
        html += compared ? "<p>Change by function and length; ! was called, ? is undecided.</p>"
                         : "<p>Clocks per element by function and length.</p>";
        html += "<div class=\"scroll\"><table><tr><th scope=\"col\">Function</th>";
        for (long const length : lengths) {
            html += "<th scope=\"col\">" + std::to_string(length) + "</th>";
        }
        html += "</tr>";
        for (auto const& [function, byLength] : cells) {
            html += "\n<tr><th scope=\"row\">" + escaped(function) + "</th>";
            for (long const length : lengths) {
                auto const place = byLength.find(length);
                html += element("td", place == byLength.end() ? "" : place->second);
            }
            html += "</tr>";
        }
        html += "</table></div>";
    }
    return html;
}

} // namespace

std::string reportPage(Findings const& findings) {
    std::vector<std::vector<Row>> rows;
    for (MachineFindings const& set : findings.machines) {
        rows.push_back(rowsOf(set));
    }
    bool const compared = !findings.after.empty();
    std::string const& start = findings.machines.front().passes.list.front().head.get(key::start);
    return filledPage(
        parts::report,
        {{"title", compared ? "Did anything get slower?" : "Clocks per element"},
         {"summary", summary(findings, rows)},
         {"fallback", fallback(findings, rows)},
         {"footer", escaped("ps_tables report" + (start.empty() ? "" : ", measured " + start))},
         {"data", dataText(findings, rows)}});
}

} // namespace tables
