// gobench.cpp - Go's benchmark text: configuration lines, then a line for each reading.
#include <algorithm>

#include "core/text.h"
#include "export/formats.h"

namespace tables {

std::string gobenchText(Findings const& findings, Side side) {
    std::string text;
    Head const* last = nullptr;
    for (SidePass const& pass : passesOf(findings, side)) {
        if (last == nullptr || last->get(key::cpu) != pass.head->get(key::cpu)) {
            text += "goos: linux\ngoarch: amd64\npkg: ps_zolvm\ncpu: " + pass.head->get(key::cpu) +
                    '\n';
        }
        last = pass.head;
        for (SideReading const& one : pass.readings) {
            std::string name = "Benchmark_" + one.point->function();
            std::replace_if(
                name.begin(), name.end(), [](char c) { return c == ' ' || c == '\t'; }, '_');
            text += name + format("/length=%ld \t%d\t%.6g ns/op\t%.6g clocks/element\n",
                                  one.point->length, std::max(1, one.reading->loops),
                                  one.usec * 1e3, one.clocks);
        }
    }
    return text;
}

} // namespace tables
