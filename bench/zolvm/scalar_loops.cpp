// scalar_loops.cpp - the C library's scalar functions and std::complex in loops that stay scalar.
#include "loops.h"

#include <complex>
#include <math.h>

namespace {
inline float divf(float x, float y) { return x / y; }
inline double div(double x, double y) { return x / y; }
} // namespace

#define LOOP1(family, function)                                                                    \
    void family(float const* x, float* y, int n) {                                                 \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function##f(x[i]);                                                              \
        }                                                                                          \
    }                                                                                              \
    void family(double const* x, double* y, int n) {                                               \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function(x[i]);                                                                 \
        }                                                                                          \
    }
#define LOOP2(family, function)                                                                    \
    void family(float const* x, float const* z, float* y, int n) {                                 \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function##f(x[i], z[i]);                                                        \
        }                                                                                          \
    }                                                                                              \
    void family(double const* x, double const* z, double* y, int n) {                              \
        for (int i = 0; i < n; ++i) {                                                              \
            y[i] = function(x[i], z[i]);                                                           \
        }                                                                                          \
    }
namespace scalar {
BENCH_UNARY(LOOP1)
BENCH_BINARY(LOOP2)

template <class T>
void ComplexLoops<T>::mul(T const* x, T const* z, T* y, int n) {
    auto const* const a = reinterpret_cast<std::complex<T> const*>(x);
    auto const* const b = reinterpret_cast<std::complex<T> const*>(z);
    auto* const c = reinterpret_cast<std::complex<T>*>(y);
    for (int i = 0; i < n; ++i) {
        c[i] = a[i] * b[i];
    }
}
template <class T>
void ComplexLoops<T>::abs(T const* x, T* y, int n) {
    auto const* const a = reinterpret_cast<std::complex<T> const*>(x);
    for (int i = 0; i < n; ++i) {
        y[i] = std::abs(a[i]);
    }
}
template <class T>
void ComplexLoops<T>::exp(T const* x, T* y, int n) {
    auto const* const a = reinterpret_cast<std::complex<T> const*>(x);
    auto* const c = reinterpret_cast<std::complex<T>*>(y);
    for (int i = 0; i < n; ++i) {
        c[i] = std::exp(a[i]);
    }
}
template <class T>
void ComplexLoops<T>::sqrt(T const* x, T* y, int n) {
    auto const* const a = reinterpret_cast<std::complex<T> const*>(x);
    auto* const c = reinterpret_cast<std::complex<T>*>(y);
    for (int i = 0; i < n; ++i) {
        c[i] = std::sqrt(a[i]);
    }
}
template struct ComplexLoops<float>;
template struct ComplexLoops<double>;
} // namespace scalar
