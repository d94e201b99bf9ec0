// history.cpp - steps in tables of many dates.
#include "core/history.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <numeric>
#include <set>

#include "core/failure.h"
#include "core/merge.h"
#include "core/statistics.h"
#include "core/text.h"

namespace tables {

namespace {

using Json = nlohmann::ordered_json;

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t leastSegment = 4;
constexpr std::size_t leastDates = 2 * leastSegment; // that a point needs
constexpr double madToSigma = 1.4826;
// Successive differences, and their median, tell as much of a scale as a quarter of the values.
constexpr double efficiency = 0.25;

double square(double value) { return value * value; }

// The dates of one machine at which a point was measured.
struct Series {
    std::uint32_t point = 0;
    std::vector<std::size_t> dates;
    std::vector<double> logs;
};

// Tables have three digits, and none behind the point of 100 clocks and more.
double roundingVariance(double logClocks) {
    double const unit = std::min(0.0, std::floor(logClocks / std::log(10)) - 2);
    return square(std::pow(10, unit) / std::exp(logClocks)) / 12;
}

// Differences of neighbours know nothing of steps, but for the few that span one.
Location scaleOf(std::vector<double> const& logs) {
    std::vector<double> steps;
    for (std::size_t i = 1; i < logs.size(); ++i) {
        steps.push_back(std::fabs(logs[i] - logs[i - 1]));
    }
    double const count = static_cast<double>(steps.size());
    double const variance = square(madToSigma * medianOf(steps)) / 2;
    return {0, variance + roundingVariance(medianOf(logs)), 1 + efficiency * count};
}

// A few readings far from their neighbours move to where the scale ends: no step is made of them.
std::vector<double> withoutOutliers(std::vector<double> const& logs, double sigma) {
    constexpr std::size_t window = 2 * leastSegment - 1; // fewer than a segment are outvoted
    std::vector<double> kept;
    for (std::size_t i = 0; i < logs.size(); ++i) {
        std::size_t const begin = std::min(i - std::min(i, window / 2), logs.size() - window);
        auto const first = logs.begin() + static_cast<std::ptrdiff_t>(begin);
        auto const last = first + static_cast<std::ptrdiff_t>(window);
        double const middle = medianOf({first, last});
        kept.push_back(std::clamp(logs[i], middle - 3 * sigma, middle + 3 * sigma));
    }
    return kept;
}

// Where segments begin: of all partitions the one whose squares and penalties are least.
std::vector<std::size_t> segmentsOf(std::vector<double> const& values, double variance,
                                    double penalty) {
    std::size_t const count = values.size();
    std::vector<double> sums(count + 1);
    std::vector<double> squares(count + 1);
    std::vector<double> lengthCosts(count + 1);
    for (std::size_t i = 0; i < count; ++i) {
        double const value = values[i] - values[0];
        sums[i + 1] = sums[i] + value;
        squares[i + 1] = squares[i] + value * value;
        lengthCosts[i + 1] = std::log(static_cast<double>(i + 1) / static_cast<double>(count));
    }
    std::vector<double> best(count + 1, HUGE_VAL);
    std::vector<std::size_t> from(count + 1);
    best[0] = -penalty;
    for (std::size_t end = leastSegment; end <= count; ++end) {
        for (std::size_t begin = 0; begin + leastSegment <= end; ++begin) {
            std::size_t const length = end - begin;
            double const away = squares[end] - squares[begin] -
                                square(sums[end] - sums[begin]) / static_cast<double>(length);
            double const cost = best[begin] + away / variance + lengthCosts[length] + penalty;
            if (cost < best[end]) {
                best[end] = cost;
                from[end] = begin;
            }
        }
    }
    std::vector<std::size_t> begins;
    for (std::size_t end = count; end > 0; end = from[end]) {
        begins.push_back(from[end]);
    }
    std::reverse(begins.begin(), begins.end());
    return begins;
}

double meanOf(std::vector<double> const& values, std::size_t begin, std::size_t end) {
    return std::accumulate(values.begin() + static_cast<std::ptrdiff_t>(begin),
                           values.begin() + static_cast<std::ptrdiff_t>(end), 0.0) /
           static_cast<double>(end - begin);
}

// The steps of one point go to the dates at which they are.
void judgeSeries(History& history, Series const& series, Estimate const& scale,
                 std::size_t points) {
    double const count = static_cast<double>(series.logs.size());
    double const penalty = 3 * std::log(count) + 2 * std::log(static_cast<double>(points));
    // A scale that is badly known has to be exceeded by more.
    double const wider = scale.halfWidth(std::erf(std::sqrt(penalty / 2))) / scale.error;
    double const variance = square(scale.error) * std::max(1.0, square(wider) / penalty);
    std::vector<double> const values = withoutOutliers(series.logs, scale.error);
    std::vector<std::size_t> begins = segmentsOf(values, variance, penalty);
    begins.push_back(values.size());
    for (std::size_t k = 1; k + 1 < begins.size(); ++k) {
        auto const [before, at, end] = std::array{begins[k - 1], begins[k], begins[k + 1]};
        double const parts =
            1 / static_cast<double>(at - before) + 1 / static_cast<double>(end - at);
        double const step = meanOf(values, at, end) - meanOf(values, before, at);
        Judgement one{.point = series.point, .passes = static_cast<int>(end - before)};
        setEstimate(one, {step, scale.error * std::sqrt(parts), scale.freedom},
                    history.settings.level);
        bool const matters = std::fabs(step) > std::log1p(history.settings.threshold);
        one.call = !matters ? Call::same : step > 0 ? Call::slower : Call::faster;
        history.dates[series.dates[at]].changes.points.push_back(one);
    }
}

void findStepsOf(History& history, std::vector<std::size_t> const& dates) {
    std::vector<Series> all;
    std::vector<Location> scales;
    std::vector<std::size_t> groups;
    std::map<long, std::size_t> lengths;
    for (std::uint32_t point = 0; point < history.points.size(); ++point) {
        Series series{.point = point, .dates = {}, .logs = {}};
        for (std::size_t const date : dates) {
            std::vector<double> const& logs = history.dates[date].logs;
            if (point < logs.size() && !std::isnan(logs[point])) {
                series.dates.push_back(date);
                series.logs.push_back(logs[point]);
            }
        }
        if (series.logs.size() >= leastDates) {
            scales.push_back(scaleOf(series.logs));
            groups.push_back(
                lengths.emplace(history.points[point].length, lengths.size()).first->second);
            all.push_back(std::move(series));
        }
    }
    Prior const prior = fitPrior(scales, groups);
    for (std::size_t i = 0; i < all.size(); ++i) {
        Estimate scale = moderated(scales[i], prior, groups[i]);
        scale.error *= std::sqrt(scales[i].kept); // of a value
        judgeSeries(history, all[i], scale, all.size());
    }
}

void multiply(History& history) {
    std::vector<double> before(history.points.size(), 0.0);
    for (HistoryDate& date : history.dates) {
        date.logs.resize(before.size(), none);
        for (std::size_t point = 0; point < before.size(); ++point) {
            double& log = date.logs[point];
            before[point] = std::isnan(log) ? before[point] : before[point] + log;
            log = std::isnan(log) ? none : before[point];
        }
    }
}

// Geometric means over some points, date by date; null where none was measured.
Json lineOf(History const& history, std::vector<std::uint32_t> const& points) {
    Json line = Json::array();
    for (HistoryDate const& date : history.dates) {
        double sum = 0;
        int count = 0;
        for (std::uint32_t const point : points) {
            if (point < date.logs.size() && !std::isnan(date.logs[point])) {
                sum += date.logs[point];
                ++count;
            }
        }
        line.push_back(count > 0 ? Json(std::exp(sum / count)) : Json());
    }
    return line;
}

} // namespace

long startOf(Head const& head) {
    std::string const& text = head.get(key::start);
    std::tm time{};
    char const* const end = ::strptime(text.c_str(), "%a %b %d %H:%M:%S %Y", &time);
    if (end == nullptr || *end != '\0') {
        throw Failure("Start is no date: '" + text.substr(0, 40) + "'; --label puts in order");
    }
    return ::timegm(&time);
}

std::string labelOf(Head const& head) {
    std::time_t const start = startOf(head);
    std::tm time{};
    std::array<char, 40> text;
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", ::gmtime_r(&start, &time));
    std::string const& library = head.get(key::library);
    return text.data() + (library.empty() ? "" : ' ' + library);
}

void addDate(History& history, Passes const& passes, std::string const& label) {
    std::vector<HistoryDate> added;
    for (Passes const& one : byMachine(passes)) {
        HistoryDate date{.label = label,
                         .machine = one.list.front().machine(),
                         .logs = std::vector<double>(history.points.size(), none),
                         .changes = {}};
        auto const put = [&](std::uint32_t point, double log) {
            point = history.points.add(passes.points[point]);
            date.logs.resize(history.points.size(), none);
            date.logs[point] = log;
            return point;
        };
        if (history.chain) {
            date.changes = judgePairs(one, history.settings);
            for (Judgement& judged : date.changes.points) {
                judged.point = put(judged.point, std::log(judged.ratio));
            }
            if (date.changes.points.empty() || !added.empty()) {
                throw Failure("a chain is made of pairs, each table of one machine");
            }
            if (!date.changes.control.asExpected()) {
                throw Failure("unchanged code strayed: no link of a chain");
            }
        } else {
            for (Reading const& reading : mergePasses(one).pass.readings) {
                put(reading.point, std::log(reading.clocks));
            }
        }
        added.push_back(std::move(date));
    }
    std::move(added.begin(), added.end(), std::back_inserter(history.dates));
}

void findSteps(History& history) {
    if (history.chain) {
        return multiply(history);
    }
    for (std::string const& machine : machinesOf(history)) {
        std::vector<std::size_t> dates;
        for (std::size_t i = 0; i < history.dates.size(); ++i) {
            if (history.dates[i].machine == machine) {
                dates.push_back(i);
            }
        }
        if (dates.size() < leastDates) {
            history.notes.push_back(machine + ": " + counted(dates.size(), "date") +
                                    ", steps take " + std::to_string(leastDates));
        }
        findStepsOf(history, dates);
    }
}

std::vector<Step> stepsOf(History const& history) {
    std::vector<Step> steps;
    for (HistoryDate const& date : history.dates) {
        for (CalledRange& range : calledRanges(history.points, date.changes)) {
            steps.push_back({&date, std::move(range)});
        }
    }
    std::stable_sort(steps.begin(), steps.end(),
                     [](Step const& a, Step const& b) { return a.range.ratio > b.range.ratio; });
    return steps;
}

std::set<std::string> machinesOf(History const& history) {
    std::set<std::string> machines;
    for (HistoryDate const& date : history.dates) {
        machines.insert(date.machine);
    }
    return machines;
}

std::string datesText(History const& history) {
    std::string const& first = history.dates.front().label;
    std::string const& last = history.dates.back().label;
    return counted(history.dates.size(), "date") + ", " + first +
           (history.dates.size() > 1 ? " to " + last : "");
}

std::string stepsText(History const& history) {
    std::vector<Step> const steps = stepsOf(history);
    std::set<std::string> functions;
    std::set<std::string> stepped;
    for (std::size_t i = 0; i < history.points.size(); ++i) {
        functions.insert(history.points[static_cast<std::uint32_t>(i)].function());
    }
    for (Step const& step : steps) {
        stepped.insert(step.range.function);
    }
    return counted(steps.size(), "step") + " in " + std::to_string(stepped.size()) + " of " +
           counted(functions.size(), "function");
}

std::string historyText(History const& history, std::size_t rows) {
    std::vector<Step> const steps = stepsOf(history);
    std::string text = datesText(history) + '\n' + stepsText(history) + '\n';
    for (std::string const& note : history.notes) {
        text += "note: " + note + '\n';
    }
    bool const several = !history.chain && machinesOf(history).size() > 1;
    std::size_t const shown = rows == 0 ? steps.size() : std::min(rows, steps.size());
    for (std::size_t i = 0; i < shown; ++i) {
        auto const& [date, range] = steps[i];
        text += percent(range.ratio) + " [" + percent(range.low) + ", " + percent(range.high) +
                "]  " + range.function + " at " + lengthsText(range) + "  from " + date->label +
                (several ? " on " + date->machine : "") + '\n';
    }
    if (shown < steps.size()) {
        text += "and " + std::to_string(steps.size() - shown) + " more: --rows\n";
    }
    return text;
}

std::string historyCsv(History const& history) {
    std::string text = "machine,date,function,first,last,points,ratio,low,high\n";
    for (auto const& [date, range] : stepsOf(history)) {
        // Names may hold commas: labels are the user's.
        text += quotedCell(date->machine) + ',' + quotedCell(date->label) + ',' +
                quotedCell(range.function) +
                format(",%ld,%ld,%d,%.5f,%.5f,%.5f\n", range.first, range.last, range.points,
                       range.ratio, range.low, range.high);
    }
    return text;
}

std::string historyJson(History const& history) {
    Json json;
    json["chain"] = history.chain;
    json["threshold"] = history.settings.threshold;
    json["notes"] = history.notes;
    json["dates"] = Json::array();
    std::map<std::string, std::vector<std::uint32_t>> functions;
    for (std::uint32_t i = 0; i < history.points.size(); ++i) {
        functions[history.points[i].function()].push_back(i);
    }
    for (HistoryDate const& date : history.dates) {
        json["dates"].push_back({{"label", date.label}, {"machine", date.machine}});
    }
    json["steps"] = Json::array();
    for (auto const& [date, range] : stepsOf(history)) {
        json["steps"].push_back({{"machine", date->machine},
                                 {"date", date - history.dates.data()},
                                 {"function", range.function},
                                 {"first", range.first},
                                 {"last", range.last},
                                 {"points", range.points},
                                 {"ratio", range.ratio},
                                 {"low", range.low},
                                 {"high", range.high}});
    }
    json["functions"] = Json::object();
    for (auto const& [name, points] : functions) {
        json["functions"][name] = lineOf(history, points);
    }
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace tables
