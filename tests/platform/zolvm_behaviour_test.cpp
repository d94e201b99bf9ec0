// zolvm_behaviour_test.cpp - what holds for all functions beside their accuracy: special arguments,
// status, flags, lengths, alignment, code paths.
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "zolvm_catalogue.h"

namespace {

using Number = std::complex<double>;

double const infinity = std::numeric_limits<double>::infinity();
double const nan = std::numeric_limits<double>::quiet_NaN();

Numbers workNumbers(Function const& function, bool second, std::size_t count) {
    Work const work = workOf(function);
    std::mt19937 random(second ? 11 : 5);
    auto const draw = [&](Interval interval) {
        return std::uniform_real_distribution<>(interval.low, interval.high)(random);
    };
    Numbers numbers;
    for (std::size_t i = 0; i < count; ++i) {
        double const re = draw(second ? work.second : work.first);
        double const im = draw(second ? work.secondImaginary : work.firstImaginary);
        numbers.emplace_back(re, im);
    }
    return numbers;
}

bool sameNumber(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}
bool same(Number a, Number b) {
    return sameNumber(a.real(), b.real()) && sameNumber(a.imag(), b.imag());
}

// Volatile, because g++ 12 folds the two conversions of a pair of numbers into none.
Number narrowed(Number z, bool single) {
    float const volatile re = static_cast<float>(z.real());
    float const volatile im = static_cast<float>(z.imag());
    return single ? Number(re, im) : z;
}

// Every test on every path; some also in the modes that a measuring program sets.
class ZolvmBehaviour : public testing::Test {
protected:
    ~ZolvmBehaviour() override {
        harnessModes = false;
        flagsBefore = 0;
        trapping = false;
        zolInit();
    }

