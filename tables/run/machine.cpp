// machine.cpp - what this machine is like for measuring.
#include "run/machine.h"

#include <chrono>
#include <cmath>
#include <thread>
#include <x86intrin.h>

namespace tables {

int counterMHz() {
    using namespace std::chrono;
    auto const start = steady_clock::now();
    unsigned long long const first = __rdtsc();
    std::this_thread::sleep_for(milliseconds(100));
    unsigned long long const clocks = __rdtsc() - first;
    duration<double, std::micro> const time = steady_clock::now() - start;
    return static_cast<int>(std::lround(static_cast<double>(clocks) / time.count()));
}

} // namespace tables
