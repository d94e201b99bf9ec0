#include <functional>
#include <sstream>

#include "psstream/pscstream.h"
#include "sessionfixture.h"

class PsKeyHandlers : public SessionTest {
protected:
    // The echo without its head line.
    std::string echo(std::vector<std::string> words) {
        std::string const text = parse(std::move(words));
        return text.substr(text.find('\n') + 1);
    }
};

// The forms of the keys' arguments; each line is the echo of the word that it begins with.
TEST_F(PsKeyHandlers, EchoOfEachForm) {
    linkLibrary();
    writeFile("perf.ini", "");
    std::istringstream echoes(R"(-ATimingParams: ask timing method, common parameters from console
-AMisalign: ask data misalignment from console
-d: ignored: empty data argument
-dx: ignored: incorrect data format
-i: read from perf.ini
-o: write console output to perf.txt
-Oa: add console output to a.txt
-LMEM: write errors,warnings,performance results,memory info to console
-Lxyz: ignored: incorrect level of console output
-r: write performance result table to perf.csv
-q: write function parameter name lines to perf_name.csv
-q+x: ignored because -r or -R options are not present in command line
-Q: ignored because -q option is not present in command line
-Ux.y: add summary table to x.y
-g: create file perf.end at the end of PS work
-n: ignored: empty default name
-p: ignored: empty directory name
-pd: open test data files & ini-file in d/
-ld/: open output files in d/
-fx: test functions containing 'x'
-f+x: don't test functions without 'x' in the name
-f-x: don't test functions containing 'x'
-f=x: test function equal to 'x'
-t+x: don't run tests which doesn't contain 'x'
-t=x: run test equal to 'x'
-t+: ignored: empty test pattern
-mx: run tests from file containing 'x' in file name
-m+x: don't run tests from file which doesn't contain 'x' in file name
-m-x: don't run tests from file containing 'x' in file name
-m=x: run test equal from file with exact name 'x'
-m: ignored: empty file pattern
-kor: keys composition: -f<conditions> OR -t<conditions> OR -m<conditiosn>
-YLOW: set low process priority
-Yhigh: ignored: incorrect process priority value
-HO: run tests for hot functions only
-TSSE2,AES: call zolSetCpuFeatures ( Zol64u SSE2,AES )
-T: ignored: incorrect CPU features
-N4: call zolSetNumThreads(4)
-Nmany: ignored: incorrect number of threads
-s-: don't sort functions
-e+: enumerate applied and not applied library functions and exit
-e-: enumerate not applied library functions and exit
-hh: type extended help and exit
-h?: type extended help for -? key and exit
-??: type extended help with hidden keys and exit
-x1: ignored: incorrect option key
)");
    for (std::string line; std::getline(echoes, line);) {
        SCOPED_TRACE(line);
        EXPECT_EQ(echo({line.substr(0, line.find(": "))}), line + "\n");
        EXPECT_TRUE(accepted);
    }
    EXPECT_EQ(echo({"-q+", "-R"}),
              "-q+: add function parameter name lines to csv files defined by -r & -R keys\n"
              "-R: add performance result table to perf.csv\n");
}

TEST_F(PsKeyHandlers, EchoTellsOfAnEarlyExit) {
    linkLibrary();
    // Which keys each early exit makes pointless. The others answer as ever.
    std::string const level1 = "BAdiIPLqQuUFYSC";
    std::string const level2 = level1 + "ftmHs";
    std::string const all = level2 + "oOrRgnplkWTN";
    for (std::string const exit : {"-e", "-h", "-v"}) {
        std::string const& pointless = exit == "-e" ? level1 : level2;
        for (char const letter : all) {
            std::string const word = std::string("-") + letter;
            SCOPED_TRACE(word + " " + exit);
            std::string const echoed = word + ": ignored because of " + exit + " option\n";
            EXPECT_EQ(echo({word, exit}).starts_with(echoed),
                      pointless.find(letter) != std::string::npos);
        }
    }
    // The first of -?, -h, -e, -v in this order counts, wherever it stands.
    EXPECT_EQ(echo({"-v", "-e"}), "-v: type the version number of the Performance System and exit\n"
                                  "-e: enumerate tested functions and exit\n");
    EXPECT_EQ(echo({"-e", "-h"}), "-e: ignored because of -h option\n"
                                  "-h: type short help and exit\n");
    EXPECT_EQ(session->m_enumMode, 0); // carried out all the same
}

