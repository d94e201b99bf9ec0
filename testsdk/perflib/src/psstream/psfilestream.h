// psfilestream.h - the thin file classes under every stream. A file is open from
// construction to destruction; a failure to open leaves a null file.
#ifndef PSSTREAM_PSFILESTREAM_H
#define PSSTREAM_PSFILESTREAM_H

#include "psbase/psstring.h"
#include <cstdio>

// A file for reading or writing, and how it came to be open.
class io_stream {
public:
    // Bits of the mode. Read goes before Write.
    enum Mode { Read = 1, Write = 2, Append = 4, Binary = 8, Raw = 256 };

    // Opens the file, at the place that the path hooks give unless Raw is set. An empty name opens
    // nothing. With report, a failure is told through g_ostrm at the error level. A file for
    // writing is locked against other processes until it is closed, and emptied only then; its text
    // reaches the disk line by line.
    io_stream(psString const& name, int mode, bool report);
    explicit io_stream(FILE* opened); // takes the file over
    io_stream(io_stream const&) = delete;
    io_stream& operator=(io_stream const&) = delete;
    virtual ~io_stream();

    bool isOpen() const { return file != nullptr; }
    bool isHeld() const { return holder != 0; } // not opened: another process writes to it
    virtual void close(); // does nothing when it is closed; a standard stream is only let go

    FILE* file;

    // Place a relative name in the session's directories. The session sets them; until then a
    // name is used as it stands.
    static psString (*inPathHook)(psString path);
    static psString (*outPathHook)(psString path);

protected:
    bool closeFile(); // false when the last bytes could not be written

    psString fileName; // the path that was opened, for messages

private:
    int holder = 0; // the process that has the file's lock
};

// A file that text is written to.
class o_stream : public io_stream {
public:
    using io_stream::io_stream;
    ~o_stream() override;

    // Writes the text, to standard output when no file is open. The first failure (a full disk, a
    // closed pipe) of write, flush or close is told on standard error; later ones are silent.
    void write(char const* text);
    void flush();
    void close() override;

    void tellFailure(char const* place); // what errno says, the first time

    bool ownedByList = false; // made by addStream: the list that it stands in frees it

private:
    bool failureTold = false;
};

// A file that is read line by line.
class i_stream : public io_stream {
public:
    using io_stream::io_stream;

    // Reads one line of any length without its newline. False at the end of the file with nothing
    // read, and at once when no file is open. A carriage return is kept.
    bool getline(psString& line);
};

o_stream& operator<<(o_stream& out, psString const& text);

// The targets of an output stream, written in order.
class psTargetList : public psList<o_stream*> {
public:
    psTargetList() = default;
    psTargetList(psTargetList const&) = delete;
    psTargetList& operator=(psTargetList const&) = delete;
    ~psTargetList() override; // closes all targets, frees those made by addStream

    void flush();
    void close(); // the targets stay in the list

    // Opens a file as a further target; false, told, if it can't be opened. One that another
    // process writes to is left out, told, and that is no failure.
    bool addStream(psString const& name, bool append);
};

// Text of the platform's last error; empty here. The place for a platform's own text.
psString getLastErrorMessage();

// A target for a stream, on the heap and owned by the caller; null, told, if it can't be opened,
// and then isHeld, if given, says whether another process writes to it.
o_stream* createOStream(psString const& name, bool append, bool* isHeld = nullptr);

extern i_stream c_in;  // standard input
extern o_stream c_out; // standard output

#endif
