/* zolvmtable.h - the 392 functions of libzolvm as one table. A row is a family: its call shape, and
 * for each of its accuracies what kernel the built-in library has:
 *   Cheap  a few terms of our own or the processor's estimates, for the enhanced-performance forms
 *   Vec    the C library's vector functions and plain arithmetic, in the precision of the type
 *   Wide   Vec in double precision, rounded to single
 *   Fine   double precision with the low parts of results carried along
 *   Ieee   an operation of the processor, right for every argument, whose flags give the status
 *   Exact  the same without a status
 * The kinds say nothing to other users of the table, who need its names, types and shapes. */
#ifndef ZOLVM_TABLE_H
#define ZOLVM_TABLE_H

/* Call shapes: UNARY has one source and one destination, BINARY two sources; SCALAR takes its second
 * operand by value; TWO_RESULTS has two destinations (sine and cosine; integer part and rest). */
#define ZOLVM_PARAMETERS_UNARY(S, D) (S const* pSrc, D* pDst, int len)
#define ZOLVM_PARAMETERS_BINARY(S, D) (S const* pSrc1, S const* pSrc2, D* pDst, int len)
#define ZOLVM_PARAMETERS_SCALAR(S, D) (S const* pSrc, S value, D* pDst, int len)
#define ZOLVM_PARAMETERS_TWO_RESULTS(S, D) (S const* pSrc, D* pDst1, D* pDst2, int len)
#define ZOLVM_ARGUMENTS_UNARY (pSrc, pDst, len)
#define ZOLVM_ARGUMENTS_BINARY (pSrc1, pSrc2, pDst, len)
#define ZOLVM_ARGUMENTS_SCALAR (pSrc, value, pDst, len)
#define ZOLVM_ARGUMENTS_TWO_RESULTS (pSrc, pDst1, pDst2, len)

