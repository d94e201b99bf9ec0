// pssentinel.h - a fixed piece of work in registers that feels a neighbour on the core's other
// thread, and the level that its readings have when there is none. Stands alone: programs other
// than the harness take this file as it is.
#ifndef PSCPU_PSSENTINEL_H
#define PSCPU_PSSENTINEL_H

// Clocks of the time-stamp counter for the work: some 500 with the core to itself, up to twice as
// many beside a neighbour that keeps the core busy. Touches no memory.
unsigned psSentinelClocks();

// The quiet level of a process, from all its sentinel readings so far.
class psQuietLevel {
public:
    void add(unsigned clocks);

    // The most that a reading of a quiet core shows, in clocks: a low quantile of all readings, a
    // tolerance for steps of the core's clock, and one step of the counter. 0 without readings.
    double bound() const;
    unsigned step() const { return m_step; } // of the counter, as far as the readings show it
    long long readings() const { return m_readings; }
    double quantile(double share) const; // of the readings, in clocks; 0 without readings

private:
    static constexpr unsigned bins = 4096; // of one clock; longer readings count in the last

    long long m_counts[bins]{};
    long long m_readings = 0;
    unsigned m_step = 0; // greatest common divisor of the readings; 0 before the first
};

#endif
