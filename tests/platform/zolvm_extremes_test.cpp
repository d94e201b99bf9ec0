// zolvm_extremes_test.cpp - the extreme points of all functions on every path, each alone among
// ordinary numbers, in a vector with a tail.
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include "zolvm_catalogue.h"
#include "zolvm_reference.h"

namespace {

using Number = std::complex<double>;

constexpr std::size_t length = 19; // a block of the vector loops and a tail
double const nan = std::numeric_limits<double>::quiet_NaN();

// Both signs of the ends of a type's kinds of numbers.
template <class T>
void addEnds(std::vector<double>& points) {
    using Limits = std::numeric_limits<T>;
    T const inf = Limits::infinity();
    for (T const x : {T(0), Limits::denorm_min(), std::nextafter(Limits::min(), T(0)),
                      Limits::min(), std::nextafter(T(1), T(0)), T(1), std::nextafter(T(1), inf),
                      std::nextafter(T(2), T(0)), T(2), Limits::max(), inf}) {
        points.insert(points.end(), {double(x), -double(x)});
    }
    points.push_back(nan);
}
std::vector<double> endsOf(bool single) {
    std::vector<double> points;
    single ? addEnds<float>(points) : addEnds<double>(points);
    return points;
}
// Where families overflow, vanish, reach a limit or need another method.
std::vector<double> pointsOf(bool single) {
    std::vector<double> points = endsOf(single);
    std::vector<double> const limits =
        single
            ? std::vector<double>{0.5,   2.5,   9.194, 10.06, 12.95, 14.2,   87.34, 88.722, 88.73,
                                  89.41, 89.42, 103.9, 104,   16385, 0x1p23, 1e13,  1e20}
            : std::vector<double>{0.5,   2.5,     26.543,  27.226,  37.52,   38.5,
                                  708.5, 709.782, 709.783, 710.475, 710.476, 745.1,
                                  746,   1048577, 0x1p52,  1e103,   1e155};
    for (double const x : limits) {
        double const y = single ? double(float(x)) : x;
        points.insert(points.end(), {y, -y});
    }
    return points;
}

// Single precision overflows on its way where double doesn't; of a NaN that makes no infinity.
Number shortProduct(Number z, Number w) {
    Number const wide = z * w;
    bool const none = std::isnan(wide.real()) && std::isnan(wide.imag());
    return none ? wide : Number(std::complex<float>(z) * std::complex<float>(w));
}

// The C library says what special complex numbers give.
using Oracle = Number (*)(Number, Number);
std::map<std::string, Oracle> const complexOracles = {
    {"Sqrt", [](Number z, Number) { return std::sqrt(z); }},
    {"Exp", [](Number z, Number) { return std::exp(z); }},
    {"Ln", [](Number z, Number) { return std::log(z); }},
    {"Asin", [](Number z, Number) { return std::asin(z); }},
    {"Acos", [](Number z, Number) { return std::acos(z); }},
    {"Acosh", [](Number z, Number) { return std::acosh(z); }},
    {"Asinh", [](Number z, Number) { return std::asinh(z); }},
    {"Atan", [](Number z, Number) { return std::atan(z); }},
    {"Atanh", [](Number z, Number) { return std::atanh(z); }},
    {"Sin", [](Number z, Number) { return std::sin(z); }},
    {"Cos", [](Number z, Number) { return std::cos(z); }},
    {"Tan", [](Number z, Number) { return std::tan(z); }},
    {"Sinh", [](Number z, Number) { return std::sinh(z); }},
    {"Cosh", [](Number z, Number) { return std::cosh(z); }},
    {"Tanh", [](Number z, Number) { return std::tanh(z); }},
    {"Abs", [](Number z, Number) { return Number(std::abs(z)); }},
    {"Arg", [](Number z, Number) { return Number(std::arg(z)); }},
    {"Mul", [](Number z, Number w) { return z * w; }},
    {"MulByConj", [](Number z, Number w) { return z * std::conj(w); }},
    {"sMul", shortProduct},
    {"sMulByConj", [](Number z, Number w) { return shortProduct(z, std::conj(w)); }},
    {"Div", [](Number z, Number w) { return z / w; }},
    {"Add", [](Number z, Number w) { return z + w; }},
    {"Sub", [](Number z, Number w) { return z - w; }},
    {"Conj", [](Number z, Number) { return std::conj(z); }},
};

// Specials must be met exactly, with the sign of a zero; flush-to-zero may make a zero of a result
// or of a step towards it.
bool agrees(double got, Digits wanted, Function const& function, bool flush) {
    double const value = wanted.high;
    double const least = function.single ? 0x1p-126 : 0x1p-1022;
    double const most = function.single ? double(std::numeric_limits<float>::max())
                                        : std::numeric_limits<double>::max();
    if (std::isnan(value) || std::isinf(value) || value == 0) {
        return sameNumber(got, value) || (flush && value == 0 && std::fabs(got) <= least);
    }
    if (std::fabs(value) > most) {
        return std::fabs(got) >= most && std::signbit(got) == std::signbit(value);
    }
    if (flush && std::fabs(value) < 2 * least) {
        return std::fabs(got) <= 2 * least;
    }
    if (std::fabs(value) < least) { // the suffix promises nothing
        return std::fabs(got - value) <=
               1e-3 * std::fabs(value) + 4 * (function.single ? 0x1p-149 : 0x1p-1074);
    }
    return errorOf(got, {wanted, {0, 0}}, function) <= boundOf(function);
}
bool agrees(Number got, Number wanted, Function const& function) {
    auto const parts = [&](double a, double b) {
        return sameNumber(a, function.single ? double(float(b)) : b);
    };
    // Beside a large part a small one may be anything small: errors are those of the norm.
    double const slack = 1e-3 * std::abs(wanted) + 1e-44;
    return (parts(got.real(), wanted.real()) && parts(got.imag(), wanted.imag())) ||
           (std::isfinite(slack) && std::abs(got - wanted) <= slack);
}

// Values of a family, which its accuracies share.
Digits valueOf(std::string const& family, double x, double y) {
    static std::map<std::tuple<std::string, std::uint64_t, std::uint64_t>, Digits> known;
    auto const [at, isNew] = known.try_emplace(
        {family, std::bit_cast<std::uint64_t>(x), std::bit_cast<std::uint64_t>(y)});
    if (isNew) {
        at->second = reference(family, false, x, y).re;
    }
    return at->second;
}

struct Point {
    Number first;
    Number second;
};
std::vector<Point> pointsOf(Function const& function) {
    std::vector<Point> points;
    std::vector<double> const ends = endsOf(function.single);
    for (double const x : function.complexSource ? ends : pointsOf(function.single)) {
        if (!function.complexSource && function.sources == 1) {
            points.push_back({x, x});
            continue;
        }
        for (double const y : ends) {
            points.push_back(function.complexSource ? Point{{x, y}, {y, 1}} : Point{x, y});
        }
    }
    return points;
}

class ZolvmExtremes : public ZolvmFixture, public testing::WithParamInterface<bool> {};

TEST_P(ZolvmExtremes, AreRightAtEachPlaceOnEveryPath) {
    bool const flush = GetParam();
    for (Zol64u const path : runnablePaths()) {
        zolSetCpuFeatures(path);
        for (Function const& function : allFunctions()) {
            Numbers first = workNumbers(function, false, length);
            Numbers second = workNumbers(function, true, length);
            Numbers const ordinary[] = {first, second};
            std::vector<Point> const points = pointsOf(function);
            auto oracle = complexOracles.find((function.single ? "s" : "") + function.family);
            oracle = oracle == complexOracles.end() ? complexOracles.find(function.family) : oracle;
            bool const isReal = !function.complexSource && !function.complexResult;
            Numbers around;
            harnessModes = flush;
            function.call(first, second, around, 0, false);
            // Few points go to each place; many visit all places by turns.
            bool const each = points.size() < 100 && !flush;
            for (std::size_t i = 0; i < points.size() * (each ? length : 1); ++i) {
                auto const& [x, y] = points[i / (each ? length : 1)];
                std::size_t const place = i % length;
                first[place] = x;
                second[function.byValue ? 0 : place] = y;
                Numbers results;
                function.call(first, second, results, 0, false);
                for (std::size_t j = 0; j < results.size(); ++j) {
                    bool right = true;
                    if (j % length != place) {
                        right = function.byValue || same(results[j], around[j]);
                    } else if (isReal) {
                        Digits const wanted =
                            valueOf(function.resultFamily(j >= length), x.real(), y.real());
                        right = agrees(results[j].real(), wanted, function, flush);
                    } else if (oracle != complexOracles.end() && !flush) {
                        right = agrees(results[j], oracle->second(x, y), function);
                    }
                    EXPECT_TRUE(right) << function.name << x << y << " at " << place << " of path "
                                       << std::hex << path << (flush ? ", flushing," : "")
                                       << " gives " << results[j] << " at " << std::dec << j;
                }
                first[place] = ordinary[0][place];
                second[place] = ordinary[1][place];
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, ZolvmExtremes, testing::Bool());

} // namespace
