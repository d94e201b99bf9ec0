// long.cpp - all readings in long form, as csv and as JSON.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "core/text.h"
#include "export/formats.h"

namespace tables {

namespace {

using Json = nlohmann::ordered_json;

// Null and an empty cell: there is none.
constexpr struct {
    char const* name;
    char const* type;
    char const* meaning;
} fields[] = {
    {"machine", "string", "computer and processor"},
    {"pass", "integer", "number of the pass of this machine and side, from 1"},
    {"side", "string", "library: under test; baseline: what it is compared with"},
    {"function", "string", "family, type and accuracy in one"},
    {"family", "string", "as Sin"},
    {"type", "string", "as 32f"},
    {"accuracy", "string", "as A24; - where the function has none"},
    {"length", "integer", "elements of a vector"},
    {"parameters", "string", "Parm1 to scaleFactor, with semicolons"},
    {"clocks", "number", "per element, of this side"},
    {"usec", "number", "microseconds of a call"},
    {"calls", "integer", "in the reading that counts"},
    {"pair_ratio", "number", "of this pass: library by baseline"},
    {"verdict", "string", "of the point, over all passes: same, undecided, faster or slower"},
    {"ratio", "number", "of the point, over all passes: library by baseline"},
    {"low", "number", "lower end of the ratio's interval"},
    {"high", "number", "upper end"},
};

using Judgements = std::unordered_map<std::uint32_t, Judgement const*>;

// A reading in the order of the fields.
Json rowOf(std::string const& machine, int pass, Side side, SideReading const& one,
           Judgements const& judgements) {
    std::string parameters = one.point->parms;
    std::replace(parameters.begin(), parameters.end(), ',', ';');
    Reading const& reading = *one.reading;
    Json row = {machine,
                pass,
                side == Side::library ? "library" : "baseline",
                one.point->function(),
                one.point->base,
                one.point->type,
                one.point->accuracy,
                one.point->length,
                std::move(parameters),
                one.clocks,
                one.usec,
                reading.loops > 0 ? Json(reading.loops) : Json(),
                reading.ratio > 0 ? Json(reading.ratio) : Json()};
    if (auto const place = judgements.find(reading.point); place != judgements.end()) {
        Judgement const& judged = *place->second;
        for (Json value : {Json(callName(judged.call)), Json(judged.ratio), Json(judged.low),
                           Json(judged.high)}) {
            row.push_back(std::move(value));
        }
    } else {
        row.insert(row.end(), {Json(), Json(), Json(), Json()});
    }
    return row;
}

// Hands over each row.
template <typename Use>
void forRows(Findings const& findings, Use const& use) {
    for (MachineFindings const& machine : findings.machines) {
        Judgements const judgements = judgementsOf(machine.verdict);
        std::string const name = machine.passes.list.front().machine();
        for (Side const side : {Side::library, Side::baseline}) {
            int number = 0;
            for (SidePass const& pass : passesOf(machine, side)) {
                ++number;
                for (SideReading const& one : pass.readings) {
                    use(rowOf(name, number, side, one, judgements));
                }
            }
        }
    }
}

// Numbers as JSON writes them; texts in quotes where they need them.
std::string cellOf(Json const& value) {
    if (!value.is_string()) {
        std::string const text = value.dump();
        return text == "null" ? "" : text;
    }
    std::string text = value.get<std::string>();
    return text.find_first_of(",\"\n\r") == std::string::npos ? text : quotedCell(text);
}

} // namespace

std::string longCsv(Findings const& findings) {
    std::string text;
    for (auto const& field : fields) {
        text += (text.empty() ? "" : ",") + std::string(field.name);
    }
    text += '\n';
    forRows(findings, [&text](Json const& row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            text += (i == 0 ? "" : ",") + cellOf(row[i]);
        }
        text += '\n';
    });
    return text;
}

std::string longJson(Findings const& findings) {
    std::string text = "{\"format\": \"ps_tables long 1\",\n\"fields\": [";
    char const* between = "\n ";
    for (auto const& [name, type, meaning] : fields) {
        text += between + Json{{"name", name}, {"type", type}, {"description", meaning}}.dump();
        between = ",\n ";
    }
    text += "\n],\n\"rows\": [";
    between = "\n ";
    forRows(findings, [&](Json const& row) {
        text += between + row.dump(-1, ' ', false, Json::error_handler_t::replace);
        between = ",\n ";
    });
    return text + "\n]}\n";
}

} // namespace tables
