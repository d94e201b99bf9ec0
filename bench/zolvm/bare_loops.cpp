// bare_loops.cpp - plain loops that the compiler turns into calls of vector functions, and nothing
// around them: no check of arguments, no status.
#include "loops.h"

#include <math.h>

namespace {
inline float divf(float x, float y) { return x / y; }
inline double div(double x, double y) { return x / y; }
} // namespace

#define LOOP1(family, function)                                                                    \
    void family(float const* __restrict x, float* __restrict y, int n) {                           \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function##f(x[i]);                                                              \
        }                                                                                          \
    }                                                                                              \
    void family(double const* __restrict x, double* __restrict y, int n) {                         \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function(x[i]);                                                                 \
        }                                                                                          \
    }
#define LOOP2(family, function)                                                                    \
    void family(float const* __restrict x, float const* __restrict z, float* __restrict y,         \
                int n) {                                                                           \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function##f(x[i], z[i]);                                                        \
        }                                                                                          \
    }                                                                                              \
    void family(double const* __restrict x, double const* __restrict z, double* __restrict y,      \
                int n) {                                                                           \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function(x[i], z[i]);                                                           \
        }                                                                                          \
    }
namespace BENCH_PATH {
BENCH_UNARY(LOOP1)
BENCH_BINARY(LOOP2)
} // namespace BENCH_PATH
