// pscputicker.cpp - the estimate of the counter's frequency.
#include "pscpu/pscputicker.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

int psCpuTicker::m_freqMHz = 0;

namespace {

int rdtscMultiplier = 1;

// Frequencies in MHz that processors are sold with, ascending.
constexpr int nominal_mhz[] = {60,   66,   75,   90,   100,  120,  133,  150,  166,  185,
                               200,  220,  240,  266,  300,  333,  400,  450,  500,  530,
                               550,  600,  800,  1000, 1400, 1700, 1800, 1900, 2000, 2200,
                               2260, 2400, 2500, 2530, 2600, 2660, 2800, 3060};
static_assert(sizeof nominal_mhz / sizeof nominal_mhz[0] == 38);

// Clocks from now until the wall clock, which shows whole seconds, has moved on.
unsigned long long clocksOfASecond() {
    unsigned long long const start = psCpuTicker::rdtsc();
    std::time_t const a = std::time(nullptr);
    while (std::difftime(std::time(nullptr), a) < 1.0) {
    }
    return psCpuTicker::rdtsc() - start;
}

} // namespace

int psCpuTicker::getFreq() {
    if (m_freqMHz == 0) {
        char const* const given = std::getenv("PS_CPU_MHZ");
        m_freqMHz = given != nullptr ? cpuFreqFromText(given) : 0;
        if (given != nullptr && m_freqMHz == 0) {
            (void)std::fputs("-- PS_CPU_MHZ isn't a number from 1 to 100000: ignored\n", stderr);
        }
    }
    if (m_freqMHz == 0) {
        m_freqMHz = estimateCpuFreqMHz();
    }
    return m_freqMHz;
}

int cpuFreqFromText(char const* text) {
    char* end = nullptr;
    double const megahertz = std::strtod(text, &end);
    // Digits and a point alone: what else a conversion takes (signs, exponents, "inf") is a slip.
    bool const plain = text[std::strspn(text, "0123456789.")] == '\0' && *end == '\0';
    return plain && megahertz >= 1 && megahertz <= 100000 ? static_cast<int>(std::lround(megahertz))
                                                          : 0;
}

int estimateCpuFreqMHz() {
    clocksOfASecond(); // dropped: it began somewhere within a second
    unsigned long long const first = clocksOfASecond();
    unsigned long long const second = clocksOfASecond();
    return nominalFreqMHz(cpuFreqFromSamples(first, second));
}

int cpuFreqFromSamples(unsigned long long first, unsigned long long second) {
    float const sum = static_cast<float>(first) + static_cast<float>(second);
    double const megahertz = static_cast<double>(sum) / 1e6 * 0.5;
    return megahertz < INT_MAX ? static_cast<int>(megahertz) : INT_MAX;
}

// An estimate with no entry within 1000 MHz is held against the first one at that distance, which
// bends what is beyond 33 GHz to 60 MHz. That is the rule.
int nominalFreqMHz(int estimate) {
    long long best = 1000;
    int nominal = nominal_mhz[0];
    for (int entry : nominal_mhz) {
        long long const difference = static_cast<long long>(estimate) - entry;
        long long const distance = difference < 0 ? -difference : difference;
        if (distance < best) {
            best = distance;
            nominal = entry;
        }
    }
    return static_cast<double>(best) / estimate < 0.03 ? nominal : estimate;
}

int GETrdtscMultiplier(void) { return rdtscMultiplier; }

int SETrdtscMultiplier(int value) {
    rdtscMultiplier = value;
    return value;
}
