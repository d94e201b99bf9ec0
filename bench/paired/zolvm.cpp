// zolvm.cpp - a library whose speed is known: it calls another libzolvm.so, and goes on for a
// share of what the call took. What it does stands in a file "settings" beside it, a word and its
// value in a line, none of them needed:
//   real PATH     the libzolvm.so that it calls, instead of the one that it was built beside
//   slow SHARE    of a call's time that it goes on for, for example 0.02
//   only NAME     a function that this goes for; without such lines it goes for all
//   swap A B      calls of A are served by B, whose arguments have the same types
// All calls read the counter in the same places. What a call owes is kept in fractions of a clock
// and paid by whole readings of the counter, some by the next call, so that the share is right on
// the average of many calls however short they are.
#include "zolvm.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <x86intrin.h>

namespace {

struct Function {
    char const* name;
    char const* types; // of the call
    void* real;
    double share; // that it goes on for
    double owed;  // clocks that it hasn't gone on for yet
};

#define DEFINE_ROW(shape, name, S, D, family, kind)                                                \
    {#name, #shape " " #S " " #D, nullptr, 0.0, 0.0},
Function functions[] = {ZOLVM_FUNCTIONS(DEFINE_ROW)};

enum Index {
#define DEFINE_INDEX(shape, name, S, D, family, kind) index_##name,
    ZOLVM_FUNCTIONS(DEFINE_INDEX)
};

ZolLibraryVersion const* (*realVersion)() = nullptr;

[[noreturn]] void end(std::string const& complaint) {
    std::fprintf(stderr, "paired wrapper: %s\n", complaint.c_str());
    std::exit(EXIT_FAILURE);
}

Function& find(std::string const& name) {
    for (Function& function : functions) {
        if (name == function.name) {
            return function;
        }
    }
    end("no function " + name);
}

class Wrapper {
public:
    Wrapper();

private:
    void readSettings();
    void load();

    std::string m_real = REAL_ZOLVM;
    std::string m_served[sizeof functions / sizeof functions[0]]; // by whom; empty: by itself
};

Wrapper::Wrapper() {
    readSettings();
    load();
}

void Wrapper::readSettings() {
    Dl_info own;
    (void)dladdr(functions, &own);
    std::string const path = own.dli_fname;
    FILE* const file = std::fopen((path.substr(0, path.rfind('/') + 1) + "settings").c_str(), "r");
    if (file == nullptr) {
        return;
    }
    double share = 0.0;
    bool isChosen[sizeof functions / sizeof functions[0]] = {};
    bool areAll = true;
    char line[4096];
    while (std::fgets(line, sizeof line, file) != nullptr) {
        char word[16] = "";
        char value[2048] = "";
        char second[128] = "";
        int const count = std::sscanf(line, "%15s %2047s %127s", word, value, second);
        if (std::strcmp(word, "real") == 0) {
            m_real = value;
        } else if (std::strcmp(word, "slow") == 0) {
            share = std::atof(value);
        } else if (std::strcmp(word, "only") == 0) {
            isChosen[&find(value) - functions] = true;
            areAll = false;
        } else if (std::strcmp(word, "swap") == 0) {
            if (std::strcmp(find(value).types, find(second).types) != 0) {
                end(std::string(value) + " and " + second + " differ in their types");
            }
            m_served[&find(value) - functions] = second;
        } else if (count > 0) {
            end(std::string("unknown setting ") + word);
        }
    }
    std::fclose(file);
    for (Function& function : functions) {
        function.share = areAll || isChosen[&function - functions] ? share : 0.0;
    }
}

// Bound to its own functions, not to ours of the same names.
void Wrapper::load() {
    void* const real = dlopen(m_real.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    if (real == nullptr) {
        end(dlerror());
    }
    for (Function& function : functions) {
        std::string const& other = m_served[&function - functions];
        function.real = dlsym(real, other.empty() ? function.name : other.c_str());
        if (function.real == nullptr) {
            end(std::string("no function ") + function.name + " in " + m_real);
        }
    }
    realVersion =
        reinterpret_cast<ZolLibraryVersion const* (*)()>(dlsym(real, "zolvmGetLibVersion"));
}

Wrapper const wrapper;

// Clocks: whoever took the processor while a call paid has paid no later call's share.
constexpr double interrupted = 500.0;

// Fenced, since a core would wait while it is still at work on the call or on the next one already.
unsigned long long readCounter() {
    _mm_lfence();
    unsigned long long const now = __rdtsc();
    _mm_lfence();
    return now;
}

template <typename Call>
ZolStatus goOn(Function& function, Call call) {
    unsigned long long const begin = readCounter();
    ZolStatus const status = call();
    unsigned long long last = readCounter();
    function.owed += static_cast<double>(last - begin) * function.share;
    while (function.owed > 0.0) {
        unsigned long long const now = readCounter();
        function.owed -= static_cast<double>(now - last);
        last = now;
    }
    if (function.owed < -interrupted) {
        function.owed = 0.0;
    }
    return status;
}

} // namespace

ZolLibraryVersion const* zolvmGetLibVersion(void) {
    return realVersion != nullptr ? realVersion() : nullptr;
}

#define DEFINE(shape, name, S, D, family, kind)                                                    \
    ZolStatus name ZOLVM_PARAMETERS_##shape(S, D) {                                                \
        Function& function = functions[index_##name];                                              \
        using Real = ZolStatus(*) ZOLVM_PARAMETERS_##shape(S, D);                                  \
        return goOn(function, [&] {                                                                \
            return reinterpret_cast<Real>(function.real) ZOLVM_ARGUMENTS_##shape;                  \
        });                                                                                        \
    }
ZOLVM_FUNCTIONS(DEFINE)
