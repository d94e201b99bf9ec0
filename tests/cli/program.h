// program.h - runs the built programs as a user does: a shell command in a directory of its
// own, with all that it printed.
#ifndef TESTS_CLI_PROGRAM_H
#define TESTS_CLI_PROGRAM_H

#include <filesystem>
#include <string>
#include <vector>

// A fresh directory, removed with all that is in it.
class TempDir {
public:
    TempDir();
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;
    ~TempDir();
    std::string path(std::string const& name = "") const;

private:
    std::filesystem::path m_path;
};

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

std::string readFile(std::string const& path);
void writeFile(std::string const& path, std::string const& text);
std::vector<std::string> lines(std::string const& text);
std::vector<std::string> cells(std::string const& line); // between commas
bool contains(std::string const& text, std::string const& part);

#endif
