// pssentinel.cpp - the sentinel's work and the quiet level.
#include "pscpu/pssentinel.h"

#include <numeric>

namespace {

constexpr int sentinelRounds = 160;
// A single odd reading is no level, and on a shared core most readings are none.
constexpr double quietShare = 0.05;
// The core's clock moves against the counter's by up to an eighth, and beside neighbours that show
// in readings at all the sentinel takes a quarter more and upwards.
constexpr double clockTolerance = 0.20;

} // namespace

// Six chains of additions that depend on nothing but themselves: together they fill the width of
// the core, so that whatever the other thread issues takes a place from them. The fences keep the
// reads of the counter where they stand.
unsigned psSentinelClocks() {
    unsigned begin;
    unsigned end;
    int rounds = sentinelRounds;
    asm volatile("lfence\n\trdtsc" : "=a"(begin) : : "edx", "memory");
    asm volatile(".p2align 5\n"
                 "1:\n\t"
                 ".rept 4\n\t"
                 "add $1, %%r8\n\t"
                 "add $1, %%r9\n\t"
                 "add $1, %%r10\n\t"
                 "add $1, %%r11\n\t"
                 "add $1, %%rsi\n\t"
                 "add $1, %%rdi\n\t"
                 ".endr\n\t"
                 "dec %0\n\t"
                 "jnz 1b"
                 : "+r"(rounds)
                 :
                 : "r8", "r9", "r10", "r11", "rsi", "rdi", "cc");
    asm volatile("lfence\n\trdtsc" : "=a"(end) : : "edx", "memory");
    return end - begin; // the low halves wrap alike
}

void psQuietLevel::add(unsigned clocks) {
    ++m_counts[clocks < bins ? clocks : bins - 1];
    ++m_readings;
    m_step = std::gcd(m_step, clocks);
}

double psQuietLevel::quantile(double share) const {
    if (m_readings == 0) {
        return 0.0;
    }
    auto const rank = static_cast<long long>(share * static_cast<double>(m_readings - 1));
    long long below = 0;
    unsigned bin = 0;
    while (below + m_counts[bin] <= rank) {
        below += m_counts[bin++];
    }
    return bin;
}

double psQuietLevel::bound() const {
    return m_readings == 0 ? 0.0 : quantile(quietShare) * (1.0 + clockTolerance) + m_step;
}