/* A row makes DECL(shape, name, source type, destination type, family, kind) of each function. */
#define ZOLVM_SIX(DECL, shape, family, t, S1, D1, t2, S2, D2, a11, a21, a24, a26, a50, a53) \
    DECL(shape, zols##family##_##t##_A11, S1, D1, family, a11) \
    DECL(shape, zols##family##_##t##_A21, S1, D1, family, a21) \
    DECL(shape, zols##family##_##t##_A24, S1, D1, family, a24) \
    DECL(shape, zols##family##_##t2##_A26, S2, D2, family, a26) \
    DECL(shape, zols##family##_##t2##_A50, S2, D2, family, a50) \
    DECL(shape, zols##family##_##t2##_A53, S2, D2, family, a53)
#define ZOLVM_REAL(DECL, shape, family, a11, a21, a24, a26, a50, a53) \
    ZOLVM_SIX(DECL, shape, family, 32f, Zol32f, Zol32f, 64f, Zol64f, Zol64f, a11, a21, a24, a26, \
              a50, a53)
#define ZOLVM_COMPLEX(DECL, shape, family, a11, a21, a24, a26, a50, a53) \
    ZOLVM_SIX(DECL, shape, family, 32fc, Zol32fc, Zol32fc, 64fc, Zol64fc, Zol64fc, a11, a21, a24, \
              a26, a50, a53)
#define ZOLVM_TO_REAL(DECL, shape, family, a11, a21, a24, a26, a50, a53) \
    ZOLVM_SIX(DECL, shape, family, 32fc, Zol32fc, Zol32f, 64fc, Zol64fc, Zol64f, a11, a21, a24, \
              a26, a50, a53)
#define ZOLVM_FROM_REAL(DECL, shape, family, a11, a21, a24, a26, a50, a53) \
    ZOLVM_SIX(DECL, shape, family, 32fc, Zol32f, Zol32fc, 64fc, Zol64f, Zol64fc, a11, a21, a24, \
              a26, a50, a53)
/* The most accurate forms alone, and forms without an accuracy. */
#define ZOLVM_REAL_BEST(DECL, shape, family, kind) \
    DECL(shape, zols##family##_32f_A24, Zol32f, Zol32f, family, kind) \
    DECL(shape, zols##family##_64f_A53, Zol64f, Zol64f, family, kind)
#define ZOLVM_COMPLEX_BEST(DECL, shape, family, kind) \
    DECL(shape, zols##family##_32fc_A24, Zol32fc, Zol32fc, family, kind) \
    DECL(shape, zols##family##_64fc_A53, Zol64fc, Zol64fc, family, kind)
#define ZOLVM_REAL_PLAIN(DECL, shape, family, kind) \
    DECL(shape, zols##family##_32f, Zol32f, Zol32f, family, kind) \
    DECL(shape, zols##family##_64f, Zol64f, Zol64f, family, kind)

#define ZOLVM_REAL_FUNCTIONS(DECL) \
    ZOLVM_REAL(DECL, UNARY, Acos, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Acosh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Asin, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Asinh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Atan, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Atanh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Cbrt, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, CdfNorm, Vec, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_REAL(DECL, UNARY, CdfNormInv, Vec, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_REAL(DECL, UNARY, Cos, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Cosh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Erf, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, ErfInv, Vec, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_REAL(DECL, UNARY, Erfc, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, ErfcInv, Vec, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_REAL(DECL, UNARY, Exp, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Expm1, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Inv, Cheap, Ieee, Ieee, Ieee, Ieee, Ieee) \
    ZOLVM_REAL(DECL, UNARY, InvCbrt, Vec, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_REAL(DECL, UNARY, InvSqrt, Cheap, Ieee, Wide, Cheap, Ieee, Fine) \
    ZOLVM_REAL(DECL, UNARY, Ln, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Log10, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Log1p, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Pow2o3, Vec, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_REAL(DECL, UNARY, Pow3o2, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Sin, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Sinh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Sqrt, Cheap, Ieee, Ieee, Cheap, Ieee, Ieee) \
    ZOLVM_REAL(DECL, UNARY, Tan, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, UNARY, Tanh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, BINARY, Atan2, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, BINARY, Div, Cheap, Ieee, Ieee, Ieee, Ieee, Ieee) \
    ZOLVM_REAL(DECL, BINARY, Hypot, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_REAL(DECL, BINARY, Pow, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, SCALAR, Powx, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL(DECL, TWO_RESULTS, SinCos, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_REAL_BEST(DECL, UNARY, Abs, Exact) \
    ZOLVM_REAL_BEST(DECL, UNARY, Sqr, Exact) \
    ZOLVM_REAL_BEST(DECL, BINARY, Add, Exact) \
    ZOLVM_REAL_BEST(DECL, BINARY, Mul, Exact) \
    ZOLVM_REAL_BEST(DECL, BINARY, Sub, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, Ceil, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, Floor, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, Frac, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, NearbyInt, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, Rint, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, Round, Exact) \
    ZOLVM_REAL_PLAIN(DECL, UNARY, Trunc, Exact) \
    ZOLVM_REAL_PLAIN(DECL, TWO_RESULTS, Modf, Exact)

#define ZOLVM_COMPLEX_FUNCTIONS(DECL) \
    ZOLVM_COMPLEX(DECL, UNARY, Acos, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Acosh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Asin, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Asinh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Atan, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Atanh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Cos, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Cosh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Exp, Cheap, Vec, Wide, Cheap, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Ln, Wide, Wide, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Log10, Wide, Wide, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Sin, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Sinh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Sqrt, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Tan, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, UNARY, Tanh, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_COMPLEX(DECL, BINARY, Div, Vec, Vec, Vec, Vec, Vec, Vec) \
    ZOLVM_COMPLEX(DECL, BINARY, Mul, Vec, Vec, Vec, Vec, Vec, Vec) \
    ZOLVM_COMPLEX(DECL, BINARY, MulByConj, Vec, Vec, Vec, Vec, Vec, Vec) \
    ZOLVM_COMPLEX(DECL, BINARY, Pow, Wide, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_COMPLEX(DECL, SCALAR, Powx, Wide, Wide, Wide, Vec, Fine, Fine) \
    ZOLVM_COMPLEX_BEST(DECL, UNARY, Conj, Exact) \
    ZOLVM_COMPLEX_BEST(DECL, BINARY, Add, Exact) \
    ZOLVM_COMPLEX_BEST(DECL, BINARY, Sub, Exact) \
    ZOLVM_TO_REAL(DECL, UNARY, Abs, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_TO_REAL(DECL, UNARY, Arg, Vec, Vec, Wide, Vec, Vec, Fine) \
    ZOLVM_FROM_REAL(DECL, UNARY, CIS, Cheap, Vec, Wide, Cheap, Vec, Fine)

#define ZOLVM_FUNCTIONS(DECL) ZOLVM_REAL_FUNCTIONS(DECL) ZOLVM_COMPLEX_FUNCTIONS(DECL)

#endif
