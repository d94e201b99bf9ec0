// statistics.h - where a handful of readings lies and how surely: trimmed means, scales that
// borrow from those of other points, and false discoveries held over many points.
#ifndef CORE_STATISTICS_H
#define CORE_STATISTICS_H

#include <cstddef>
#include <vector>

namespace tables {

// The middle half of some values: of four and fewer, all.
struct Location {
    double center = 0;   // mean of the values that are kept
    double variance = 0; // of a value, from the winsorised values
    double kept = 0;     // values that the mean is of; fewer than 2 have no variance
    double freedom() const { return kept - 1; }
};

// Of no values, all is 0.
Location trimmedMean(std::vector<double> values);

// Variances of many points follow a scaled F distribution: freedom degrees of it, and a scale for
// each group of points. What a point's own values don't tell is taken from there.
struct Prior {
    double freedom = 0;         // 0: nothing is borrowed
    std::vector<double> scales; // by group
};

// From the locations that have a variance. Groups of too few points take the scale of all.
Prior fitPrior(std::vector<Location> const& locations, std::vector<std::size_t> const& groups);

// A center with its uncertainty.
struct Estimate {
    double center = 0;
    double error = 0; // standard error
    double freedom = 0;

    double chance() const;                // of a center so far from 0, either side
    double halfWidth(double level) const; // of the interval
};

// A location whose variance is its own and the prior's, each by its degrees of freedom.
Estimate moderated(Location const& location, Prior const& prior, std::size_t group);

// The largest chance that is still a discovery, if of all discoveries the share may be false
// (Benjamini and Hochberg); below 0 if none is.
double discoveryLimit(std::vector<double> chances, double falseShare);

// Of at least one value.
double medianOf(std::vector<double> values);
// The value below which the share lies, of at least one value.
double quantileOf(std::vector<double> values, double share);

} // namespace tables

#endif
