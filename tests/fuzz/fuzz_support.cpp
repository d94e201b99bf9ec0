// fuzz_support.cpp - the private directory, the guard on files that are opened, the session and its
// checks.
#include "fuzz_support.h"

#include <algorithm>
#include <cfenv>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "ps/psregister.h"
#include "pscpu/pszolentry.h"
#include "psmemory/psmemory.h"
#include "psstream/pscstream.h"
#include "support/sessionglobals.h"

namespace {

bool guarded = false;       // an input is being tried
std::string artifactPrefix; // of the files in which the fuzzer keeps inputs, absolute

// Relative, with no component that leads upwards. Symbolic links are never made.
bool staysInside(std::filesystem::path const& path) {
    return !path.empty() && path.is_relative() &&
           std::find(path.begin(), path.end(), "..") == path.end();
}

void checkPath(char const* path) {
    bool const artifact =
        !artifactPrefix.empty() && std::string_view(path).starts_with(artifactPrefix);
    if (guarded && !artifact && !staysInside(path)) {
        fuzzFailure(__FILE__, __LINE__, "the path stays inside the private directory", path);
    }
}

bool isKeyWord(std::string_view word) {
    return word.size() >= 2 && (word[0] == '-' || word[0] == '/');
}

} // namespace

// All files of the framework come through these two. The fuzzer's own may be written as well.
extern "C" FILE* __real_fopen(char const* path, char const* mode);
extern "C" FILE* __wrap_fopen(char const* path, char const* mode) {
    checkPath(path);
    return __real_fopen(path, mode);
}
extern "C" int __real_open(char const* path, int flags, ...);
extern "C" int __wrap_open(char const* path, int flags, mode_t mode) {
    checkPath(path);
    return __real_open(path, flags, mode);
}

// Where the fuzzer keeps an input is made absolute, since the working directory changes.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static constexpr std::string_view option = "-artifact_prefix=";
    artifactPrefix = std::filesystem::current_path().string() + "/";
    for (int i = 1; i < *argc; ++i) {
        if (std::string_view((*argv)[i]).starts_with(option)) {
            artifactPrefix = std::filesystem::absolute((*argv)[i] + option.size()).string();
        }
    }
    static std::string prefixWord;
    prefixWord = std::string(option) + artifactPrefix;
    static std::vector<char*> words;
    words.assign(*argv, *argv + *argc);
    words.push_back(prefixWord.data()); // the last one holds
    *argc = static_cast<int>(words.size());
    words.push_back(nullptr);
    *argv = words.data();

    // A fault is to be seen, not to be landed; and the fuzzer reckons in the usual modes.
    for (int const fault : {SIGFPE, SIGSEGV, SIGILL}) {
        std::signal(fault, SIG_DFL);
    }
    std::fesetenv(FE_DFL_ENV);
    zol_Init = [] { return ZolStatus(0); };
    psFillZolEntries();
    psCpuTicker::m_freqMHz = 1000; // the estimate spins for seconds
    for (char const* name : {"zolsAcos_32f_A11", "zolsSin_64fc_A53", "__psInfo"}) { // only listed
        psRegTest(
            new psTest(static_cast<psFuncOld>(nullptr), name, "family.cpp", "probe_timing_test"));
    }
    return 0;
}

void fuzzFailure(char const* file, int line, char const* condition, std::string const& about) {
    guarded = false;
    (void)std::fprintf(stderr, "%s:%d: does not hold: %s\n%s\n", file, line, condition,
                       about.c_str());
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static TempDirectory const directory;
    static std::filesystem::path const home = std::filesystem::current_path();
    if (size > mostBytes) {
        return 0;
    }
    std::filesystem::create_directory(directory.path + "d");
    std::filesystem::current_path(directory.path);
    guarded = true;
    tryInput({reinterpret_cast<char const*>(data), size});
    guarded = false;
    std::filesystem::current_path(home);
    for (auto const& entry : std::filesystem::recursive_directory_iterator(directory.path)) {
        if (!entry.is_directory()) {
            std::filesystem::remove(entry);
        }
    }
    return 0;
}

std::string harmless(std::string_view text) {
    std::string cleaned(text);
    char before = 0;
    for (char& letter : cleaned) {
        if (letter == '/' || (letter == '.' && before == '.')) {
            letter = '_';
        }
        if (letter != 0) {
            before = letter;
        }
    }
    return cleaned;
}

