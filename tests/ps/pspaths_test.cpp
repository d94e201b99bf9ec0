#include "sessionfixture.h"

class PsPaths : public SessionTest {};

TEST_F(PsPaths, NamesComeFromTitleAndDirectories) {
    // ini: of an empty argument; summary: of an empty argument; named: of the argument "x"
    using Text = std::string;
    std::tuple<Text, std::vector<Text>, Text, Text, Text> const cases[] = {
        {"perf", {}, "perf.ini", "perf_sum.csv", "x.csv"},
        {"perf", {"-nfoo.bar"}, "foo.bar.ini", "foo.bar_sum.csv", "x.csv"},
        {"bin/perf", {"-lres"}, "bin/perf.ini", "bin/res/perf_sum.csv", "bin/res/x.csv"},
        {"b/perf", {"-p", "a", "-la", "-pb", "-n", "t"}, "b/b/t.ini", "b/a/t_sum.csv", "b/a/x.csv"},
        {"perf", {"-n/abs"}, "/abs.ini", "/abs_sum.csv", "x.csv"}};
    for (auto const& [exe, words, ini, summary, named] : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        program = exe;
        parse(words);
        EXPECT_STREQ(psSession::genInPath("", ".ini").c_str(), ini.c_str());
        EXPECT_STREQ(psSession::genOutPath("", "_sum.csv").c_str(), summary.c_str());
        EXPECT_STREQ(psSession::genOutPath("x", ".csv").c_str(), named.c_str());
    }
}

TEST_F(PsPaths, AbsoluteAndPointedNamesStay) {
    program = "bin/perf";
    parse({"-lout"});
    char const* const cases[][2] = {{"/tmp/x", "/tmp/x"},       {"\\x", "\\x"},
                                    {"C:\\x", "C:\\x"},         {"x.y", "bin/out/x.y"},
                                    {"a.b/c", "bin/out/a.b/c"}, {":", "bin/out/:.csv"}};
    for (auto const& [name, path] : cases) {
        EXPECT_STREQ(psSession::genOutPath(name, ".csv").c_str(), path);
        // A finished path is left alone when a file class places it once more.
        EXPECT_STREQ(psSession::getOutPath(path).c_str(), path);
        EXPECT_STREQ(io_stream::outPathHook(path).c_str(), path);
    }
    EXPECT_STREQ(io_stream::inPathHook("data").c_str(), "bin/data");
    EXPECT_STREQ(io_stream::outPathHook("data").c_str(), "bin/out/data");
    EXPECT_STREQ(psSession::getDirPath("data", "").c_str(), "bin/data");
}
