// psreplacefile.cpp - the ways to replace a file, from the safest on.
#include "psstream/psreplacefile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "psstream/psfilestream.h"

namespace {

enum class Outcome { Done, Failed, Impossible };

bool isAbsent(char const* path) {
    struct stat facts = {};
    return lstat(path, &facts) < 0 && errno == ENOENT;
}

// Mode and owner of a file that is made anew.
struct stat factsOfNewFile() {
    struct stat facts = {};
    facts.st_uid = static_cast<uid_t>(-1); // this process's, as of any file that it makes
    facts.st_gid = static_cast<gid_t>(-1);
    mode_t const withheld = umask(0);
    (void)umask(withheld);
    facts.st_mode = 0666U & ~withheld;
    return facts;
}

bool writeAll(int number, psString const& text) {
    char const* rest = text.c_str();
    auto left = static_cast<std::size_t>(text.size());
    while (left > 0) {
        ssize_t const count = ::write(number, rest, left);
        if (count < 0) {
            return false;
        }
        rest += count;
        left -= static_cast<std::size_t>(count);
    }
    return true;
}

Outcome replaceByNeighbour(char const* path, struct stat const& facts, psString const& text) {
    psString neighbour = psString(path) + ".XXXXXX";
    int const number = mkostemp(neighbour.c_str(), O_CLOEXEC);
    if (number < 0) {
        return Outcome::Impossible;
    }
    bool const alike = fchown(number, facts.st_uid, facts.st_gid) == 0 &&
                       fchmod(number, facts.st_mode & 07777U) == 0;
    bool const written = alike && writeAll(number, text) && fsync(number) == 0;
    bool const closed = ::close(number) == 0;
    if (written && closed && std::rename(neighbour.c_str(), path) == 0) {
        return Outcome::Done;
    }
    (void)unlink(neighbour.c_str());
    return alike && !written ? Outcome::Failed : Outcome::Impossible;
}

// What follows once the room is there fails with the disk alone. Until the new text covers them,
// the added bytes are zeros, which no reader of ours sees.
Outcome rewrite(int number, struct stat const& facts, psString const& text) {
    (void)fcntl(number, F_SETFL, 0); // it was opened to append
    int reason = text.empty() ? 0 : posix_fallocate(number, 0, text.size());
    if (reason != 0) {
        (void)ftruncate(number, facts.st_size);
    } else if (!writeAll(number, text) || ftruncate(number, text.size()) != 0 ||
               fsync(number) != 0) {
        reason = errno;
    }
    errno = reason;
    return reason == 0 ? Outcome::Done : Outcome::Failed;
}

} // namespace

bool psReplaceFile(psString const& path, psString const& text) {
    if (isAbsent(path.c_str())) {
        Outcome const made = replaceByNeighbour(path.c_str(), factsOfNewFile(), text);
        if (made == Outcome::Failed) {
            o_stream(static_cast<FILE*>(nullptr)).tellFailure(path.c_str());
        }
        if (made != Outcome::Impossible) {
            return made == Outcome::Done;
        }
    }
    // Opened as every output is: what can't be written to is told.
    o_stream present(path, io_stream::Raw | io_stream::Write | io_stream::Append, true);
    if (!present.isOpen()) {
        return false;
    }
    struct stat facts = {};
    if (fstat(fileno(present.file), &facts) == 0 && !S_ISREG(facts.st_mode)) {
        present << text; // a device
        return true;
    }
    char* const target = realpath(path.c_str(), nullptr);
    Outcome outcome =
        target != nullptr ? replaceByNeighbour(target, facts, text) : Outcome::Impossible;
    if (outcome == Outcome::Impossible) {
        outcome = rewrite(fileno(present.file), facts, text);
    }
    if (outcome != Outcome::Done) {
        present.tellFailure(path.c_str());
    }
    std::free(target);
    return outcome == Outcome::Done;
}
