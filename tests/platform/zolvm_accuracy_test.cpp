// zolvm_accuracy_test.cpp - every function on every code path against a reference of many digits.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "zolvm_catalogue.h"
#include "zolvm_reference.h"

namespace {

constexpr int workCount = 400;
constexpr int wideCount = 600;

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

struct Samples {
    Numbers firsts;
    Numbers seconds;
    std::vector<Reference> wanted;
};

Samples samplesOf(Function const& best, bool secondResult) {
    Arguments arguments(best);
    Samples samples;
    std::complex<double> const scalar = arguments.draw(true, false);
    double const least = best.single ? 0x1p-126 : 0x1p-1022;
    double const most = best.single ? 0x1.fffffep127 : 0x1.fffffffffffffp1023;
    for (int i = 0; i < workCount + wideCount; ++i) {
        auto const first = arguments.draw(false, i >= workCount);
        auto const second = best.byValue ? scalar : arguments.draw(true, i >= workCount);
        Reference const wanted =
            reference(best.resultFamily(secondResult), best.complexSource, first, second);
        double const size = std::hypot(wanted.re.high, wanted.im.high);
        // Results out of the normal range are a matter of the special arguments.
        if ((size >= least && size <= most) || size == 0) {
            samples.firsts.push_back(first);
            samples.seconds.push_back(second);
            samples.wanted.push_back(wanted);
        }
    }
    return samples;
}

class ZolvmAccuracy : public ZolvmFixture,
                      public testing::WithParamInterface<std::pair<bool, bool>> {};

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
            auto const [firsts, seconds, wanted] = samplesOf(rows.back(), result == 1);
            EXPECT_GT(wanted.size(), 80U) << family;
            for (Zol64u const path : runnablePaths()) {
                zolSetCpuFeatures(path);
                for (Function const& row : rows) {
                    Numbers results;
                    row.call(firsts, seconds, results, 0, false);
                    double largest = -1;
                    std::size_t where = 0;
                    for (std::size_t i = 0; i < wanted.size(); ++i) {
                        double const error =
                            errorOf(results[i + (result == 1 ? wanted.size() : 0)], wanted[i], row);
                        if (!(error <= largest)) {
                            largest = std::isnan(error) ? infinity : error;
                            where = i;
                        }
                    }
                    worst[row.name] = std::max(worst[row.name], largest);
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
