// manual_test.cpp - the documents' worked examples, run as they stand there: the commands of blocks
// marked "sh example" in a directory of their own, with the file of a block "c example NAME", and
// what they print against the blocks marked "text result" behind them, where "..." is any text and
// lines may be left out. What is shown of a longer run is marked "text form": numbers, dates and
// the machine are any, and a comment has the commands of a shorter run. And that the manual and the
// man page leave out no key.
#include "program.h"

#include <cctype>
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

// The text of a form as a result.
std::string formOf(std::string const& line) {
    static std::regex const any(R"(^(on|control:|length| +\d+) .*|/home/me)"
                                R"(|\w{3} \w{3} [ \d]\d [\d:]+ \d{4}|[-+]?\d[\d.:]*|  +)");
    return std::regex_replace(line, any, "...");
}

void addExamples(std::vector<Example>& found, char const* name) {
    std::string heading;
    std::string fence; // first line of the block that we are in
    std::string const file = "```c example ";
    for (std::string const& line : lines(document(name))) {
        if (line.rfind("```", 0) == 0 || line == "<!--sh example" || line == "-->") {
            if (fence.rfind(file, 0) == 0) {
                found.back().commands += "END\n";
            }
            fence = fence.empty() ? line : "";
            bool const begins = contains(fence, "sh example") || fence.rfind(file, 0) == 0;
            if (begins && (found.empty() || !found.back().result.empty())) {
                found.push_back({heading, "", {}});
            }
            if (fence.rfind(file, 0) == 0) {
                found.back().commands += "cat >" + fence.substr(file.size()) + " <<'END'\n";
            }
        } else if (contains(fence, "sh example") || fence.rfind(file, 0) == 0) {
            found.back().commands += line + "\n";
        } else if (fence == "```text result") {
            found.back().result.push_back(line);
        } else if (fence == "```text form") {
            found.back().result.push_back(formOf(line));
        } else if (fence.empty() && line.rfind('#', 0) == 0) {
            heading = line;
        }
    }
}

std::vector<Example> examples() {
    std::vector<Example> found;
    for (char const* const name : {"../README.md", "manual.md", "own-library.md"}) {
        addExamples(found, name);
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

// Documents have no blanks and tabs at the ends of lines; the program has.
std::string trimmed(std::string const& line) {
    return line.substr(0, line.find_last_not_of(" \t") + 1);
}

std::regex patternOf(std::string const& line) {
    std::string const literal =
        std::regex_replace(trimmed(line), std::regex(R"([.^$|()\[\]{}*+?\\])"), R"(\$&)");
    return std::regex(std::regex_replace(literal, std::regex(R"(\\\.\\\.\\\.)"), ".*"));
}

class DocumentExample : public testing::TestWithParam<Example> {};

} // namespace

TEST_P(DocumentExample, PrintsWhatIsShown) {
    ASSERT_FALSE(GetParam().result.empty());
    Outcome outcome;
    for (int tries = 0; tries == 0 || (tries < 5 && contains(outcome.out, "cannot be trusted"));
         ++tries) { // a busy machine
        TempDirectory const dir;
        outcome =
            runShell("cd " + dir.path + " && ln -s '" PS_DOCUMENTS "../platform' . && " +
                     "PATH=$(dirname " + psZolvm() + "):$PATH && set -e\n" + GetParam().commands);
    }
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

INSTANTIATE_TEST_SUITE_P(Manual, DocumentExample, testing::ValuesIn(examples()), nameOf);

TEST(Manual, AndOthersHaveExamples) { EXPECT_GE(examples().size(), 18U); }

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
