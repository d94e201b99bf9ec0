// tssignal.h - turns the fault signals of measured code into a jump back to the
// harness. There is one landing place at a time: guards do not nest.
#ifndef PSBASE_TSSIGNAL_H
#define PSBASE_TSSIGNAL_H

#include <csetjmp>

class tsSignal {
public:
    tsSignal(); // installs the handler for floating-point, illegal-instruction and storage faults

    // Handler: stores the signal and jumps to m_jmpbuf. The mask is not saved, so a second fault
    // of the same signal ends the process.
    static void sig_fpe(int signal);

    static int code() { return m_code; }
    static char const* getInfo(); // text of the signal last caught

    static jmp_buf m_jmpbuf; // filled by setjmp at the landing place
    static int m_code;       // signal number last caught
};

extern tsSignal _g_signal;

#endif
