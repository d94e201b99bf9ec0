// report_test.cpp - what the report says, and what it refuses. tests/page looks at it in a browser.
#include <gtest/gtest.h>

#include "cli/program.h"
#include "core/failure.h"
#include "page/report.h"
#include "run/files.h"

using namespace tables;

namespace {

constexpr char titles[] = "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,"
                          "Parm5,Parm6,scaleFactor,Comment,Clocks,per,Time (usec),MFlops\n";

// A table of Sin_32f_A24 at 64, 128 and 256; the comment of each row is given.
std::string tableOf(std::string const& computer, std::string const& comment) {
    std::string text = "Computer," + computer + "\nStart,today\n" + titles;
    for (char const* const length : {"64", "128", "256"}) {
        text +=
            std::string("Sin,32f,A24,") + length + ",-,-,-,-,-,-,-," + comment + ",2.00,e,0.1,-\n";
    }
    return text;
}

std::string const pairs = "nLps=1 base=2.00 ratio=1.0000 lo=0.9999 hi=1.0001 nPrs=9 quiet";

} // namespace

TEST(Report, SaysTheVerdictInOneSentence) {
    Call const same = Call::same;
    Call const slower = Call::slower;
    Call const faster = Call::faster;
    struct {
        std::vector<Call> calls;
        std::vector<double> ratios;
        Control control;
        char const* text;
    } const cases[] = {
        {{same, same, same}, {1, 1, 1}, {}, "same\">Nothing changed by more than 1% at 3 points."},
        {{same, same, Call::undecided},
         {1, 1, 1.5},
         {3, 0, 0},
         "same\">No change of more than 1% was found; 1 of 3 points are undecided."},
        // The first range of the function that stands first is the faster one.
        {{faster, same, slower},
         {0.98, 1, 1.1},
         {},
         "slower\">Slower at 1 of 3 points, worst Sin_32f_A24 at 256 by +10.0%; faster at 1, most "
         "Sin_32f_A24 at 64 by -2.0%."},
        {{same, faster, faster},
         {1, 0.8, 0.8},
         {},
         "faster\">Faster at 2 of 3 points, most Sin_32f_A24 at 128..256 by -20.0%."},
        {{slower, slower, slower},
         {2, 2, 2},
         {3, 2, 1},
         "bad\">This machine cannot be trusted today: unchanged code strayed at 2 of 3 points."},
    };
    for (auto const& [calls, ratios, control, text] : cases) {
        Findings findings{.machines = {MachineFindings{}}, .before = "old", .after = "new"};
        MachineFindings& set = findings.machines.front();
        readPasses(set.passes, tableOf("here", pairs), "table");
        set.verdict.control = control;
        for (std::uint32_t i = 0; i < 3; ++i) {
            set.verdict.points.push_back(
                {.point = i, .ratio = ratios[i], .low = ratios[i], .call = calls[i]});
        }
        EXPECT_TRUE(contains(reportPage(findings), std::string("<p class=\"verdict ") + text));
    }
}

TEST(Report, RefusesWhatIsNoReport) {
    TempDirectory const dir;
    replaceFile(dir.path + "pairs.csv", tableOf("here", pairs));
    replaceFile(dir.path + "plain.csv", tableOf("elsewhere", "nLps=1"));
    std::string other = tableOf("here", "nLps=1");
    for (std::size_t at; (at = other.find("Sin,")) != std::string::npos;) {
        other.replace(at, 4, "Cos,");
    }
    replaceFile(dir.path + "other.csv", other);
    auto const report = [&dir](std::string const& words) {
        return runShell("cd " + dir.path + " && '" PS_TABLES "' report " + words);
    };
    std::pair<char const*, char const*> const cases[] = {
        {"pairs.csv -o pairs.csv", "pairs.csv: is one of the inputs"},
        {"plain.csv --against pairs.csv -o ./pairs.csv", "./pairs.csv: is one of the inputs"},
        {"pairs.csv plain.csv -o x.html", "some tables have pairs, some have not"},
        {"plain.csv --against other.csv -o x.html", "the tables have no row in common"},
        {"none.csv -o x.html", "none.csv: No such file or directory"},
        {"pairs.csv", "--output is required"},
    };
    for (auto const& [words, told] : cases) {
        Outcome const outcome = report(words);
        EXPECT_EQ(2, outcome.status) << words;
        EXPECT_TRUE(contains(outcome.err, told)) << outcome.err;
    }
    EXPECT_NE(0, runShell("test -e " + dir.path + "x.html").status);
}
