// texts_test.cpp - what ps_tables prints and writes of fixed tables, whole, against stored copies.
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <regex>

#include "cli/program.h"
#include "support/storedtext.h"

namespace {

constexpr char titles[] = "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,"
                          "Parm5,Parm6,scaleFactor,Comment,Clocks,per,Time (usec),MFlops\n";

// Passes in long form, of kinds by their letters (a is of absolute numbers); from 64 elements on,
// Sin is slower by the change, Cos is faster by half of it everywhere, Pow scatters.
std::string passesOf(std::string const& computer, std::string const& kinds, double change,
                     int day = 1, double stray = 0) {
    std::map<char, char const*> const names = {
        {'a', "plain"}, {'p', "pair"}, {'c', "control"}, {'m', "more"}, {'f', "confirm"}};
    std::string heads;
    std::string rows;
    std::uint32_t state = static_cast<std::uint32_t>(day) * 7919;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        std::string const number = std::to_string(i + 1);
        bool const paired = kinds[i] != 'a';
        heads += "Pass," + number + "\nCPU,A chip, 2x2.6 GHz, Max cache size 1 K\nComputer," +
                 computer + "\nLibrary,v" + std::to_string(day) +
                 "\nLibrary,under test: /new/libzolvm.so\nStart,Thu Jan " +
                 std::to_string(10 + day) + " 10:00:00 2026\nKind," + names.at(kinds[i]) +
                 "\nKeys,-T\"a<b\"\n" + (paired ? "First,library\nBaseline,/old\n" : "");
        for (int function = 0; function < 4; ++function) {
            for (int length = 32; length <= 128; length *= 2) {
                state = state * 1103515245U + 12345U;
                double const noise = (state >> 16 & 0x7fff) / 16384. - 1;
                double const effect = function == 0   ? (length > 32 ? change : 0.)
                                      : function == 1 ? -change / 2
                                                      : 0.;
                double const ratio = (1 + (kinds[i] == 'c' ? stray : effect)) *
                                     (1 + noise * (function == 3 ? 0.03 : 0.0013));
                double const clocks = (2.03 + 1.37 * function) * (1 + 8. / length) * ratio;
                char text[240];
                char const* const point[] = {"Sin,32f,A24", "Cos,64f,A53", "Abs,64f,-",
                                             "Pow,32f,A11"};
                std::snprintf(text, sizeof text, "%s,%s,%d,%c,-,-,-,-,-,-,nLps=%d%s",
                              number.c_str(), point[function], length, function == 2 ? '1' : '-',
                              function + 2, function == 1 ? " acc=7.5%" : "");
                rows += text;
                if (paired) {
                    std::snprintf(text, sizeof text,
                                  " base=%.3f ratio=%.4f lo=%.4f hi=%.4f nPrs=60 %s",
                                  clocks / ratio, ratio, ratio - 0.002, ratio + 0.003,
                                  length > 32 ? "quiet" : "shared");
                    rows += text;
                }
                std::snprintf(text, sizeof text, ",%.3f,e,%.4f,-\n", clocks,
                              clocks * length / 2600);
                rows += text;
            }
        }
    }
    return heads + "Pass," + titles + rows;
}

