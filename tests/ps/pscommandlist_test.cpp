#include "sessionfixture.h"
#include "support/storedtext.h"

namespace {

// "key:argument|" for each key.
std::string keysOf(psCommandList const& list) {
    std::string keys;
    for (psCommandKey const& item : list) {
        keys += std::string(1, item.key) + ":" + item.arg.c_str() + "|";
    }
    return keys;
}

} // namespace

TEST(PsCommandList, WordsBecomeKeysAndArguments) {
    char const* const cases[][2] = {
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
    };
    for (auto const& [line, keys] : cases) {
        psCommandList list;
        list.setArgs(line);
        EXPECT_EQ(keysOf(list), keys) << line;
    }
}

TEST(PsCommandList, TextIsSplitUnderQuotes) {
    psCommandList list;
    list.setArgs("-o a;-f \"b c\"\t-m\"d;e\"\r\n-o b;; -x \"open end");
    EXPECT_EQ(keysOf(list), "o:a|f:b c|m:d;e|o:b|x:open end|");
    EXPECT_FALSE(list.setArg("lost", "next"));
    psString arg;
    EXPECT_TRUE(list.getArg('o', arg)); // of the last
    EXPECT_STREQ(arg.c_str(), "b");
}

class PsResponseFile : public SessionTest {};

TEST_F(PsResponseFile, StandsWhereItsKeyStoodAndIsNotReadInsideAnother) {
    writeFile("one", "-fa\n-m\n\"b c\"\n");
    writeFile("two", "-td");
    writeFile("empty", "");
    std::string text = parse({"-s", "-@", "one", "-@empty", "-@two", "-B"});
    EXPECT_TRUE(accepted);
    writeFile("self", "-B -@self -nlate -h");
    text += parse({"-@self", "-o"}); // -n comes too late
    EXPECT_TRUE(accepted);
    EXPECT_EQ(s_hintArg, psSession::shortHelp);
    EXPECT_TRUE(matchesStored("ps/responses", text));
}

TEST_F(PsResponseFile, UnreadableIsFatalInEveryPlace) {
    std::filesystem::create_directory("folder");
    std::string const line = std::string(100000, 'x') + "\n";
    for (int i = 0; i < 50; ++i) { // more than anyone's keys, as from a device without an end
        std::ofstream("endless", std::ios::app) << line;
    }
    for (std::string const word : {"-@none", "-@folder", "-@", "-@endless"}) {
        SCOPED_TRACE(word);
        for (auto const& words : {std::vector{word, std::string("-B")}, {"-B", word}}) {
            std::string const text = parse(words);
            EXPECT_FALSE(accepted);
            EXPECT_EQ(text.rfind("-- ", 0), 0U); // the cause comes first
            EXPECT_TRUE(text.ends_with("FATAL ERROR: can't open output file for writing\n"));
            EXPECT_NE(text.find("-B: batch mode\n"), std::string::npos);
        }
    }
}
