// loops.h - the loops that the library is measured against, by function and path.
#ifndef BENCH_ZOLVM_LOOPS_H
#define BENCH_ZOLVM_LOOPS_H

// Single functions of one argument, of two, and complex ones: name of the family, C function.
#define BENCH_UNARY(ROW)                                                                           \
    ROW(Sin, sin)                                                                                  \
    ROW(Cos, cos)                                                                                  \
    ROW(Exp, exp)                                                                                  \
    ROW(Ln, log)                                                                                   \
    ROW(Tanh, tanh) ROW(Erf, erf) ROW(Sqrt, sqrt) ROW(Atan, atan) ROW(Cbrt, cbrt)                  \
        ROW(Log1p, log1p)
#define BENCH_BINARY(ROW) ROW(Pow, pow) ROW(Atan2, atan2) ROW(Div, div)

#define BENCH_DECLARE1(family, function)                                                           \
    void family(float const* x, float* y, int n);                                                  \
    void family(double const* x, double* y, int n);
#define BENCH_DECLARE2(family, function)                                                           \
    void family(float const* x, float const* z, float* y, int n);                                  \
    void family(double const* x, double const* z, double* y, int n);
#define BENCH_DECLARE(where)                                                                       \
    namespace where {                                                                              \
    BENCH_UNARY(BENCH_DECLARE1)                                                                    \
    BENCH_BINARY(BENCH_DECLARE2)                                                                   \
    }
BENCH_DECLARE(scalar)
BENCH_DECLARE(sse2)
BENCH_DECLARE(avx2)
BENCH_DECLARE(avx512)

// Loops over std::complex; the arrays hold real and imaginary parts by turns.
namespace scalar {
template <class T>
struct ComplexLoops {
    static void mul(T const* x, T const* z, T* y, int n);
    static void abs(T const* x, T* y, int n);
    static void exp(T const* x, T* y, int n);
    static void sqrt(T const* x, T* y, int n);
};
} // namespace scalar

// Where SLEEF is installed: its AVX2 functions of at most 1 unit in the last place.
namespace sleef {
void Sin(double const* x, double* y, int n);
void Exp(double const* x, double* y, int n);
void Ln(double const* x, double* y, int n);
void Erf(double const* x, double* y, int n);
void Pow(double const* x, double const* z, double* y, int n);
} // namespace sleef

#endif
