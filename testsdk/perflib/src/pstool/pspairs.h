// pspairs.h - what pairs of readings say: the choice among them, the ratio of the two sides and
// its interval. Pure functions of the readings.
#ifndef PSTOOL_PSPAIRS_H
#define PSTOOL_PSPAIRS_H

// One reading of each side, taken one after the other, in clocks per call.
struct psPair {
    double tested;   // the library under test
    double baseline; // what it is compared with
    float before;    // clocks of the sentinel ahead of the pair
    float after;     // and behind it
};

struct psPairResult {
    double tested = 0.0;   // least reading, clocks per call
    double baseline = 0.0; // likewise
    double ratio = 0.0;    // under test by baseline; 0: no usable pair
    double lo = 0.0;       // 95% interval of the ratio
    double hi = 0.0;
    int pairs = 0;      // that decided
    bool quiet = false; // these were pairs of a quiet core alone; else all
};

constexpr int psEnoughQuietPairs = 8; // from so many on, these alone decide

// The verdict of a point. Sentinels up to quietBound clocks count as quiet. Reorders the pairs.
psPairResult psJudgePairs(psPair* pairs, int count, double quietBound);

// Rank, from 0, of the lower end of a median's 95% interval among count ordered values; the upper
// end lies as far from the other end. 0 for a few values, whose interval is narrower than asked.
int psMedianRank(int count);

#endif
