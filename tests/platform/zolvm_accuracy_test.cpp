// zolvm_accuracy_test.cpp - every function on every code path against a reference of many digits.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "zolvm_catalogue.h"
#include "zolvm_reference.h"

namespace {

constexpr int workCount = 1000;
constexpr int wideCount = 1500;

double const infinity = std::numeric_limits<double>::infinity();

// Numbers of a family: some from its Work intervals, the rest from all over the line, with an
// exponent drawn first.
class Arguments {
public:
    explicit Arguments(Function const& row) : function(row), work(workOf(row)) {}

    std::complex<double> draw(bool second, bool wide) {
        Interval const real = second ? work.second : work.first;
        Interval const imaginary = second ? work.secondImaginary : work.firstImaginary;
        double const re = wide ? anywhere(second) : within(real);
        double const im = !function.complexSource ? 0 : wide ? anywhere(second) : within(imaginary);
        return {rounded(re), rounded(im)};
    }

private:
    double within(Interval interval) {
        return std::uniform_real_distribution<>(interval.low, interval.high)(random);
    }
    // Complex numbers and exponents of powers stay near 1, where results are finite.
    double anywhere(bool second) {
        bool const power = function.family == "Pow" || function.family == "Powx";
        bool const far = !function.complexSource && !power && random() % 3 == 0;
        int const range = function.single ? 126 : 1020;
        // Down to denormal numbers.
        std::uniform_int_distribution<> exponents(far               ? -range - range / 20
                                                  : second && power ? -4
                                                                    : -24,
                                                  far                      ? range
                                                  : function.complexSource ? 6
                                                                           : 24);
        double const size =
            std::ldexp(1 + std::uniform_real_distribution<>(0, 1)(random), exponents(random));
        double const nearOne = 1 + std::ldexp(size, -30);
        double const chosen = random() % 8 == 0 ? nearOne : size;
        return random() % 2 == 0 ? chosen : -chosen;
    }
    double rounded(double x) const {
        return function.single ? static_cast<double>(static_cast<float>(x)) : x;
    }

