#include "psstream/psistream.h"
#include "sessionfixture.h"
#include "support/storedtext.h"

class PsParseCommand : public SessionTest {};

TEST_F(PsParseCommand, SourcesOfKeys) {
    EXPECT_EQ(parse({}), ""); // no source, no echo
    psRegCmdLine("-B");
    psRegCmdLine("-fa");
    std::string text = parse({});
    // The file beside the executable, then the one in the working directory.
    std::filesystem::create_directory("bin");
    program = "bin/perf.exe";
    writeFile("bin/perf.cfg", "-t \"x y\";-B\n-s");
    text += parse({});
    writeFile("perf.cfg", "-B -f\"open end\n-s"); // the open quote takes the line's end
    text += parse({});
    writeFile("perf.cfg", "   \r\n-s");
    text += parse({});
    text += parse({"word"}); // any word shuts the file out
    std::filesystem::remove("perf.cfg");
    std::filesystem::create_directory("perf.cfg"); // no file, so the next place counts
    EXPECT_TRUE(matchesStored("ps/sources", text + parse({})));
}

TEST_F(PsParseCommand, ConfigurationLineIsCutAt1023) {
    writeFile("perf.cfg", std::string("-f") + std::string(2000, 'x'));
    EXPECT_EQ(parse({}), "Command line options: read from perf.cfg file\n-f" +
                             std::string(1021, 'x') + ": test functions containing '" +
                             std::string(1021, 'x') + "'\n");
}

TEST_F(PsParseCommand, FatalLinesComeLast) {
    std::string text;
    for (std::string const key : {"-onone/x.txt", "-Onone/x", "-rnone/x", "-Rnone/x", "-qnone/x",
                                  "-unone/x", "-Unone/x", "-Inone/x.ini"}) {
        text += parse({key, "-h"});
        EXPECT_FALSE(accepted) << key;
    }
    // A missing ini file to read is told, and the run goes on.
    EXPECT_TRUE(matchesStored("ps/fatal", text + parse({"-inone"})));
    EXPECT_TRUE(accepted);
    EXPECT_TRUE(g_istrm.hasIniFile());
}

TEST_F(PsParseCommand, ASecondLineStartsAnew) {
    parse({"-A", "-B", "-s-", "-q", "-Q", "-e", "-i", "-@none"});
    EXPECT_FALSE(accepted);
    std::vector<char*> words{program.data()};
    shown([&] { accepted = session->parseCommandLine(1, words.data()); });
    EXPECT_TRUE(accepted && session->m_askMode == 3 && !session->m_batchMode);
    EXPECT_TRUE(!session->m_noSort && session->m_enumMode == psSession::noEnumeration);
    EXPECT_TRUE(psRunMode::m_nameMode == 0 && !psRunMode::m_nameExit && session->m_iniName.empty());
}
