// show.cpp - a verdict as text, Markdown, csv and JSON.
#include "core/show.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>

#include "core/text.h"

namespace tables {

namespace {

constexpr std::array calls = {Call::slower, Call::faster, Call::undecided, Call::same};
constexpr std::size_t shownFamilies = 8; // of means that say something

std::string interval(CalledRange const& range) {
    return format("[%+.1f, %+.1f]", (range.low - 1) * 100, (range.high - 1) * 100);
}

std::string counts(Verdict const& verdict) {
    std::string text;
    for (Call const call : calls) {
        text += format("%s%d %s", text.empty() ? "" : ", ", verdict.count(call), callName(call));
    }
    return text;
}

std::string controlText(Control const& control) {
    if (control.points == 0) {
        return "control: none";
    }
    if (control.asExpected()) {
        return "control: as expected";
    }
    return format("control: %d of %d points strayed where %d may: "
                  "this machine cannot be trusted today",
                  control.strayed, control.points, control.allowed);
}

// Names and changes, on lines that fit a terminal.
std::string means(std::string const& title, std::vector<Mean> const& list) {
    constexpr std::size_t width = 80;
    std::string text;
    std::string line = title;
    for (Mean const& mean : list) {
        std::string const item = "  " + mean.name + format(" %+.2f%%", (mean.ratio - 1) * 100);
        if (line.size() + item.size() > width) {
            text += line + '\n';
            line = std::string(title.size(), ' ');
        }
        line += item;
    }
    return list.empty() ? "" : text + line + '\n';
}

// Those furthest from 1 that are at least half a threshold away.
std::vector<Mean> notable(std::vector<Mean> list, double threshold) {
    auto const away = [](Mean const& mean) { return std::fabs(std::log(mean.ratio)); };
    std::erase_if(list, [&](Mean const& mean) { return away(mean) < threshold / 2; });
    std::stable_sort(list.begin(), list.end(),
                     [&](Mean const& a, Mean const& b) { return away(a) > away(b); });
    list.resize(std::min(list.size(), shownFamilies));
    return list;
}

std::string passesLine(Shown const& shown, Verdict const& verdict) {
    std::string text = counted(static_cast<std::size_t>(verdict.passes), "pass");
    if (shown.seconds > 0) {
        text += format(", %.0f s", shown.seconds);
    }
    if (verdict.quietShare >= 0) {
        text +=
            format(", %.0f%% of the readings had the core to themselves", verdict.quietShare * 100);
    }
    return text;
}

// Rows of ranges, as many as are shown; how many are left is told.
std::vector<CalledRange> shownRanges(Shown const& shown, Verdict const& verdict,
                                     std::size_t& left) {
    std::vector<CalledRange> ranges = calledRanges(shown.points, verdict);
    std::size_t const count = shown.rows == 0 ? ranges.size() : std::min(shown.rows, ranges.size());
    left = ranges.size() - count;
    ranges.resize(count);
    return ranges;
}

// By function, what its worst called range is on each machine.
std::vector<std::vector<std::string>> byFunction(Shown const& shown) {
    std::map<std::string, std::vector<std::string>> rows;
    for (std::size_t i = 0; i < shown.verdicts.size(); ++i) {
        for (CalledRange const& range : calledRanges(shown.points, shown.verdicts[i])) {
            std::vector<std::string>& row = rows[range.function];
            row.resize(shown.verdicts.size(), "-");
            if (row[i] == "-") {
                row[i] = percent(range.ratio);
            }
        }
    }
    std::vector<std::vector<std::string>> table;
    for (auto& [function, row] : rows) {
        row.insert(row.begin(), function);
        table.push_back(std::move(row));
    }
    return table;
}

nlohmann::ordered_json jsonOf(std::vector<Mean> const& list) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (Mean const& mean : list) {
        json.push_back({{"name", mean.name}, {"points", mean.points}, {"ratio", mean.ratio}});
    }
    return json;
}

std::string nameText(std::string const& name) { return name; }
std::string nameText(long length) { return std::to_string(length); }

template <typename Name>
std::vector<Mean> meansBy(PointList const& points, Verdict const& verdict, Name const& nameOf) {
    std::map<decltype(nameOf(points[0])), std::pair<double, int>> sums;
    for (Judgement const& one : verdict.points) {
        auto& [logs, count] = sums[nameOf(points[one.point])];
        logs += std::log(one.ratio);
        ++count;
    }
    std::vector<Mean> list;
    list.reserve(sums.size());
    for (auto const& [name, sum] : sums) {
        list.push_back({nameText(name), sum.second, std::exp(sum.first / sum.second)});
    }
    return list;
}

std::string coloured(Shown const& shown, Call call, std::string const& what) {
    char const* const code = call == Call::slower ? "31" : call == Call::faster ? "32" : "33";
    return shown.colour ? format("\033[%sm%s\033[0m", code, what.c_str()) : what;
}

std::string rangesText(Shown const& shown, Verdict const& verdict) {
    std::string text;
    std::size_t left = 0;
    for (CalledRange const& range : shownRanges(shown, verdict, left)) {
        text += format("%-20s %13s  ", range.function.c_str(), lengthsText(range).c_str()) +
                coloured(shown, range.call,
                         format("%7s %-16s %s", percent(range.ratio).c_str(),
                                interval(range).c_str(), callName(range.call))) +
                '\n';
    }
    if (left > 0) {
        text += format("... and %zu more rows\n", left);
    }
    return text;
}

// What is told of one machine.
std::string verdictText(Shown const& shown, Verdict const& verdict) {
    std::string text =
        shown.after + " against " + shown.before + "\non " + verdict.machine + "\n\n";
    std::string const ranges = rangesText(shown, verdict);
    text += ranges + (ranges.empty() ? "" : "\n");
    text += format("%zu points: %s (threshold %g%%)\n", verdict.points.size(),
                   counts(verdict).c_str(), shown.settings.threshold * 100);
    text += means("mean  ", {meanOfAll(verdict)});
    text += means("length", meansByLength(shown.points, verdict));
    text +=
        means("family", notable(meansByFamily(shown.points, verdict), shown.settings.threshold));
    if (verdict.quietShare >= 0) {
        std::string const control = controlText(verdict.control);
        text += verdict.control.asExpected() ? control : coloured(shown, Call::slower, control);
        text += '\n';
    }
    return text + passesLine(shown, verdict) + '\n';
}

// The worst changes of the functions side by side, a column for each machine.
std::string machinesMarkdown(Shown const& shown) {
    std::string text = "| Function |";
    std::string rule = "|---|";
    for (Verdict const& verdict : shown.verdicts) {
        text += ' ' + verdict.machine + " |";
        rule += "---|";
    }
    text += '\n' + rule + '\n';
    for (std::vector<std::string> const& row : byFunction(shown)) {
        text += '|';
        for (std::string const& cell : row) {
            text += ' ' + cell + " |";
        }
        text += '\n';
    }
    return text + '\n';
}

// A function stands where the range furthest from 1 puts it, slowest first.
void sortWorstFirst(std::vector<CalledRange>& ranges) {
    std::map<std::string, double> worst;
    for (CalledRange const& range : ranges) {
        double& place = worst[range.function];
        double const log = std::log(range.ratio);
        place = std::fabs(log) > std::fabs(place) ? log : place;
    }
    std::stable_sort(ranges.begin(), ranges.end(), [&worst](auto const& a, auto const& b) {
        return worst[a.function] > worst[b.function];
    });
}

nlohmann::ordered_json jsonOf(PointList const& points, Verdict const& verdict) {
    nlohmann::ordered_json one;
    one["machine"] = verdict.machine;
    one["passes"] = verdict.passes;
    one["quiet"] = verdict.quietShare;
    one["control"] = {{"points", verdict.control.points},
                      {"strayed", verdict.control.strayed},
                      {"allowed", verdict.control.allowed},
                      {"asExpected", verdict.control.asExpected()}};
    for (Call const call : calls) {
        one["counts"][callName(call)] = verdict.count(call);
    }
    one["mean"] = meanOfAll(verdict).ratio;
    one["families"] = jsonOf(meansByFamily(points, verdict));
    one["lengths"] = jsonOf(meansByLength(points, verdict));
    one["points"] = nlohmann::ordered_json::array();
    for (Judgement const& judged : verdict.points) {
        Point const& point = points[judged.point];
        one["points"].push_back({{"function", point.function()},
                                 {"length", point.length},
                                 {"verdict", callName(judged.call)},
                                 {"ratio", judged.ratio},
                                 {"low", judged.low},
                                 {"high", judged.high}, // null: not bounded
                                 {"chance", judged.chance},
                                 {"passes", judged.passes},
                                 {"again", judged.again}});
    }
    return one;
}

} // namespace

