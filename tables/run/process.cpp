// process.cpp - one child process and its lines.
#include "run/process.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "core/failure.h"

extern char** environ;

namespace tables {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int glance = 200; // milliseconds between looks at what ends a process
volatile std::sig_atomic_t g_interrupted = 0;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// The child, in a group of its own, its outputs in a pipe.
class Child {
public:
    explicit Child(std::vector<std::string> const& words);
    Child(Child const&) = delete;
    Child& operator=(Child const&) = delete;
    ~Child() { (void)::close(m_output); }

    // What it has printed since, at most after a glance; false at the end of its output.
    bool read(std::string& text);
    bool ended() { return m_ended || (m_ended = ::waitpid(m_process, &m_status, WNOHANG) > 0); }
    void end(int signal) const { (void)::kill(-m_process, signal); }
    int status() const { return m_status; }

private:
    int m_output = -1;
    pid_t m_process = 0;
    int m_status = 0;
    bool m_ended = false;
};

Child::Child(std::vector<std::string> const& words) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw Failure(std::string("pipe: ") + std::strerror(errno));
    }
    m_output = ends[0];
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string const& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    int const error =
        ::posix_spawnp(&m_process, arguments[0], &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    (void)::close(ends[1]);
    if (error != 0) {
        (void)::close(m_output);
        throw Failure(words[0] + ": " + std::strerror(error));
    }
}

bool Child::read(std::string& text) {
    pollfd about{m_output, POLLIN, 0};
    // Its grandchildren may hold the pipe open: when it has ended, only what is there is taken.
    int const ready = ::poll(&about, 1, ended() ? 0 : glance);
    if (ready <= 0) {
        return !m_ended;
    }
    char bytes[1 << 14];
    ssize_t const count = ::read(m_output, bytes, sizeof bytes);
    text.append(bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return count > 0 || (count < 0 && errno == EINTR);
}

} // namespace

Ended runProcess(std::vector<std::string> const& words,
                 std::function<void(std::string_view line)> const& onLine, double silenceLimit,
                 double grace) {
    Child child(words);
    Ended ended;
    std::string text;
    Clock::time_point lastLine = Clock::now();
    Clock::time_point asked{}; // to end
    int sent = 0;
    bool open = true;
    while (open || !child.ended()) {
        if (open) {
            open = child.read(text);
        } else {
            ::usleep(1000 * glance / 20);
        }
        for (std::size_t end; (end = text.find('\n')) != std::string::npos;
             text.erase(0, end + 1)) {
            onLine(std::string_view(text).substr(0, end));
            lastLine = Clock::now();
        }
        ended.interrupted = ended.interrupted || (interrupted() && !ended.silent);
        ended.silent =
            ended.silent || (!ended.interrupted && secondsSince(lastLine) > silenceLimit);
        if ((ended.interrupted || ended.silent) && sent == 0) {
            child.end(sent = SIGTERM);
            asked = Clock::now();
        }
        if (sent == SIGTERM && secondsSince(asked) > grace) {
            child.end(sent = SIGKILL);
        }
    }
    child.end(SIGKILL); // what it left behind
    int const status = child.status();
    ended.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    ended.code = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    if (ended.code > 128) { // a shell, or what launches on another machine, tells it so
        ended.signal = std::exchange(ended.code, 0) - 128;
    }
    return ended;
}

void noteInterrupts() {
    struct sigaction action {};
    action.sa_handler = [](int) { g_interrupted = 1; };
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
        (void)::sigaction(signal, &action, nullptr);
    }
}

bool interrupted() { return g_interrupted != 0; }

} // namespace tables
