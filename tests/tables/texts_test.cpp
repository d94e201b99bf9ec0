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
                char const* const words[] = {"nLps=2", "nLps=3 acc=7.5%", "-", "nCalls=5"};
                std::snprintf(text, sizeof text, "%s,%s,%d,%c,-,-,-,-,-,-,%s", number.c_str(),
                              point[function], length, function == 2 ? '1' : '-', words[function]);
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

// Four passes of so many points that scales borrow from each other: 33 functions at 32 elements,
// five at 64, of scales that differ; some lack passes, some are far from what is usual.
std::string manyOf(int day, double scale, double change) {
    std::string text;
    std::uint32_t state = static_cast<std::uint32_t>(day) * 104729;
    for (int pass = 0; pass < 4; ++pass) {
        text += "CPU,B chip, new\nComputer,lab3\nStart,Thu Feb " + std::to_string(10 + day) +
                " 10:00:00 2026\n" + titles;
        for (int function = 0; function < 38; ++function) {
            state = state * 1103515245U + 12345U;
            double const noise = (state >> 16 & 0x7fff) / 16384. - 1;
            double const ratio = (1 + (function % 16 == 0 ? change : 0)) *
                                 (1 + noise * scale * (1 + function % 5 + 9 * (function > 32)));
            double const clocks = (function == 5   ? 1e10
                                   : function == 6 ? 2e-5
                                                   : 1.5 + function * function) *
                                  ratio;
            char row[240];
            std::snprintf(row, sizeof row,
                          "F%d,32f,A24,%d,-,-,-,-,-,-,-,base=%.3e ratio=%.4f lo=%.4f hi=%.4f "
                          "nPrs=9 quiet,%.3e,e,1,-\n",
                          function, function < 33 ? 32 : 64, clocks / ratio, ratio, ratio - .001,
                          ratio + .002, clocks);
            text += pass < 4 - function % 9 || function % 9 > 3 ? row : "";
        }
    }
    return text;
}

// What another program wrote: names and numbers of all sorts.
constexpr char foreign[] = R"({"context": {"mhz_per_cpu": 2600.4}, "benchmarks": [
    {"name": "a/9,b/0", "cpu_time": 2}, {"name": "a/9,b/0", "cpu_time": 2.5, "iterations": 3e9},
    {"name": "n/123456789", "cpu_time": 2, "time_unit": "ms", "iterations": 7},
    {"name": "n/1234567890", "cpu_time": 2, "time_unit": "s"}, {"name": "n/", "cpu_time": 3},
    {"name": "n/032/process_time", "cpu_time": 4}, {"name": "n/32/manual_time", "cpu_time": 5},
    {"name": "n <int>/3x", "cpu_time": 6}, {"name": "x_mean", "run_type": "aggregate"},
    {"name": "y", "error_occurred": true}, {"name": "BM_a<int, 2>/7/32/real_time",
    "cpu_time": 3.2, "time_unit": "us", "iterations": 5}]})";

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
        put("early.csv", passesOf("lab1", std::string(25, 'a'), 0, 9));
        put("late.csv", passesOf("lab1", std::string(26, 'a'), 0.1, 10));
        put("many.csv", manyOf(1, 0.0004, 0.03));
        put("many2.csv", manyOf(2, 0.0009, 0.2));
        put("foreign.json", foreign);
        runShell("grep -v ,Abs, " + dir.path + "after.csv >" + dir.path + "less.csv; mkdir " +
                 dir.path + "dates " + dir.path + "days " + dir.path + "empty");
        for (int day = 1; day <= 12; ++day) {
            writeFile(dir.path + "dates/" + std::to_string(day) + ".csv",
                      passesOf("lab1", "a", day < 7 ? 0 : 0.2, day));
            writeFile(dir.path + "days/" + std::to_string(day) + ".csv",
                      manyOf(day, 0.002, day < 7 ? 0 : 0.1));
        }
        // Points that come later, that lack a date, and another machine.
        runShell("cd " + dir.path +
                 "dates && sed -i /,Abs,/d 1.csv 2.csv && "
                 "sed -i /,Cos,64f,A53,64/d 9.csv && "
                 "sed s/,lab1/,lab2/ 3.csv >3b.csv; mkdir ../faster; "
                 "for day in *.csv; do grep -v ,Sin, $day >../faster/$day; done");
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
          "compare one.csv one.csv --fail-on undecided", "merge before.csv", "merge pairs.csv",
          "verdict many.csv --format csv",
          "compare many.csv many2.csv --format csv --fail-on never", "merge before.csv after.csv",
          "merge lab1.csv login.csv"}) {
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
         {"export lab1.csv --to gbench --baseline -o g.json",
          "import g.json",
          "import g.json --mhz 1000",
          "import foreign.json -o f.csv",
          "import foreign.json",
          "export f.csv.passes.csv --to gobench",
          "export pairs.csv --to gobench --baseline --threshold 5",
          "export pairs.csv --to junit --fail-on changed",
          "export lab1.csv stray.csv --to junit",
          "export little.csv --against before.csv --to junit",
          "export stray.csv --to long",
          "history dates",
          "history dates --rows 1",
          "history dates --format csv",
          "history dates --format json --threshold 15",
          "history --baseline-chain lab1.csv pairs.csv --label a --label b",
          "history --baseline-chain stray.csv",
          "history days --format csv",
          "history empty",
          "import g.json -o g.json",
          "export stray.csv before.csv --to long"}) {
        commands.emplace_back(words);
    }
    EXPECT_TRUE(matchesStored("tables/exports", session(commands)));
}

TEST_F(Texts, Pages) {
    std::string text;
    for (char const* const words :
         {"report pairs.csv", "report lab1.csv stray.csv login.csv", "report before.csv",
          "report after.csv --against before.csv --threshold 1",
          "report late.csv --against early.csv", "history dates", "history faster"}) {
        text += page(words);
    }
    EXPECT_TRUE(matchesStored("tables/pages", text));
}
