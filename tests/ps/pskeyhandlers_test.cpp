#include <functional>
#include <sstream>

#include "psstream/pscstream.h"
#include "pstool/psctrl.h"
#include "sessionfixture.h"
#include "support/storedtext.h"

class PsKeyHandlers : public SessionTest {
protected:
    // The echo without its head line.
    std::string echo(std::vector<std::string> words) {
        std::string const text = parse(std::move(words));
        return text.substr(text.find('\n') + 1);
    }
};

// What each word is answered by itself, and every key before each early exit.
TEST_F(PsKeyHandlers, EchoOfEachForm) {
    linkLibrary();
    writeFile("perf.ini", "");
    std::string text;
    std::istringstream words(
        "-B -A -ATimingParams -AMisalign -d -dx -d=1 -dx=1 -i -I -P -o -Oa -L -LERR -LMEM -LTRACE "
        "-LINFO "
        "-LDATA -LWARN -Lxyz -r -R -q -q+x -Q -u -Ux.y -g -n -nx -p -pd -l -ld/ -fx -f+x -f-x -f=x "
        "-f -tx -t+x -t-x -t=x -t+ -mx -m+x -m-x -m=x -m -k -kand -kor -Fx -Y -YHIGH -YNORMAL "
        "-YLOW -Yhigh -H -HO -W -TSSE2,AES -T -N4 -N0 -N1 -Nmany -SU -C -s -s- -e -e+ -e- -v -h "
        "-hh -h? -? -?? -?x -x1");
    for (std::string word; words >> word;) {
        text += echo({word});
    }
    text += echo({"-q+", "-R"}) + echo({"-q+", "-r"}) + echo({"-q", "-Q"});
    for (std::string const exit : {"-e", "-h", "-v", "-?"}) {
        std::vector<std::string> keys{exit};
        for (char const letter : std::string("BAdiIPLqQuUFYSCftmHsoOrRgnplkWTN")) {
            keys.push_back(std::string("-") + letter);
        }
        text += "\n" + echo(keys);
    }
    // The first of -?, -h, -e, -v in this order counts, wherever it stands.
    text += "\n" + echo({"-v", "-e"}) + echo({"-e", "-h"});
    zolEnvironment = nullptr; // linked, but no test file brought its environment
    text += "\n" + echo({"-TAVX", "-Nx"});
    resetGlobals(); // some keys need the library or a registration
    qKeys = 0;
    text += echo({"-TAVX", "-N2", "-q", "-Q"});
    EXPECT_EQ(psRegQKeys(), 1);
    text += echo({"-qn"});
    EXPECT_TRUE(matchesStored("ps/echo", text));
}

TEST_F(PsKeyHandlers, EffectOfKeys) {
    psSession* now = nullptr;
    std::pair<std::vector<std::string>, std::function<bool()>> const cases[] = {
        {{"-AT", "-AM"}, [&] { return now->m_askMode == 5; }},
        {{"-A", "-B"}, [&] { return now->m_askMode == 0 && now->m_batchMode; }},
        {{"-e", "-h"}, [&] { return now->m_enumMode == 0; }}, // carried out all the same
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
        {{"-W"}, [] { return is_W_flagUsed && ts87Base::Exception == 0x20; }},
        {{"-W"}, [] { return tsSSXBase::Exception == 0x1000; }}, // only inexact stays masked
        {{"-?L", "-h"}, [] { return s_hintArg == 1 && s_hintHide; }}};
    for (auto const& [words, holds] : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        resetGlobals();
        linkLibrary();
        parse(words);
        now = session.get();
        EXPECT_TRUE(accepted && holds());
    }
}

TEST_F(PsKeyHandlers, PatternsAndTheirLogic) {
    ProbeTest const test("zolsAbs_32f_A24");
    std::tuple<std::vector<std::string>, bool, bool> const rows[] = {
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
        {{"-t-sin"}, true, true}};
    for (auto [words, withAnd, withOr] : rows) {
        SCOPED_TRACE(testing::PrintToString(words));
        parse(words);
        EXPECT_EQ(session->m_conditions->tobeRun(&test), withAnd);
        words.emplace_back("-kor");
        parse(words);
        EXPECT_EQ(session->m_conditions->tobeRun(&test), withOr);
    }
}
