// vtsstatus.h - the suite's view of the floating-point status, and its print routine.
#ifndef VTS_VTSSTATUS_H
#define VTS_VTSSTATUS_H

// Bits of a stream mask.
enum : int {
    vtsStreamSumCsv = 1,
    vtsStreamSumTxt = 2,
    vtsStreamLstCsv = 4,
    vtsStreamLstTxt = 8,
    vtsStreamErrCsv = 16,
    vtsStreamErrTxt = 32,
    vtsStreamPerCsv = 64,
    vtsStreamPerTxt = 128,
    vtsStreamAccCsv = 256,
    vtsStreamAccTxt = 512,
    vtsStreamSvsCsv = 1024,
    vtsStreamSvsTxt = 2048,
    vtsStreamPfgCsv = 4096,
    vtsStreamBwrCsv = 8192,
    vtsStreamBwrTxt = 16384
};

int GetStream(char const* word); // mask of the stream that word is a part of the name of, or -1

// Formats like printf and hands the text to the sink.
[[gnu::format(printf, 2, 3)]] void vtsPrint(int stream, char const* format, ...);

using vtsSink = void (*)(int stream, char const* text);
void vtsPrintConsole(int stream, char const* text); // standard output, for streams in the mask
extern vtsSink vtsPrintSink;                        // vtsPrintConsole, unless replaced

void vtsClearStatus(); // clears and reinitialises both control objects
int vtsGetFPUStatus(); // status word of the x87 unit
int vtsGetXMMStatus(); // control and status register of the SSE unit

// Both units' flags as "iuozvd" with a capital letter for each one that is set, and the words.
void vtsGetStatusString(char* fpuText, char* xmmText, int* fpuStatus, int* xmmStatus);

#endif
