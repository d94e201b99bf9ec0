// main.cpp - the process: its session runs, and the exit code is 0 whatever came of it.
#include <cstdio>
#include <ctime>
#include <exception>

#include "ps/psregister.h"
#include "ps/pssession.h"
#include "psmemory/psmemory.h"
#include "psstream/pstrace.h"

int main(int argc, char** argv) {
    g_trace.traceIn("main");
    if (pSession == nullptr) {
        pSession = new psSession;
    }
    try {
        (void)pSession->run(argc, argv);
        (void)psFreeAll();
        g_trace.traceOut("main");
    } catch (std::exception const& failure) { // outside of any test: no memory
        (void)std::fprintf(stderr, "-- The run ends here: %s\n", failure.what());
        if (pTestList != nullptr) {
            std::time(&pTestList->m_stopTime);
            pSession->outputSignal();
        }
    }
    pSession->endOutput();
    return 0;
}
