#include "psstream/psistream.h"
#include "sessionfixture.h"

namespace {

using Names = std::vector<std::string>;

// The lines of a table without those of the report at its start.
std::string tableOf(std::string const& text) { return text.substr(text.find("\nfunction,") + 1); }

class RefusingSession : public psSession {
public:
    bool startSession() override { return false; }
};

} // namespace

class PsSession : public SessionTest {
protected:
    static void registerProbes() {
        for (char const* name : {"zolsSin_32f", "zolsAbs_64f", "zolsAbs_32f"}) {
            psRegTest(new ProbeTest(name));
        }
    }
};

TEST_F(PsSession, RunsSelectedTestsInOrder) {
    struct {
        std::vector<std::string> words;
        Names wanted;
    } const cases[] = {
        {{"-B"}, {"zolsAbs_32f", "zolsAbs_64f", "zolsSin_32f"}},
        {{"-B", "-s-"}, {"zolsSin_32f", "zolsAbs_64f", "zolsAbs_32f"}},
        {{"-B", "-fAbs"}, {"zolsAbs_32f", "zolsAbs_64f"}},
        {{"-B", "-FAbs_64"}, {"zolsAbs_64f", "zolsSin_32f"}},
        {{"-B", "-P", "-inone"}, {}}, // no ini file names a function
        {{"-B", "-P", "-inames"}, {"zolsSin_32f"}},
        {{"-B", "-q", "-Q"}, {}},
        {{"-v", "-e"}, {}},
        {{"-e"}, {}},
    };
    put("names.ini", "[zolsSin_32f]\n");
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.words));
        resetGlobals();
        registerProbes();
        std::string const text = run(test.words);
        EXPECT_EQ(ProbeTest::ran, test.wanted);
        bool const measures = test.words[0] == "-B";
        EXPECT_EQ(text.find("PS Summary") != std::string::npos, measures);
        EXPECT_EQ(text.find("Sorting functions...\n") != std::string::npos,
                  (measures && test.words.back() != "-s-") || test.words[0] == "-e");
        EXPECT_EQ(pTestList, nullptr);
    }
}

TEST_F(PsSession, FilesOfARun) {
    registerProbes();
    psDefault<int> length(32, "Length");
    ProbeTest::parameters.insert(ProbeTest::parameters.end(), &length);
    std::string const text = run({"-B", "-o", "-r", "-q", "-u", "-g", "-f32f", "-f+Sin", "-LPERF"});
    EXPECT_EQ(text.rfind("Command line options: \n-B: batch mode\n", 0), 0U);
    session.reset();
    resetGlobals(); // closes the files
    EXPECT_EQ(text.find("Sorting functions...\n"), text.find("\n+-----") + 1 - 21);
    std::string copy = text;
    copy.erase(copy.find("Sorting functions...\n"), 21);
    EXPECT_EQ(content("perf.txt"), copy); // the sorting line goes to the console alone
    std::string const title = "function,Len/Size,Parm1,Parm2,Parm3,Parm4,Parm5,Parm6,scaleFactor,"
                              "Comment,Clocks,per,Time (usec),MFlops\n";
    EXPECT_EQ(tableOf(content("perf.csv")), title + "zolsSin_32f,32,-,-,-,-,-,-,-,-,100, ,0.1,-\n");
    EXPECT_EQ(tableOf(content("perf_name.csv")),
              title + "zolsSin_32f,Length,-,-,-,-,-,-,-,parmNames,-,-,-,-\n");
    std::string const summary = content("perf_sum.csv");
    EXPECT_NE(summary.find("\nFunction,Class,"), std::string::npos);
    EXPECT_NE(summary.find("\nzolsSin_32f,Timing,-,-,-,-,probe_test,0,probe.cpp,OK,perf\n"),
              std::string::npos);
    EXPECT_NE(summary.find("\nEND_DATA\n"), std::string::npos);
    std::string const signal = content("perf.end"); // elapsed time, date, empty line
    EXPECT_EQ(signal.rfind("00:00:0", 0), 0U);
    EXPECT_TRUE(signal.ends_with("\n\n"));
    EXPECT_EQ(signal.size(), 9 + 25 + 1U);
}