std::string harmlessWord(std::string_view word) {
    std::string cleaned = harmless(word);
    if (word.size() >= 2 && word[0] == '/') {
        cleaned[0] = '/';
    }
    return cleaned;
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> wordsOfText(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    auto const finish = [&] {
        if (!word.empty()) {
            words.push_back(word);
        }
        word.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') {
            finish();
            for (++i; i < text.size(); ++i) {
                bool const doubled = text.substr(i, 2) == "\"\"";
                if (text[i] == '"' && !doubled) {
                    break;
                }
                i += doubled ? 1 : 0;
                word += text[i];
            }
            finish();
        } else if (std::string_view(" ;\t\r\n").find(text[i]) != std::string_view::npos) {
            finish();
        } else {
            word += text[i];
        }
    }
    finish();
    return words;
}

std::vector<Key> keysOfWords(std::vector<std::string> const& words) {
    std::vector<Key> keys;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string const& word = words[i];
        std::string const next =
            i + 1 < words.size() && !isKeyWord(words[i + 1]) ? words[++i] : std::string();
        if (isKeyWord(word)) {
            std::string rest = word.substr(2);
            bool const signOnly = rest == "-" || rest == "+" || rest == "=";
            keys.push_back({word[1], rest.empty() || signOnly ? rest + next : rest});
        }
    }
    return keys;
}

std::vector<Key> keysOf(psCommandList const& list) {
    std::vector<Key> keys;
    for (psCommandKey const& key : list) {
        keys.push_back({key.key, key.arg.c_str()});
    }
    return keys;
}

std::string shownKeys(std::vector<Key> const& keys) {
    std::string text;
    for (Key const& key : keys) {
        text += std::string("-") + key.letter + "{" + key.arg + "}\n";
    }
    return text;
}

long countKeys(std::vector<Key> const& keys, std::string_view letters) {
    return std::count_if(keys.begin(), keys.end(), [&](Key const& key) {
        return letters.find(key.letter) != std::string_view::npos;
    });
}

FuzzSession::FuzzSession(std::string const& typed) {
    resetGlobals();
    c_out.file = open_memstream(&console, &consoleSize);
    writeFile("typed", typed);
    c_in.file = std::fopen("typed", "r");
    g_ostrm.setMsgLevel(MSG_PERF);
    g_ostrm.insert(g_ostrm.end(), &c_out);
    zolEnvironment = [] {};
    length.init("Length", 64, 1024, 2, StepMul);
    g_pParmList = new psList<psParameter*>;
    g_pParmList->insert(g_pParmList->end(), &length);
    session.initSession();
}

FuzzSession::~FuzzSession() {
    resetGlobals();
    std::free(console);
}

bool FuzzSession::parse(std::vector<std::string> words) {
    std::string program = "perf";
    std::vector<char*> pointers{program.data()};
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    return session.parseCommandLine(static_cast<int>(pointers.size()), pointers.data());
}

std::string FuzzSession::takeShown() {
    (void)std::fflush(c_out.file);
    std::string shown(console + taken, consoleSize - taken);
    taken = consoleSize;
    return shown;
}

std::string FuzzSession::settings() {
    char text[512];
    (void)std::snprintf(text, sizeof text, "%d %d %d %d %d %lld %lld %g %d %d %d %d ",
                        g_tool.m_method, g_tool.m_numLoops, g_tool.m_startLoops, g_tool.m_maxLoops,
                        g_tool.m_minCalls, g_tool.m_minClocks, g_tool.m_maxClocks,
                        g_tool.m_accuracy, psGetVectorAlign(), psGetVectorShift(),
                        psGetAlignSrc() ? 1 : 0, psGetAlignByByte() ? 1 : 0);
    return std::string(text) + length.description().c_str();
}

void FuzzSession::resetGlobals() {
    resetSessionGlobals();
    c_in.close();
    c_in.file = stdin;
    c_out.close();
    c_out.file = stdout;
}

void checkEcho(std::string const& shown, std::string const& header, std::vector<Key> const& keys,
               bool accepted) {
    FUZZ_CHECK(shown.empty() || shown.back() == '\n', shown);
    std::vector<std::string> const lines = linesOf(shown);
    std::size_t i = 0;
    while (i < lines.size() && lines[i].starts_with("-- ")) { // of files
        ++i;
    }
    if (!header.empty()) {
        FUZZ_CHECK(i < lines.size() && lines[i] == header, shown);
        ++i;
    }
    for (Key const& key : keys) {
        std::string const start = std::string("-") + key.letter + key.arg + ": ";
        FUZZ_CHECK(i < lines.size() && lines[i].starts_with(start), shown);
        FUZZ_CHECK(lines[i].size() > start.size(), shown);
        ++i;
    }
    while (i < lines.size() && lines[i].starts_with("-- ")) { // of the ini file
        ++i;
    }
    FUZZ_CHECK(i + (accepted ? 0 : 1) == lines.size(), shown);
    FUZZ_CHECK(accepted || lines[i].starts_with("FATAL ERROR: can't open "), shown);
}