// A folder of tables, and what commands in it print and write.
class Texts : public testing::Test {
protected:
    Texts() {
        auto const put = [this](char const* name, std::string const& text) {
            writeFile(dir.path + name, text);
        };
        put("pairs.csv", passesOf("lab1", "ppcppcppmpffff", 0.04));
        put("lab1.csv", passesOf("lab1", "pppppppp", 0.05, 2));
        put("stray.csv", passesOf("lab2", "ppcpcppp", 0.06, 3, 0.09));
        put("login.csv", passesOf("login", "ff", 0, 4));
        put("before.csv", passesOf("lab1", "aaaa", 0, 5));
        put("after.csv", passesOf("lab1", "aaaa", 0.2, 6));
        put("little.csv", passesOf("lab1", "aaaa", 0.02, 6));
        put("one.csv", passesOf("lab1", "a", 0, 7));
        put("other.csv", passesOf("lab1", "a", 0.9, 8));
        runShell("grep -v ,Abs, " + dir.path + "after.csv >" + dir.path + "less.csv; mkdir " +
                 dir.path + "dates");
        for (int day = 1; day <= 12; ++day) {
            writeFile(dir.path + "dates/" + std::to_string(day) + ".csv",
                      passesOf("lab1", "a", day < 7 ? 0 : 0.2, day));
        }
    }
    // The commands with their answers, which numbers of no more digits than are sure.
    std::string session(std::vector<std::string> const& commands) const {
        std::string text;
        for (std::string const& words : commands) {
            Outcome const outcome =
                runShell("cd " + dir.path + " && COLUMNS=80 '" PS_TABLES "' " + words);
            text += "$ ps_tables " + words + '\n' + outcome.out + outcome.err + "exit code " +
                    std::to_string(outcome.status) + "\n\n";
        }
        return std::regex_replace(text, std::regex(R"((\d\.\d{5})\d+)"), "$1");
    }
    // A page without the style and the script, which are files of their own.
    std::string page(std::string const& words) const {
        runShell("cd " + dir.path + " && '" PS_TABLES "' " + words + " -o page.html");
        std::string text = readFile(dir.path + "page.html");
        for (auto const& [open, close] :
             {std::pair("<style>", "</style>"), std::pair("<script>", "</script>")}) {
            std::size_t const begin = text.find(open) + std::string(open).size();
            std::string const part = text.substr(begin, text.find(close, begin) - begin);
            text.erase(begin, part.size());
            // The policy lets these two alone run.
            std::string const sum =
                runShell("sha256sum | cut -c1-64 | tr a-f A-F | basenc -d --base16 | base64", part)
                    .out.substr(0, 44);
            std::size_t const named = text.find("'sha256-" + sum + "'");
            EXPECT_NE(std::string::npos, named) << open;
            text.erase(named == std::string::npos ? 0 : named, sum.size() + 10);
        }
        return text;
    }
    TempDirectory const dir;
};

} // namespace

TEST_F(Texts, Help) {
    std::vector<std::string> commands = {"--help", "", "pair", "merge", "nothing"};
    for (char const* const name : {"pair", "run", "verdict", "compare", "merge", "report", "export",
                                   "history", "import", "machine"}) {
        commands.push_back(name + std::string(" --help"));
    }
    EXPECT_TRUE(matchesStored("tables/help", session(commands)));
}

TEST_F(Texts, Verdicts) {
    std::vector<std::string> commands;
    for (std::string const format : {"text", "markdown", "csv", "json"}) {
        commands.push_back("verdict pairs.csv --format " + format);
        commands.push_back("verdict lab1.csv stray.csv login.csv --format " + format);
        commands.push_back("compare before.csv after.csv --format " + format);
    }
    for (char const* const words :
         {"verdict pairs.csv --rows 1", "verdict pairs.csv --rows 0 --threshold 3",
          "verdict lab1.csv --format markdown --rows 1 --fail-on never", "verdict login.csv",
          "verdict before.csv", "compare before.csv less.csv --strict", "compare one.csv other.csv",
          "compare one.csv one.csv --fail-on undecided", "merge before.csv", "merge pairs.csv"}) {
        commands.emplace_back(words);
    }
    EXPECT_TRUE(matchesStored("tables/verdicts", session(commands)));
}

TEST_F(Texts, ExportsAndHistory) {
    std::vector<std::string> commands;
    for (std::string const format : {"gbench", "gobench", "long", "json", "junit"}) {
        commands.push_back("export after.csv --against one.csv --to " + format);
    }
    for (char const* const words :
         {"export lab1.csv --to gbench --baseline -o g.json", "import g.json",
          "import g.json --mhz 1000", "export pairs.csv --to gobench --baseline --threshold 5",
          "export pairs.csv --to junit --fail-on changed", "export lab1.csv stray.csv --to junit",
          "export little.csv --against before.csv --to junit", "export stray.csv --to long",
          "history dates", "history dates --rows 1", "history dates --format csv",
          "history dates --format json --threshold 15",
          "history --baseline-chain lab1.csv pairs.csv --label a --label b",
          "history --baseline-chain stray.csv"}) {
        commands.emplace_back(words);
    }
    EXPECT_TRUE(matchesStored("tables/exports", session(commands)));
}

TEST_F(Texts, Pages) {
    std::string text;
    for (char const* const words :
         {"report pairs.csv", "report lab1.csv stray.csv login.csv", "report before.csv",
          "report after.csv --against before.csv --threshold 1", "history dates"}) {
        text += page(words);
    }
    EXPECT_TRUE(matchesStored("tables/pages", text));
}
