#include "psmemory/psmemory.h"
#include "psstream/psistream.h"
#include "sessionfixture.h"
#include "support/storedtext.h"

class PsDialogue : public SessionTest {
protected:
    // The common data as a session with these keys reads them, and what the console shows.
    std::string read(std::vector<std::string> words) {
        parse(std::move(words));
        EXPECT_TRUE(accepted);
        return shown([&] {
            session->beginCommonData();
            session->readCommonData();
            session->endCommonData();
        });
    }

    // All that the common data settle.
    static std::string settings() {
        psString text;
        text << g_tool.m_method << " " << g_tool.m_numLoops << " " << g_tool.m_minCalls << " "
             << g_tool.m_maxClocks << " " << g_tool.m_startLoops << " " << g_tool.m_maxLoops << " "
             << g_tool.m_minClocks << " " << g_tool.m_accuracy << " " << psGetAlignByByte() << " "
             << psGetVectorAlign() << " " << psGetAlignSrc() << " " << psGetVectorShift();
        return text.c_str();
    }
};

// Titles, prompts and answers on the console: of each ask level, of each method, and of answers
// that are no value.
TEST_F(PsDialogue, WhatTheConsoleShows) {
    std::pair<std::vector<std::string>, char const*> const cases[] = {
        {{"-AT"}, ""}, // at the end of the input
        {{"-AP"}, "8\n"},
        {{"-AMisalign"}, "\n\n"},
        {{"-AM", "-dAlignVectorsBy=byte"}, "5\nno\n"},
        {{"-AAll"}, "Manual\n7\n\nelement\n3\nyes\n"},
        {{"-AT"}, "Statistic\n4\n500\n"},
        {{"-AT"}, "Iterative\n2\n64\n100\n10\n"},
        {{"-AT"}, "Mx\nabc\n"}, // the values stay
        {{"-B"}, "Manual\n"}};
    std::string text;
    for (auto const& [words, typed] : cases) {
        resetGlobals();
        answers(typed);
        psDefault<int> parameter(7, "Common");
        psRegParm(parameter);
        text += read(words) + "----\n";
        EXPECT_EQ(g_istrm.batchMode(), words[0] != "-AAll"); // else each test may ask
    }
    // Bit 2 with nothing to ask counts as not asked.
    resetGlobals();
    text += read({"-AP"}) + "----\n";
    for (size_t const length : {3U, 4U, 75U, 76U, 77U, 90U}) {
        text += psSession::getEnterTitle(std::string(length, 'x').c_str()).c_str();
    }
    EXPECT_TRUE(matchesStored("ps/dialogue", text));
}

TEST_F(PsDialogue, MethodsAndAccuracy) {
    std::pair<std::vector<std::string>, char const*> const cases[] = {
        {{"-dMethod=man", "-dNumLoops=100"}, "1 100 12 10000 1 2048 100 0.05 no 0 yes 512"},
        {{"-dMethod=st", "-dNumCalls=20"}, "2 10 20 10000 1 2048 100 0.05 no 0 yes 512"},
        {{}, "0 10 12 10000 1 2048 100 0.05 no 0 yes 512"},
        {{"-dMethod=S"}, "2 10 3 10000 1 2048 100 0.05 no 0 yes 512"},
        {{"-dMethod=", "-dAlignVectorsBy="}, "0 10 12 10000 1 2048 100 0.05 yes 0 yes 512"},
        {{"-dMethod=i", "-dStopNumLoops=64", "-dAccuracy=1"},
         "3 10 12 10000 1 64 10000 0.01 no 0 yes 512"},
        {{"-dAccuracy=50"}, "0 10 12 10000 1 2048 100 0.5 no 0 yes 512"},
        {{"-dAccuracy=51"}, "0 10 12 10000 1 2048 100 500 no 0 yes 512"},
        {{"-dVectorAlign=70", "-dAlignVectorsBy=byte", "-dMisalignFirstVectorOnly=n"},
         "0 10 12 10000 1 2048 100 0.05 yes 6 no 512"},
        {{"-dVectorAlign=64", "-dMisalignFirstVectorOnly=n", "-dMutualVectorShift=64"},
         "0 10 12 10000 1 2048 100 0.05 no 0 yes 512"}};
    for (auto [words, wanted] : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        resetGlobals();
        words.emplace_back("-B");
        psSetVectorShift(64); // no source reaches the shift
        read(words);
        EXPECT_EQ(settings(), wanted);
    }
    // A preset method gives the defaults.
    std::pair<void (*)(psTool&), char const*> const presets[] = {
        {[](psTool& tool) { tool.setMethodLoop(7); }, "1 7 12 10000 1 2048 100"},
        {[](psTool& tool) { tool.setMethodStat(9, 777); }, "2 10 9 777 1 2048 100"},
        {[](psTool& tool) { tool.setMethodBest(4, 64, 99); }, "3 10 12 10000 4 64 99"}};
    for (auto const& [preset, wanted] : presets) {
        resetGlobals();
        EXPECT_EQ(psRegTimingMethod(preset), 1);
        read({"-B"});
        EXPECT_EQ(settings(), wanted + std::string(" 0.05 no 0 yes 512"));
    }
}

TEST_F(PsDialogue, SourcesGiveTheSameSettings) {
    std::vector<std::pair<std::string, std::string>> const values = {
        {"Method", "Iterative"},    {"StartNumLoops", "2"}, {"StopNumLoops", "100"},
        {"MinCpuClocks", "5000"},   {"Accuracy", "10"},     {"Common", "42"},
        {"AlignVectorsBy", "byte"}, {"VectorAlign", "3"},   {"MisalignFirstVectorOnly", "no"}};
    std::string typed;
    std::string ini = "[Perf System]\n";
    std::vector<std::string> data{"-B"};
    for (auto const& [name, value] : values) {
        typed += value + "\n";
        ini += name + " = " + value + " // note\n";
        data.push_back("-d" + name + "=" + value);
    }
    auto const settingsOf = [this](std::vector<std::string> words, std::string const& input) {
        resetGlobals();
        psDefault<int> parameter(7, "Common");
        psRegParm(parameter);
        answers(input);
        read(std::move(words));
        EXPECT_FALSE(parameter.m_toRead) << "no test reads it again";
        return settings() + " " + std::to_string(parameter.value());
    };
    std::string const wanted = "3 10 12 10000 2 100 5000 0.1 yes 3 no 512 42";
    writeFile("in.ini", ini);
    EXPECT_EQ(settingsOf({"-ATPM"}, typed), wanted);
    EXPECT_EQ(settingsOf(data, ""), wanted);
    EXPECT_EQ(settingsOf({"-B", "-iin"}, ""), wanted);
    // What -I stores is read back to the same, with the console open or not.
    data.emplace_back("-Iout");
    EXPECT_EQ(settingsOf(data, ""), wanted);
    g_istrm.deleteIniFile();
    EXPECT_EQ(settingsOf({"-iout", "-A"}, std::string(20, '1')), wanted);
    // The input ends in the middle: the rest keeps its defaults.
    EXPECT_EQ(settingsOf({"-ATPM"}, "Iterative\n2\n100\n"),
              "3 10 12 10000 2 100 10000 0.05 no 0 yes 512 7");
}
