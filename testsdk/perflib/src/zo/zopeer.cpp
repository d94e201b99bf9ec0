// zopeer.cpp - both ends of the shared memory of paired readings in two processes.
#include "zo/zopeer.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/futex.h>
#include <sched.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "pscpu/pszolentry.h"
#include "pstest/pstestlist.h"

namespace {

enum Turn : unsigned { asker = 0, server = 1 };
enum Command { nothing, hasFunction, beginOfPoint, takeReading, quit };

// Between libraries and stack on one hand, the program on the other, where nothing is put by
// itself, not by the sanitizers' allocators either.
void* const sharedAddress = reinterpret_cast<void*>(0x200000000000);
constexpr char const* memoryVariable = "PS_PEER_MEMORY"; // the descriptor's number
constexpr long patience = 100000000;                     // ns between looks at the other process
constexpr int quitPatience = 1000;                       // ms that its end is waited for

} // namespace

struct zoChannel {
    // What the second process finds at its start.
    pid_t asker;
    int console; // descriptor that is to be its standard error
    int processor;
    cpu_set_t processors; // before both stay on that one
    int priority;         // psTool::m_priority
    zoStart start;

    // What it tells of its library.
    char version[256];
    char vm[PATH_MAX]; // the files that it has loaded
    char core[PATH_MAX];
    ZolStatus status;
    int functions;

    std::atomic<unsigned> turn; // futex; what follows belongs to the one whose turn it is
    int command;
    char name[128]; // of a function
    bool isThere;   // that function
    int length;
    void* vectors[zoPeer::vectors];
    int warmUpCalls;
    int loops;
    long long clocks;
};

namespace {

constexpr size_t pageSize = 4096;
constexpr size_t headBytes = (sizeof(zoChannel) / pageSize + 1) * pageSize;
constexpr size_t sharedBytes = headBytes + zoPeer::vectors * (zoPeer::vectorBytes + pageSize);

char* vectorSpace(zoChannel* channel) { return reinterpret_cast<char*>(channel) + headBytes; }

template <int N>
void copyTo(char (&field)[N], psString const& text) {
    std::snprintf(field, N, "%s", text.c_str());
}

void* mapShared(int memory) {
    return mmap(sharedAddress, sharedBytes, PROT_READ | PROT_WRITE,
                MAP_SHARED | MAP_FIXED_NOREPLACE, memory, 0);
}

void handTurn(zoChannel* channel, Turn to) {
    channel->turn.store(to, std::memory_order_release);
    syscall(SYS_futex, &channel->turn, FUTEX_WAKE, 1, nullptr, nullptr, 0);
}

// False after the time given, if any.
bool awaitTurn(zoChannel* channel, Turn mine, timespec const* limit) {
    while (channel->turn.load(std::memory_order_acquire) != mine) {
        unsigned const other = mine == asker ? server : asker;
        if (syscall(SYS_futex, &channel->turn, FUTEX_WAIT, other, limit, nullptr, 0) != 0 &&
            errno == ETIMEDOUT) {
            return false;
        }
    }
    return true;
}

void stayOn(int processor) {
    cpu_set_t one = {};
    CPU_SET(static_cast<size_t>(processor), &one);
    (void)sched_setaffinity(0, sizeof one, &one); // refused: it goes without
}

bool isSameFile(psString const& a, psString const& b) {
    struct stat first {};
    struct stat second {};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

psString howItEnded(int status) {
    psString text;
    if (WIFSIGNALED(status)) {
        text << "killed by signal " << WTERMSIG(status) << " (" << strsignal(WTERMSIG(status))
             << ")";
    } else {
        text << "exit code " << WEXITSTATUS(status);
    }
    return text;
}

// The first line that the process wrote on its standard error before it was ready, without the
// loader's preamble.
psString firstWords(int words) {
    psString line;
    char letter = 0;
    for (off_t at = 0; pread(words, &letter, 1, at) == 1 && letter != '\n'; ++at) {
        line << letter;
    }
    psString const preamble = "error while loading shared libraries: ";
    int const found = line.find(preamble, 0);
    return found >= 0 ? line.substr(found + preamble.size()) : line;
}

// The environment of the second process: this one's, with the folder ahead in the search for
// libraries and the descriptor of the shared memory.
class Environment {
public:
    Environment(psString const& folder, int memory) : m_folder("LD_LIBRARY_PATH=" + folder) {
        char const* const old = std::getenv("LD_LIBRARY_PATH");
        if (old != nullptr) {
            m_folder = m_folder + ":" + old;
        }
        m_memory << memoryVariable << "=" << memory;
        int count = 0;
        while (environ[count] != nullptr) {
            ++count;
        }
        m_list = static_cast<char**>(malloc((static_cast<size_t>(count) + 3) * sizeof(char*)));
        char** end = m_list;
        *end++ = m_folder.c_str();
        *end++ = m_memory.c_str();
        for (char** entry = environ; *entry != nullptr; ++entry) {
            if (std::strncmp(*entry, "LD_LIBRARY_PATH=", 16) != 0) {
                *end++ = *entry;
            }
        }
        *end = nullptr;
    }
    Environment(Environment const&) = delete;
    Environment& operator=(Environment const&) = delete;
    ~Environment() { free(m_list); }
    char** list() { return m_list; }

private:
    psString m_folder;
    psString m_memory;
    char** m_list;
};

} // namespace

zoPeer::~zoPeer() {
    if (m_process != 0) {
        end();
    }
    if (m_channel != nullptr) {
        munmap(m_channel, sharedBytes);
    }
    close(m_memory); // or -1, as below: refused
}

void zoPeer::end() {
    m_channel->command = quit;
    handTurn(m_channel, server);
    timespec const pause = {0, 1000000};
    for (int i = 0; i < quitPatience && waitpid(m_process, nullptr, WNOHANG) == 0; ++i) {
        nanosleep(&pause, nullptr);
    }
    m_process = 0;
}

bool zoPeer::open(zoLibraryFiles const& baseline, zoStart const& start) {
    m_files = baseline;
    m_start = start;
    return share() && launch();
}

// The descriptor is inherited.
bool zoPeer::share() {
    m_memory = memfd_create("ps_peer", 0);
    if (m_memory < 0 || ftruncate(m_memory, static_cast<off_t>(sharedBytes)) != 0) {
        m_lastWords = psString("no shared memory: ") + strerror(errno);
        return false;
    }
    void* const place = mapShared(m_memory);
    if (place != sharedAddress) {
        m_lastWords = psString("no place for the shared memory: ") + strerror(errno);
        return false;
    }
    m_channel = new (place) zoChannel{};
    m_channel->asker = getpid();
    m_channel->processor = sched_getcpu();
    (void)sched_getaffinity(0, sizeof m_channel->processors, &m_channel->processors);
    m_channel->priority = psTool::m_priority;
    m_channel->start = m_start;
    return true;
}

bool zoPeer::launch() {
    int const words = memfd_create("ps_peer_words", MFD_CLOEXEC);
    // Threads of its library shall find the processors that those of this one have found.
    (void)sched_setaffinity(0, sizeof m_channel->processors, &m_channel->processors);
    bool good = spawn(words);
    stayOn(m_channel->processor);
    if (good && !awaitAnswer()) {
        good = false;
        psString const told = firstWords(words);
        m_lastWords = "its process ended: " + (told.empty() ? m_lastWords : told);
    }
    close(words);
    if (good && !isTheBaseline()) {
        end();
        good = false;
    }
    return good;
}

bool zoPeer::spawn(int words) {
    char* arguments[] = {program_invocation_name, nullptr};
    Environment environment(m_files.vm.getFileDir(), m_memory);
    m_channel->console = dup(STDERR_FILENO);
    m_channel->turn = server;

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, words, STDERR_FILENO);
    int const failure =
        posix_spawn(&m_process, "/proc/self/exe", &actions, nullptr, arguments, environment.list());
    posix_spawn_file_actions_destroy(&actions);
    close(m_channel->console);
    if (failure != 0) {
        m_process = 0;
        m_lastWords = psString("no second process: ") + strerror(failure);
        return false;
    }
    return true;
}

