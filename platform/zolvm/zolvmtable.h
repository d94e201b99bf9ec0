// zolvmtable.h - which family has which kernels. The exported functions come out of these rows.
#ifndef ZOLVM_ZOLVMTABLE_H
#define ZOLVM_ZOLVMTABLE_H

// Kinds of kernels:
//   Cheap  a few terms of our own, for the enhanced-performance forms
//   Vec    the C library's vector functions and plain arithmetic, in the precision of the type
//   Wide   Vec in double precision, rounded to single
//   Fine   double precision with the low parts of results carried along
//   Ieee   an operation of the processor, right for every argument, whose flags give the status
//   Exact  the same without a status
//
// A row of SIX: call shape, family, then the kinds of A11, A21, A24 and A26, A50, A53.
// A row of BEST has A24 and A53 alone, a row of PLAIN no accuracy.
#define ZOLVM_REAL_TABLE(SIX, BEST, PLAIN)                                                         \
    SIX(UNARY, Acos, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Acosh, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Asin, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Asinh, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Atan, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Atanh, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Cbrt, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, CdfNorm, Vec, Wide, Wide, Vec, Fine, Fine)                                          \
    SIX(UNARY, CdfNormInv, Vec, Wide, Wide, Vec, Fine, Fine)                                       \
    SIX(UNARY, Cos, Cheap, Vec, Wide, Cheap, Vec, Fine)                                            \
    SIX(UNARY, Cosh, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Erf, Vec, Vec, Wide, Vec, Vec, Fine)                                                \
    SIX(UNARY, ErfInv, Vec, Wide, Wide, Vec, Fine, Fine)                                           \
    SIX(UNARY, Erfc, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, ErfcInv, Vec, Wide, Wide, Vec, Fine, Fine)                                          \
    SIX(UNARY, Exp, Cheap, Vec, Wide, Cheap, Vec, Fine)                                            \
    SIX(UNARY, Expm1, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Inv, Ieee, Ieee, Ieee, Ieee, Ieee, Ieee)                                            \
    SIX(UNARY, InvCbrt, Vec, Wide, Wide, Vec, Fine, Fine)                                          \
    SIX(UNARY, InvSqrt, Ieee, Ieee, Wide, Ieee, Ieee, Fine)                                        \
    SIX(UNARY, Ln, Cheap, Vec, Wide, Cheap, Vec, Fine)                                             \
    SIX(UNARY, Log10, Cheap, Vec, Wide, Cheap, Vec, Fine)                                          \
    SIX(UNARY, Log1p, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Pow2o3, Vec, Wide, Wide, Vec, Fine, Fine)                                           \
    SIX(UNARY, Pow3o2, Vec, Vec, Wide, Vec, Vec, Fine)                                             \
    SIX(UNARY, Sin, Cheap, Vec, Wide, Cheap, Vec, Fine)                                            \
    SIX(UNARY, Sinh, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Sqrt, Ieee, Ieee, Ieee, Ieee, Ieee, Ieee)                                           \
    SIX(UNARY, Tan, Cheap, Vec, Wide, Cheap, Vec, Fine)                                            \
    SIX(UNARY, Tanh, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(BINARY, Atan2, Vec, Vec, Wide, Vec, Vec, Fine)                                             \
    SIX(BINARY, Div, Ieee, Ieee, Ieee, Ieee, Ieee, Ieee)                                           \
    SIX(BINARY, Hypot, Vec, Vec, Wide, Vec, Vec, Fine)                                             \
    SIX(BINARY, Pow, Cheap, Vec, Wide, Cheap, Vec, Fine)                                           \
    SIX(SCALAR, Powx, Cheap, Vec, Wide, Cheap, Vec, Fine)                                          \
    SIX(TWO_RESULTS, SinCos, Cheap, Vec, Wide, Cheap, Vec, Fine)                                   \
    BEST(UNARY, Abs, Exact, Exact)                                                                 \
    BEST(UNARY, Sqr, Exact, Exact)                                                                 \
    BEST(BINARY, Add, Exact, Exact)                                                                \
    BEST(BINARY, Mul, Exact, Exact)                                                                \
    BEST(BINARY, Sub, Exact, Exact)                                                                \
    PLAIN(UNARY, Ceil, Exact, Exact)                                                               \
    PLAIN(UNARY, Floor, Exact, Exact)                                                              \
    PLAIN(UNARY, Frac, Exact, Exact)                                                               \
    PLAIN(UNARY, NearbyInt, Exact, Exact)                                                          \
    PLAIN(UNARY, Rint, Exact, Exact)                                                               \
    PLAIN(UNARY, Round, Exact, Exact)                                                              \
    PLAIN(UNARY, Trunc, Exact, Exact)                                                              \
    PLAIN(TWO_RESULTS, Modf, Exact, Exact)

// TO_REAL: complex source, real result. FROM_REAL: the other way round.
#define ZOLVM_COMPLEX_TABLE(SIX, BEST, TO_REAL, FROM_REAL)                                         \
    SIX(UNARY, Acos, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Acosh, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Asin, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Asinh, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Atan, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Atanh, Vec, Vec, Wide, Vec, Vec, Fine)                                              \
    SIX(UNARY, Cos, Vec, Vec, Wide, Vec, Vec, Fine)                                                \
    SIX(UNARY, Cosh, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Exp, Cheap, Vec, Wide, Cheap, Vec, Fine)                                            \
    SIX(UNARY, Ln, Wide, Wide, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Log10, Wide, Wide, Wide, Vec, Vec, Fine)                                            \
    SIX(UNARY, Sin, Vec, Vec, Wide, Vec, Vec, Fine)                                                \
    SIX(UNARY, Sinh, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Sqrt, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(UNARY, Tan, Vec, Vec, Wide, Vec, Vec, Fine)                                                \
    SIX(UNARY, Tanh, Vec, Vec, Wide, Vec, Vec, Fine)                                               \
    SIX(BINARY, Div, Vec, Vec, Vec, Vec, Vec, Vec)                                                 \
    SIX(BINARY, Mul, Vec, Vec, Vec, Vec, Vec, Vec)                                                 \
    SIX(BINARY, MulByConj, Vec, Vec, Vec, Vec, Vec, Vec)                                           \
    SIX(BINARY, Pow, Wide, Wide, Wide, Vec, Fine, Fine)                                            \
    SIX(SCALAR, Powx, Wide, Wide, Wide, Vec, Fine, Fine)                                           \
    BEST(UNARY, Conj, Exact, Exact)                                                                \
    BEST(BINARY, Add, Exact, Exact)                                                                \
    BEST(BINARY, Sub, Exact, Exact)                                                                \
    TO_REAL(UNARY, Abs, Vec, Vec, Wide, Vec, Vec, Fine)                                            \
    TO_REAL(UNARY, Arg, Vec, Vec, Wide, Vec, Vec, Fine)                                            \
    FROM_REAL(UNARY, CIS, Cheap, Vec, Wide, Cheap, Vec, Fine)

#endif
