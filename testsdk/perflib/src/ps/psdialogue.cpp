// psdialogue.cpp - what is common to all tests: timing method, common parameters, and
// how vectors lie in memory. Each from -d data, ini file, console or default.
#include "ps/pssession.h"

#include "ps/psregister.h"
#include "psmemory/psmemory.h"
#include "psparameter/psdefault.h"
#include "psstream/psistream.h"

namespace {

constexpr int frameWidth = 78; // column of the closing star

// Connects the console for the next reads, under a title, or disconnects it.
void attachConsole(bool ask, char const* title) {
    g_istrm.setIStream(ask ? &c_in : nullptr);
    if (ask) {
        g_ostrm << MSG_ERR << psSession::getEnterTitle(title) << MSG_RESTORE;
    }
}

int readNumber(char const* name, int defaultValue) {
    psDefault<int> number(defaultValue, name);
    number.fromIStream(g_istrm);
    return number.value();
}

int readClocks(char const* name, long long defaultValue) {
    return readNumber(name, static_cast<int>(defaultValue));
}

int readMethod(int defaultMethod) {
    psMapDefault<int> method;
    method.add(psTool::Auto, "Auto");
    method.add(psTool::Loop, "Manual");
    method.add(psTool::Stat, "Statistic");
    method.add(psTool::Best, "Iterative");
    method.init(defaultMethod, "Method");
    method.fromIStream(g_istrm);
    return method.value();
}

// The parameters of the method, with the preset's values as defaults if it chose that very method.
void readManual(psTool const& preset) {
    int loops = psTool::defaultLoops;
    preset.getMethodLoop(loops);
    g_tool.setMethodLoop(readNumber("NumLoops", loops));
}

void readStatistic(psTool const& preset) {
    int calls = psTool::offeredCalls;
    long long clocks = psTool::defaultMaxClocks;
    preset.getMethodStat(calls, clocks);
    calls = readNumber("NumCalls", calls);
    g_tool.setMethodStat(calls, readClocks("TotalCpuClocks", clocks));
}

void readIterative(psTool const& preset) {
    int start = 0;
    int stop = 0;
    long long clocks = 0;
    psTool::getAutoParameters(start, stop, clocks);
    preset.getMethodBest(start, stop, clocks);
    start = readNumber("StartNumLoops", start);
    stop = readNumber("StopNumLoops", stop);
    g_tool.setMethodBest(start, stop, readClocks("MinCpuClocks", clocks));
}

bool readChoice(char const* name, char const* trueName, char const* falseName, bool defaultValue) {
    psMapDefault<bool> choice;
    choice.add(true, trueName);
    choice.add(false, falseName);
    choice.init(defaultValue, name);
    choice.fromIStream(g_istrm);
    return choice.value();
}

} // namespace

psString psSession::getEnterTitle(psString title) {
    psString edge(" ");
    edge.resize(1 + frameWidth, '*');
    edge += "\n";
    psString line(" *");
    int const start = (80 - title.size()) / 2;
    if (start > line.size()) {
        line.resize(start, ' ');
    }
    line += title;
    if (line.size() < frameWidth) {
        line.resize(frameWidth, ' ');
    }
    return edge + line + "*\n" + edge;
}

void psSession::readCommonData() {
    int asked = readTimingMethod();
    asked |= readTestParameters();
    asked |= readDataOffset();
    if (asked != 0) {
        g_ostrm << MSG_ERR << getEnterTitle("End of common specifications") << MSG_RESTORE;
    }
}

int psSession::readTimingMethod() {
    psTool preset;
    if (initTimingMethod != nullptr) {
        initTimingMethod(preset);
    } else {
        preset.setMethodAuto();
    }
    bool const ask = (m_askMode & askTiming) != 0;
    attachConsole(ask, "Specify timing method, please");
    int const method = readMethod(preset.m_method);
    switch (method) {
    case psTool::Loop:
        readManual(preset);
        break;
    case psTool::Stat:
        readStatistic(preset);
        break;
    case psTool::Best:
        readIterative(preset);
        break;
    default:
        g_tool.setMethodAuto();
        break;
    }
    readAccuracy(method);
    return ask ? 1 : 0;
}

void readAccuracy(int method) {
    if (method == psTool::Loop || method == psTool::Stat) {
        return;
    }
    psDefault<int> percent(method == psTool::Auto || method == psTool::Best ? 5 : 100, "Accuracy",
                           "Accuracy, %");
    percent.fromIStream(g_istrm);
    double const wanted = percent.value() * 0.01;
    // 500.0 turns the check off; users who type 0 or 100 count on it.
    g_tool.m_accuracy = wanted < 0.01 || wanted > 0.5 ? 500.0 : wanted;
}

int psSession::readTestParameters() {
    if (g_pParmList == nullptr || g_pParmList->empty()) {
        return 0;
    }
    bool const ask = (m_askMode & askParams) != 0;
    attachConsole(ask, "Specify common test parameters, please");
    for (psParameter* parm : *g_pParmList) {
        parm->fromIStream(g_istrm);
        parm->m_toRead = false; // no test reads it again
    }
    return ask ? 1 : 0;
}

int psSession::readDataOffset() {
    bool const ask = (m_askMode & askMisalign) != 0;
    attachConsole(ask, "Specify vectors alignment, please");
    bool const byByte = readChoice("AlignVectorsBy", "byte", "element", false);
    psSetAlignByByte(byByte);
    DefaultAlign align(0, "VectorAlign",
                       byByte ? "VectorAlign by Byte, 0..63" : "VectorAlign by Element, 0..63");
    align.fromIStream(g_istrm);
    psSetVectorAlign(align.value());
    if (align.value() != 0) {
        psSetAlignSrc(readChoice("MisalignFirstVectorOnly", "yes", "no", true));
    }
    // Never read: no source reaches the shift.
    DefaultShift const shift(512, "MutualVectorShift",
                             "MutualVectorShift in Bytes, divisible by 64");
    psSetVectorShift(shift.value());
    return ask ? 1 : 0;
}
