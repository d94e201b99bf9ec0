// files.cpp - files read whole and replaced whole.
#include "run/files.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "core/failure.h"

namespace tables {

namespace {

[[noreturn]] void failWith(std::string const& path, int error) {
    throw Failure(path + ": " + std::strerror(error));
}

class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() { (void)close(); }

    int number() const { return m_number; }
    int close() { return m_number < 0 ? 0 : ::close(std::exchange(m_number, -1)); }

private:
    int m_number;
};

// Error number, or 0.
int writeWhole(std::string const& path, std::string_view content) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (file.number() < 0) {
        return errno;
    }
    while (!content.empty()) {
        ssize_t const written = ::write(file.number(), content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        content.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    bool const kept = ::fsync(file.number()) == 0 || errno == EINVAL; // a pipe has no disk
    return kept && file.close() == 0 ? 0 : errno;
}

} // namespace

std::string readFile(std::string const& path) {
    Descriptor const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat about {};
    if (file.number() < 0 || ::fstat(file.number(), &about) != 0) {
        failWith(path, errno);
    }
    std::string content(static_cast<std::size_t>(about.st_size), '\0');
    std::size_t size = 0;
    while (true) { // what grows, and pipes, have no size ahead
        if (size == content.size()) {
            content.resize(size + (1 << 16));
        }
        ssize_t const count = ::read(file.number(), &content[size], content.size() - size);
        if (count < 0 && errno != EINTR) {
            failWith(path, errno);
        }
        if (count == 0) {
            content.resize(size);
            return content;
        }
        size += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
}

void replaceFile(std::string const& path, std::string const& content) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {
        // A folder is refused, what is no file on a disk (a pipe, a device) can't be renamed over.
        int const error = fs::is_directory(path, ignored) ? EISDIR : writeWhole(path, content);
        return error == 0 ? void() : failWith(path, error);
    }
    // Other machines may write beside it, too.
    std::string const beside =
        path + ".new" + std::to_string(::getpid()) + '.' +
        std::to_string(std::chrono::system_clock::now().time_since_epoch().count());
    int error = writeWhole(beside, content);
    if (error == 0 && ::rename(beside.c_str(), path.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        (void)::unlink(beside.c_str());
        failWith(path, error);
    }
}

Passes readTables(std::vector<std::string> const& paths) {
    Passes passes;
    for (std::string const& path : paths) {
        readPasses(passes, readFile(path), path);
    }
    return passes;
}

void refuseOverwriting(std::string const& output, std::vector<std::string> const& inputs) {
    for (std::string const& input : inputs) {
        std::error_code ignored;
        if (std::filesystem::equivalent(output, input, ignored)) {
            throw Failure(output + ": is one of the inputs");
        }
    }
}

} // namespace tables