TEST_F(PsKeyHandlers, EffectOfKeys) {
    psSession* now = nullptr;
    std::pair<std::vector<std::string>, std::function<bool()>> const cases[] = {
        {{"-AT", "-AM"}, [&] { return now->m_askMode == 5; }},
        {{"-A", "-B"}, [&] { return now->m_askMode == 0 && now->m_batchMode; }},
        {{"-P"}, [&] { return now->m_askMode == 3 && psTest::m_pressing; }},
        {{"-i", "-Ix"}, [&] { return now->m_iniName == "x.ini" && now->m_iniWrite; }},
        {{"-I", "-ix"}, [&] { return now->m_iniName == "x.ini" && !now->m_iniWrite; }},
        {{"-LM", "-LI"}, [&] { return now->m_levelMode == 47; }},
        {{"-r", "-Rb"}, [] { return g_cstrm.size() == 2; }},
        {{"-q", "-Q"}, [] { return psSession::m_nameMode == 2 && psSession::m_nameExit; }},
        {{"-q+", "-r"}, [] { return psSession::m_nameMode == 1 && g_qstrm.empty(); }},
        {{"-ga", "-gb"}, [&] { return now->m_sglName == "b.end"; }},
        {{"-kor", "-k"}, [&] { return now->m_conditions->m_logic == psConditions::And; }},
        {{"-Fa", "-F", "b"}, [] { return psTestList::m_startFunc == "b"; }},
        {{"-YLOW", "-Yx"}, [] { return psTool::m_priority == 3; }},
        {{"-TAVX,AES", "-N", "8"}, [] { return s_cpuFeature == 0x5df && s_numThreads == 8; }},
        {{"-SX", "-C"}, [] { return g_tool.m_setAndUse && psTest::m_cache; }},
        {{"-s-", "-s"}, [&] { return now->m_noSort; }},
        {{"-?L", "-h"}, [] { return s_hintArg == 1 && s_hintHide; }},
    };
    for (auto const& [words, holds] : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        resetGlobals();
        linkLibrary();
        parse(words);
        now = session.get();
        EXPECT_TRUE(accepted && holds());
    }
}

TEST_F(PsKeyHandlers, LibraryKeysNeedTheLibrary) {
    EXPECT_EQ(echo({"-TAVX", "-N2"}), "-TAVX: ignored: incorrect option key\n"
                                      "-N2: ignored: incorrect option key\n");
    linkLibrary();
    zolEnvironment = nullptr; // linked, but no test file brought its environment
    EXPECT_EQ(echo({"-TAVX", "-Nx"}),
              "-TAVX: ignored: <zolcore> is not included before <zo> in test files\n"
              "-Nx: ignored: <zolcore> is not included before <zo> in test files\n");
}

TEST_F(PsKeyHandlers, PatternsAndTheirLogic) {
    ProbeTest const test("zolsAbs_32f_A24");
    struct {
        std::vector<std::string> words;
        bool withAnd;
        bool withOr;
    } const rows[] = {
        {{}, true, true},
        {{"-fAbs"}, true, true},
        {{"-fAbs", "-f-32f"}, false, false},
        {{"-fAbs", "-f-64f"}, true, true},
        {{"-f=zolsAbs_32f_A24", "-f-Abs"}, true, true},
        {{"-f=zolsAbs"}, false, false},
        {{"-f=zolsAbs", "-f-64f"}, true, true},
        {{"-f+Abs", "-f+64f"}, false, false},
        {{"-fSin", "-fAbs"}, true, true},
        {{"-fSin", "-f+Abs"}, false, false},
        {{"-fSin", "-tprobe_"}, false, true},
        {{"-tprobe_", "-mprobe.cpp"}, true, true},
        {{"-t=probe_test", "-m=probe.cpp"}, true, true},
        {{"-m+hpp"}, false, false},
        {{"-t+probe", "-m-probe"}, false, true},
        {{"-t-sin"}, true, true},
    };
    for (auto row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.words));
        parse(row.words);
        EXPECT_EQ(session->m_conditions->tobeRun(&test), row.withAnd);
        row.words.emplace_back("-kor");
        parse(row.words);
        EXPECT_EQ(session->m_conditions->tobeRun(&test), row.withOr);
    }
}
