// zolibrary.cpp - loading a copy of the measured library.
#include "zo/zolibrary.h"

#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include "pstest/pstestlist.h"

namespace {

constexpr char const* vmName = "libzolvm.so";
constexpr char const* coreName = "libzolcore.so";

bool isFolder(psString const& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isThere(psString const& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

// The file that holds a symbol of the library the program runs with; empty if there is none.
psString fileOf(char const* symbol) {
    void* const place = dlsym(RTLD_DEFAULT, symbol);
    Dl_info info;
    if (place == nullptr || dladdr(place, &info) == 0 || info.dli_fname == nullptr) {
        return "";
    }
    char* const real = realpath(info.dli_fname, nullptr);
    psString const path = real != nullptr ? real : info.dli_fname;
    free(real);
    return path;
}

// A file with the core's name in the name space of a handle, that of the handle itself left out;
// empty if there is none.
psString coreBeside(void* handle) {
    link_map* own = nullptr;
    if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &own) != 0) {
        return "";
    }
    link_map const* object = own;
    while (object->l_prev != nullptr) {
        object = object->l_prev;
    }
    for (; object != nullptr; object = object->l_next) {
        if (object != own && psString(object->l_name).getFileName() == psString(coreName)) {
            return object->l_name;
        }
    }
    return "";
}

} // namespace

bool zoLibraryFiles::find(psString const& path, psString& error) {
    bool const folder = isFolder(path);
    // With a slash in any case: the loader takes a bare name for one to be looked for.
    psString const place = folder                      ? path + "/"
                           : path.getFileDir().empty() ? psString("./")
                                                       : path.getFileDir();
    vm = place + (folder ? psString(vmName) : path.getFileName());
    core = place + coreName;
    for (psString const* file : {&vm, &core}) {
        if (!isThere(*file)) {
            error = *file + " is not there";
            return false;
        }
    }
    return true;
}

zoLibraryFiles zoLibraryFiles::linked() {
    zoLibraryFiles files;
    files.vm = fileOf("zolvmGetLibVersion");
    for (psTest* test : *pTestList) {
        if (!files.vm.empty()) {
            break;
        }
        files.vm = fileOf(test->m_funcName.c_str());
    }
    // By its name: it is there even where it has nothing that a library must have.
    void* const program = dlopen(nullptr, RTLD_NOW);
    files.core = coreBeside(program);
    dlclose(program);
    if (files.core.empty()) {
        files.core = fileOf("zolInit");
    }
    return files;
}

zoLibrary::~zoLibrary() {
    if (m_vm != nullptr) {
        dlclose(m_vm);
    }
    if (m_core != nullptr) {
        dlclose(m_core);
    }
}

// The core first: the other file then finds it in its own name space, by its name, and looks for
// none in the loader's folders, where the other side's lies.
bool zoLibrary::open(zoLibraryFiles const& files, psString& error) {
    m_files = files;
    Lmid_t space = LM_ID_NEWLM;
    if (!files.core.empty()) {
        m_core = dlmopen(space, files.core.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (m_core == nullptr || dlinfo(m_core, RTLD_DI_LMID, &space) != 0) {
            fail(error);
            return false;
        }
    }
    m_vm = dlmopen(space, files.vm.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_vm == nullptr) {
        fail(error);
        return false;
    }
    // A core without a name in itself is not known by its name, and the other file's need of it
    // leads into the loader's folders.
    psString const other = coreBeside(m_core);
    if (!other.empty()) {
        error = files.vm + " finds " + other + " instead of " + files.core;
        m_wantsProcess = true;
        return false;
    }
    return true;
}

// The program's own name space is searched in the order of loading, as its references were.
void zoLibrary::openLinked() {
    m_files = zoLibraryFiles::linked();
    m_vm = dlopen(nullptr, RTLD_NOW);
}

void zoLibrary::fail(psString& error) {
    char const* const text = dlerror();
    error = text != nullptr ? text : "unknown error of the loader";
    m_wantsProcess = error.contains("static TLS") || error.contains("namespace");
}

void* zoLibrary::function(char const* name) const {
    void* const found = dlsym(m_vm, name);
    return found != nullptr || m_core == nullptr ? found : dlsym(m_core, name);
}

ZolStatus zoLibrary::start(zoStart const& wanted) const {
    auto const init = reinterpret_cast<ZolStatus (*)()>(function("zolInit"));
    auto const setFeatures = reinterpret_cast<ZolStatus (*)(Zol64u)>(function("zolSetCpuFeatures"));
    auto const setThreads = reinterpret_cast<ZolStatus (*)(int)>(function("zolSetNumThreads"));
    ZolStatus status = zolStsNoErr;
    if (wanted.features != 0 && setFeatures != nullptr) {
        status = setFeatures(wanted.features);
    }
    if (init != nullptr && (wanted.features == 0 || status < 0)) {
        ZolStatus const started = init();
        status = status != zolStsNoErr ? status : started;
    }
    if (wanted.threads > 0 && setThreads != nullptr) {
        ZolStatus const threaded = setThreads(wanted.threads);
        status = status != zolStsNoErr ? status : threaded;
    }
    return status;
}

psString zoLibrary::version() const {
    auto const tell =
        reinterpret_cast<ZolLibraryVersion const* (*)()>(function("zolvmGetLibVersion"));
    ZolLibraryVersion const* const told = tell != nullptr ? tell() : nullptr;
    if (told == nullptr) {
        return "libzolvm, unknown version, unknown date";
    }
    return psString(told->name) + ", " + told->version + ", " + told->buildDate;
}

int zoLibrary::countFunctions() const {
    int count = 0;
    for (psTest* test : *pTestList) {
        count += function(test->m_funcName.c_str()) != nullptr ? 1 : 0;
    }
    return count;
}
