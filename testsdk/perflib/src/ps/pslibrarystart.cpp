// pslibrarystart.cpp - binds the library's entry points, starts the library, and takes
// down what it says of itself.
#include "ps/pssession.h"

#include "ps/psregister.h"
#include "pscpu/pscpufeatures.h"
#include "pscpu/pszolentry.h"

namespace {

void tellStatus(ZolStatus status) {
    if (status == zolStsNoErr) {
        g_ostrm << "--status = zolStsNoErr\n";
        return;
    }
    g_ostrm << (status < 0 ? "--ZOL ERROR. " : "--ZOL WARNING. ") << "status = " << status << ": "
            << psString(zol_GetStatusString(status)) << "\n";
}

void chooseCodePath(Zol64u features) {
    g_ostrm << MSG_ERR << "\n"
            << "--calling zolSetCpuFeatures( zolCpuFeatures" << psCpuFeatures::cpuLabel(features)
            << "=" << features << " )\n";
    ZolStatus const status = zol_SetCpuFeatures(features);
    tellStatus(status);
    if (status < 0) {
        g_ostrm << "--calling zolInit()\n";
        ZolStatus const started = zol_Init();
        if (started < 0) {
            tellStatus(started);
        }
    }
    g_ostrm << MSG_RESTORE;
}

void chooseThreads() {
    int threads = 0;
    (void)zol_GetNumThreads(&threads);
    g_ostrm << MSG_ERR << "\n"
            << "--calling zolGetNumThreads: numThreads = " << threads << "\n";
    if (s_numThreads > 0) {
        g_ostrm << "--calling zolSetNumThreads( " << s_numThreads << " )\n";
        tellStatus(zol_SetNumThreads(s_numThreads));
    }
    g_ostrm << MSG_RESTORE;
}

} // namespace

void setZolEnvironment() {
    if (zolEnvironment != nullptr) {
        zolEnvironment();
        // At the error level: the first call comes before any other level is on.
        g_ostrm << MSG_ERR << "\nZOL Core library functions have been integrated into PS\n"
                << MSG_RESTORE;
    }
    psFillZolEntries();
}

void startZolLibrary() {
    if (zolEnvironment == nullptr) {
        return;
    }
    if (s_cpuFeature != 0) {
        chooseCodePath(s_cpuFeature);
    } else {
        (void)zol_Init();
    }
    chooseThreads();
    setZolEnvironment();
}

void setZolLibInfo() {
    if (zolVersionList == nullptr) {
        return;
    }
    for (psVersionFunction const function : *zolVersionList) {
        ZolLibraryVersion const* const version = function();
        if (version != nullptr) {
            psRegLibInfo(psString(version->name) + ", " + version->version + ", " +
                         version->buildDate);
        }
    }
    g_ostrm << "ZOL libraries information has been set into PS\n";
}
