#include "psstream/psistream.h"
#include "sessionfixture.h"
#include "support/storedtext.h"

using Names = std::vector<std::string>;

class PsSession : public SessionTest {
protected:
    static void registerProbes() {
        for (char const* name : {"zolsSin_32f", "zolsAbs_64f", "zolsAbs_32f"}) {
            psRegTest(new ProbeTest(name));
        }
    }
};

TEST_F(PsSession, RunsSelectedTestsInOrder) {
    std::pair<Names, Names> const cases[] = {
        {{"-B"}, {"zolsAbs_32f", "zolsAbs_64f", "zolsSin_32f"}},
        {{"-B", "-s-"}, {"zolsSin_32f", "zolsAbs_64f", "zolsAbs_32f"}},
        {{"-B", "-fAbs"}, {"zolsAbs_32f", "zolsAbs_64f"}},
        {{"-B", "-FAbs_64"}, {"zolsAbs_64f", "zolsSin_32f"}},
        {{"-B", "-P", "-inone"}, {}}, // no ini file names a function
        {{"-B", "-P", "-inames"}, {"zolsSin_32f"}},
        {{"-B", "-q", "-Q"}, {}},
        {{"-e"}, {}}};
    writeFile("names.ini", "[zolsSin_32f]\n");
    for (auto const& [words, wanted] : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        resetGlobals();
        registerProbes();
        std::string const text = run(words);
        EXPECT_EQ(ProbeTest::ran, wanted);
        EXPECT_EQ(text.find("PS Summary") != std::string::npos, words[0] == "-B");
        EXPECT_EQ(text.find("Sorting functions...\n") != std::string::npos, words.back() != "-s-");
    }
}

// Console, tables and signal file of a run with a common parameter and name lines, of the lists,
// and of a run that ends early.
TEST_F(PsSession, WholeOutput) {
    psDefault<int> used(1, "Used");
    psDefault<int> unused(2, "Unused");
    std::string text;
    std::vector<std::string> const runs[] = {
        {"-B", "-fSin", "-f64f", "-dUsed=5", "-dUnused=6", "-H", "-r", "-q+", "-q", "-u", "-g"},
        {"-B", "-fzols", "-HONLY", "-rhot"},
        {"-AT", "-fSin"}, // asks after the common parameters were found without
        {"-e", "-r"},
        {"-v", "-g"}};
    for (auto const& words : runs) {
        resetGlobals();
        registerProbes();
        psRegHotFunction("zolsAbs_64f");
        psRegParm(unused);
        psRegParm(used);
        ProbeTest::parameters.insert(ProbeTest::parameters.end(), &used);
        EXPECT_EQ(psRegParmFunc([] { ProbeTest::ran.emplace_back("parmFunc"); }), 1);
        text += run(words);
        EXPECT_EQ(ProbeTest::ran.empty(), words[0] != "-B" && words[0] != "-AT");
        EXPECT_TRUE(ProbeTest::ran.empty() || ProbeTest::ran[0] == "parmFunc");
        resetGlobals();
        for (char const* file :
             {"perf.csv", "perf_name.csv", "hot.csv", "perf_sum.csv", "perf.end"}) {
            if (std::filesystem::exists(file)) {
                text += std::string("---- ") + file + "\n" + readFile(file);
                std::filesystem::remove(file);
            }
        }
    }
    EXPECT_TRUE(matchesStored("ps/run", masked(text)));
    EXPECT_EQ(used.value(), 5);
}

TEST_F(PsSession, EndsBeforeTheTests) {
    class Refusing : public psSession {
        bool startSession() override { return false; }
    };
    registerProbes();
    writeFile("perf.end", "old");
    std::filesystem::create_hard_link("perf.end", "kept");
    linkLibrary();
    EXPECT_EQ(run({"-B", "-g"}, std::make_unique<Refusing>()),
              "\nZOL Core library functions have been integrated into PS\n"
              "Command line options: \n"
              "-B: batch mode\n"
              "-g: create file perf.end at the end of PS work\n");
    EXPECT_EQ(ProbeTest::ran, Names{});
    EXPECT_TRUE(readFile("perf.end").starts_with("00:00:0"));
    EXPECT_EQ(readFile("kept"), "old"); // at no moment was the file empty
    resetGlobals();
    // Whoever waits for the signal file finds the others complete.
    run({"-h", "-o", "-Ix.ini", "-gx.ini"});
    EXPECT_TRUE(readFile("x.ini").starts_with("00:00:0")); // written last
    resetGlobals();
    EXPECT_NE(readFile("perf.txt").find("QUICK HELP\n"), std::string::npos);
}

TEST_F(PsSession, WrittenIniFileIsReadBack) {
    auto const runWith = [&](std::vector<std::string> words) {
        resetGlobals();
        registerProbes();
        psDefault<int> length(32, "Length");
        ProbeTest::parameters.insert(ProbeTest::parameters.end(), &length);
        run(std::move(words));
        Names const ran = ProbeTest::ran;
        EXPECT_NE(readFile("perf.ini").find("\nLength="), std::string::npos); // before the end
        resetGlobals();
        return std::make_pair(ran, length.value());
    };
    EXPECT_EQ(runWith({"-B", "-I", "-fSin", "-dLength=96", "-dMethod=man"}),
              std::make_pair(Names{}, 96));
    EXPECT_TRUE(matchesStored("ps/ini", readFile("perf.ini")));
    EXPECT_EQ(runWith({"-B", "-i", "-P"}), std::make_pair(Names{"zolsSin_32f"}, 96));
}
