// psfilestream.cpp - opening, reading and writing of files, and lists of targets.
#include "psstream/psfilestream.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "psstream/psostream.h"

namespace {

psString keepPath(psString path) { return path; }

struct stat factsOf(int number) {
    struct stat facts = {};
    (void)fstat(number, &facts); // all zero after a failure
    return facts;
}

FILE* openToRead(char const* path, char const* letters) {
    FILE* const opened = std::fopen(path, letters);
    // A directory opens for reading, but no read of it succeeds.
    if (opened != nullptr && S_ISDIR(factsOf(fileno(opened)).st_mode)) {
        (void)std::fclose(opened);
        return nullptr;
    }
    return opened;
}

// The process that keeps others from writing to the file; 0 if that is this one now, or if there is
// no lock to be had.
int lockFile(int number) {
    struct flock lock = {}; // of the whole file
    do {
        lock.l_type = F_WRLCK;
        bool const held = fcntl(number, F_SETLK, &lock) < 0 && (errno == EACCES || errno == EAGAIN);
        if (!held || fcntl(number, F_GETLK, &lock) < 0) {
            return 0;
        }
    } while (lock.l_type == F_UNLCK); // let go in between
    return lock.l_pid;
}

FILE* openToWrite(char const* path, char const* letters, int& holder) {
    bool const append = letters[0] == 'a';
    int const number = ::open(path, O_WRONLY | O_CREAT | (append ? O_APPEND : 0), 0666);
    if (number < 0) {
        return nullptr;
    }
    if (S_ISREG(factsOf(number).st_mode)) {
        holder = lockFile(number);
        if (holder != 0 || (!append && ftruncate(number, 0) != 0)) {
            (void)::close(number);
            return nullptr;
        }
    }
    FILE* const opened = fdopen(number, letters);
    if (opened != nullptr) {
        (void)std::setvbuf(opened, nullptr, _IOLBF, BUFSIZ); // a kill leaves whole lines
    }
    return opened;
}

FILE* openFile(char const* path, int mode, int& holder) {
    bool const reading = (mode & io_stream::Read) != 0;
    if (!reading && (mode & io_stream::Write) == 0) {
        return nullptr;
    }
    psString letters = reading ? "r" : (mode & io_stream::Append) != 0 ? "a" : "w";
    if ((mode & io_stream::Binary) != 0) {
        letters += 'b';
    }
    return reading ? openToRead(path, letters.c_str()) : openToWrite(path, letters.c_str(), holder);
}

// Takes zero bytes and a newline at the end out of what was read; gives what is left.
int keepText(char* chunk, int count) {
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        if (chunk[i] != 0 && chunk[i] != '\n') {
            chunk[kept++] = chunk[i];
        }
    }
    chunk[kept] = 0;
    return kept;
}

} // namespace

psString (*io_stream::inPathHook)(psString path) = keepPath;
psString (*io_stream::outPathHook)(psString path) = keepPath;

io_stream::io_stream(psString const& name, int mode, bool report) : file(nullptr), fileName(name) {
    if (!name.empty()) {
        if ((mode & Raw) == 0) {
            fileName = (mode & Read) != 0 ? inPathHook(name) : outPathHook(name);
        }
        file = openFile(fileName.c_str(), mode, holder);
    }
    if (file == nullptr && report) {
        g_ostrm << MSG_ERR;
        if (name.empty()) {
            g_ostrm << "-- Can't open file. Wrong filename (NULL) ";
        } else {
            g_ostrm << "-- Can't open file " << fileName;
        }
        char const* const purpose = (mode & Read) != 0    ? " to read"
                                    : (mode & Write) != 0 ? " to write"
                                                          : "";
        g_ostrm << purpose << ": ";
        if (isHeld()) {
            g_ostrm << "process " << holder << " writes to it";
        } else {
            g_ostrm << getLastErrorMessage();
        }
        g_ostrm << "\n" << MSG_RESTORE;
    }
}

io_stream::io_stream(FILE* opened)
    : file(opened), fileName(opened == stdout ? "standard output" : "a file") {}

io_stream::~io_stream() { closeFile(); }

void io_stream::close() { closeFile(); }

bool io_stream::closeFile() {
    FILE* const closing = std::exchange(file, nullptr);
    // The C library closes the standard streams at exit; text that comes later, from a target
    // without a file, must not meet a closed one.
    if (closing == nullptr || closing == stdin || closing == stdout || closing == stderr) {
        return true;
    }
    return std::fclose(closing) == 0;
}

o_stream::~o_stream() { o_stream::close(); }

void o_stream::write(char const* text) {
    if (std::fputs(text, file != nullptr ? file : stdout) < 0) {
        tellFailure(file != nullptr ? fileName.c_str() : "standard output");
    }
}

void o_stream::flush() {
    if (file != nullptr && std::fflush(file) != 0) {
        tellFailure(fileName.c_str());
    }
}

void o_stream::close() {
    flush();
    if (!closeFile()) {
        tellFailure(fileName.c_str());
    }
}

// On standard error, since the message stream may be the one that failed.
void o_stream::tellFailure(char const* place) {
    char const* const reason = std::strerror(errno);
    if (!failureTold) {
        failureTold = true;
        (void)std::fprintf(stderr, "-- Can't write to %s: %s\n", place, reason);
    }
}

bool i_stream::getline(psString& line) {
    line.allocate(0);
    if (file == nullptr) {
        return false;
    }
    char chunk[512];
    constexpr int full = static_cast<int>(sizeof chunk) - 1;
    for (;;) {
        // The text may hold zero bytes. What fgets leaves alone stays a newline, so its own
        // terminator is the last zero of the chunk.
        std::memset(chunk, '\n', sizeof chunk);
        if (std::fgets(chunk, sizeof chunk, file) == nullptr) {
            return !line.empty();
        }
        auto const* const end = static_cast<char*>(memrchr(chunk, '\0', sizeof chunk));
        int const count = static_cast<int>(end - chunk);
        bool const ended = count > 0 && chunk[count - 1] == '\n';
        int const kept = keepText(chunk, count);
        line += chunk;
        if (ended) {
            return true;
        }
        // Nothing but zero bytes counts as the end: a device may give them for ever.
        if (kept == 0 && count == full) {
            return !line.empty();
        }
    }
}

o_stream& operator<<(o_stream& out, psString const& text) {
    out.write(text.c_str());
    return out;
}

psTargetList::~psTargetList() {
    close();
    for (o_stream* target : *this) {
        if (target->ownedByList) {
            delete target;
        }
    }
}

void psTargetList::flush() {
    for (o_stream* target : *this) {
        target->flush();
    }
}

void psTargetList::close() {
    for (o_stream* target : *this) {
        target->close();
    }
}

bool psTargetList::addStream(psString const& name, bool append) {
    bool isHeld = false;
    o_stream* const target = createOStream(name, append, &isHeld);
    if (target == nullptr) {
        return isHeld;
    }
    target->ownedByList = true;
    insert(end(), target);
    return true;
}

psString getLastErrorMessage() { return ""; }

o_stream* createOStream(psString const& name, bool append, bool* isHeld) {
    int const mode = io_stream::Raw | io_stream::Write | (append ? io_stream::Append : 0);
    auto* const made = new o_stream(name, mode, true);
    if (made->isOpen()) {
        return made;
    }
    if (isHeld != nullptr) {
        *isHeld = made->isHeld();
    }
    delete made;
    return nullptr;
}