// The loader goes on to the next folder, and says nothing, where a file is of another architecture
// or has another name than the program asks for.
bool zoPeer::isTheBaseline() {
    if (m_channel->functions == 0) {
        m_lastWords = m_files.vm + " holds none of the measured functions";
        return false;
    }
    bool const isVm = isSameFile(m_files.vm, m_channel->vm);
    if (!isVm || !isSameFile(m_files.core, m_channel->core)) {
        m_lastWords = "the loader passed over " + (isVm ? m_files.core : m_files.vm) +
                      " and took " + (isVm ? m_channel->core : m_channel->vm);
        return false;
    }
    return true;
}

psString zoPeer::version() const { return m_channel->version; }

ZolStatus zoPeer::status() const { return m_channel->status; }

bool zoPeer::has(char const* name) {
    copyTo(m_channel->name, name);
    return !isThere() || !ask(hasFunction) || m_channel->isThere;
}

// Placed as malloc places mappings of its own: one below the other, 16 bytes into a page, so that
// the vectors lie to each other as they do without a second process.
void* zoPeer::vector(int index, size_t bytes) {
    if (bytes > vectorBytes) {
        return nullptr;
    }
    if (index == 0) {
        constexpr size_t space = sharedBytes - headBytes;
        (void)madvise(vectorSpace(m_channel), space, MADV_REMOVE);
        m_vectorsEnd = vectorSpace(m_channel) + space;
    }
    constexpr size_t offset = 16;
    m_vectorsEnd -= (offset + bytes + pageSize - 1) / pageSize * pageSize;
    m_channel->vectors[index] = m_vectorsEnd + offset;
    return m_channel->vectors[index];
}

