// fuzz_main.cpp - tries the inputs in the files and directories that are named, where the build has
// no fuzzer of its own.
#include "fuzz_support.h"

#include <algorithm>
#include <filesystem>

int main(int argc, char** argv) {
    std::vector<std::string> const named(argv + 1, argv + argc);
    LLVMFuzzerInitialize(&argc, &argv);
    int tried = 0;
    for (std::string const& path : named) {
        std::vector<std::filesystem::path> files{path};
        if (std::filesystem::is_directory(path)) {
            files.assign(std::filesystem::directory_iterator(path), {});
            std::sort(files.begin(), files.end());
        }
        for (std::filesystem::path const& file : files) {
            if (!std::filesystem::is_regular_file(file)) {
                (void)std::fprintf(stderr, "%s is no file\n", file.c_str());
                return 1;
            }
            (void)std::fprintf(stderr, "%s\n", file.c_str()); // the last one is the one that failed
            std::string const text = readFile(file);
            (void)LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(text.data()),
                                         text.size());
            ++tried;
        }
    }
    (void)std::printf("%d inputs\n", tried);
    return tried > 0 ? 0 : 1;
}
