// timregister.h - how a family's module registers its tests: one macro for a test, and one
// for each set of variants that families come in.
#ifndef TIMING_TIMREGISTER_H
#define TIMING_TIMREGISTER_H

#include "pstest/pstestlist.h"
#include "timing/timzolvm.h"

using TimReal32 = TimZolVMReal<float, float>;
using TimReal64 = TimZolVMReal<double, double>;
using TimRealToComplex32 = TimZolVMReal<float, _KRV_Complex8>;
using TimRealToComplex64 = TimZolVMReal<double, _KRV_Complex16>;
using TimComplexToReal32 = TimZolVMComplex<_KRV_Complex8, float>;
using TimComplexToReal64 = TimZolVMComplex<_KRV_Complex16, double>;
using TimComplex32 = TimZolVMComplex<_KRV_Complex8, _KRV_Complex8>;
using TimComplex64 = TimZolVMComplex<_KRV_Complex16, _KRV_Complex16>;

#define PS_TIMING_FILE "sources/zolvm/perf/timing"

// The test's body, a function of its own name, and the test.
#define PS_REGISTER_TIMING(Test, func, tag)                                                        \
    static psResult func##_timing_test(psTool& tool, int loops) {                                  \
        return Test::body(tool, loops, tag, #func);                                                \
    }                                                                                              \
    [[maybe_unused]] static bool const b_##func##_timing_test =                                    \
        psRegTest(                                                                                 \
            new Test(func##_timing_test, #func, PS_TIMING_FILE, #func "_timing_test", tag)) != 0

// The accuracies of one type, ascending.
#define PS_REGISTER_32F(family)                                                                    \
    PS_REGISTER_TIMING(TimReal32, zols##family##_32f_A11, "s" #family "_EP");                      \
    PS_REGISTER_TIMING(TimReal32, zols##family##_32f_A21, "s" #family "_LA");                      \
    PS_REGISTER_TIMING(TimReal32, zols##family##_32f_A24, "s" #family "_HA")
#define PS_REGISTER_64F(family)                                                                    \
    PS_REGISTER_TIMING(TimReal64, zols##family##_64f_A26, "d" #family "_EP");                      \
    PS_REGISTER_TIMING(TimReal64, zols##family##_64f_A50, "d" #family "_LA");                      \
    PS_REGISTER_TIMING(TimReal64, zols##family##_64f_A53, "d" #family "_HA")
#define PS_REGISTER_32FC(Test, family)                                                             \
    PS_REGISTER_TIMING(Test, zols##family##_32fc_A11, "c" #family "_EP");                          \
    PS_REGISTER_TIMING(Test, zols##family##_32fc_A21, "c" #family "_LA");                          \
    PS_REGISTER_TIMING(Test, zols##family##_32fc_A24, "c" #family "_HA")
#define PS_REGISTER_64FC(Test, family)                                                             \
    PS_REGISTER_TIMING(Test, zols##family##_64fc_A26, "z" #family "_EP");                          \
    PS_REGISTER_TIMING(Test, zols##family##_64fc_A50, "z" #family "_LA");                          \
    PS_REGISTER_TIMING(Test, zols##family##_64fc_A53, "z" #family "_HA")

// Real and complex forms in every accuracy.
#define PS_REGISTER_SIX_REAL(family)                                                               \
    PS_REGISTER_32F(family);                                                                       \
    PS_REGISTER_64F(family)
#define PS_REGISTER_SIX_COMPLEX(family)                                                            \
    PS_REGISTER_32FC(TimComplex32, family);                                                        \
    PS_REGISTER_64FC(TimComplex64, family)
#define PS_REGISTER_TWELVE(family)                                                                 \
    PS_REGISTER_SIX_REAL(family);                                                                  \
    PS_REGISTER_SIX_COMPLEX(family)

// Forms in the best accuracy alone: their tags have no flavour.
#define PS_REGISTER_BEST_REAL(family)                                                              \
    PS_REGISTER_TIMING(TimReal32, zols##family##_32f_A24, "s" #family);                            \
    PS_REGISTER_TIMING(TimReal64, zols##family##_64f_A53, "d" #family)
#define PS_REGISTER_BEST_COMPLEX(family)                                                           \
    PS_REGISTER_TIMING(TimComplex32, zols##family##_32fc_A24, "c" #family);                        \
    PS_REGISTER_TIMING(TimComplex64, zols##family##_64fc_A53, "z" #family)

// Forms without an accuracy.
#define PS_REGISTER_PLAIN(family)                                                                  \
    PS_REGISTER_TIMING(TimReal32, zols##family##_32f, "s" #family);                                \
    PS_REGISTER_TIMING(TimReal64, zols##family##_64f, "d" #family)

#endif
