#include "psstream/psistream.h"
#include "sessionfixture.h"

namespace {

using Names = std::vector<std::string>;

// The lines of a table without those of the report at its start.
std::string tableOf(std::string const& text) { return text.substr(text.find("\nfunction,") + 1); }

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
    std::pair<Names, Names> const cases[] = {
        {{"-B"}, {"zolsAbs_32f", "zolsAbs_64f", "zolsSin_32f"}},
        {{"-B", "-s-"}, {"zolsSin_32f", "zolsAbs_64f", "zolsAbs_32f"}},
        {{"-B", "-fAbs"}, {"zolsAbs_32f", "zolsAbs_64f"}},
        {{"-B", "-FAbs_64"}, {"zolsAbs_64f", "zolsSin_32f"}},
        {{"-B", "-P", "-inone"}, {}}, // no ini file names a function
        {{"-B", "-P", "-inames"}, {"zolsSin_32f"}},
        {{"-B", "-q", "-Q"}, {}},
        {{"-e"}, {}},
    };
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

TEST_F(PsSession, HotColumnAndNamesInTheResultTable) {
    registerProbes();
    psRegHotFunction("zolsAbs_64f");
    run({"-B", "-r", "-q+", "-HONLY"});
    EXPECT_EQ(ProbeTest::ran, Names{"zolsAbs_64f"});
    resetGlobals();
    EXPECT_EQ(tableOf(readFile("perf.csv")),
              "function,Len/Size,Parm1,Parm2,Parm3,Parm4,Parm5,Parm6,scaleFactor,"
              "Comment,Clocks,per,Time (usec),MFlops,Interest\n"
              "zolsAbs_64f,-,-,-,-,-,-,-,-,parmNames,-,-,-,-,-\n"
              "zolsAbs_64f,-,-,-,-,-,-,-,-,-,100, ,0.1,-,Hot\n");
}

TEST_F(PsSession, AnEarlyEndKeepsItsFiles) {
    registerProbes();
    std::string const help = run({"-h", "-o", "-g"});
    resetGlobals();
    EXPECT_EQ(readFile("perf.txt"), help);
    EXPECT_NE(help.find("QUICK HELP\n"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists("perf.end"));
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
        EXPECT_NE(readFile("perf.ini").find("\nLength="), std::string::npos); // before the end
        resetGlobals();
        return std::make_pair(ran, length.value());
    };
    EXPECT_EQ(runWith({"-B", "-I", "-fSin", "-dLength=96", "-dMethod=man"}),
              std::make_pair(Names{}, 96));
    EXPECT_EQ(readFile("perf.ini"), "\n[Perf System]\n"
                                    "Method=man\t// Auto|Manual|Statistic|Iterative\n"
                                    "NumLoops=10\n"
                                    "AlignVectorsBy=element\t// byte|element\n"
                                    "VectorAlign=0\n"
                                    "\n[zolsSin_32f]\n"
                                    "Length=96\n");
    EXPECT_EQ(runWith({"-B", "-i", "-P"}), std::make_pair(Names{"zolsSin_32f"}, 96));
}
