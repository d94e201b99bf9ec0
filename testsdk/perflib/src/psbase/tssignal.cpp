// tssignal.cpp - the handler, its landing place and the texts of the signals.
#include "psbase/tssignal.h"

#include <csignal>

jmp_buf tsSignal::m_jmpbuf;
int tsSignal::m_code = 0;

tsSignal _g_signal;

namespace {

struct SignalText {
    int code;
    char const* text;
};

constexpr SignalText signalTexts[] = {
    {SIGFPE, "FP error, such as overflow, division by zero, invalid operation."},
    {SIGSEGV, "Illegal storage access."},
    {SIGILL, "Illegal instruction."},
};

} // namespace

tsSignal::tsSignal() {
    for (SignalText const& row : signalTexts) {
        std::signal(row.code, sig_fpe);
    }
}

// The jump leaves the signal blocked, since no mask was saved. That is wanted: a process whose
// measured code faults the same way twice is not to be trusted any further.
void tsSignal::sig_fpe(int signal) {
    m_code = signal;
    longjmp(m_jmpbuf, -1);
}

char const* tsSignal::getInfo() {
    for (SignalText const& row : signalTexts) {
        if (row.code == m_code) {
            return row.text;
        }
    }
    return "Unknown exception";
}
