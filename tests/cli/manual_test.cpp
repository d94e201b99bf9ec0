// manual_test.cpp - the manual's worked examples, run as they stand in it: the commands of a block
// marked "sh example" in a directory of their own, what they print against the block marked "text
// result" behind it, where "..." is any text and lines may be left out. And that the manual and
// the man page leave out no key.
#include "program.h"

#include <cctype>
#include <gtest/gtest.h>
#include <ostream>
#include <regex>

namespace {

std::string document(char const* name) { return readFile(PS_DOCUMENTS + std::string(name)); }

struct Example {
    std::string heading; // of the section it stands in
    std::string commands;
    std::vector<std::string> result;
};

void PrintTo(Example const& example, std::ostream* out) { *out << example.heading; }

std::vector<Example> examples() {
    std::vector<Example> found;
    std::string heading;
    std::string fence; // first line of the block that we are in
    for (std::string const& line : lines(document("manual.md"))) {
        if (line.rfind("```", 0) == 0) {
            fence = fence.empty() ? line : "";
            if (fence == "```sh example") {
                found.push_back({heading, "", {}});
            }
        } else if (fence == "```sh example") {
            found.back().commands += line + "\n";
        } else if (fence == "```text result" && !found.empty()) {
            found.back().result.push_back(line);
        } else if (fence.empty() && line.rfind('#', 0) == 0) {
            heading = line;
        }
    }
    return found;
}

std::string nameOf(testing::TestParamInfo<Example> const& info) {
    std::string name;
    for (char const c : info.param.heading) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            name += c;
        }
    }
    return name + std::to_string(info.index);
}

// The manual has no blanks and tabs at the ends of lines; the program has.
std::string trimmed(std::string const& line) {
    return line.substr(0, line.find_last_not_of(" \t") + 1);
}

std::regex patternOf(std::string const& line) {
    std::string const literal =
        std::regex_replace(trimmed(line), std::regex(R"([.^$|()\[\]{}*+?\\])"), R"(\$&)");
    return std::regex(std::regex_replace(literal, std::regex(R"(\\\.\\\.\\\.)"), ".*"));
}

class ManualExample : public testing::TestWithParam<Example> {};

} // namespace

TEST_P(ManualExample, PrintsWhatTheManualShows) {
    ASSERT_FALSE(GetParam().result.empty());
    TempDirectory const dir;
    Outcome const outcome = runShell("cd " + dir.path + " && PATH=$(dirname " + psZolvm() +
                                     "):$PATH && set -e\n" + GetParam().commands);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");

    auto const printed = lines(outcome.out);
    auto line = printed.begin();
    for (std::string const& wanted : GetParam().result) {
        std::regex const pattern = patternOf(wanted);
        line = std::find_if(line, printed.end(), [&](std::string const& candidate) {
            return std::regex_match(trimmed(candidate), pattern);
        });
        ASSERT_NE(line, printed.end()) << "not printed, or not in this order: " << wanted << "\n"
                                       << outcome.out;
        ++line;
    }
}

INSTANTIATE_TEST_SUITE_P(Manual, ManualExample, testing::ValuesIn(examples()), nameOf);

TEST(Manual, HasExamples) { EXPECT_GE(examples().size(), 6U); }

TEST(Manual, AndManPageNameEveryKey) {
    std::string const manual = document("manual.md");
    std::string const page = document("ps_zolvm.1");
    Outcome const help = runShell(psZolvm() + " -h");
    std::regex const helpLine("-(.)[ =<\\[+-].*");
    int keys = 0;
    for (std::string const& line : lines(help.out)) {
        if (std::regex_match(line, helpLine)) {
            EXPECT_TRUE(contains(manual, "`-" + line.substr(1, 1))) << line;
            EXPECT_TRUE(contains(page, "\\-" + line.substr(1, 1))) << line;
            ++keys;
        }
    }
    EXPECT_GT(keys, 30);
}
