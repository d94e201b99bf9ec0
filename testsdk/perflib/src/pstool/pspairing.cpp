// pspairing.cpp - the turns of paired readings.
#include "pstool/pspairing.h"

#include <cstdlib>

#include "pscpu/pscputicker.h"

psPairing g_pairing;
constinit psTurns* g_turns = nullptr;

namespace {

constexpr long long leastPairClocks = 5000; // two readings take four times as many
constexpr int levelReadings = 1000;         // of the sentinel, before the first point

} // namespace

psPairing::~psPairing() { disable(); }

bool psPairing::enable(long long clocksPerPoint, psSide first) {
    disable();
    long long const most = clocksPerPoint / leastPairClocks + 2LL * leastPairs;
    m_pairs = static_cast<psPair*>(malloc(static_cast<size_t>(most) * sizeof(psPair)));
    if (m_pairs == nullptr) {
        return false;
    }
    m_capacity = static_cast<int>(most);
    // Touches the memory. Zeroes the compiler would leave to calloc, which does not.
    for (int i = 0; i < m_capacity; ++i) {
        m_pairs[i] = {1.0, 1.0, 1.0F, 1.0F};
    }
    m_clocksPerPoint = clocksPerPoint;
    m_first = first;
    for (int i = 0; i < levelReadings; ++i) {
        readSentinel();
    }
    return true;
}

void psPairing::disable() {
    free(m_pairs);
    m_pairs = nullptr;
    m_capacity = 0;
}

bool psPairing::beginPoint() {
    m_warm[psTested] = false;
    m_warm[psBaseline] = false;
    return m_sides->beginPoint();
}

bool psPairing::beginSeries(int loops, int pairs) {
    m_loops = loops;
    m_wanted = pairs;
    m_count = 0;
    m_lost = false;
    m_second = false;
    g_turns = this;
    m_turn = m_first;
    m_deadline = psCpuTicker::rdtsc() + static_cast<unsigned long long>(m_clocksPerPoint);
    m_pairs[0].before = readSentinel();
    return readTurn();
}

int psPairing::warmUpCalls() {
    int const calls = m_warm[m_turn] ? laterCalls : firstCalls;
    m_warm[m_turn] = true;
    return calls;
}

// The tool calls the timing function once more where the last reading has no clocks: its time is
// over then.
bool psPairing::next(long long clocks) {
    return m_count < m_capacity && takeTurn(clocks) && readTurn();
}

bool psPairing::readTurn() {
    while (!m_sides->select(m_turn)) {
        long long clocks = 0;
        if (!m_sides->readElsewhere(warmUpCalls(), m_loops, &clocks)) {
            m_lost = true;
            return false;
        }
        if (!takeTurn(clocks)) {
            return false;
        }
    }
    return true;
}

// The side that read last in a pair is the first to read in the next one.
bool psPairing::takeTurn(long long clocks) {
    psPair& pair = m_pairs[m_count];
    (m_turn == psTested ? pair.tested : pair.baseline) = static_cast<double>(clocks) / m_loops;
    if (!m_second) {
        m_second = true;
        m_turn = m_turn == psTested ? psBaseline : psTested;
        return true;
    }
    m_second = false;
    pair.after = readSentinel();
    ++m_count;
    if (isDone()) {
        return false;
    }
    m_pairs[m_count].before = pair.after;
    return true;
}

// Both orders as often as each other.
bool psPairing::isDone() const {
    if (m_count == m_capacity || (m_wanted != 0 && m_count >= m_wanted)) {
        return true;
    }
    return m_wanted == 0 && m_count % 2 == 0 && m_count >= leastPairs &&
           psCpuTicker::rdtsc() >= m_deadline;
}

void psPairing::endSeries() {
    g_turns = nullptr;
    if (m_sides != nullptr) {
        m_sides->select(psTested);
    }
}

psPairResult psPairing::judge() { return psJudgePairs(m_pairs, m_count, m_level.bound()); }

// The first run finds its code as the reading, or another process, has left it: cold.
float psPairing::readSentinel() {
    (void)psSentinelClocks();
    unsigned const clocks = psSentinelClocks();
    m_level.add(clocks);
    return static_cast<float>(clocks);
}