std::string percent(double ratio) { return format("%+.1f%%", (ratio - 1) * 100); }

std::string lengthsText(CalledRange const& range) {
    return std::to_string(range.first) +
           (range.last != range.first ? ".." + std::to_string(range.last) : "");
}

std::vector<CalledRange> calledRanges(PointList const& points, Verdict const& verdict) {
    std::map<std::string, std::vector<Judgement const*>> functions;
    for (Judgement const& one : verdict.points) {
        functions[points[one.point].function()].push_back(&one);
    }
    std::vector<CalledRange> ranges;
    for (auto& [function, list] : functions) {
        std::stable_sort(list.begin(), list.end(), [&points](auto const* a, auto const* b) {
            return points[a->point].length < points[b->point].length;
        });
        Call before = Call::same;
        for (Judgement const* const one : list) {
            Point const& point = points[one->point];
            if (one->called()) {
                if (one->call != before) {
                    ranges.push_back({point.base, function, point.length, point.length, 0, 1,
                                      one->low, one->high, one->call});
                }
                CalledRange& range = ranges.back();
                range.last = point.length;
                range.ratio =
                    std::exp((std::log(range.ratio) * range.points + std::log(one->ratio)) /
                             (range.points + 1));
                ++range.points;
                range.low = std::min(range.low, one->low);
                range.high = std::max(range.high, one->high);
            }
            before = one->call;
        }
    }
    sortWorstFirst(ranges);
    return ranges;
}

