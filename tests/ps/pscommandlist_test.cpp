#include <sstream>

#include "sessionfixture.h"

namespace {

// "key:argument|" for each key.
std::string keysOf(psCommandList const& list) {
    std::string keys;
    for (psCommandKey const& item : list) {
        keys += std::string(1, item.key) + ":" + item.arg.c_str() + "|";
    }
    return keys;
}

// Of words that stand between blanks here, as a shell hands them over.
std::string keysOfWords(char const* line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    std::vector<char*> pointers;
    for (std::string word; in >> word;) {
        words.push_back(word);
    }
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    psCommandList list;
    list.setArgs(static_cast<int>(pointers.size()), pointers.data());
    return keysOf(list);
}

} // namespace

TEST(PsCommandList, WordsBecomeKeysAndArguments) {
    char const* const cases[][2] = {
        {"-o file -r", "o:file|r:|"},
        {"-o -r", "o:|r:|"},
        {"-fabc -f abc", "f:abc|f:abc|"},
        {"-f+abc -f+ abc -f+", "f:+abc|f:+abc|f:+|"},
        {"-f- abc -f= x", "f:-abc|f:=x|"},
        {"-f -abc", "f:|a:bc|"},
        {"-dx=1 -f--x", "d:x=1|f:--x|"}, // only one sign is taken off
        {"-i /tmp/x.ini", "i:|t:mp/x.ini|"},
        {"-i/tmp/x.ini", "i:/tmp/x.ini|"},
        {"lost -fabc def ghi - -B", "f:abc|B:|"},
        {"-f -", "f:-|"}, // a lone minus is no key
        {"", ""},
    };
    for (auto const& [line, keys] : cases) {
        EXPECT_EQ(keysOfWords(line), keys) << line;
    }
}

TEST(PsCommandList, TextIsSplitUnderQuotes) {
    psCommandList list;
    list.setArgs("-o a;-f \"b c\"\t-m\"d;e\"\r\n-o b;; -x \"open end");
    EXPECT_EQ(keysOf(list), "o:a|f:b c|m:d;e|o:b|x:open end|");
    psString arg;
    EXPECT_TRUE(list.getArg('o', arg)); // of the last
    EXPECT_STREQ(arg.c_str(), "b");
    EXPECT_FALSE(list.isKey('b'));
}

class PsResponseFile : public SessionTest {};

TEST_F(PsResponseFile, StandsWhereItsKeyStood) {
    put("one", "-fa\n-m\n\"b c\"\n");
    put("two", "-td");
    put("empty", "");
    EXPECT_EQ(parse({"-s", "-@", "one", "-@empty", "-@two", "-B"}),
              "Command line options: \n"
              "-s: sort functions\n"
              "-fa: test functions containing 'a'\n"
              "-mb c: run tests from file containing 'b c' in file name\n"
              "-td: run tests containing 'd'\n"
              "-B: batch mode\n");
    EXPECT_TRUE(accepted);
}

TEST_F(PsResponseFile, IsNotReadInsideAnother) {
    put("self", "-B -@self -nlate -h");
    EXPECT_EQ(parse({"-@self", "-o"}),
              "Command line options: \n"
              "-B: batch mode\n"
              "-@self: ignored: response file inside a response file\n"
              "-nlate: name ini-file and output files as late.<proper-ext>\n"
              "-h: type short help and exit\n"
              "-o: write console output to perf.txt\n"); // -n came too late
    EXPECT_TRUE(accepted);
    EXPECT_EQ(g_sessionKeys.hintArg, psSessionKeys::shortHelp);
}

TEST_F(PsResponseFile, UnreadableIsFatalInEveryPlace) {
    std::filesystem::create_directory("folder");
    std::string lines; // more than anyone's keys, as from a device without an end
    for (int i = 0; i < 50; ++i) {
        lines += std::string(100000, 'x') + "\n";
    }
    put("endless", lines);
    for (std::vector<std::string> const& words : {std::vector<std::string>{"-@none"},
                                                  {"-@none", "-B"},
                                                  {"-B", "-@none"},
                                                  {"-B", "-@folder"},
                                                  {"-@", "-B"},
                                                  {"-@endless", "-B"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        std::string const text = parse(words);
        EXPECT_FALSE(accepted);
        EXPECT_EQ(text.rfind("-- ", 0), 0U); // the cause comes first
        EXPECT_TRUE(text.ends_with("FATAL ERROR: can't open output file for writing\n"));
        EXPECT_EQ(text.find("-B: batch mode\n") != std::string::npos, words.size() > 1);
    }
}

TEST_F(PsResponseFile, GarbageGivesKeysOrNothing) {
    std::string garbage;
    for (int i = 0; i < 20000; ++i) {
        garbage += static_cast<char>((i * 7919) >> 3);
    }
    put("garbage", garbage + "\n-B");
    parse({"-@garbage"});
    EXPECT_TRUE(psSession::pCmdList->isKey('B'));
}
