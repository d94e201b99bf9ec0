// fuzz_support.h - what the fuzz targets share: the way in, through a private directory that no
// file name of an input leads out of; a session with all globals at their start, and a second
// opinion on what words mean.
#ifndef TESTS_FUZZ_FUZZ_SUPPORT_H
#define TESTS_FUZZ_FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "ps/pssession.h"
#include "psparameter/psiterator.h"
#include "support/tempdirectory.h"

// What a target defines: the trial of one input, and how long an input may be.
void tryInput(std::string const& input);
extern std::size_t const mostBytes;

// These call it. The working directory is a private one then, with nothing but an empty directory
// "d" in it, and fopen refuses, fatally, all that lies outside.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

// Ends the process with the place and the words, when an invariant does not hold.
#define FUZZ_CHECK(holds, about)                                                                   \
    do {                                                                                           \
        if (!(holds)) {                                                                            \
            fuzzFailure(__FILE__, __LINE__, #holds, about);                                        \
        }                                                                                          \
    } while (false)
[[noreturn]] void fuzzFailure(char const* file, int line, char const* condition,
                              std::string const& about);

// The text without ways out of the directory: no "/", no two points in a row. Zero bytes do not
// count as something in between, since reading drops them.
std::string harmless(std::string_view text);
// The same for a word of the command line; a "/" in the place of the "-" of a key stays.
std::string harmlessWord(std::string_view word);

std::vector<std::string> linesOf(std::string_view text);

// What words and texts mean, written anew.
struct Key {
    char letter;
    std::string arg;
    bool operator==(Key const&) const = default;
};
std::vector<std::string> wordsOfText(std::string_view text);
std::vector<Key> keysOfWords(std::vector<std::string> const& words);
std::vector<Key> keysOf(psCommandList const& list);
std::string shownKeys(std::vector<Key> const& keys);
// How many of the keys have one of these letters.
long countKeys(std::vector<Key> const& keys, std::string_view letters);

// A session of a program "perf" in the working directory, over three tests and one common
// parameter. The console is a buffer. Keys of the library are in the table.
class FuzzSession {
public:
    explicit FuzzSession(std::string const& typed = "");
    FuzzSession(FuzzSession const&) = delete;
    FuzzSession& operator=(FuzzSession const&) = delete;
    ~FuzzSession();

    bool parse(std::vector<std::string> words);
    std::string takeShown(); // console text since the last call
    std::string settings();  // all that the common data decide

    psSession session;
    psStepIterator<int> length;

private:
    static void resetGlobals();

    char* console = nullptr;
    std::size_t consoleSize = 0;
    std::size_t taken = 0;
};

// The echo holds each key once, in its order, on one line; what stands around it are messages of
// files, and the fatal line that goes with the answer of parseCommandLine.
void checkEcho(std::string const& shown, std::string const& header, std::vector<Key> const& keys,
               bool accepted);

#endif
