// psostream.h - the message stream: text for the console and the text files, filtered
// by the level of each message against the levels that the user wants.
#ifndef PSSTREAM_PSOSTREAM_H
#define PSSTREAM_PSOSTREAM_H

#include "psstream/psfilestream.h"

// A bit value. The two below zero are no levels: they end a message.
enum MessageLevel : int {
    MSG_ERR = 1,
    MSG_WARN = 2,
    MSG_PERF = 4,
    MSG_INFO = 8,
    MSG_TRACE = 16,
    MSG_MEMORY = 32,
    MSG_DATA = 64,
    MSG_RESTORE = -10,
    MSG_RESTORE_FLUSH = -11
};

using OutputLevel = int; // a union of MessageLevel bits

// While keys, questions and headers are shown, whatever the user wants to see of the tests.
constexpr OutputLevel dialogueLevel = MSG_ERR | MSG_WARN | MSG_PERF;

// Text at a level, written to all targets if the level is wanted.
class psOStream : public psTargetList {
public:
    psOStream() : outLevel(MSG_ERR), msgLevel(MSG_PERF) {}

    void setOutLevel(OutputLevel level) { outLevel = level; }
    OutputLevel getOutLevel() const { return outLevel; }
    MessageLevel getMsgLevel() const { return msgLevel; }

    void setMsgLevel(MessageLevel level); // saves the present level
    void restoreMsgLevel();               // 1 when no level was saved

    // Whether outLevel is numerically not less than level. This is another test than the bit test
    // of the output operator, on purpose.
    bool admits(MessageLevel level) const { return outLevel >= level; }
    bool beginMessage(MessageLevel level); // sets the level where it is admitted, and answers that
    void endMessage();
    void endMessageFlush();

    // Whether text written now would pass.
    bool passes() const { return (msgLevel & outLevel) != 0; }
    void write(psString const& text); // to each target if it passes

protected:
    psOStream(OutputLevel out, MessageLevel message) : outLevel(out), msgLevel(message) {}

private:
    OutputLevel outLevel;
    MessageLevel msgLevel;
    psList<MessageLevel> levelStack; // saved levels, most recent first
};

// The summary stream: everything written to it passes.
class psUStream : public psOStream {
public:
    psUStream() : psOStream(MSG_ERR, MSG_ERR) {}
};

psOStream& operator<<(psOStream& out, psString const& text);
psOStream& operator<<(psOStream& out, MessageLevel level);

// A value goes through its conversion to text.
template <typename T>
psOStream& tsOutTpl(psOStream& out, T value) {
    if (out.passes()) {
        psString text;
        text << value;
        out.write(text);
    }
    return out;
}
inline psOStream& operator<<(psOStream& out, char const* value) { return tsOutTpl(out, value); }
inline psOStream& operator<<(psOStream& out, int value) { return tsOutTpl(out, value); }
inline psOStream& operator<<(psOStream& out, unsigned value) { return tsOutTpl(out, value); }
inline psOStream& operator<<(psOStream& out, char value) { return tsOutTpl(out, value); }
inline psOStream& operator<<(psOStream& out, double value) { return tsOutTpl(out, value); }
inline psOStream& operator<<(psOStream& out, long long value) { return tsOutTpl(out, value); }
inline psOStream& operator<<(psOStream& out, unsigned long long value) {
    return tsOutTpl(out, value);
}
inline psOStream& operator<<(psOStream& out, void const* value) { return tsOutTpl(out, value); }

extern psOStream g_ostrm; // console and text copy of it
extern psUStream g_ustrm; // summary files

#endif
