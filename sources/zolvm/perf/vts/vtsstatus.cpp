// vtsstatus.cpp - status of the two floating-point units, and texts for the suite's streams.
#include "vts/vtsstatus.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "pstool/psctrl.h"
#include "vts/vtsdefs.h"

namespace {

struct StreamName {
    char const* upper;
    char const* lower;
    int mask;
};
constexpr StreamName streamNames[] = {
    {"SUM_TXT", "sum_txt", vtsStreamSumTxt}, {"LST_TXT", "lst_txt", vtsStreamLstTxt},
    {"PER_TXT", "per_txt", vtsStreamPerTxt}, {"ACC_TXT", "acc_txt", vtsStreamAccTxt},
    {"ERR_TXT", "err_txt", vtsStreamErrTxt}, {"SVS_TXT", "svs_txt", vtsStreamSvsTxt},
    {"SUM_CSV", "sum_csv", vtsStreamSumCsv}, {"LST_CSV", "lst_csv", vtsStreamLstCsv},
    {"PER_CSV", "per_csv", vtsStreamPerCsv}, {"ACC_CSV", "acc_csv", vtsStreamAccCsv},
    {"ERR_CSV", "err_csv", vtsStreamErrCsv}, {"SVS_CSV", "svs_csv", vtsStreamSvsCsv},
    {"PFG_CSV", "pfg_csv", vtsStreamPfgCsv}, {"BWR_CSV", "bwr_csv", vtsStreamBwrCsv},
    {"BWR_TXT", "bwr_txt", vtsStreamBwrTxt}};

// Flags in the order of the letters of a status text.
constexpr int statusFlags[] = {32, 16, 8, 4, 1, 2};
constexpr char statusLetters[] = "iuozvd";

void statusText(int status, char* text) {
    strcpy(text, statusLetters);
    for (int i = 0; text[i] != '\0'; ++i) {
        if ((status & statusFlags[i]) != 0) {
            text[i] = static_cast<char>(text[i] - 'a' + 'A');
        }
    }
}

} // namespace

constinit vtsSink vtsPrintSink = vtsPrintConsole;

int GetStream(char const* word) {
    if (*word == '\0') {
        return -1;
    }
    for (StreamName const& stream : streamNames) {
        if (strstr(stream.upper, word) != nullptr || strstr(stream.lower, word) != nullptr) {
            return stream.mask;
        }
    }
    return -1;
}

void vtsPrint(int stream, char const* format, ...) {
    char text[vtsLineSize];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    vtsPrintSink(stream, text);
}

void vtsPrintConsole(int stream, char const* text) {
    if ((defParam.console & stream) != 0) {
        fputs(text, stdout);
    }
}

void vtsClearStatus() {
    g_ctrl87.clear();
    g_ctrl87.init();
    g_ssx.clear();
    g_ssx.init();
}

int vtsGetFPUStatus() { return static_cast<int>(ps_get_sw_fpu()); }

int vtsGetXMMStatus() { return static_cast<int>(ps_get_ssx()); }

void vtsGetStatusString(char* fpuText, char* xmmText, int* fpuStatus, int* xmmStatus) {
    *fpuStatus = vtsGetFPUStatus();
    *xmmStatus = vtsGetXMMStatus();
    statusText(*fpuStatus, fpuText);
    statusText(*xmmStatus, xmmText);
}
