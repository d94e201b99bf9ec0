// gbench.cpp - Google Benchmark's JSON, out and in.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>

#include "core/failure.h"
#include "export/formats.h"

namespace tables {

namespace {

using Json = nlohmann::ordered_json;

constexpr double nanosecondsPerMicrosecond = 1000;

// 2x2.6 GHz, as the head's line of the processor has it: processors and MHz, 0 if it has not.
std::pair<int, double> processorsOf(std::string const& cpu) {
    std::size_t const end = cpu.find(" GHz");
    std::size_t const start = end == std::string::npos ? end : cpu.rfind(", ", end);
    if (start == std::string::npos) {
        return {};
    }
    char* times = nullptr;
    long const count = std::strtol(cpu.c_str() + start + 2, &times, 10);
    return {static_cast<int>(count), *times == 'x' ? std::strtod(times + 1, nullptr) * 1000 : 0};
}

double nanosecondsPer(std::string const& unit) {
    return unit == "ns" ? 1 : unit == "us" ? 1e3 : unit == "ms" ? 1e6 : unit == "s" ? 1e9 : 0;
}

// A name as a cell of a table, and the length, which is its last argument.
Point pointOf(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return c == ',' || c < ' ' || c == 127; },
        ';');
    for (char const* const ending : {"/real_time", "/process_time", "/manual_time"}) {
        if (name.ends_with(ending)) {
            name.resize(name.rfind('/'));
        }
    }
    std::size_t const slash = name.rfind('/');
    std::string const last = slash == std::string::npos ? "" : name.substr(slash + 1);
    bool const hasLength = !last.empty() && last.size() < 10 && last[0] != '0' &&
                           last.find_first_not_of("0123456789") == std::string::npos;
    if (hasLength) {
        name.resize(slash);
    }
    return {name, "-", "-", hasLength ? std::atol(last.c_str()) : 1, "-,-,-,-,-,-,-", "e"};
}

} // namespace

std::string gbenchText(Findings const& findings, Side side) {
    std::vector<SidePass> const passes = passesOf(findings, side);
    Head const& head = *passes.front().head;
    auto const [processors, mhz] = processorsOf(head.get(key::cpu));
    Json json;
    json["context"] = {{"date", head.get(key::start)},    {"host_name", head.get(key::computer)},
                       {"executable", "ps_zolvm"},        {"num_cpus", processors},
                       {"mhz_per_cpu", std::lround(mhz)}, {"cpu_scaling_enabled", false},
                       {"caches", Json::array()},         {"library", head.get(key::library)},
                       {"library_build_type", "release"}};
    // Repetitions of a point stand together, as that program writes them.
    std::map<Point, std::vector<SideReading const*>> byPoint;
    std::vector<Point const*> order;
    for (SidePass const& pass : passes) {
        for (SideReading const& one : pass.readings) {
            std::vector<SideReading const*>& all = byPoint[*one.point];
            if (all.empty()) {
                order.push_back(one.point);
            }
            all.push_back(&one);
        }
    }
    json["benchmarks"] = Json::array();
    for (std::size_t i = 0; i < order.size(); ++i) {
        std::vector<SideReading const*> const& all = byPoint[*order[i]];
        std::string const name = order[i]->function() + '/' + std::to_string(order[i]->length);
        for (std::size_t k = 0; k < all.size(); ++k) {
            double const time = all[k]->usec * nanosecondsPerMicrosecond;
            json["benchmarks"].push_back({{"name", name},
                                          {"family_index", i},
                                          {"per_family_instance_index", 0},
                                          {"run_name", name},
                                          {"run_type", "iteration"},
                                          {"repetitions", all.size()},
                                          {"repetition_index", k},
                                          {"threads", 1},
                                          {"iterations", std::max(1, all[k]->reading->loops)},
                                          {"real_time", time},
                                          {"cpu_time", time},
                                          {"time_unit", "ns"},
                                          {"clocks_per_element", all[k]->clocks}});
        }
    }
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

Passes readGbench(std::string_view text, std::string const& name, double mhz) {
    Passes passes;
    try {
        Json const json = Json::parse(text);
        Json const& context = json.at("context");
        mhz = mhz > 0 ? mhz : context.value("mhz_per_cpu", 0.0);
        if (!(mhz > 0)) {
            throw Failure(name + ": no 'mhz_per_cpu': --mhz makes clocks of times");
        }
        double const processors = std::clamp(context.value("num_cpus", 1.0), 1.0, 1e6);
        Head head;
        head.add(key::cpu, "unknown, " + std::to_string(static_cast<int>(processors)) + 'x' +
                               Json(std::round(mhz) / 1000).dump() + " GHz");
        head.add(key::computer, context.value("host_name", "unknown"));
        head.add(key::library, context.value("executable", "unknown"));
        head.add(key::start, context.value("date", "unknown"));
        std::vector<std::size_t> seen; // by point, how often
        for (Json const& one : json.at("benchmarks")) {
            if (one.value("run_type", "iteration") != "iteration" ||
                one.value("error_occurred", false)) {
                continue;
            }
            Point const point = pointOf(one.at("name").get<std::string>());
            double const time =
                one.at("cpu_time").get<double>() * nanosecondsPer(one.value("time_unit", "ns"));
            if (point.base.empty() || !(time > 0 && std::isfinite(time))) {
                throw Failure(name + ": '" + point.base.substr(0, 40) +
                              "' has no name, no time above 0, or an unknown unit of time");
            }
            Reading reading{.point = passes.points.add(point)};
            double const loops = one.value("iterations", 0.0);
            reading.loops = static_cast<std::int32_t>(std::clamp(loops, 1.0, 2e9));
            reading.usec = time / nanosecondsPerMicrosecond;
            reading.clocks = reading.usec * mhz / static_cast<double>(point.length);
            seen.resize(passes.points.size());
            std::size_t const pass = seen[reading.point]++;
            if (pass == passes.list.size()) {
                passes.list.push_back({head, {}});
            }
            passes.list[pass].readings.push_back(reading);
        }
    } catch (Json::exception const& error) {
        throw Failure(name + ": not the JSON of Google Benchmark: " + error.what());
    }
    if (passes.list.empty()) {
        throw Failure(name + ": no benchmark ran (aggregates alone are no readings)");
    }
    return passes;
}

} // namespace tables
