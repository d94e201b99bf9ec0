// zolibrary.h - the measured library: a copy, loaded anew in a name space of its own, so that
// several live side by side in one process and none goes through another kind of call.
#ifndef ZO_ZOLIBRARY_H
#define ZO_ZOLIBRARY_H

#include "psbase/psstring.h"
#include "zolcore.h"

// What both sides of a comparison are asked for.
struct zoStart {
    unsigned long long features; // as -T; 0: what zolInit chooses
    int threads;                 // as -N; 0: the library's own number
};

// The two files of a library. core may be empty for one that comes without.
struct zoLibraryFiles {
    psString vm;
    psString core;

    // From a folder that holds both, or from the path of the first. False: error says why.
    bool find(psString const& path, psString& error);

    // Those that the program is linked with, or that LD_LIBRARY_PATH has put there.
    static zoLibraryFiles linked();
};

class zoLibrary {
public:
    zoLibrary() = default;
    zoLibrary(zoLibrary const&) = delete;
    zoLibrary& operator=(zoLibrary const&) = delete;
    ~zoLibrary();

    // Loads the files. False: error holds what the loader says. Symbols are bound at once, so that
    // no call of a measurement resolves one.
    bool open(zoLibraryFiles const& files, psString& error);

    // The library that the program runs with, in the place of a copy.
    void openLinked();

    // Why open failed: not that the files are bad, but that this process can't hold the copy (name
    // spaces, static thread-local storage, a core that is not found by its name).
    bool wantsProcess() const { return m_wantsProcess; }

    void* function(char const* name) const; // null if it is not there

    // zolInit, or zolSetCpuFeatures for features of its own, and zolSetNumThreads. The first status
    // that is not 0; entries that the library lacks are passed over.
    ZolStatus start(zoStart const& wanted) const;

    // "name, version, date", as it tells of itself; unknown ones are named so.
    psString version() const;
    zoLibraryFiles const& files() const { return m_files; }
    int countFunctions() const; // of those that the program measures

private:
    void fail(psString& error); // with the loader's words

    void* m_core = nullptr; // handles of the loader
    void* m_vm = nullptr;
    zoLibraryFiles m_files;
    bool m_wantsProcess = false;
};

#endif
