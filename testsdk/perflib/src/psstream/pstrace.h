// pstrace.h - call trace at the trace level: one line on entry and one on leaving, and
// the stack of open calls, mended when a call was left by a jump.
#ifndef PSSTREAM_PSTRACE_H
#define PSSTREAM_PSTRACE_H

#include "psbase/psstring.h"

// The open calls, innermost first.
class psTrace : public psList<psString> {
public:
    void traceIn(psString const& name);
    void traceOut(psString const& name); // also closes what stands open above name
    psString getCurName() const;         // the innermost open call, empty if none
    void flush();

    // The stack of open names and the indent that goes with it, as a whole.
    struct State {
        psList<psString> names;
        psString indent;
    };
    State saveState() const;
    void restoreState(State const& state);
    void clearState();

private:
    void put(char const* verb, psString const& name);

    psString log;    // every line ever written
    psString indent; // one "*" for each open call
};

extern psTrace g_trace;

#endif
