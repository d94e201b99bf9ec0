// family_test.cpp - the list of all tests, and one family measured by the built program with all
// outputs at once, against stored texts.
#include "program.h"

#include <regex>

#include "support/storedtext.h"

namespace {

// Without what was measured, the library and the directory.
std::string settled(std::string text, std::string const& directory) {
    std::pair<std::string, char const*> const masks[] = {
        {R"(  (acc=\S+ +)?nLps=\d+ +perf= *\S+/ *(\S+)= *\S+ clocks)", "  perf=P/$2"},
        {R"(nLps=\d+( acc=\S+%)?,[\d.e+-]+,e,[\d.e+-]+,)", "nLps=N,C,e,T,"},
        {R"((Library +: |Library,).*)", "$1..."},
        {R"(numThreads = \d+)", "numThreads = N"},
        {directory, ""}};
    for (auto const& [pattern, mask] : masks) {
        text = std::regex_replace(text, std::regex(pattern), mask);
    }
    return masked(text);
}

} // namespace

TEST(FamilyRun, ListOfAllTests) {
    EXPECT_TRUE(
        matchesStored("cli/list", settled(runShell(psZolvm() + " -e").out, "no directory")));
}

TEST(FamilyRun, ConsoleTablesAndFiles) {
    TempDirectory const dir;
    // An accuracy of 100 takes any reading.
    Outcome const outcome =
        runShell(psZolvm() + " -B -fAbs -LPERF -dAccuracy=100 -l" + dir.path + " -r -o -u -q -g");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
    std::string text = outcome.out;
    for (char const* file :
         {"ps_zolvm.csv", "ps_zolvm_name.csv", "ps_zolvm_sum.csv", "ps_zolvm.end"}) {
        text += std::string("---- ") + file + "\n" + readFile(dir.path + file);
    }
    EXPECT_TRUE(matchesStored("cli/family", settled(text, dir.path)));
    // The copy is the console from its key on, but for what is not for files.
    std::string console = outcome.out.substr(outcome.out.find("Command line options: "));
    std::string const direct = "Sorting functions...\n";
    console.erase(console.find(direct), direct.size());
    EXPECT_EQ(readFile(dir.path + "ps_zolvm.txt"), console);
}
