// fault_functions.cpp - test functions that fault, fail, leave flags behind, take long or write
// too far. Each is a test of its own, chosen by -f; zGood runs behind all of them.
#include <csignal>
#include <ctime>

#include "psmemory/psmemory.h"
#include "pstest/pstest.h"
#include "pstest/pstestlist.h"

namespace {

int s_calls = 0;        // of the function under test, since its test began
int s_faultAt = 1;      // the call that faults
int s_signal = SIGSEGV; // and how

// By instructions, not by raise: a blocked signal that is raised waits, a fault ends the process.
void fault() {
    switch (s_signal) {
    case SIGFPE:
        asm volatile("xorl %%ecx, %%ecx; divl %%ecx" : : : "eax", "ecx", "edx");
        break;
    case SIGILL:
        asm volatile("ud2");
        break;
    default:
        asm volatile("movl $0, 0");
    }
}

int faultingCall() {
    if (++s_calls == s_faultAt) {
        fault();
    }
    return 0;
}

int invalidFlagCall() {
    float const zero = 0.0F;
    float result;
    asm volatile("divss %1, %0" : "=x"(result) : "x"(zero), "0"(zero));
    return 0;
}

int slowCall() {
    timespec const pause = {0, 20000000};
    nanosleep(&pause, nullptr);
    return 0;
}

psResult failingLoop(int, long long* clocks) {
    *clocks = 1000;
    return psResFuncFail;
}

double* s_vector = nullptr;
constexpr int vectorLength = 100;

int tooFarCall() {
    for (int i = 0; i <= vectorLength; ++i) {
        double* const volatile element = s_vector + i;
        *element = i;
    }
    return 0;
}

class FaultTest : public psTest {
public:
    FaultTest(char const* name, psFuncCall call, int signal, int faultAt, int sets = 3)
        : psTest(call, nullptr, nullptr, nullptr, name, "tests/faults", psString(name) + "_test"),
          m_signal(signal), m_faultAt(faultAt), m_sets(sets) {}

    bool canStart() override {
        s_calls = 0;
        s_signal = m_signal;
        s_faultAt = m_faultAt;
        if (m_faultAt == 0) {
            fault();
        }
        m_length.init(1, m_sets, 1, StepAdd, "Set");
        m_parms.insert(m_parms.end(), &m_length);
        return true;
    }

private:
    int m_signal;
    int m_faultAt; // 0: in canStart
    int m_sets;
    psStepIterator<int> m_length;
};

class EndFaultTest : public FaultTest {
public:
    explicit EndFaultTest(char const* name) : FaultTest(name, faultingCall, SIGSEGV, -1) {}
    void endTest() override { fault(); }
};

class TooFarTest : public psTest {
public:
    explicit TooFarTest(char const* name)
        : psTest(tooFarCall, nullptr, nullptr, nullptr, name, "tests/faults",
                 psString(name) + "_test") {}
    bool canStart() override {
        s_vector = static_cast<double*>(allocate(vectorLength * 8, 0));
        return s_vector != nullptr;
    }
    void flushStart() override {
        deallocate(s_vector);
        s_vector = nullptr;
    }
};

// The warm-up of the Auto method's first reading is call 1, its timed call is call 2.
[[maybe_unused]] bool const registered =
    psRegTest(new FaultTest("aFpeAtFirstCall", faultingCall, SIGFPE, 1)) != 0 &&
    psRegTest(new FaultTest("bIllAtFirstCall", faultingCall, SIGILL, 1)) != 0 &&
    psRegTest(new FaultTest("cSegvAtFirstCall", faultingCall, SIGSEGV, 1)) != 0 &&
    psRegTest(new FaultTest("dFpeInLoop", faultingCall, SIGFPE, 2)) != 0 &&
    psRegTest(new FaultTest("fSegvLater", faultingCall, SIGSEGV, 5000000)) != 0 &&
    psRegTest(new FaultTest("gIllInStart", faultingCall, SIGILL, 0)) != 0 &&
    psRegTest(new FaultTest("hInvalidFlag", invalidFlagCall, SIGFPE, -1)) != 0 &&
    psRegTest(new psTest(failingLoop, nullptr, "iFails", "tests/faults", "iFails_test")) != 0 &&
    psRegTest(new TooFarTest("jTooFar")) != 0 && psRegTest(new EndFaultTest("lSegvAtEnd")) != 0 &&
    psRegTest(new FaultTest("kSlow", slowCall, SIGFPE, -1, 1000)) != 0 &&
    psRegTest(new FaultTest("zGood", faultingCall, SIGFPE, -1)) != 0;

} // namespace
