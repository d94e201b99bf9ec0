// pspairing.h - paired readings: two libraries read in turns (A B, B A, A B ...), so that whatever
// the machine does to one it does to the other. Conducts the turns; where the sides live is the
// business of psPairSides.
#ifndef PSTOOL_PSPAIRING_H
#define PSTOOL_PSPAIRING_H

#include "pscpu/pssentinel.h"
#include "pstool/pspairs.h"

// Whose turn it is.
enum psSide { psTested = 0, psBaseline = 1 };

// The two sides of the function that is being measured.
class psPairSides {
public:
    virtual ~psPairSides() = default;

    // The next parameter set is measured. False: the side that lives elsewhere is gone.
    virtual bool beginPoint() = 0;

    // The timing function calls this side's function from now on. False: the side lives elsewhere,
    // and readElsewhere reads it. Called between readings: must cost next to nothing.
    virtual bool select(psSide side) = 0;

    // Warm-up calls, then a reading of so many calls, in clocks, of a side that lives elsewhere.
    // False: the side is gone.
    virtual bool readElsewhere(int warmUpCalls, int loops, long long* clocks) = 0;
};

// What a timing function asks when its readings are taken in turns with those of another side.
class psTurns {
public:
    virtual ~psTurns() = default;
    virtual int warmUpCalls() = 0; // ahead of the reading that comes
    // Takes a reading, in clocks. True: go on with one more, of the side that is selected now.
    virtual bool next(long long clocks) = 0;
};

extern psTurns* g_turns; // of the measurement that runs; null: one reading, and no turns

// Conducts the turns of a point, and keeps its readings and the process's quiet level.
class psPairing : public psTurns {
public:
    static constexpr int firstCalls = 16; // ahead of a side's first reading of a point
    static constexpr int laterCalls = 1;  // ahead of each later one: the sides share the caches
    static constexpr int leastPairs = 12;

    psPairing() = default;
    psPairing(psPairing const&) = delete;
    psPairing& operator=(psPairing const&) = delete;
    ~psPairing() override;

    // From now on the Auto method reads pairs of the sides (not owned), for so many clocks a point,
    // beginning with the side given. False when there is no memory.
    bool enable(long long clocksPerPoint, psSide first);
    bool enabled() const { return m_pairs != nullptr; }
    void disable();

    // The sides of the test that runs; null: it has but one, and is measured as without pairs.
    void setSides(psPairSides* sides) { m_sides = sides; }
    bool ready() const { return enabled() && m_sides != nullptr; }

    // A point: beginPoint once, then series of turns. A series is one call of the timing function,
    // which goes on while next() says so; it ends after so many pairs when that is not 0, else with
    // the point's clocks.
    bool beginPoint();                      // false: a side is gone
    bool beginSeries(int loops, int pairs); // likewise
    int warmUpCalls() override;
    bool next(long long clocks) override;
    bool inSeries() const { return g_turns == this; }
    void endSeries(); // also after a fault

    int count() const { return m_count; } // pairs of the series
    psPair const& pair(int index) const { return m_pairs[index]; }
    bool lost() const { return m_lost; }   // a side was gone in the middle of the series
    psSide turn() const { return m_turn; } // whose reading is under way, or was when a fault came
    psPairResult judge();                  // the series; for a point's last one

    psQuietLevel const& quietLevel() const { return m_level; }

private:
    bool readTurn(); // brings the turn to a side of this process; false: ends the series
    bool takeTurn(long long clocks);
    bool isDone() const;
    float readSentinel();

    psPairSides* m_sides = nullptr;
    psPair* m_pairs = nullptr;
    int m_capacity = 0;
    int m_count = 0;
    int m_wanted = 0; // pairs of the series; 0: by m_deadline
    int m_loops = 1;
    long long m_clocksPerPoint = 0;
    unsigned long long m_deadline = 0; // of the counter
    psSide m_first = psTested;
    psSide m_turn = psTested;
    bool m_second = false; // the pair's other reading is there
    bool m_lost = false;
    bool m_warm[2] = {false, false}; // a side was read at this point
    psQuietLevel m_level;
};

extern psPairing g_pairing;

#endif
