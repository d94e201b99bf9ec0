// fuzz_table.cpp - the text of a table, or JSON that is imported. What is read is written, read
// again and written to the same; what is refused is refused with a row; and what passes the reader
// can be merged and judged.
#include "fuzz_support.h"

#include <cmath>

#include "core/compare.h"
#include "core/failure.h"
#include "core/merge.h"
#include "core/show.h"
#include "export/formats.h"

using namespace tables;

namespace {

constexpr char name[] = "t.csv";

bool read(Passes& passes, std::string const& text) {
    try {
        if (text.starts_with('{')) {
            passes = readGbench(text, name);
        } else {
            readPasses(passes, text, name);
        }
        return true;
    } catch (Failure const& failure) {
        std::string const told = failure.what();
        FUZZ_CHECK(told.starts_with(name) && told.find('\n') == std::string::npos, text);
        return false;
    }
}

void checkJudged(Passes const& passes, std::string const& text) {
    std::vector<Verdict> verdicts{judgePairs(passes, {})};
    for (Judgement const& one : verdicts[0].points) {
        FUZZ_CHECK(one.ratio > 0 && one.low <= one.ratio && one.ratio <= one.high, text);
    }
    for (auto const& show : {showText, showMarkdown, showCsv, showJson}) {
        FUZZ_CHECK(!show({.points = passes.points, .verdicts = verdicts}).empty(), text);
    }
    (void)compareTables(passes.points, passes.list, passes.list, {});
}

} // namespace

std::size_t const mostBytes = 1 << 16;

void tryInput(std::string const& text) {
    Passes first;
    if (!read(first, text)) {
        return;
    }
    std::string const written = passesText(first);
    Passes second;
    FUZZ_CHECK(read(second, written), written);
    FUZZ_CHECK(passesText(second) == written, written);
    Merged const merged = mergePasses(first);
    Passes third;
    if (!merged.pass.readings.empty()) { // passes of the control alone leave nothing
        FUZZ_CHECK(read(third, tableText(first.points, merged.pass, merged.words)), text);
    }
    checkJudged(first, text);
}