bool zoPeer::beginPoint(char const* name, int length) {
    copyTo(m_channel->name, name);
    m_channel->length = length;
    return isThere() && ask(beginOfPoint);
}

bool zoPeer::read(int warmUpCalls, int loops, long long* clocks) {
    m_channel->warmUpCalls = warmUpCalls;
    m_channel->loops = loops;
    bool const answered = ask(takeReading);
    *clocks = m_channel->clocks;
    return answered;
}

void zoPeer::giveWay() {
    if (!m_gaveWay) {
        (void)ask(nothing);
    }
    m_gaveWay = false;
}

bool zoPeer::isThere() { return m_process != 0 || launch(); }

bool zoPeer::ask(int command) {
    if (m_process == 0) {
        return false;
    }
    m_gaveWay = true;
    m_channel->command = command;
    handTurn(m_channel, server);
    return awaitAnswer();
}

bool zoPeer::awaitAnswer() {
    timespec const limit = {0, patience};
    while (!awaitTurn(m_channel, asker, &limit)) {
        int status = 0;
        if (waitpid(m_process, &status, WNOHANG) != 0) {
            m_process = 0;
            m_lastWords = howItEnded(status);
            return false;
        }
    }
    return true;
}

void (*zoPeerPoint)(void* const vectors[zoPeer::vectors], int length) = [](void* const*, int) {};

namespace {

// The second process's turns: a reading is handed back, and the timing function stands still
// until the next is asked for.
class Server : public psTurns {
public:
    explicit Server(zoChannel* channel) : m_channel(channel) {}
    void start();
    void serve();

    int warmUpCalls() override { return m_inSeries ? m_channel->warmUpCalls : 0; }
    bool next(long long clocks) override;

private:
    void awaitCommand();
    void answer();
    bool isReading() const { return m_channel->command == takeReading; }
    bool runSeries();

    zoChannel* m_channel;
    zoLibrary m_library;
    psTest* m_test = nullptr; // of the point
    int m_loops = 0;          // of the series
    bool m_inSeries = false;
};

void Server::start() {
    m_library.openLinked();
    m_channel->status = m_library.start(m_channel->start);
    m_channel->functions = m_library.countFunctions();
    copyTo(m_channel->version, m_library.version());
    copyTo(m_channel->vm, m_library.files().vm);
    copyTo(m_channel->core, m_library.files().core);
    psTool::m_priority = m_channel->priority;
    stayOn(m_channel->processor);
    // A fault of measured code ends this process, and the other one tells of it.
    for (int const fault : {SIGFPE, SIGSEGV, SIGILL}) {
        std::signal(fault, SIG_DFL);
    }
    dup2(m_channel->console, STDERR_FILENO);
    close(m_channel->console);
    g_turns = this;
}

void Server::serve() {
    for (;;) {
        awaitCommand();
        // A series goes on until something else is asked for, which is then there.
        while (isReading() && runSeries()) {
        }
        if (m_channel->command == quit) {
            return;
        }
        answer();
    }
}

void Server::awaitCommand() {
    handTurn(m_channel, asker);
    (void)awaitTurn(m_channel, server, nullptr);
}

void Server::answer() {
    switch (m_channel->command) {
    case hasFunction:
        m_channel->isThere = m_library.function(m_channel->name) != nullptr;
        break;
    case beginOfPoint:
        m_test = nullptr;
        for (psTest* test : *pTestList) {
            if (test->m_funcName == m_channel->name) {
                m_test = test;
            }
        }
        zoPeerPoint(m_channel->vectors, m_channel->length);
        break;
    default:
        m_channel->clocks = 0; // asked for a reading, and nothing takes one
    }
}

// False: the timing function took no reading.
bool Server::runSeries() {
    m_loops = m_channel->loops;
    m_inSeries = true;
    if (m_test != nullptr) {
        m_test->m_tool.takeTurns(m_test->m_funcOld, m_loops);
    }
    bool const hasRead = !m_inSeries;
    m_inSeries = false;
    return hasRead;
}

bool Server::next(long long clocks) {
    if (!m_inSeries) { // the tool has called once more for a reading without clocks
        return false;
    }
    m_channel->clocks = clocks;
    do {
        awaitCommand();
    } while (m_channel->command == nothing);
    m_inSeries = isReading() && m_channel->loops == m_loops;
    return m_inSeries;
}

} // namespace

bool zoServePeer() {
    char const* const descriptor = std::getenv(memoryVariable);
    if (descriptor == nullptr) {
        return false;
    }
    int const memory = std::atoi(descriptor);
    (void)unsetenv(memoryVariable); // not for processes of the library's own
    void* const place = mapShared(memory);
    if (place != sharedAddress) {
        perror("shared memory");
        std::exit(EXIT_FAILURE);
    }
    auto* const channel = static_cast<zoChannel*>(place);
    // No one stays behind, whatever becomes of the other.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != channel->asker) {
        return true;
    }
    Server server(channel);
    server.start();
    server.serve();
    g_turns = nullptr;
    return true;
}
