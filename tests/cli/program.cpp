// program.cpp - runs the built programs as a user does.
#include "program.h"

#include <cstdlib>
#include <sstream>
#include <sys/wait.h>

Outcome runShell(std::string const& command, std::string const& input) {
    TempDirectory const dir;
    writeFile(dir.path + "in", input);
    std::string const whole =
        "( " + command + " ) <" + dir.path + "in >" + dir.path + "out 2>" + dir.path + "err";
    int const status = std::system(whole.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            readFile(dir.path + "out"), readFile(dir.path + "err")};
}

std::string psZolvm() { return "'" PS_ZOLVM "'"; }
std::string psEmpty() { return "'" PS_EMPTY "'"; }

namespace {
std::vector<std::string> splitAt(std::string const& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}
} // namespace

std::vector<std::string> lines(std::string const& text) { return splitAt(text, '\n'); }
std::vector<std::string> cells(std::string const& line) { return splitAt(line, ','); }

bool contains(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}
