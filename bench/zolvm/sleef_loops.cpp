// sleef_loops.cpp - SLEEF's functions for four doubles; lengths are multiples of four.
#include "loops.h"

#include <immintrin.h>
#include <sleef.h>

namespace {
template <class Function>
void each(double const* x, double* y, int n, Function function) {
    for (int i = 0; i < n; i += 4) {
        _mm256_storeu_pd(y + i, function(_mm256_loadu_pd(x + i)));
    }
}
} // namespace

namespace sleef {
void Sin(double const* x, double* y, int n) { each(x, y, n, Sleef_sind4_u10avx2); }
void Exp(double const* x, double* y, int n) { each(x, y, n, Sleef_expd4_u10avx2); }
void Ln(double const* x, double* y, int n) { each(x, y, n, Sleef_logd4_u10avx2); }
void Erf(double const* x, double* y, int n) { each(x, y, n, Sleef_erfd4_u10avx2); }
void Pow(double const* x, double const* z, double* y, int n) {
    for (int i = 0; i < n; i += 4) {
        _mm256_storeu_pd(y + i,
                         Sleef_powd4_u10avx2(_mm256_loadu_pd(x + i), _mm256_loadu_pd(z + i)));
    }
}
} // namespace sleef
