// program.cpp - runs the built programs as a user does.
#include "program.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>

TempDir::TempDir() {
    std::string name = (std::filesystem::temp_directory_path() / "ps_cli_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("mkdtemp");
    }
    m_path = name;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TempDir::path(std::string const& name) const { return (m_path / name).string(); }

Outcome runShell(std::string const& command, std::string const& input) {
    TempDir const dir;
    writeFile(dir.path("in"), input);
    std::string const whole =
        "( " + command + " ) <" + dir.path("in") + " >" + dir.path("out") + " 2>" + dir.path("err");
    int const status = std::system(whole.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            readFile(dir.path("out")), readFile(dir.path("err"))};
}

std::string psZolvm() { return "'" PS_ZOLVM "'"; }
std::string psEmpty() { return "'" PS_EMPTY "'"; }

std::string readFile(std::string const& path) {
    std::ifstream const file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

void writeFile(std::string const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
}

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
