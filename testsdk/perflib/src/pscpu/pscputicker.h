// pscputicker.h - the time-stamp counter and the frequency that turns its clocks
// into time.
#ifndef PSCPU_PSCPUTICKER_H
#define PSCPU_PSCPUTICKER_H

// The counter and its frequency, of which a process has one each.
class psCpuTicker {
public:
    // Clocks of the time-stamp counter. No fence: a pair of reads brackets many calls. The clobber
    // only keeps the compiler from moving memory accesses across the read. Must stay these few
    // instructions, inline: the read stands inside the measured span.
    static unsigned long long rdtsc() {
        unsigned low;
        unsigned high;
        asm volatile("rdtsc" : "=a"(low), "=d"(high) : : "memory");
        return (static_cast<unsigned long long>(high) << 32) | low;
    }

    static int getClockFactor() { return 1; } // what a reading is multiplied by

    // MHz, at the first call from the environment variable PS_CPU_MHZ. Without it, or with a bad
    // value in it, which is told, the frequency is estimated: that spins for two to four seconds.
    static int getFreq();

    static int m_freqMHz; // 0 until first asked
};

// The value of PS_CPU_MHZ in whole MHz, the nearest: a plain decimal number from 1 to 100000. Any
// other text gives 0.
int cpuFreqFromText(char const* text);

// MHz by the counter against the wall clock, snapped to a nominal frequency.
int estimateCpuFreqMHz();

// MHz from two counts of clocks in a second.
int cpuFreqFromSamples(unsigned long long first, unsigned long long second);

// The nominal frequency near an estimate, or the estimate itself when none is within 3 percent.
int nominalFreqMHz(int estimate);

// Stored and given back; nothing applies it.
extern "C" int GETrdtscMultiplier(void);
extern "C" int SETrdtscMultiplier(int value);

#endif
