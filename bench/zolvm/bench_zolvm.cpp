// bench_zolvm.cpp - the library and another loop over the same arrays, measured by turns in one
// run. Each benchmark gives clocks-free numbers: ns per element of both, and their ratio (other /
// ours), which is above 1 where the library is faster.
#include <chrono>
#include <functional>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "loops.h"
#include "zolvm.h"

namespace {

using Body = std::function<void(int)>;

constexpr int rounds = 400;
// Calls in a reading: the clock itself takes as long as a fast function of a thousand elements
// takes for two hundred.
constexpr int calls = 16;

double nanoseconds(Body const& body, int length) {
    auto const start = std::chrono::steady_clock::now();
    for (int call = 0; call < calls; ++call) {
        body(length);
    }
    std::chrono::duration<double, std::nano> const spent = std::chrono::steady_clock::now() - start;
    return spent.count() / (calls * length);
}

void compare(std::string const& name, Zol64u path, Body ours, Body other, int length) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        zolSetCpuFeatures(path);
        double best = 1e30;
        double bestOther = 1e30;
        for ([[maybe_unused]] auto step : state) {
            for (int round = 0; round < rounds; ++round) {
                best = std::min(best, nanoseconds(ours, length));
                bestOther = std::min(bestOther, nanoseconds(other, length));
            }
        }
        zolInit();
        state.counters["ours"] = best;
        state.counters["other"] = bestOther;
        state.counters["ratio"] = bestOther / best;
    })->Iterations(1);
}

// Allocates as the measuring program does, on the boundary of a cache line.
template <class T>
struct LineAllocator {
    using value_type = T;
    T* allocate(std::size_t n) {
        return static_cast<T*>(::operator new(n * sizeof(T), std::align_val_t(64)));
    }
    void deallocate(T* block, std::size_t) { ::operator delete(block, std::align_val_t(64)); }
    bool operator==(LineAllocator const&) const = default;
};
template <class T>
using Line = std::vector<T, LineAllocator<T>>;

// The arrays of one type, within the Work intervals of all measured functions.
template <class T>
struct Arrays {
    explicit Arrays(double low, double high) {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> values(low, high);
        for (std::size_t i = 0; i < 2 * count; ++i) {
            x.push_back(static_cast<T>(values(random)));
            z.push_back(static_cast<T>(values(random)));
        }
    }
    static constexpr std::size_t count = 32768;
    Line<T> x;
    Line<T> z;
    Line<T> y = Line<T>(2 * count);
};

template <class T>
Arrays<T>& arrays() {
    static Arrays<T> all(0.2, 5.0);
    return all;
}

struct Path {
    char const* name;
    Zol64u mask;
};
constexpr Path sse2Path{"sse2", 0x7};
constexpr Path avx2Path{"avx2", 0x81df};
constexpr Path avx512Path{"avx512", 0x73081df};

bool runs(Path path) {
    Zol64u features = 0;
    zolGetCpuFeatures(&features, nullptr);
    return (path.mask & ~features) == 0;
}

template <class T, class Ours, class Other>
void unary(std::string const& name, Path path, Ours ours, Other other) {
    for (int const length : {256, 1024, 32768}) {
        compare(
            name + '/' + path.name + '/' + std::to_string(length), path.mask,
            [=](int n) { ours(arrays<T>().x.data(), arrays<T>().y.data(), n); },
            [=](int n) { other(arrays<T>().x.data(), arrays<T>().y.data(), n); }, length);
    }
}
template <class T, class Ours, class Other>
void binary(std::string const& name, Path path, Ours ours, Other other) {
    for (int const length : {256, 1024, 32768}) {
        compare(
            name + '/' + path.name + '/' + std::to_string(length), path.mask,
            [=](int n) {
                ours(arrays<T>().x.data(), arrays<T>().z.data(), arrays<T>().y.data(), n);
            },
            [=](int n) {
                other(arrays<T>().x.data(), arrays<T>().z.data(), arrays<T>().y.data(), n);
            },
            length);
    }
}

using Unary32 = void (*)(float const*, float*, int);
using Unary64 = void (*)(double const*, double*, int);
using Binary32 = void (*)(float const*, float const*, float*, int);
using Binary64 = void (*)(double const*, double const*, double*, int);

#define AGAINST1(kind, where, path, family, a, b)                                                  \
    unary<float>(kind "/" #family "_32f_" #a, path, zols##family##_32f_##a,                        \
                 static_cast<Unary32>(where::family));                                             \
    unary<double>(kind "/" #family "_64f_" #b, path, zols##family##_64f_##b,                       \
                  static_cast<Unary64>(where::family));
#define AGAINST2(kind, where, path, family, a, b)                                                  \
    binary<float>(kind "/" #family "_32f_" #a, path, zols##family##_32f_##a,                       \
                  static_cast<Binary32>(where::family));                                           \
    binary<double>(kind "/" #family "_64f_" #b, path, zols##family##_64f_##b,                      \
                   static_cast<Binary64>(where::family));

