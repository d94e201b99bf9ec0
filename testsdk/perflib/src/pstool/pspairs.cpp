// pspairs.cpp - the choice among pairs and the ratio of the two sides.
#include "pstool/pspairs.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double normalQuantile = 1.959964; // two-sided 95%

bool isUsable(psPair const& pair) { return pair.tested > 0.0 && pair.baseline > 0.0; }

double ratioOf(psPair const& pair) { return pair.tested / pair.baseline; }

} // namespace

// The binomial distribution's lower 2.5% point by its normal approximation, which is within one
// rank of the exact one for all counts.
int psMedianRank(int count) {
    double const rank = 0.5 * (count - normalQuantile * std::sqrt(static_cast<double>(count)));
    return rank >= 1.0 ? static_cast<int>(rank) : 0;
}

psPairResult psJudgePairs(psPair* pairs, int count, double quietBound) {
    psPairResult result;
    psPair* last = std::partition(pairs, pairs + count, isUsable);
    if (last == pairs) {
        return result;
    }
    psPair* const quietEnd = std::partition(pairs, last, [quietBound](psPair const& pair) {
        return pair.before <= quietBound && pair.after <= quietBound;
    });
    result.quiet = quietEnd - pairs >= psEnoughQuietPairs;
    if (result.quiet) {
        last = quietEnd;
    }
    result.pairs = static_cast<int>(last - pairs);
    result.tested = pairs[0].tested;
    result.baseline = pairs[0].baseline;
    for (psPair const* pair = pairs; pair != last; ++pair) {
        result.tested = std::min(result.tested, pair->tested);
        result.baseline = std::min(result.baseline, pair->baseline);
    }
    std::sort(pairs, last,
              [](psPair const& a, psPair const& b) { return ratioOf(a) < ratioOf(b); });
    int const n = result.pairs;
    // Of an even count the two in the middle, by their geometric mean: the ratio of the sides
    // changed round is then the reciprocal.
    result.ratio = std::sqrt(ratioOf(pairs[(n - 1) / 2]) * ratioOf(pairs[n / 2]));
    int const rank = psMedianRank(n);
    result.lo = ratioOf(pairs[rank]);
    result.hi = ratioOf(pairs[n - 1 - rank]);
    return result;
}
