// zosession.cpp - the session of a program with library tests.
#include "zo/zosession.h"

#include "zo/zopeer.h"
#include "zo/zosides.h"

int zoSession::run(int argc, char** argv) { return zoServePeer() ? 0 : psSession::run(argc, argv); }

void zoSession::funcTitleToCStream() {
    g_cstrm << "funcBase"
            << "funcDataType"
            << "funcDescriptor";
}

bool zoSession::startComparison() {
    zoPairSettings settings;
    psString error;
    if (!settings.read(error)) {
        g_ostrm << MSG_ERR << "-- Baseline: " << error << "\n" << MSG_RESTORE_FLUSH;
        return false;
    }
    return settings.baseline.empty() || g_sides.open(settings, {s_cpuFeature, s_numThreads});
}

void zoSession::readCommonData() {
    psSession::readCommonData();
    if (g_pairing.enabled() && !g_tool.getMethodAuto()) {
        g_ostrm << MSG_ERR
                << "-- Baseline is not used with this method: only Auto reads two libraries\n"
                << MSG_RESTORE;
        g_pairing.disable();
    }
}
