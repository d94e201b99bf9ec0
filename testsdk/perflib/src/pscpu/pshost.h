// pshost.h - the machine that a run happened on: processor line, operating system, host.
#ifndef PSCPU_PSHOST_H
#define PSCPU_PSHOST_H

#include "psbase/psstring.h"

// System name, release and machine.
class psOS {
public:
    psOS();
    char const* text() const { return m_text; }

private:
    char m_text[256];
};

// The host's name, empty if the system has none.
class psHost {
public:
    psHost();
    char const* name() const { return m_name; }

private:
    char m_name[1024];
};

extern psOS os;
extern psHost host;

int psGetNumOfProcessors(); // online, at least 1

// Largest cache in bytes: the library's word, else the largest of any kind by CPUID; 0 if unknown.
int psGetMaxCacheSizeB();

// Brand, count, speed and cache of the processor in one line. Asks for the frequency (psCpuTicker).
psString cpuInfo();
// The line from its parts.
psString cpuInfoLine(psString const& brand, int processors, int freqMHz, int cacheBytes);

#endif
