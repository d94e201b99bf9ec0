#include "sessionfixture.h"
#include "support/storedtext.h"

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

TEST_F(PsHelp, EveryText) {
    // -h without the library's keys; hidden, but asked for by name; without a long text.
    EXPECT_TRUE(matchesStored("ps/help_key",
                              help("-hT") + help("-hS") + help("-?e") + help("-h?") + help("-h")));
    linkLibrary();
    EXPECT_TRUE(matchesStored("ps/help_short_hidden", help("-?")));
    EXPECT_TRUE(matchesStored("ps/help_extended", help("-hh")));
    EXPECT_TRUE(matchesStored("ps/help_extended_hidden", help("-??")));
}
