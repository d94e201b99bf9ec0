// leaksofjumps.h - for tests of faults: a jump leaves frames without their destructors, and what
// the strings in them held is lost. The leak sanitizer looks away while an object of this class
// lives.
#ifndef TESTS_SUPPORT_LEAKSOFJUMPS_H
#define TESTS_SUPPORT_LEAKSOFJUMPS_H

#include <csignal>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
using LeaksOfJumps = __lsan::ScopedDisabler;
#else
struct [[maybe_unused]] LeaksOfJumps {};
#endif

// A jump leaves its signal blocked, too, which the next one would meet.
inline void unblockSignals() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

#endif
