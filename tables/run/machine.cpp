// machine.cpp - what this machine is like for measuring.
#include "run/machine.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>
#include <sched.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <x86intrin.h>

#include "core/statistics.h"
#include "pscpu/pssentinel.h"

namespace tables {

namespace {

using namespace std::chrono;

constexpr auto window = milliseconds(10); // long against what disturbs, short against clock states
// A sentinel takes some 500 clocks; what lies between two beyond this was not ours.
constexpr unsigned long long ourGap = 20000;
constexpr unsigned noReading = ~0U;

// Bounds within which absolute numbers of runs agree.
constexpr double leastOurs = 0.98;
constexpr double leastQuiet = 0.95;
constexpr double mostSpread = 0.03;

std::string firstLine(std::string const& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

std::string percentOf(double share) { return std::to_string(std::lround(share * 100)) + '%'; }

// What the system says of the processor that this thread is on, and of those it may be on.
void describeProcessor(MachineState& state) {
    state.processor = ::sched_getcpu();
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    (void)::sched_getaffinity(0, sizeof allowed, &allowed);
    state.processors = CPU_COUNT(&allowed);
    state.online = static_cast<int>(::sysconf(_SC_NPROCESSORS_ONLN));
    std::string const about = "/sys/devices/system/cpu/cpu" + std::to_string(state.processor);
    state.governor = firstLine(about + "/cpufreq/scaling_governor");
    state.siblings = firstLine(about + "/topology/thread_siblings_list");
}

} // namespace

int counterMHz() {
    auto const start = steady_clock::now();
    unsigned long long const first = __rdtsc();
    std::this_thread::sleep_for(milliseconds(100));
    unsigned long long const clocks = __rdtsc() - first;
    duration<double, std::micro> const time = steady_clock::now() - start;
    return static_cast<int>(std::lround(static_cast<double>(clocks) / time.count()));
}

MachineState watchMachine(double seconds) {
    auto const level = std::make_unique<psQuietLevel>();
    std::vector<unsigned> readings;
    std::vector<double> lows; // the least reading of each window
    auto const start = steady_clock::now();
    auto windowEnd = start + window;
    unsigned least = noReading;
    unsigned long long const first = __rdtsc();
    unsigned long long before = first;
    unsigned long long lost = 0;
    for (auto now = start; now < start + duration<double>(seconds); now = steady_clock::now()) {
        unsigned const clocks = psSentinelClocks();
        unsigned long long const after = __rdtsc();
        if (after - before > ourGap) {
            lost += after - before;
        } else {
            level->add(clocks);
            readings.push_back(clocks);
            least = std::min(least, clocks);
        }
        before = after;
        if (now > windowEnd) {
            if (least != noReading) {
                lows.push_back(least);
            }
            least = noReading;
            windowEnd = now + window;
        }
    }
    MachineState state;
    double const all = static_cast<double>(before - first);
    state.ours = 1 - static_cast<double>(lost) / all;
    double const bound = level->bound();
    auto const quiet = std::count_if(readings.begin(), readings.end(),
                                     [bound](unsigned clocks) { return clocks <= bound; });
    if (!readings.empty()) {
        state.quiet = static_cast<double>(quiet) / static_cast<double>(readings.size());
    }
    if (!lows.empty()) {
        // Steps of the counter are no states, and single windows may have been disturbed
        // throughout.
        double const low = quantileOf(lows, 0.05);
        double const high = quantileOf(lows, 0.95);
        state.clockSpread = std::max(0.0, high - low - level->step()) / low;
    }
    describeProcessor(state);
    return state;
}

bool fitForAbsolute(MachineState const& state) {
    return state.ours >= leastOurs && state.quiet >= leastQuiet && state.clockSpread <= mostSpread;
}

std::string machineText(MachineState const& state) {
    std::string text = "machine: " + percentOf(state.ours) + " of the time ours, " +
                       percentOf(state.quiet) +
                       " of it without a neighbour on the core, clock within " +
                       percentOf(state.clockSpread) + ": " +
                       (fitForAbsolute(state) ? "absolute numbers are fit to compare\n"
                                              : "compare by pairs only (ps_tables pair)\n");
    text += "processor " + std::to_string(state.processor) + " of " + std::to_string(state.online);
    text += state.siblings.empty() ? "" : ", threads of its core: " + state.siblings;
    text += state.processors < state.online
                ? ", pinned to " + std::to_string(state.processors) + " of them\n"
                : ", not pinned\n";
    text += "frequency governor: " + (state.governor.empty() ? "not shown" : state.governor) + '\n';
    if (state.ours < leastOurs) {
        text += "- other work takes this processor: end it, or pin to another one (taskset)\n";
    }
    if (state.quiet < leastQuiet) {
        text += "- something runs on the core's other thread: on a machine of your own, leave it "
                "free\n";
    }
    if (state.clockSpread > mostSpread) {
        text += "- the core's clock moves: set the governor to performance, turn boost off\n";
    }
    return text;
}

} // namespace tables