#define BARE_SSE2_1(family, function) AGAINST1("bare", sse2, sse2Path, family, A21, A50)
#define BARE_SSE2_2(family, function) AGAINST2("bare", sse2, sse2Path, family, A21, A50)
#define BARE_AVX2_1(family, function) AGAINST1("bare", avx2, avx2Path, family, A21, A50)
#define BARE_AVX2_2(family, function) AGAINST2("bare", avx2, avx2Path, family, A21, A50)
#define BARE_AVX512_1(family, function) AGAINST1("bare", avx512, avx512Path, family, A21, A50)
#define BARE_AVX512_2(family, function) AGAINST2("bare", avx512, avx512Path, family, A21, A50)
#define SCALAR_1(family, function)                                                                 \
    AGAINST1("scalar", scalar, path, family, A11, A26)                                             \
    AGAINST1("scalar", scalar, path, family, A21, A50)                                             \
    AGAINST1("scalar", scalar, path, family, A24, A53)
#define SCALAR_2(family, function)                                                                 \
    AGAINST2("scalar", scalar, path, family, A11, A26)                                             \
    AGAINST2("scalar", scalar, path, family, A21, A50)                                             \
    AGAINST2("scalar", scalar, path, family, A24, A53)

template <class C, class T, class Function>
auto complexCall(Function function) {
    return [=](T const* x, auto... rest) {
        if constexpr (sizeof...(rest) == 2) {
            auto const call = [&](auto* y, int n) {
                if constexpr (std::is_invocable_v<Function, C const*, T*, int>) {
                    function(reinterpret_cast<C const*>(x), y, n);
                } else {
                    function(reinterpret_cast<C const*>(x), reinterpret_cast<C*>(y), n);
                }
            };
            call(rest...);
        } else {
            auto const call = [&](T const* z, T* y, int n) {
                function(reinterpret_cast<C const*>(x), reinterpret_cast<C const*>(z),
                         reinterpret_cast<C*>(y), n);
            };
            call(rest...);
        }
    };
}

#define COMPLEX(a, b)                                                                              \
    binary<float>("complex/Mul_32fc_" #a, path, complexCall<Zol32fc, float>(zolsMul_32fc_##a),     \
                  scalar::ComplexLoops<float>::mul);                                               \
    binary<double>("complex/Mul_64fc_" #b, path, complexCall<Zol64fc, double>(zolsMul_64fc_##b),   \
                   scalar::ComplexLoops<double>::mul);                                             \
    unary<float>("complex/Abs_32fc_" #a, path, complexCall<Zol32fc, float>(zolsAbs_32fc_##a),      \
                 scalar::ComplexLoops<float>::abs);                                                \
    unary<double>("complex/Abs_64fc_" #b, path, complexCall<Zol64fc, double>(zolsAbs_64fc_##b),    \
                  scalar::ComplexLoops<double>::abs);                                              \
    unary<float>("complex/Exp_32fc_" #a, path, complexCall<Zol32fc, float>(zolsExp_32fc_##a),      \
                 scalar::ComplexLoops<float>::exp);                                                \
    unary<double>("complex/Exp_64fc_" #b, path, complexCall<Zol64fc, double>(zolsExp_64fc_##b),    \
                  scalar::ComplexLoops<double>::exp);                                              \
    unary<float>("complex/Sqrt_32fc_" #a, path, complexCall<Zol32fc, float>(zolsSqrt_32fc_##a),    \
                 scalar::ComplexLoops<float>::sqrt);                                               \
    unary<double>("complex/Sqrt_64fc_" #b, path, complexCall<Zol64fc, double>(zolsSqrt_64fc_##b),  \
                  scalar::ComplexLoops<double>::sqrt);

} // namespace

int main(int argc, char** argv) {
    BENCH_UNARY(BARE_SSE2_1)
    BENCH_BINARY(BARE_SSE2_2)
    if (runs(avx2Path)) {
        BENCH_UNARY(BARE_AVX2_1)
        BENCH_BINARY(BARE_AVX2_2)
    }
    if (runs(avx512Path)) {
        BENCH_UNARY(BARE_AVX512_1)
        BENCH_BINARY(BARE_AVX512_2)
    }
    for (Path const path : {sse2Path, avx2Path, avx512Path}) {
        if (runs(path)) {
            BENCH_UNARY(SCALAR_1)
            BENCH_BINARY(SCALAR_2)
            COMPLEX(A21, A50)
            COMPLEX(A24, A53)
        }
    }
#ifdef BENCH_SLEEF
    if (runs(avx2Path)) {
        unary<double>("sleef/Sin_64f_A53", avx2Path, zolsSin_64f_A53, sleef::Sin);
        unary<double>("sleef/Exp_64f_A53", avx2Path, zolsExp_64f_A53, sleef::Exp);
        unary<double>("sleef/Ln_64f_A53", avx2Path, zolsLn_64f_A53, sleef::Ln);
        unary<double>("sleef/Erf_64f_A53", avx2Path, zolsErf_64f_A53, sleef::Erf);
        binary<double>("sleef/Pow_64f_A53", avx2Path, zolsPow_64f_A53, sleef::Pow);
    }
#endif
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
