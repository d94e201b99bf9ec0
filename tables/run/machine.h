// machine.h - what this machine is like for measuring.
#ifndef RUN_MACHINE_H
#define RUN_MACHINE_H

#include <string>

namespace tables {

// MHz of the time-stamp counter, as passes are told it: learned in a tenth of a second.
int counterMHz();

// What was seen of the processor that this program ran on.
struct MachineState {
    double ours = 0;        // share of the time in which nothing else ran there
    double quiet = 0;       // share of that in which the core's other thread was at rest
    double clockSpread = 0; // how far the core's clock moved against the counter
    int processor = 0;
    int processors = 0; // that this program may run on
    int online = 0;
    std::string governor; // of the frequency, "" where it is not shown
    std::string siblings; // processors of the core, "" where they are not shown
};

// Looks for so many seconds.
MachineState watchMachine(double seconds);

// True: absolute numbers of this machine can be compared.
bool fitForAbsolute(MachineState const& state);

// The first line says all in short, the others explain it and what can be done.
std::string machineText(MachineState const& state);

} // namespace tables

#endif
