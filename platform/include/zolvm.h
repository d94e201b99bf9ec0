/* zolvm.h - the C interface of libzolvm: 392 vector math functions.
 *
 * Names are zols<Family>_<type>_<accuracy>. Types: 32f, 64f, 32fc, 64fc. Accuracies, from fast
 * to exact: A11, A21, A24 for single, A26, A50, A53 for double. Each function takes its sources,
 * its destinations and the number of elements, and returns a status: negative for a null pointer
 * or a length below 1, a warning of zolcore.h where an argument was out of the ordinary. */
#ifndef ZOLVM_H
#define ZOLVM_H

#include "zolcore.h"

#ifdef __cplusplus
extern "C" {
#endif

ZolLibraryVersion const* zolvmGetLibVersion(void);

/* One declaration for each accuracy of a type; DECL(name, source type, destination type). */
#define ZOLVM_EACH_32F(DECL, family) \
    DECL(zols##family##_32f_A11, Zol32f, Zol32f) \
    DECL(zols##family##_32f_A21, Zol32f, Zol32f) \
    DECL(zols##family##_32f_A24, Zol32f, Zol32f)
#define ZOLVM_EACH_64F(DECL, family) \
    DECL(zols##family##_64f_A26, Zol64f, Zol64f) \
    DECL(zols##family##_64f_A50, Zol64f, Zol64f) \
    DECL(zols##family##_64f_A53, Zol64f, Zol64f)
#define ZOLVM_EACH_32FC(DECL, family, source, destination) \
    DECL(zols##family##_32fc_A11, source, destination) \
    DECL(zols##family##_32fc_A21, source, destination) \
    DECL(zols##family##_32fc_A24, source, destination)
#define ZOLVM_EACH_64FC(DECL, family, source, destination) \
    DECL(zols##family##_64fc_A26, source, destination) \
    DECL(zols##family##_64fc_A50, source, destination) \
    DECL(zols##family##_64fc_A53, source, destination)

#define ZOLVM_EACH_REAL(DECL, family) ZOLVM_EACH_32F(DECL, family) ZOLVM_EACH_64F(DECL, family)
#define ZOLVM_EACH_COMPLEX(DECL, family) \
    ZOLVM_EACH_32FC(DECL, family, Zol32fc, Zol32fc) ZOLVM_EACH_64FC(DECL, family, Zol64fc, Zol64fc)
#define ZOLVM_EACH_TWELVE(DECL, family) \
    ZOLVM_EACH_REAL(DECL, family) ZOLVM_EACH_COMPLEX(DECL, family)

/* The most accurate real and complex forms alone, and the forms without an accuracy. */
#define ZOLVM_BEST_REAL(DECL, family) \
    DECL(zols##family##_32f_A24, Zol32f, Zol32f) DECL(zols##family##_64f_A53, Zol64f, Zol64f)
#define ZOLVM_BEST_COMPLEX(DECL, family) \
    DECL(zols##family##_32fc_A24, Zol32fc, Zol32fc) DECL(zols##family##_64fc_A53, Zol64fc, Zol64fc)
#define ZOLVM_PLAIN_REAL(DECL, family) \
    DECL(zols##family##_32f, Zol32f, Zol32f) DECL(zols##family##_64f, Zol64f, Zol64f)

/* One source, one destination. */
#define ZOLVM_UNARY(DECL) \
    ZOLVM_EACH_TWELVE(DECL, Acos) \
    ZOLVM_EACH_TWELVE(DECL, Acosh) \
    ZOLVM_EACH_TWELVE(DECL, Asin) \
    ZOLVM_EACH_TWELVE(DECL, Asinh) \
    ZOLVM_EACH_TWELVE(DECL, Atan) \
    ZOLVM_EACH_TWELVE(DECL, Atanh) \
    ZOLVM_EACH_TWELVE(DECL, Cos) \
    ZOLVM_EACH_TWELVE(DECL, Cosh) \
    ZOLVM_EACH_TWELVE(DECL, Exp) \
    ZOLVM_EACH_TWELVE(DECL, Ln) \
    ZOLVM_EACH_TWELVE(DECL, Log10) \
    ZOLVM_EACH_TWELVE(DECL, Sin) \
    ZOLVM_EACH_TWELVE(DECL, Sinh) \
    ZOLVM_EACH_TWELVE(DECL, Sqrt) \
    ZOLVM_EACH_TWELVE(DECL, Tan) \
    ZOLVM_EACH_TWELVE(DECL, Tanh) \
    ZOLVM_EACH_REAL(DECL, Cbrt) \
    ZOLVM_EACH_REAL(DECL, CdfNorm) \
    ZOLVM_EACH_REAL(DECL, CdfNormInv) \
    ZOLVM_EACH_REAL(DECL, Erf) \
    ZOLVM_EACH_REAL(DECL, ErfInv) \
    ZOLVM_EACH_REAL(DECL, Erfc) \
    ZOLVM_EACH_REAL(DECL, ErfcInv) \
    ZOLVM_EACH_REAL(DECL, Expm1) \
    ZOLVM_EACH_REAL(DECL, Inv) \
    ZOLVM_EACH_REAL(DECL, InvCbrt) \
    ZOLVM_EACH_REAL(DECL, InvSqrt) \
    ZOLVM_EACH_REAL(DECL, Log1p) \
    ZOLVM_EACH_REAL(DECL, Pow2o3) \
    ZOLVM_EACH_REAL(DECL, Pow3o2) \
    ZOLVM_EACH_32FC(DECL, Arg, Zol32fc, Zol32f) \
    ZOLVM_EACH_64FC(DECL, Arg, Zol64fc, Zol64f) \
    ZOLVM_EACH_32FC(DECL, Abs, Zol32fc, Zol32f) \
    ZOLVM_EACH_64FC(DECL, Abs, Zol64fc, Zol64f) \
    ZOLVM_EACH_32FC(DECL, CIS, Zol32f, Zol32fc) \
    ZOLVM_EACH_64FC(DECL, CIS, Zol64f, Zol64fc) \
    ZOLVM_BEST_REAL(DECL, Abs) \
    ZOLVM_BEST_REAL(DECL, Sqr) \
    ZOLVM_BEST_COMPLEX(DECL, Conj) \
    ZOLVM_PLAIN_REAL(DECL, Ceil) \
    ZOLVM_PLAIN_REAL(DECL, Floor) \
    ZOLVM_PLAIN_REAL(DECL, Frac) \
    ZOLVM_PLAIN_REAL(DECL, NearbyInt) \
    ZOLVM_PLAIN_REAL(DECL, Rint) \
    ZOLVM_PLAIN_REAL(DECL, Round) \
    ZOLVM_PLAIN_REAL(DECL, Trunc)

/* Two sources, one destination. */
#define ZOLVM_BINARY(DECL) \
    ZOLVM_EACH_TWELVE(DECL, Div) \
    ZOLVM_EACH_TWELVE(DECL, Pow) \
    ZOLVM_EACH_REAL(DECL, Atan2) \
    ZOLVM_EACH_REAL(DECL, Hypot) \
    ZOLVM_EACH_COMPLEX(DECL, MulByConj) \
    ZOLVM_EACH_COMPLEX(DECL, Mul) \
    ZOLVM_BEST_REAL(DECL, Mul) \
    ZOLVM_BEST_REAL(DECL, Add) \
    ZOLVM_BEST_COMPLEX(DECL, Add) \
    ZOLVM_BEST_REAL(DECL, Sub) \
    ZOLVM_BEST_COMPLEX(DECL, Sub)

/* One source and one second operand by value, one destination. */
#define ZOLVM_SCALAR(DECL) ZOLVM_EACH_TWELVE(DECL, Powx)

/* One source, two destinations: SinCos gives sine and cosine, Modf the integer part and the rest. */
#define ZOLVM_TWO_RESULTS(DECL) ZOLVM_EACH_REAL(DECL, SinCos) ZOLVM_PLAIN_REAL(DECL, Modf)

#define ZOLVM_DECLARE_UNARY(name, S, D) ZolStatus name(S const* pSrc, D* pDst, int len);
#define ZOLVM_DECLARE_BINARY(name, S, D) \
    ZolStatus name(S const* pSrc1, S const* pSrc2, D* pDst, int len);
#define ZOLVM_DECLARE_SCALAR(name, S, D) ZolStatus name(S const* pSrc, S value, D* pDst, int len);
#define ZOLVM_DECLARE_TWO_RESULTS(name, S, D) \
    ZolStatus name(S const* pSrc, D* pDst1, D* pDst2, int len);

ZOLVM_UNARY(ZOLVM_DECLARE_UNARY)
ZOLVM_BINARY(ZOLVM_DECLARE_BINARY)
ZOLVM_SCALAR(ZOLVM_DECLARE_SCALAR)
ZOLVM_TWO_RESULTS(ZOLVM_DECLARE_TWO_RESULTS)

#ifdef __cplusplus
}
#endif

#endif
