// tempdirectory.h - for tests: a directory of their own, and whole files.
#ifndef TESTS_SUPPORT_TEMPDIRECTORY_H
#define TESTS_SUPPORT_TEMPDIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempDirectory {
public:
    TempDirectory() {
        std::string name = std::filesystem::temp_directory_path() / "ps_tests_XXXXXX";
        path = std::string(mkdtemp(name.data())) + "/";
    }
    TempDirectory(TempDirectory const&) = delete;
    TempDirectory& operator=(TempDirectory const&) = delete;
    ~TempDirectory() { std::filesystem::remove_all(path); }

    std::string path; // with the slash at its end
};

inline void writeFile(std::string const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readFile(std::string const& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

#endif
