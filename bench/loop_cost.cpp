// loop_cost.cpp - what a measurement adds: clocks a call of an empty function, measured by
// psTool::timCall_Loop and by the same loop written by hand around two reads of the counter.
#include <cstdio>

#include "pscpu/pscputicker.h"
#include "pstool/pstool.h"

namespace {

__attribute__((noinline)) int emptyCall() {
    asm volatile("");
    return 0;
}

constexpr int rounds = 2000;

double byHand(int loops) {
    int (*const volatile call)() = emptyCall;
    double best = 1e30;
    for (int round = 0; round < rounds; ++round) {
        int (*const function)() = call;
        function();
        unsigned long long const start = psCpuTicker::rdtsc();
        for (int i = loops; i > 0; --i) {
            function();
        }
        unsigned long long const stop = psCpuTicker::rdtsc();
        double const clocks = static_cast<double>(stop - start) / loops;
        best = clocks < best ? clocks : best;
    }
    return best;
}

double byTool(int loops) {
    psTool tool;
    tool.m_funcCall = emptyCall;
    double best = 1e30;
    for (int round = 0; round < rounds; ++round) {
        long long clocks = 0;
        tool.timCall_Loop(loops, &clocks, false);
        double const perCall = static_cast<double>(clocks) / loops;
        best = perCall < best ? perCall : best;
    }
    return best;
}

} // namespace

int main() {
    printf("%8s %12s %12s %12s\n", "loops", "by hand", "by tool", "added");
    for (int loops = 1; loops <= 4096; loops *= 8) {
        double const hand = byHand(loops);
        double const tool = byTool(loops);
        printf("%8d %12.2f %12.2f %12.2f\n", loops, hand, tool, tool - hand);
    }
    return 0;
}
