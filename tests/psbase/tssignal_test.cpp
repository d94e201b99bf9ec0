// tssignal_test.cpp - the landing after a signal, in child processes.
#include "psbase/tssignal.h"

#include "psbase/psexception.h"

#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>

namespace {

// What a landing place does with a fault; the message tells the parent.
template <typename Fault>
void land(Fault fault) {
    if (setjmp(tsSignal::m_jmpbuf) == 0) {
        fault();
        return;
    }
    try {
        throw psException(tsSignal::getInfo());
    } catch (psException const& caught) {
        (void)std::fprintf(stderr, "%s\n", caught.msg());
    }
}

TEST(TsSignalDeathTest, ASecondFaultOfTheSameSignalEndsTheProcess) {
    EXPECT_STREQ(tsSignal::getInfo(), "Unknown exception");
    // A true fault, as a blocked signal that is merely raised would only wait.
    auto const illegal = [] { asm volatile("ud2"); };
    EXPECT_EXIT(
        {
            tsSignal const installed;
            land(illegal);
            land([] { std::raise(SIGFPE); }); // another signal still lands
            land(illegal);
            std::_Exit(0);
        },
        testing::KilledBySignal(SIGILL),
        "^--ZOL. Signal: Illegal instruction.\n--ZOL. Signal: FP error[^\n]*\n$");
}

} // namespace
