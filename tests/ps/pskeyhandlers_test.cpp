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
    put("perf.ini", "");
    put("in.x", "");
    std::istringstream echoes(R"(-ATimingParams: ask timing method, common parameters from console
-AMisalign: ask data misalignment from console
-Axyz: ask timing method, common parameters, data misalignment, each test parameters from console
-d: ignored: empty data argument
-dx: ignored: incorrect data format
-d=1: ignored: incorrect data format
-i: read from perf.ini
-iin.x: read from in.x
-o: write console output to perf.txt
-Oa: add console output to a.txt
-LMEM: write errors,warnings,performance results,memory info to console
-LDATA: write errors,warnings,performance results,tracing info,data info to console
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
-f=: ignored: empty function pattern
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
-?: type short help with hidden keys and exit
-??: type extended help with hidden keys and exit
-?h: type extended help for -h key and exit
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
    EXPECT_EQ(echo({"/Q", "-q"}),
              "-Q: exit after function parameter name table creation and don't run tests\n"
              "-q: write function parameter name lines to perf_name.csv\n");
}

TEST_F(PsKeyHandlers, EchoTellsOfAnEarlyExit) {
    linkLibrary();
    // Which keys each early exit makes pointless. The others answer as ever.
    std::string const level1 = "BAdiIPLqQuUFYSC";
    std::string const level2 = "ftmHs";
    std::string const never = "oOrRgnplkWTN";
    std::string const cases[][3] = {{"-e", level1, "ignored because of -e option"},
                                    {"-h", level1 + level2, "ignored because of -h option"},
                                    {"-?", level1 + level2, "ignored because of -h option"},
                                    {"-v", level1 + level2, "ignored because of -v option"}};
    for (auto const& [exit, pointless, reason] : cases) {
        for (char const letter : level1 + level2 + never) {
            std::string const word = std::string("-") + letter;
            SCOPED_TRACE(word + " " + exit);
            EXPECT_EQ(echo({word, exit}).rfind(word + ": " + reason + "\n", 0) == 0,
                      pointless.find(letter) != std::string::npos);
        }
    }
    // The first of -?, -h, -e, -v in this order counts, wherever it stands.
    EXPECT_EQ(echo({"-v", "-e"}), "-v: type the version number of the Performance System and exit\n"
                                  "-e: enumerate tested functions and exit\n");
    EXPECT_EQ(psSession::m_exitLevel, 1);
    EXPECT_EQ(echo({"-e", "-h"}), "-e: ignored because of -h option\n"
                                  "-h: type short help and exit\n");
    EXPECT_EQ(session->m_enumMode, 0); // carried out all the same
    EXPECT_EQ(echo({"-B"}), "-B: batch mode\n");
}

TEST_F(PsKeyHandlers, EffectOfKeys) {
    psSession* now = nullptr;
    struct {
        std::vector<std::string> words;
        std::function<bool()> holds;
    } const cases[] = {
        {{"-AT", "-AM"}, [&] { return now->m_askMode == 5; }},
        {{"-A", "-B"}, [&] { return now->m_askMode == 0 && now->m_batchMode; }},
        {{"-P"}, [&] { return now->m_askMode == 3 && psTest::m_pressing; }},
        {{"-i", "-Ix"}, [&] { return now->m_iniName == "x.ini" && now->m_iniWrite; }},
        {{"-I", "-ix"}, [&] { return now->m_iniName == "x.ini" && !now->m_iniWrite; }},
        {{"-LDATA"}, [&] { return now->m_levelMode == 87; }},
        {{"-LM", "-LI"}, [&] { return now->m_levelMode == 47; }},
        {{"-r", "-Rb"}, [] { return g_cstrm.size() == 2; }},
        {{"-q", "-Q"}, [] { return psSession::m_nameMode == 2 && psSession::m_nameExit; }},
        {{"-q+", "-r"}, [] { return psSession::m_nameMode == 1 && g_qstrm.empty(); }},
        {{"-Q"}, [] { return !psSession::m_nameExit; }},
        {{"-ga", "-gb"}, [&] { return now->m_sglName == "b.end"; }},
        {{"-kor", "-k"}, [&] { return now->m_conditions->m_logic == psConditions::And; }},
        {{"-f=", "-t+", "-m", "-f"}, [&] { return now->m_conditions->empty(); }},
        {{"-Fa", "-F", "b"}, [] { return psTestList::m_startFunc == "b"; }},
        {{"-YLOW", "-Yx"}, [] { return psTool::m_priority == 3; }},
        {{"-HO", "-H"}, [] { return psTest::m_hot == 1; }},
        {{"-TAVX,AES", "-N", "8"},
         [] { return g_sessionKeys.cpuFeature == 0x5df && g_sessionKeys.numThreads == 8; }},
        {{"-N8", "-Nx"}, [] { return g_sessionKeys.numThreads == 0; }},
        {{"-SX", "-C"}, [] { return g_tool.m_setAndUse && psTest::m_cache; }},
        {{"-s-", "-s"}, [&] { return now->m_noSort; }},
        {{"-e", "-e+"}, [&] { return now->m_enumMode == 1; }},
        {{"-h", "-?L"}, [] { return g_sessionKeys.hintArg == 'L' && !g_sessionKeys.hintHide; }},
        {{"-?L", "-h"}, [] { return g_sessionKeys.hintArg == 1 && g_sessionKeys.hintHide; }},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.words));
        resetGlobals();
        linkLibrary();
        parse(test.words);
        EXPECT_TRUE(accepted);
        now = session.get();
        EXPECT_TRUE(test.holds());
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
    qKeys = 0;
    EXPECT_EQ(echo({"-q"}), "-q: ignored: incorrect option key\n");
}

TEST_F(PsKeyHandlers, ConditionsSelectTests) {
    ProbeTest const test("zolsAbs_32f_A24");
    struct {
        std::vector<std::string> words;
        bool selected;
    } const cases[] = {
        {{"-fSin", "-fAbs"}, true},
        {{"-fabs"}, false},
        {{"-fAbs", "-f-32f"}, false},
        {{"-f+Abs", "-f+53"}, false},
        {{"-f=zolsAbs"}, false},
        {{"-f=zolsAbs_32f_A24", "-f-Abs"}, true},
        {{"-tprobe_", "-m=probe"}, false},
        {{"-tx", "-mprobe.cpp", "-kor"}, true},
        {{"-t=probe_test"}, true},
        {{"-tx", "-fSin", "-kor"}, false},
        {{"-t-probe"}, false},
        {{"-m+.c", "-m-hpp"}, true},
    };
    for (auto const& [words, selected] : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        parse(words);
        EXPECT_EQ(session->m_conditions->tobeRun(&test), selected);
    }
}
