// ours.cpp - the program as it is, but for the estimate of the processor's frequency, which
// waits for whole seconds of the wall clock and turns clocks into microseconds only.
#include "ps/psregister.h"
#include "ps/pssession.h"
#include "pscpu/pscputicker.h"

int main(int argc, char** argv) {
    psCpuTicker::m_freqMHz = 1000;
    pSession->run(argc, argv);
    return 0;
}
