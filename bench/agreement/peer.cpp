// peer.cpp - Google Benchmark on the functions, vectors and lengths of the timing tests. Times
// are in nanoseconds; the context line "clocks_per_ns" turns them into clocks of the counter.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <ctime>
#include <string>

#include "pscpu/pscputicker.h"
#include "pscpu/pszolentry.h"
#include "pstest/pstestlist.h"
#include "timing/timvectors.h"
#include "timing/timzolvm.h"
#include "vts/vtsdefs.h"
#include "vts/vtslookup.h"
#include "zo/zoenvironment.h"

namespace {

double seconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC_RAW, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Clocks of the counter in a nanosecond, over a tenth of a second.
double clocksPerNs() {
    double const begin = seconds();
    unsigned long long const first = psCpuTicker::rdtsc();
    double end = begin;
    while (end - begin < 0.1) {
        end = seconds();
    }
    return static_cast<double>(psCpuTicker::rdtsc() - first) / ((end - begin) * 1e9);
}

// The test whose data are in the vectors; data stay for all lengths of a function.
TimZolVM* prepared = nullptr;

void prepare(TimZolVM* test) {
    if (prepared == test) {
        return;
    }
    if (prepared != nullptr) {
        prepared->flushStart();
    }
    prepared = test->canStart() ? test : nullptr;
}

// One call in the shape of the function's row; all shapes pass pointers and a length.
void call(int row, int shape, int length) {
    using Unary = ZolStatus (*)(void*, void*, int);
    using Binary = ZolStatus (*)(void*, void*, void*, int);
    void (*const function)() = reinterpret_cast<void (*)()>(defFunc[row].func);
    switch (shape) {
    case vtsShapeBinary:
        reinterpret_cast<Binary>(function)(pSrc, pSrc2, pDst, length);
        break;
    case vtsShapeTwoResults:
        reinterpret_cast<Binary>(function)(pSrc, pDst, pDst2, length);
        break;
    default:
        reinterpret_cast<Unary>(function)(pSrc, pDst, length);
    }
}

void measure(benchmark::State& state, TimZolVM* test) {
    prepare(test);
    int const length = static_cast<int>(state.range(0));
    int const row = prepared != nullptr ? vtsFindFunc(test->m_inc.c_str()) : -1;
    if (row < 0) {
        state.SkipWithError("no data");
        return;
    }
    int const shape = vtsGetFuncShape(row);
    for ([[maybe_unused]] auto round : state) {
        call(row, shape, length);
        benchmark::ClobberMemory();
    }
}

} // namespace

int main(int argc, char** argv) {
    zoSetZolEnvironment();
    zol_Init();
    for (psTest* test : *pTestList) {
        auto* const timing = dynamic_cast<TimZolVM*>(test);
        if (timing != nullptr) {
            benchmark::RegisterBenchmark(
                timing->m_funcName.c_str(),
                [timing](benchmark::State& state) { measure(state, timing); })
                ->RangeMultiplier(2)
                ->Range(timFirstLength, timLastLength);
        }
    }
    char factor[32];
    std::snprintf(factor, sizeof factor, "%.6f", clocksPerNs());
    benchmark::AddCustomContext("clocks_per_ns", factor);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