std::vector<Mean> meansByFamily(PointList const& points, Verdict const& verdict) {
    return meansBy(points, verdict, [](Point const& point) { return point.base; });
}

std::vector<Mean> meansByLength(PointList const& points, Verdict const& verdict) {
    return meansBy(points, verdict, [](Point const& point) { return point.length; });
}

Mean meanOfAll(Verdict const& verdict) {
    Mean mean{"all", static_cast<int>(verdict.points.size()), 1};
    double logs = 0;
    for (Judgement const& one : verdict.points) {
        logs += std::log(one.ratio);
    }
    mean.ratio = mean.points > 0 ? std::exp(logs / mean.points) : 1;
    return mean;
}

std::string showText(Shown const& shown) {
    std::string text;
    for (Verdict const& verdict : shown.verdicts) {
        text += verdictText(shown, verdict);
        text += &verdict == &shown.verdicts.back() ? "" : "\n";
    }
    if (auto const rows = byFunction(shown); shown.verdicts.size() > 1 && !rows.empty()) {
        text += "\nfunctions by machine, the first column is the first machine:\n";
        for (std::vector<std::string> const& row : rows) {
            text += format("%-20s", row[0].c_str());
            for (std::size_t i = 1; i < row.size(); ++i) {
                text += format(" %8s", row[i].c_str());
            }
            text += '\n';
        }
    }
    for (std::string const& note : shown.notes) {
        text += note + '\n';
    }
    return text;
}

std::string showMarkdown(Shown const& shown) {
    std::string text;
    for (Verdict const& verdict : shown.verdicts) {
        text += "**" + shown.after + "** against **" + shown.before + "** on " + verdict.machine +
                ": " + counts(verdict) +
                format(" of %zu points (threshold %g%%); ", verdict.points.size(),
                       shown.settings.threshold * 100) +
                (verdict.quietShare >= 0 ? controlText(verdict.control) + "; " : "") +
                passesLine(shown, verdict) + ".\n";
        std::size_t left = 0;
        std::vector<CalledRange> const ranges = shownRanges(shown, verdict, left);
        text += ranges.empty() ? ""
                               : "\n| Function | Length | Change | Interval | Verdict |\n"
                                 "|---|---|---|---|---|\n";
        for (CalledRange const& range : ranges) {
            text += "| `" + range.function + "` | " + lengthsText(range) + " | " +
                    percent(range.ratio) + " | " + interval(range) + " | " + callName(range.call) +
                    " |\n";
        }
        text += left > 0 ? format("\n... and %zu more rows\n", left) : "";
        text += '\n';
    }
    text += shown.verdicts.size() > 1 ? machinesMarkdown(shown) : "";
    for (std::string const& note : shown.notes) {
        text += "- " + note + '\n';
    }
    return text;
}

std::string showCsv(Shown const& shown) {
    std::string text =
        "machine,funcBase,funcDataType,funcDescriptor,Len/Size,verdict,ratio,low,high,"
        "chance,passes,again\n";
    for (Verdict const& verdict : shown.verdicts) {
        std::string machine = verdict.machine;
        std::replace(machine.begin(), machine.end(), ',', ';');
        for (Judgement const& one : verdict.points) {
            Point const& point = shown.points[one.point];
            text += format("%s,%s,%s,%s,%ld,%s,%.5f,%.5f,%.5f,%.3g,%d,%s\n", machine.c_str(),
                           point.base.c_str(), point.type.c_str(), point.accuracy.c_str(),
                           point.length, callName(one.call), one.ratio, one.low, one.high,
                           one.chance, one.passes, one.again ? "yes" : "no");
        }
    }
    return text;
}

std::string showJson(Shown const& shown) {
    nlohmann::ordered_json json;
    json["before"] = shown.before;
    json["after"] = shown.after;
    json["threshold"] = shown.settings.threshold;
    json["seconds"] = shown.seconds;
    json["notes"] = shown.notes;
    for (Verdict const& verdict : shown.verdicts) {
        json["machines"].push_back(jsonOf(shown.points, verdict));
    }
    return json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

} // namespace tables