    template <class Check>
    void onEveryPath(Check check) {
        for (Zol64u const path : runnablePaths()) {
            SCOPED_TRACE(testing::Message() << "path " << std::hex << path);
            zolSetCpuFeatures(path);
            for (Function const& function : allFunctions()) {
                check(function);
            }
        }
    }
};

TEST_F(ZolvmBehaviour, LeavesNoFlagsBehindOrdinaryArguments) {
    unsigned const inexact = 0x20;
    for (bool const harness : {false, true}) {
        SCOPED_TRACE(harness ? "in the modes of the harness" : "in the default modes");
        onEveryPath([&](Function const& function) {
            // Odd lengths, so that padded tails are among the calls.
            for (std::size_t const length : {1U, 37U, 1000U}) {
                Numbers const first = workNumbers(function, false, length);
                Numbers const second = workNumbers(function, true, length);
                Numbers results;
                harnessModes = harness;
                for (bool const traps : {false, true}) {
                    trapping = traps; // a trap would end the test program
                    ZolStatus const status = function.call(first, second, results, 0, false);
                    EXPECT_EQ(status, zolStsNoErr) << function.name;
                    EXPECT_EQ(lastTraces.sseFlags & ~inexact, 0U) << function.name << ' ' << length;
                    EXPECT_EQ(lastTraces.x87Flags & ~inexact, 0U) << function.name << ' ' << length;
                    EXPECT_EQ(lastTraces.changedControl, 0U) << function.name;
                }
            }
        });
    }
}

TEST_F(ZolvmBehaviour, TakesAnyLengthAlignmentAndPlace) {
    onEveryPath([&](Function const& function) {
        // Two blocks and a rest, with a special argument in each part.
        std::size_t const most = 531;
        Numbers first = workNumbers(function, false, most);
        Numbers const second = workNumbers(function, true, most);
        for (std::size_t const at : {3U, 300U, 530U}) {
            first[at] = {nan, nan};
        }
        Numbers whole;
        function.call(first, second, whole, 0, false);
        for (std::size_t const length : {1U, 2U, 15U, 16U, 17U, 33U, 255U, 256U, 257U, 531U}) {
            for (int const extra : {0, 1, 3}) {
                bool const inPlace = extra == 1;
                Numbers const part(first.begin(), first.begin() + static_cast<long>(length));
                Numbers const part2(second.begin(), second.begin() + static_cast<long>(length));
                Numbers results;
                function.call(part, part2, results, extra, inPlace);
                EXPECT_FALSE(lastTraces.wroteBehind) << function.name << ' ' << length;
                for (std::size_t i = 0; i < results.size(); ++i) {
                    Number const wanted = whole[i < length ? i : most + i - length];
                    ASSERT_TRUE(same(results[i], wanted))
                        << function.name << ' ' << length << ' ' << extra << ' ' << i;
                }
            }
        }
    });
}

TEST_F(ZolvmBehaviour, RefusesNullPointersAndEmptyArrays) {
    for (Function const& function : allFunctions()) {
        EXPECT_EQ(function.callBadly(1, 2), zolStsNullPtrErr) << function.name;
        EXPECT_EQ(function.callBadly(4, 2), zolStsNullPtrErr) << function.name;
        if (function.sources == 2 && !function.byValue) {
            EXPECT_EQ(function.callBadly(2, 2), zolStsNullPtrErr) << function.name;
        }
        if (function.results == 2) {
            EXPECT_EQ(function.callBadly(8, 2), zolStsNullPtrErr) << function.name;
        }
        EXPECT_EQ(function.callBadly(0, 0), zolStsSizeErr) << function.name;
        EXPECT_EQ(function.callBadly(0, -5), zolStsSizeErr) << function.name;
    }
}

// The C library's scalar functions say what a special argument gives.
using Oracle1 = double (*)(double);
using Oracle2 = double (*)(double, double);
std::map<std::string, Oracle1> const oracles = {
    {"Abs", std::fabs},
    {"Acos", std::acos},
    {"Acosh", std::acosh},
    {"Asin", std::asin},
    {"Asinh", std::asinh},
    {"Atan", std::atan},
    {"Atanh", std::atanh},
    {"Cbrt", std::cbrt},
    {"Ceil", std::ceil},
    {"Cos", std::cos},
    {"Cosh", std::cosh},
    {"Erf", std::erf},
    {"Erfc", std::erfc},
    {"Exp", std::exp},
    {"Expm1", std::expm1},
    {"Floor", std::floor},
    {"Ln", std::log},
    {"Log10", std::log10},
    {"Log1p", std::log1p},
    {"Rint", std::rint},
    {"NearbyInt", std::nearbyint},
    {"Round", std::round},
    {"Sin", std::sin},
    {"SinCos", std::sin},
    {"Sinh", std::sinh},
    {"Sqrt", std::sqrt},
    {"Tan", std::tan},
    {"Tanh", std::tanh},
    {"Trunc", std::trunc},
    {"Modf", std::trunc},
    {"Frac",
     [](double x) {
         double whole = 0;
         return std::modf(x, &whole);
     }},
    {"Inv", [](double x) { return 1 / x; }},
    {"InvSqrt", [](double x) { return 1 / std::sqrt(x); }},
    {"InvCbrt", [](double x) { return 1 / std::cbrt(x); }},
    {"Pow2o3", [](double x) { return std::cbrt(x) * std::cbrt(x); }},
    {"Sqr", [](double x) { return x * x; }},
    {"CdfNorm", [](double x) { return 0.5 * std::erfc(-x * std::sqrt(0.5)); }},
};
std::map<std::string, Oracle2> const oracles2 = {
    {"Atan2", std::atan2},
    {"Hypot", std::hypot},
    {"Pow", std::pow},
    {"Powx", std::pow},
    {"Add", [](double x, double y) { return x + y; }},
    {"Sub", [](double x, double y) { return x - y; }},
    {"Mul", [](double x, double y) { return x * y; }},
    {"Div", [](double x, double y) { return x / y; }},
};

// Specials must be met exactly, other results roughly: accuracy is tested elsewhere. Flush-to-zero
// may make a zero of a tiny result or argument.
bool agrees(double got, double wanted, bool flush) {
    double const tiny = 1e-37;
    if (std::isnan(wanted) || std::isinf(wanted) || (wanted == 0 && !flush)) {
        return sameNumber(got, wanted);
    }
    if (flush && std::fabs(wanted) < tiny) {
        return std::fabs(got) < tiny;
    }
    return std::fabs(got - wanted) <= 1e-3 * std::fabs(wanted) + 1e-44;
}

TEST_F(ZolvmBehaviour, GivesWhatTheStandardSaysForSpecialArguments) {
    double const specials[] = {0.0,    -0.0, infinity, -infinity, nan,  1.0,  -1.0, 2.0,
                               -2.0,   3.0,  -3.0,     0.5,       -0.5, 2.5,  -2.5, 1e-40,
                               -1e-40, 1e30, -1e30,    1e-30,     100,  -100, 0.25};
    onEveryPath([&](Function const& function) {
        if (function.complexSource || function.complexResult) {
            return;
        }
        for (bool const flush : {false, true}) {
            for (double const y : specials) {
                Numbers first;
                for (double const x : specials) {
                    first.push_back(narrowed(x, function.single));
                }
                Numbers const second(first.size(), narrowed(y, function.single));
                Numbers results;
                harnessModes = flush;
                function.call(first, second, results, 0, false);
                auto const one = oracles.find(function.family);
                auto const two = oracles2.find(function.family);
                for (std::size_t i = 0; i < first.size(); ++i) {
                    double const x = first[i].real();
                    bool const known = one != oracles.end() || two != oracles2.end();
                    if (!known) {
                        continue;
                    }
                    double wanted =
                        one != oracles.end() ? one->second(x) : two->second(x, second[i].real());
                    wanted = narrowed(wanted, function.single).real();
                    EXPECT_TRUE(agrees(results[i].real(), wanted, flush))
                        << function.name << '(' << x << ", " << second[i].real() << ") is "
                        << results[i].real() << ", not " << wanted << (flush ? " (flushing)" : "");
                }
                if (function.sources == 1) {
                    break;
                }
            }
        }
    });
}

TEST_F(ZolvmBehaviour, GivesWhatTheStandardSaysForSpecialComplexNumbers) {
    std::map<std::string, Number (*)(Number, Number)> const complexOracles = {
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
        {"Div", [](Number z, Number w) { return z / w; }},
        {"Conj", [](Number z, Number) { return std::conj(z); }},
    };
    double const parts[] = {0.0,      -0.0,      1.0, -1.0, 2.0,   -3.0,
                            infinity, -infinity, nan, 1e12, -1e-12};
    Numbers first;
    Numbers second;
    for (double const re : parts) {
        for (double const im : parts) {
            first.emplace_back(re, im);
            second.emplace_back(im, 1.0);
        }
    }
    onEveryPath([&](Function const& function) {
        auto const oracle = complexOracles.find(function.family);
        if (!function.complexSource || oracle == complexOracles.end()) {
            return;
        }
        Numbers results;
        function.call(first, second, results, 0, false);
        for (std::size_t i = 0; i < first.size(); ++i) {
            Number wanted = oracle->second(narrowed(first[i], function.single), second[i]);
            wanted = narrowed(wanted, function.single);
            // Beside a large part a small one may be anything small: errors are those of the norm.
            double const slack = 1e-3 * std::abs(wanted);
            Number const off = results[i] - wanted;
            bool const close = std::isfinite(slack) && std::abs(off) <= slack + 1e-44;
            EXPECT_TRUE(close || (agrees(results[i].real(), wanted.real(), false) &&
                                  agrees(results[i].imag(), wanted.imag(), false)))
                << function.name << first[i] << second[i] << " is " << results[i] << ", not "
                << wanted;
        }
    });
}

TEST_F(ZolvmBehaviour, TellsTheFirstUnusualElement) {
    struct Case {
        char const* family;
        double first;
        double second;
        ZolStatus status;
    };
    Case const cases[] = {
        {"Ln", 0, 0, zolStsSingularity},
        {"Ln", -1, 0, zolStsDomain},
        {"Ln", infinity, 0, zolStsNoErr},
        {"Ln", nan, 0, zolStsNoErr},
        {"Log1p", -1, 0, zolStsSingularity},
        {"Log10", -2, 0, zolStsDomain},
        {"Sqrt", -1, 0, zolStsDomain},
        {"Sqrt", -0.0, 0, zolStsNoErr},
        {"Exp", 1000, 0, zolStsOverflow},
        {"Exp", -1000, 0, zolStsUnderflow},
        {"Exp", -infinity, 0, zolStsNoErr},
        {"Cosh", 800, 0, zolStsOverflow},
        {"Acos", 2, 0, zolStsDomain},
        {"Acosh", 0.5, 0, zolStsDomain},
        {"Atanh", 1, 0, zolStsSingularity},
        {"Atanh", 2, 0, zolStsDomain},
        {"Sin", infinity, 0, zolStsDomain},
        {"SinCos", infinity, 0, zolStsDomain},
        {"Inv", 0, 0, zolStsSingularity},
        {"Div", 1, 0, zolStsSingularity},
        {"Div", 0, 0, zolStsDomain},
        {"Div", 0, 5, zolStsNoErr},
        {"Pow", 0, -1, zolStsSingularity},
        {"Pow", -2, 0.5, zolStsDomain},
        {"Pow", 10, 1000, zolStsOverflow},
        {"Pow", 10, -1000, zolStsUnderflow},
        {"Powx", 0, -1, zolStsSingularity},
        {"Erfc", 40, 0, zolStsUnderflow},
        {"CdfNorm", -60, 0, zolStsUnderflow},
        {"ErfInv", 1, 0, zolStsSingularity},
        {"ErfInv", -2, 0, zolStsDomain},
        {"ErfcInv", 0, 0, zolStsSingularity},
        {"CdfNormInv", 1, 0, zolStsSingularity},
        {"CdfNormInv", -1, 0, zolStsDomain},
        {"InvSqrt", 0, 0, zolStsSingularity},
        {"InvCbrt", 0, 0, zolStsSingularity},
        {"InvCbrt", infinity, 0, zolStsNoErr},
        {"Cbrt", 0, 0, zolStsNoErr},
        {"Pow2o3", 0, 0, zolStsNoErr},
        {"Pow2o3", infinity, 0, zolStsNoErr},
        {"Pow3o2", 0, 0, zolStsNoErr},
        {"Erf", infinity, 0, zolStsNoErr},
        {"ErfInv", 0, 0, zolStsNoErr},
        {"ErfcInv", -1e-40, 0, zolStsDomain},
        {"Atan2", 0, -1, zolStsNoErr},
        {"Hypot", infinity, 1, zolStsNoErr},
    };
    onEveryPath([&](Function const& function) {
        for (Case const& one : cases) {
            if (function.family != one.family || function.complexSource) {
                continue;
            }
            Numbers first = workNumbers(function, false, 40);
            Numbers second = workNumbers(function, true, 40);
            first[17] = one.first;
            second[function.byValue ? 0 : 17] = one.second;
            if (function.byValue) {
                first.assign(40, one.first);
            }
            Numbers results;
            // Flags of an earlier calculation neither hide a new one nor get lost.
            for (unsigned const flags : {0U, 0x1dU}) {
                flagsBefore = flags;
                EXPECT_EQ(function.call(first, second, results, 0, false), one.status)
                    << function.name << '(' << one.first << ", " << one.second << "), flags "
                    << flags;
                EXPECT_EQ(lastTraces.sseFlags & flags, flags) << function.name;
                unsigned const invalidOrZeroDivide = 0x05;
                if (one.status == zolStsNoErr) {
                    EXPECT_EQ(lastTraces.sseFlags & invalidOrZeroDivide & ~flags, 0U)
                        << function.name << '(' << one.first << ')';
                }
            }
        }
    });
}

// The low-accuracy forms rely on the C library's vector functions to raise a flag for arguments
// that are not ordinary, the quickest on bounds for their estimates; the best look at each
// argument.
TEST_F(ZolvmBehaviour, AllAccuraciesTellTheSameOfRandomBits) {
    onEveryPath([&](Function const& function) {
        bool const isBest = function.accuracy == "A24" || function.accuracy == "A53";
        if (isBest || function.complexSource || function.complexResult || function.byValue) {
            return;
        }
        for (Function const& best : rowsOf(function.family, function.single, false)) {
            if (best.accuracy != "A24" && best.accuracy != "A53") {
                continue;
            }
            std::mt19937_64 random(3);
            auto const draw = [&]() -> double {
                std::uint64_t const bits = random();
                double const any = function.single
                                       ? std::bit_cast<float>(static_cast<std::uint32_t>(bits))
                                       : std::bit_cast<double>(bits);
                return std::isnan(any) ? nan : any; // signalling ones are a domain error for some
            };
            Numbers first = workNumbers(function, false, 16);
            Numbers second = workNumbers(function, true, 16);
            for (int i = 0; i < 1500; ++i) {
                first[5] = draw();
                second[5] = i % 2 == 0 ? draw() : 2.5;
                Numbers results;
                Numbers wanted;
                ZolStatus const status = function.call(first, second, results, 0, false);
                ZolStatus const bestStatus = best.call(first, second, wanted, 0, false);
                EXPECT_EQ(status, bestStatus) << function.name << first[5] << second[5];
                double const result = results[5].real();
                EXPECT_TRUE(std::isfinite(result) || sameNumber(result, wanted[5].real()))
                    << function.name << first[5] << second[5] << " is " << result;
            }
        }
    });
}

TEST_F(ZolvmBehaviour, ANarrowerMaskRunsOtherCode) {
    std::vector<Zol64u> const paths = runnablePaths();
    std::vector<std::vector<Numbers>> resultsOfPaths;
    for (Zol64u const path : paths) {
        zolSetCpuFeatures(path);
        std::vector<Numbers> results;
        for (Function const& function : allFunctions()) {
            results.emplace_back();
            function.call(workNumbers(function, false, 500), workNumbers(function, true, 500),
                          results.back(), 0, false);
        }
        resultsOfPaths.push_back(results);
    }
    // Fused operations and other vector functions differ in the last bits of some results. What
    // instruments the code keeps the loops scalar, and then only fusing makes a difference.
    for (std::size_t i = 1; i < paths.size(); ++i) {
        EXPECT_NE(resultsOfPaths[i], resultsOfPaths[0]);
#ifndef PS_SCALAR_LOOPS
        EXPECT_NE(resultsOfPaths[i], resultsOfPaths[i - 1]);
#endif
    }
}

} // namespace
