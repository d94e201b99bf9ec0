// psfilestream.cpp - opening, reading and writing of files, and lists of targets.
#include "psstream/psfilestream.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <utility>

#include "psstream/psostream.h"

namespace {

psString keepPath(psString path) { return path; }

FILE* openFile(char const* path, int mode) {
    bool const reading = (mode & io_stream::Read) != 0;
    psString letters;
    if (reading) {
        letters += 'r';
    } else if ((mode & io_stream::Write) != 0) {
        letters += (mode & io_stream::Append) != 0 ? 'a' : 'w';
    } else {
        return nullptr;
    }
    if ((mode & io_stream::Binary) != 0) {
        letters += 'b';
    }
    FILE* const opened = std::fopen(path, letters.c_str());
    // A directory opens for reading, but no read of it succeeds.
    struct stat facts = {};
    if (opened != nullptr && reading && fstat(fileno(opened), &facts) == 0 &&
        S_ISDIR(facts.st_mode)) {
        (void)std::fclose(opened);
        return nullptr;
    }
    return opened;
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
        file = openFile(fileName.c_str(), mode);
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
        g_ostrm << purpose << ": " << getLastErrorMessage() << "\n" << MSG_RESTORE;
    }
}

io_stream::io_stream(FILE* opened)
    : file(opened), fileName(opened == stdin    ? "standard input"
                             : opened == stdout ? "standard output"
                                                : "a file") {}

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
        int count = full;
        while (chunk[count] != 0) {
            --count;
        }
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
    o_stream* const target = createOStream(name, append);
    if (target == nullptr) {
        return false;
    }
    target->ownedByList = true;
    insert(end(), target);
    return true;
}

psString getLastErrorMessage() { return ""; }

o_stream* createOStream(psString const& name, bool append) {
    int const mode = io_stream::Raw | io_stream::Write | (append ? io_stream::Append : 0);
    auto* const made = new o_stream(name, mode, true);
    if (made->isOpen()) {
        return made;
    }
    delete made;
    return nullptr;
}