TEST_F(PsSession, HotColumnAndNamesInTheResultTable) {
    registerProbes();
    psRegHotFunction("zolsAbs_64f");
    run({"-B", "-r", "-q+", "-HONLY"});
    EXPECT_EQ(ProbeTest::ran, Names{"zolsAbs_64f"});
    resetGlobals();
    EXPECT_EQ(tableOf(content("perf.csv")),
              "function,Len/Size,Parm1,Parm2,Parm3,Parm4,Parm5,Parm6,scaleFactor,"
              "Comment,Clocks,per,Time (usec),MFlops,Interest\n"
              "zolsAbs_64f,-,-,-,-,-,-,-,-,parmNames,-,-,-,-,-\n"
              "zolsAbs_64f,-,-,-,-,-,-,-,-,-,100, ,0.1,-,Hot\n");
}

TEST_F(PsSession, EarlyEndsKeepTheirFiles) {
    registerProbes();
    std::string const help = run({"-h", "-o", "-g"});
    resetGlobals();
    EXPECT_EQ(content("perf.txt"), help);
    EXPECT_NE(help.find("QUICK HELP\n"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists("perf.end"));

    std::string const refused = run({"-onone/x", "-h", "-gfatal", "-B"});
    EXPECT_TRUE(refused.ends_with("FATAL ERROR: can't open output file for writing\n"));
    EXPECT_TRUE(std::filesystem::exists("fatal.end"));
    resetGlobals();

    registerProbes();
    RefusingSession refusing;
    char name[] = "perf";
    char signal[] = "-grefused";
    char* words[] = {name, signal};
    shown([&] { EXPECT_EQ(refusing.run(2, words), 0); });
    EXPECT_EQ(ProbeTest::ran, Names{});
    EXPECT_TRUE(std::filesystem::exists("refused.end"));
}

TEST_F(PsSession, CommonParametersAreThoseThatSelectedTestsUse) {
    registerProbes();
    psDefault<int> used(1, "Used");
    psDefault<int> unused(2, "Unused");
    psRegParm(unused);
    psRegParm(used);
    ProbeTest::parameters.insert(ProbeTest::parameters.end(), &used);
    psRegParmFunc([] { ProbeTest::ran.emplace_back("parmFunc"); });
    std::string const text = run({"-B", "-fSin", "-dUsed=5", "-dUnused=6"});
    EXPECT_EQ(ProbeTest::ran, (Names{"parmFunc", "zolsSin_32f"}));
    EXPECT_NE(text.find("\n Used = 5\n"), std::string::npos);
    EXPECT_EQ(text.find("Unused = "), std::string::npos);
    EXPECT_EQ(used.value(), 5);
}

TEST_F(PsSession, WrittenIniFileIsReadBack) {
    auto const runWith = [&](std::vector<std::string> words) {
        resetGlobals();
        registerProbes();
        psDefault<int> length(32, "Length");
        ProbeTest::parameters.insert(ProbeTest::parameters.end(), &length);
        run(std::move(words));
        Names const ran = ProbeTest::ran;
        EXPECT_NE(content("perf.ini").find("\nLength="), std::string::npos); // before the end
        int const value = length.value();
        resetGlobals();
        return std::make_pair(ran, value);
    };
    EXPECT_EQ(runWith({"-B", "-I", "-fSin", "-dLength=96", "-dMethod=man"}),
              std::make_pair(Names{}, 96));
    EXPECT_EQ(content("perf.ini"), "\n[Perf System]\n"
                                   "Method=man\t// Auto|Manual|Statistic|Iterative\n"
                                   "NumLoops=10\n"
                                   "AlignVectorsBy=element\t// byte|element\n"
                                   "VectorAlign=0\n"
                                   "\n[zolsSin_32f]\n"
                                   "Length=96\n");
    EXPECT_EQ(runWith({"-B", "-i", "-P"}), std::make_pair(Names{"zolsSin_32f"}, 96));
    EXPECT_EQ(runWith({"-B", "-Iperf", "-fSin", "-dLength=7"}), std::make_pair(Names{}, 7));
    EXPECT_NE(content("perf.ini").find("Length=7\n"), std::string::npos);
}
