#include "sessionfixture.h"

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

TEST_F(PsHelp, FormsOverAllKeysShowEachRowOnce) {
    linkLibrary();
    for (std::string const key : {"-h", "-?", "-hh", "-??"}) {
        bool const extended = key.size() == 3;
        bool const hidden = key[1] == '?';
        std::string text = help(key);
        EXPECT_EQ(text.rfind(std::string(extended ? "EXTENDED" : "QUICK") + " HELP" +
                                 (hidden ? " with hidden keys\n" : "\n"),
                             0),
                  0U);
        for (psOption const* option : session->m_options) {
            if (option->key == '?') {
                continue; // has no line of its own
            }
            SCOPED_TRACE(key + " " + option->key);
            std::string row = option->quick.c_str();
            if (extended) {
                row += option->hidden ? "This is hidden key used by developers only\n" : "";
                row = "\n" + row + option->descr.c_str();
            }
            bool const wanted = !option->hidden || hidden;
            auto const at = text.find(row);
            EXPECT_EQ(at != std::string::npos, wanted);
            text.erase(wanted ? at : text.size(), row.size());
            EXPECT_EQ(text.find(row), std::string::npos);
        }
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
    EXPECT_EQ(help("-hT"), head + "Key -T is not valid\n" + end); // no library here
    EXPECT_EQ(help("-?e"), head +
                               "-e               = enumerate tests and exit\n"
                               "No extended description for this key\n" +
                               end);
    EXPECT_EQ(help("-h?").rfind(head + "Key -? is deprecated\n-?    ", 0), 0U);
    EXPECT_EQ(help("-hS").rfind(head + "-SU    ", 0), 0U); // hidden, but asked for by name
}
