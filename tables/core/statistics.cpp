// statistics.cpp - trimmed means, moderated scales, false discoveries.
#include "core/statistics.h"

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <boost/math/special_functions/digamma.hpp>
#include <boost/math/special_functions/polygamma.hpp>
#include <boost/math/special_functions/trigamma.hpp>
#include <cmath>
#include <numeric>

namespace tables {

namespace {

constexpr double manyFreedoms = 1e6; // as good as the normal distribution
constexpr std::size_t leastGroup = 30;
// Ratios are written with four digits behind the point: no scale is known better than that.
constexpr double roundingVariance = 1e-8 / 12;

// The y with trigamma(y) = x, by Newton's method on 1/trigamma, which is nearly linear.
double inverseTrigamma(double x) {
    double y = 0.5 + 1 / x;
    for (int step = 0; step < 50; ++step) {
        double const value = boost::math::trigamma(y);
        double const change = value * (1 - value / x) / boost::math::polygamma(2, y);
        y += change;
        if (std::fabs(change) < 1e-9 * y) {
            break;
        }
    }
    return y;
}

// Mean of the logarithm of a variance estimate whose truth is 1.
double meanLog(double freedom) { return boost::math::digamma(freedom / 2) - std::log(freedom / 2); }

boost::math::students_t student(double freedom) {
    return boost::math::students_t(std::min(freedom, manyFreedoms));
}

} // namespace

Location trimmedMean(std::vector<double> values) {
    std::size_t const count = values.size();
    if (count == 0) {
        return {};
    }
    std::sort(values.begin(), values.end());
    std::size_t const cut = count > 4 ? count / 4 : 0;
    std::size_t const kept = count - 2 * cut;
    auto const first = values.begin() + static_cast<std::ptrdiff_t>(cut);
    auto const last = values.end() - static_cast<std::ptrdiff_t>(cut);
    double const ends = static_cast<double>(cut) * (*first + *(last - 1));
    double const sum = std::accumulate(first, last, 0.0);
    double const winsorised = (sum + ends) / static_cast<double>(count);
    double squares = 0;
    for (auto value = first; value != last; ++value) {
        bool const end = cut > 0 && (value == first || value == last - 1);
        double const away = *value - winsorised;
        squares += (end ? static_cast<double>(cut + 1) : 1) * away * away;
    }
    Location location{sum / static_cast<double>(kept), 0, static_cast<double>(kept)};
    if (kept > 1) {
        location.variance = squares / location.freedom() + roundingVariance;
    }
    return location;
}

Prior fitPrior(std::vector<Location> const& locations, std::vector<std::size_t> const& groups) {
    struct Sum {
        double logs = 0;
        std::size_t count = 0;
        double mean() const { return logs / static_cast<double>(count); }
    };
    Prior prior;
    if (locations.empty()) {
        return prior;
    }
    std::vector<Sum> sums(1 + *std::max_element(groups.begin(), groups.end()));
    Sum all;
    // Logarithm of the variance, freed of what its own few values do to it.
    auto const level = [](Location const& one) {
        return std::log(one.variance) - meanLog(one.freedom());
    };
    for (std::size_t i = 0; i < locations.size(); ++i) {
        if (locations[i].kept > 1) {
            for (Sum* const sum : {&all, &sums[groups[i]]}) {
                sum->logs += level(locations[i]);
                ++sum->count;
            }
        }
    }
    if (all.count < leastGroup) {
        return prior;
    }
    double squares = 0;
    double expected = 0; // of the squares, if all points of a group had one scale
    for (std::size_t i = 0; i < locations.size(); ++i) {
        if (locations[i].kept > 1) {
            Sum const& own = sums[groups[i]];
            double const away = level(locations[i]) - (own.count < leastGroup ? all : own).mean();
            squares += away * away;
            expected += boost::math::trigamma(locations[i].freedom() / 2);
        }
    }
    double const between = (squares - expected) / static_cast<double>(all.count);
    prior.freedom =
        between > 0 ? std::min(2 * inverseTrigamma(between), manyFreedoms) : manyFreedoms;
    for (Sum const& own : sums) {
        double const mean = (own.count < leastGroup ? all : own).mean();
        prior.scales.push_back(std::exp(mean + meanLog(prior.freedom)));
    }
    return prior;
}

double Estimate::chance() const {
    return 2 * cdf(complement(student(freedom), std::fabs(center) / error));
}

double Estimate::halfWidth(double level) const {
    return error * quantile(student(freedom), (1 + level) / 2);
}

Estimate moderated(Location const& location, Prior const& prior, std::size_t group) {
    double const own = location.freedom();
    double variance = location.variance;
    if (prior.freedom > 0) {
        double const borrowed = prior.freedom * prior.scales[group];
        variance = (own * variance + borrowed) / (own + prior.freedom);
    }
    return {location.center, std::sqrt(variance / location.kept), own + prior.freedom};
}

double discoveryLimit(std::vector<double> chances, double falseShare) {
    std::sort(chances.begin(), chances.end());
    double const each = falseShare / static_cast<double>(chances.size());
    for (std::size_t rank = chances.size(); rank > 0; --rank) {
        if (chances[rank - 1] <= each * static_cast<double>(rank)) {
            return chances[rank - 1];
        }
    }
    return -1;
}

double medianOf(std::vector<double> values) {
    auto const half = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), half, values.end());
    return values.size() % 2 != 0 ? *half : (*half + *std::max_element(values.begin(), half)) / 2;
}

double quantileOf(std::vector<double> values, double share) {
    auto const place = values.begin() +
                       static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

} // namespace tables
