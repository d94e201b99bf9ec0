#include "psstream/psistream.h"
#include "sessionfixture.h"

class PsParseCommand : public SessionTest {};

TEST_F(PsParseCommand, SourcesOfKeys) {
    EXPECT_EQ(parse({}), ""); // no source, no echo
    psRegCmdLine("-B");
    psRegCmdLine("-fa");
    EXPECT_EQ(parse({}), "Command line options: set by _FORCE_CMDLINE preprocessor definition\n"
                         "-B: batch mode\n"
                         "-fa: test functions containing 'a'\n");
    // The file beside the executable, then the one in the working directory.
    std::filesystem::create_directory("bin");
    program = "bin/perf.exe";
    writeFile("bin/perf.cfg", "-t \"x y\";-B\n-s");
    EXPECT_EQ(parse({}), "Command line options: read from bin/perf.cfg file\n"
                         "-tx y: run tests containing 'x y'\n"
                         "-B: batch mode\n");
    writeFile("perf.cfg", "   \r\n-s");
    EXPECT_EQ(parse({}), "Command line options: read from perf.cfg file\n");
    writeFile("perf.cfg", "-B -t\"x y\n-s"); // the open quote takes the line's end
    EXPECT_EQ(parse({}), "Command line options: read from perf.cfg file\n"
                         "-B: batch mode\n"
                         "-tx y\n: run tests containing 'x y\n'\n");
    EXPECT_EQ(parse({"word"}), "Command line options: \n"); // any word shuts the file out
    std::filesystem::remove("perf.cfg");
    std::filesystem::create_directory("perf.cfg"); // no file, so the next place counts
    EXPECT_EQ(parse({}).find("Command line options: read from bin/perf.cfg file\n"), 0U);
}

TEST_F(PsParseCommand, ConfigurationLineIsCutAt1023) {
    writeFile("perf.cfg", std::string("-f") + std::string(2000, 'x'));
    EXPECT_EQ(parse({}), "Command line options: read from perf.cfg file\n-f" +
                             std::string(1021, 'x') + ": test functions containing '" +
                             std::string(1021, 'x') + "'\n");
}

TEST_F(PsParseCommand, FatalLinesComeLast) {
    EXPECT_EQ(parse({"-onone/x.txt", "-h"}), "-- Can't open file none/x.txt to write: \n"
                                             "Command line options: \n"
                                             "-onone/x.txt: write console output to none/x.txt\n"
                                             "-h: type short help and exit\n"
                                             "FATAL ERROR: can't open output file for writing\n");
    EXPECT_FALSE(accepted);
    for (char const* key : {"-Rnone/x", "-qnone/x", "-unone/x"}) {
        parse({key});
        EXPECT_FALSE(accepted) << key;
    }
    EXPECT_TRUE(parse({"-Inone/x.ini"})
                    .ends_with("-- Can't open file none/x.ini to write: \n"
                               "FATAL ERROR: can't open ini-file for writing\n"));
    EXPECT_FALSE(accepted);
    // A missing ini file to read is told, and the run goes on.
    EXPECT_TRUE(parse({"-inone"}).ends_with("-- Can't open file none.ini to read: \n"));
    EXPECT_TRUE(accepted);
    EXPECT_TRUE(g_istrm.hasIniFile());
}
