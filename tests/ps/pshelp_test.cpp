#include "sessionfixture.h"

namespace {

int countOf(std::string const& text, std::string const& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

class PsHelp : public SessionTest {
protected:
    // What the help key brings, without the line of the version.
    std::string help(std::string const& key) {
        parse({key});
        std::string const text = shown([&] { EXPECT_TRUE(session->hintOutput()); });
        EXPECT_EQ(text.rfind("\nNorvo(R) Zolan Primitives. Performance System 2.0, ", 0), 0U);
        return text.substr(text.find('\n', 1) + 1);
    }
};

TEST_F(PsHelp, TableIsWhole) {
    linkLibrary();
    parse({"-B"});
    EXPECT_FALSE(session->hintOutput());
    std::string keys;
    for (psOption const* option : session->m_options) {
        SCOPED_TRACE(keys += option->key);
        for (std::string const text : {option->quick.c_str(), option->descr.c_str()}) {
            EXPECT_TRUE(text.empty() || text.back() == '\n');
            EXPECT_EQ(text.find("\n\n") + text.find('\t'), 2 * std::string::npos);
        }
        EXPECT_TRUE(option->key == '?' ||
                    (option->quick[0] == '-' && option->quick[1] == option->key));
    }
    EXPECT_EQ(keys, "BAdiIPoOLrRqQuUgnplftmkFYHWTNSCsev@h?");
    std::string const features = session->getOption('T')->descr.c_str();
    EXPECT_EQ(countOf(features, ": optimized for "), 47);
    EXPECT_EQ(countOf(features, "{cpu-features}:\nMMX      : optimized for "), 1);
    EXPECT_EQ(countOf(features, " library version\nIf several -T keys "), 1);
}

TEST_F(PsHelp, FormsOverAllKeysShowEachRowOnce) {
    linkLibrary();
    for (std::string const key : {"-h", "-?", "-hh", "-??"}) {
        bool const extended = key.size() == 3;
        bool const hidden = key[1] == '?';
        std::string const text = help(key);
        EXPECT_EQ(text.rfind(std::string(extended ? "EXTENDED" : "QUICK") + " HELP" +
                                 (hidden ? " with hidden keys\n" : "\n"),
                             0),
                  0U);
        for (psOption const* option : session->m_options) {
            if (option->key == '?') {
                continue; // has no line of its own
            }
            SCOPED_TRACE(key + " " + option->key);
            std::string row = std::string("\n") + option->quick.c_str();
            EXPECT_EQ(countOf(text, row), !option->hidden || hidden ? 1 : 0);
            if (extended) {
                row += option->hidden ? "This is hidden key used by developers only\n" : "";
                row = "\n" + row + option->descr.c_str();
                EXPECT_EQ(countOf(text, row), !option->hidden || hidden ? 1 : 0);
            }
        }
        EXPECT_EQ(countOf(text, "hidden key used"), extended && hidden ? 2 : 0);
        EXPECT_EQ(countOf(text, "-??  "), 0);
    }
}

TEST_F(PsHelp, OneKey) {
    std::string const end = "\nUse -h option to type full key list\n";
    std::string const head = "EXTENDED KEY HELP\n";
    EXPECT_EQ(help("-hB"), head +
                               "-B               = batch mode (no console input)\n"
                               "If both -B and -A key present in command line then -B key is "
                               "performed\n" +
                               end);
    EXPECT_EQ(help("-?B"), help("-hB"));
    EXPECT_EQ(help("-hx"), head + "Key -x is not valid\n" + end);
    EXPECT_EQ(help("-hT"), head + "Key -T is not valid\n" + end); // no library here
    EXPECT_EQ(help("-he"), head +
                               "-e               = enumerate tests and exit\n"
                               "No extended description for this key\n" +
                               end);
    EXPECT_EQ(help("-h?").rfind(head + "Key -? is deprecated\n-?    ", 0), 0U);
    EXPECT_EQ(help("-?h").rfind(head + "-h               = type short help", 0), 0U);
    EXPECT_EQ(help("-hS").rfind(head + "-SU    ", 0), 0U); // hidden, but asked for by name
    g_sessionKeys = psSessionKeys();
    EXPECT_EQ(help("-v"), "");
}
