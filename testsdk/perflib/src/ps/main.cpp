// main.cpp - the process: its session runs, and the exit code is 0 whatever came of it.
#include "ps/psregister.h"
#include "ps/pssession.h"
#include "psmemory/psmemory.h"
#include "psstream/pstrace.h"

int main(int argc, char** argv) {
    g_trace.traceIn("main");
    if (pSession == nullptr) {
        pSession = new psSession;
    }
    (void)pSession->run(argc, argv);
    (void)psFreeAll();
    g_trace.traceOut("main");
    return 0;
}
