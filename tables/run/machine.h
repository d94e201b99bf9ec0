// machine.h - what this machine is like for measuring.
#ifndef RUN_MACHINE_H
#define RUN_MACHINE_H

namespace tables {

// MHz of the time-stamp counter, as passes are told it: learned in a tenth of a second.
int counterMHz();

} // namespace tables

#endif