    Function const& function;
    Work work;
    std::mt19937 random{7};
};

// Distance of two neighbours at a number of this size.
double spacing(double size, bool single) {
    int exponent = 0;
    std::frexp(size, &exponent);
    int const least = single ? -125 : -1021;
    return std::ldexp(1.0, (exponent < least ? least : exponent) - (single ? 24 : 53));
}

struct Sample {
    std::complex<double> first;
    std::complex<double> second;
    Reference wanted;
};

// Error in units of the last place: of the number, or of the norm of a complex result. That of the
// enhanced-performance forms is relative, the unit being that of 1.
double errorOf(std::complex<double> got, Reference const& wanted, Function const& function) {
    double const re = (got.real() - wanted.re.high) - wanted.re.low;
    double const im = (got.imag() - wanted.im.high) - wanted.im.low;
    double const size = std::hypot(wanted.re.high, wanted.im.high);
    bool const relative = function.accuracy == "A11" || function.accuracy == "A26";
    double const unit =
        relative && size != 0 ? size * spacing(1, function.single) : spacing(size, function.single);
    return std::hypot(re, im) / unit;
}

std::vector<Sample> samplesOf(Function const& best, bool secondResult) {
    Arguments arguments(best);
    Numbers firsts;
    Numbers seconds;
    std::complex<double> const scalar = arguments.draw(true, false);
    for (int i = 0; i < workCount + wideCount; ++i) {
        firsts.push_back(arguments.draw(false, i >= workCount));
        seconds.push_back(best.byValue ? scalar : arguments.draw(true, i >= workCount));
    }
    Numbers starts;
    best.call(firsts, seconds, starts, 0, false);
    std::vector<Sample> samples;
    double const least = best.single ? 0x1p-126 : 0x1p-1022;
    double const most = best.single ? 0x1.fffffep127 : 0x1.fffffffffffffp1023;
    for (std::size_t i = 0; i < firsts.size(); ++i) {
        std::string const family =
            secondResult ? best.family == "Modf" ? "Frac" : "Cos" : best.family;
        Reference const wanted =
            reference(family, best.complexSource, firsts[i], seconds[i], starts[i].real());
        double const size = std::hypot(wanted.re.high, wanted.im.high);
        // Results out of the normal range are a matter of the special arguments.
        if ((size >= least && size <= most) || size == 0) {
            samples.push_back({firsts[i], seconds[i], wanted});
        }
    }
    return samples;
}

// What the suffix promises, in units of the last place.
double boundOf(Function const& function) {
    std::map<std::string, double> const bounds = {{"A11", 0x1p12}, {"A21", 4}, {"A24", 1},
                                                  {"A26", 0x1p26}, {"A50", 4}, {"A53", 1}};
    static std::set<std::string> const exact = {"Add",       "Sub",   "Sqr",   "Conj",
                                                "Ceil",      "Floor", "Frac",  "Modf",
                                                "NearbyInt", "Rint",  "Round", "Trunc"};
    bool const exactReal =
        !function.complexSource && (function.family == "Mul" || function.family == "Abs");
    if (exact.count(function.family) != 0 || exactReal) {
        return function.complexSource ? 0.7072 : 0.5; // each part is half a unit off at most
    }
    return bounds.at(function.accuracy) * (function.complexResult ? 4 : 1);
}

void append(std::map<std::string, double>& worst, std::string const& name, double error) {
    worst[name] = std::max(worst[name], error);
}

class ZolvmAccuracy : public testing::TestWithParam<std::pair<bool, bool>> {
protected:
    ~ZolvmAccuracy() override { zolInit(); }
};

TEST_P(ZolvmAccuracy, IsTrueToTheSuffixOnEveryPath) {
    auto const [single, complexSource] = GetParam();
    std::set<std::string> families;
    for (Function const& function : allFunctions()) {
        families.insert(function.family);
    }
    std::map<std::string, double> worst;
    for (std::string const& family : families) {
        std::vector<Function> const rows = rowsOf(family, single, complexSource);
        for (int result = 0; !rows.empty() && result < rows.front().results; ++result) {
            zolInit();
            std::vector<Sample> const samples = samplesOf(rows.back(), result == 1);
            EXPECT_GT(samples.size(), 200U) << family;
            Numbers firsts;
            Numbers seconds;
            for (Sample const& sample : samples) {
                firsts.push_back(sample.first);
                seconds.push_back(sample.second);
            }
            for (Zol64u const path : runnablePaths()) {
                zolSetCpuFeatures(path);
                for (Function const& row : rows) {
                    Numbers results;
                    row.call(firsts, seconds, results, 0, false);
                    double largest = -1;
                    std::size_t where = 0;
                    for (std::size_t i = 0; i < samples.size(); ++i) {
                        std::size_t const at =
                            i + static_cast<std::size_t>(result) * samples.size();
                        double const error = errorOf(results[at], samples[i].wanted, row);
                        if (!(error <= largest)) {
                            largest = std::isnan(error) ? infinity : error;
                            where = i;
                        }
                    }
                    append(worst, row.name, largest);
                    EXPECT_LE(largest, boundOf(row))
                        << row.name << (result == 1 ? " (second result)" : "") << " on path "
                        << std::hex << path << " at " << firsts[where] << ", " << seconds[where]
                        << std::hexfloat << ' ' << firsts[where] << " gives " << results[where];
                }
            }
        }
    }
    // With the name of a file in this variable the measured errors are kept.
    if (char const* const name = std::getenv("ZOLVM_ACCURACY_TABLE")) {
        std::FILE* const file = std::fopen(name, "a");
        ASSERT_NE(file, nullptr);
        for (auto const& [function, error] : worst) {
            std::fprintf(file, "%s %.3f\n", function.c_str(), error);
        }
        std::fclose(file);
    }
}

INSTANTIATE_TEST_SUITE_P(Types, ZolvmAccuracy,
                         testing::Values(std::pair(true, false), std::pair(false, false),
                                         std::pair(true, true), std::pair(false, true)));

} // namespace
