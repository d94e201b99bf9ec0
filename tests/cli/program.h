// program.h - runs the built programs as a user does: a shell command in a directory of its
// own, with all that it printed.
#ifndef TESTS_CLI_PROGRAM_H
#define TESTS_CLI_PROGRAM_H

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/tempdirectory.h"

struct Outcome {
    int status; // exit code, or 128 and the signal
    std::string out;
    std::string err;
};

// Runs a shell command with input on its standard input.
Outcome runShell(std::string const& command, std::string const& input = "");

// The programs under test, quoted for the shell.
std::string psZolvm();
std::string psEmpty();

std::vector<std::string> lines(std::string const& text);
std::vector<std::string> cells(std::string const& line); // between commas
bool contains(std::string const& text, std::string const& part);

#endif
