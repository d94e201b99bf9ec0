// psostream.cpp - levels and filter of the message stream.
#include "psstream/psostream.h"

void psOStream::setMsgLevel(MessageLevel level) {
    levelStack.insert(levelStack.begin(), msgLevel);
    msgLevel = level;
}

void psOStream::restoreMsgLevel() {
    if (levelStack.empty()) {
        msgLevel = MSG_ERR;
        return;
    }
    msgLevel = *levelStack.begin();
    levelStack.erase(levelStack.begin());
}

bool psOStream::beginMessage(MessageLevel level) {
    if (!admits(level)) {
        return false;
    }
    setMsgLevel(level);
    return true;
}

void psOStream::endMessage() { restoreMsgLevel(); }

void psOStream::endMessageFlush() {
    restoreMsgLevel();
    flush();
}

void psOStream::write(psString const& text) {
    if (passes()) {
        for (o_stream* target : *this) {
            *target << text;
        }
    }
}

psOStream& operator<<(psOStream& out, psString const& text) {
    out.write(text);
    return out;
}

psOStream& operator<<(psOStream& out, MessageLevel level) {
    if (level == MSG_RESTORE) {
        out.endMessage();
    } else if (level == MSG_RESTORE_FLUSH) {
        out.endMessageFlush();
    } else {
        out.setMsgLevel(level);
    }
    return out;
}
