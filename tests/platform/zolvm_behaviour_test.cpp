// zolvm_behaviour_test.cpp - what holds for all functions beside their accuracy: special arguments,
// status, flags, lengths, alignment, code paths.
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include <gtest/gtest.h>

#include "zolvm_catalogue.h"

namespace {

double const nan = std::numeric_limits<double>::quiet_NaN();

// Every test on every path; some also in the modes that a measuring program sets.
class ZolvmBehaviour : public ZolvmFixture {
protected:
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
                    std::complex<double> const wanted = whole[i < length ? i : most + i - length];
                    ASSERT_TRUE(same(results[i], wanted))
                        << function.name << ' ' << length << ' ' << extra << ' ' << i;
                }
            }
        }
    });
}

TEST_F(ZolvmBehaviour, RefusesNullPointersAndEmptyArrays) {
    for (Function const& function : allFunctions()) {
        unsigned const pointers = 5U | (function.sources == 2 && !function.byValue ? 2U : 0U) |
                                  (function.results == 2 ? 8U : 0U);
        for (unsigned const null : {1U, 2U, 4U, 8U}) {
            if ((pointers & null) != 0) {
                EXPECT_EQ(function.callBadly(null, 2), zolStsNullPtrErr) << function.name << null;
            }
        }
        EXPECT_EQ(function.callBadly(0, 0), zolStsSizeErr) << function.name;
        EXPECT_EQ(function.callBadly(0, -5), zolStsSizeErr) << function.name;
    }
}

TEST_F(ZolvmBehaviour, TellsTheFirstUnusualElement) {
    struct Case {
        char const* families; // between blanks
        double first;
        double second; // of those that have two sources
        ZolStatus status;
    };
    Case const cases[] = {
        {" Ln Inv InvSqrt InvCbrt ErfcInv Pow Powx ", 0, -1, zolStsSingularity},
        {" Log1p ", -1, 0, zolStsSingularity},
        {" Div Atanh ErfInv CdfNormInv ", 1, 0, zolStsSingularity},
        {" Ln Sqrt CdfNormInv ", -1, 0, zolStsDomain},
        {" Log10 ErfInv Pow ", -2, 0.5, zolStsDomain},
        {" Acos Atanh ", 2, 0, zolStsDomain},
        {" Acosh ", 0.5, 0, zolStsDomain},
        {" Sin SinCos ", infinity, 0, zolStsDomain},
        {" Div ", 0, 0, zolStsDomain},
        {" ErfcInv ", -1e-40, 0, zolStsDomain},
        {" Ln InvCbrt Pow2o3 Erf Hypot ", infinity, 1, zolStsNoErr},
        {" Ln ", nan, 0, zolStsNoErr},
        {" Sqrt ", -0.0, 0, zolStsNoErr},
        {" Exp ", -infinity, 0, zolStsNoErr},
        {" Cbrt Pow2o3 Pow3o2 ErfInv Atan2 ", 0, -1, zolStsNoErr},
        {" Div ", 0, 5, zolStsNoErr},
        {" Exp Pow ", 1000, 1000, zolStsOverflow},
        {" Cosh ", 800, 0, zolStsOverflow},
        {" Exp ", -1000, 0, zolStsUnderflow},
        {" Pow ", 10, -1000, zolStsUnderflow},
        {" Erfc ", 40, 0, zolStsUnderflow},
        {" CdfNorm ", -60, 0, zolStsUnderflow},
    };
    onEveryPath([&](Function const& function) {
        for (Case const& one : cases) {
            if (!function.isOneOf(one.families) || function.complexSource) {
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
    auto const resultsOf = [](Zol64u mask) {
        zolSetCpuFeatures(mask);
        std::vector<Numbers> results;
        for (Function const& function : allFunctions()) {
            results.emplace_back();
            function.call(workNumbers(function, false, 200), workNumbers(function, true, 200),
                          results.back(), 0, false);
        }
        return results;
    };
    std::vector<Zol64u> const paths = runnablePaths();
    std::vector<std::vector<Numbers>> resultsOfPaths;
    for (Zol64u const path : paths) {
        resultsOfPaths.push_back(resultsOf(path));
    }
    // Fused operations and other vector functions differ in the last bits of some results. What
    // instruments the code keeps the loops scalar, and then only fusing makes a difference.
    for (std::size_t i = 1; i < paths.size(); ++i) {
        EXPECT_NE(resultsOfPaths[i], resultsOfPaths[0]);
#ifndef PS_SCALAR_LOOPS
        EXPECT_NE(resultsOfPaths[i], resultsOfPaths[i - 1]);
#endif
        // A path goes with any of its features.
        Zol64u const features = paths[i] & ~paths[i - 1] & 0x7308100U;
        for (Zol64u left = features; left != 0; left &= left - 1) {
            EXPECT_TRUE(resultsOf(paths[i] & ~(left & -left)) == resultsOfPaths[i - 1]) << left;
        }
    }
}

} // namespace
