// sessionfixture.h - a session in a directory of its own, with every global of the framework as
// at process start, and put back at the end.
#ifndef TESTS_PS_SESSIONFIXTURE_H
#define TESTS_PS_SESSIONFIXTURE_H

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "ps/psregister.h"
#include "ps/pssession.h"
#include "pscpu/pszolentry.h"
#include "support/tempdirectory.h"

// A test that answers 100 clocks and writes down that it ran.
class ProbeTest : public psTest {
public:
    explicit ProbeTest(char const* name);
    bool canStart() override;
    psResult runTiming() override;

    static std::vector<std::string> ran;
    static psList<psParameter*> parameters; // of every probe
};

class SessionTest : public testing::Test {
protected:
    SessionTest();
    ~SessionTest() override;

    // All that the call writes to standard output.
    template <typename Call>
    static std::string shown(Call call) {
        std::fflush(stdout);
        testing::internal::CaptureStdout();
        call();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }

    // A new session that has parsed the words, and what it showed. The program is "perf" in the
    // working directory, so that all default paths are bare names.
    std::string parse(std::vector<std::string> words);
    bool accepted = false; // what parseCommandLine answered

    // A whole run of a session over the tests registered.
    std::string run(std::vector<std::string> words,
                    std::unique_ptr<psSession> runner = std::make_unique<psSession>());

    static void answers(std::string const& text); // what the console will type
    static void linkLibrary();                    // a library whose calls succeed
    static void resetGlobals();

    std::unique_ptr<psSession> session;
    std::string program = "perf";

private:
    std::vector<char*> arguments(std::vector<std::string>& words);

    TempDirectory directory;
    std::filesystem::path home = std::filesystem::current_path();
};

#endif
