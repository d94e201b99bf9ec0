// pstrace.cpp - lines and stack of the call trace.
#include "psstream/pstrace.h"

#include "psstream/psostream.h"

void psTrace::traceIn(psString const& name) {
    indent += '*';
    put(" trace into   ", name);
    insert(begin(), name);
}

void psTrace::traceOut(psString const& name) {
    put(" trace out of ", name);
    int closed = 0;
    bool found = false;
    auto place = begin();
    while (place != end() && !found) {
        found = *place == name;
        ++place;
        ++closed;
    }
    indent = indent.substr(0, indent.size() - closed);
    if (found) {
        erase(begin(), place);
    }
}

psString psTrace::getCurName() const { return empty() ? psString() : *begin(); }

void psTrace::flush() {
    if (g_ostrm.getMsgLevel() <= g_ostrm.getOutLevel()) {
        g_ostrm.flush();
    }
}

psTrace::State psTrace::saveState() const { return {*this, indent}; }

void psTrace::restoreState(State const& state) {
    psList<psString>::operator=(state.names);
    indent = state.indent;
}

void psTrace::clearState() {
    clear();
    indent.allocate(0);
}

// The line is put together in the log itself and copied out of it only when it is wanted.
void psTrace::put(char const* verb, psString const& name) {
    int const lineStart = log.size();
    log << indent << "*****" << verb << name << "\n";
    g_ostrm.setMsgLevel(MSG_TRACE);
    if (g_ostrm.passes()) {
        g_ostrm << log.substr(lineStart);
    }
    flush();
    g_ostrm.restoreMsgLevel();
}
