// vtsrealblocks.h - definition blocks of the families with real operands, without their
// heading. VTS_REAL_<family>(t, f) is the text of the row of type t and flavour f; vtspieces.h says
// how to see it joined.
#ifndef VTS_VTSREALBLOCKS_H
#define VTS_VTSREALBLOCKS_H

#include "vts/vtspieces.h"

// The sections of a block stand on lines of their own.
// clang-format off

#define VTS_REAL_Abs(t, f)                                                                         \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PZERO", "PZERO") VTS_INFS("PINF", "PINF") VTS_ONES("PONE", "PONE")                  \
    VTS_LINE("NegBig", "NBIG", "PBIG")                                                             \
    VTS_LINE("QuietNan", "QNAN", "QNAN")

#define VTS_REAL_Acos(t, f)                                                                        \
    VTS_WORK("[ -1.0 ; +1.0 ]")                                                                    \
    VTS_ADDITIONAL VTS_EXTRA("Edge", f, "[ 0.999 ; 1.0 ]")                                         \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PPIO2", "PPIO2") VTS_ONES("PZERO", "PPI") VTS_NO_INFS                               \
    VTS_LINE("Outside", "ABSGTONE", VTS_NONE)                                                      \
    VTS_NANS

#define VTS_REAL_Acosh(t, f)                                                                       \
    VTS_WORK(VTS_ACOSH_##t)                                                                        \
    VTS_ADDITIONAL VTS_EXTRA("Edge", f, "[ 1.0 ; 1.001 ]")                                         \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("PosOne", "PONE", "PZERO")                                                            \
    VTS_INFS("PINF", VTS_NONE)                                                                     \
    VTS_LINE("Below", "LTONE", VTS_NONE)                                                           \
    VTS_NANS
#define VTS_ACOSH_s "[ +4.0 ; +1.0e+19 ]"
#define VTS_ACOSH_d "[ +1.001 ; +1.0e+154 ]"

#define VTS_REAL_Add(t, f)                                                                         \
    VTS_WORK(VTS_WIDE2)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("PZero_NZero", "PZERO", "NZERO", "PZERO")                                            \
    VTS_LINE2("NZero_NZero", "NZERO", "NZERO", "NZERO")                                            \
    VTS_LINE2("POne_POne", "PONE", "PONE", "PTWO")                                                 \
    VTS_LINE2("POne_NOne", "PONE", "NONE", "PZERO")                                                \
    VTS_LINE2("PInf_Any", "PINF", "ANY", "PINF")                                                   \
    VTS_LINE2("Any_NInf", "ANY", "NINF", "NINF")                                                   \
    VTS_LINE2("PInf_NInf", "PINF", "NINF", VTS_NONE)                                               \
    VTS_LINE2("PBig_PBig", "PBIG", "PBIG", "PINF" VTS_OVER)                                        \
    VTS_NANS2

#define VTS_REAL_Asin(t, f)                                                                        \
    VTS_WORK("[ -1.0 ; +1.0 ]")                                                                    \
    VTS_ADDITIONAL VTS_EXTRA("Edge", f, "[ 0.999 ; 1.0 ]") VTS_NEAR0(f)                            \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_ONES("PPIO2", "NPIO2") VTS_NO_INFS                                          \
    VTS_LINE("Outside", "ABSGTONE", VTS_NONE)                                                      \
    VTS_NANS

#define VTS_REAL_Asinh(t, f)                                                                       \
    VTS_WORK(VTS_ASINH_##t)                                                                        \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS VTS_NANS
#define VTS_ASINH_s "[ +4.0 ; +1.0e+19 ]"
#define VTS_ASINH_d "[ +0.002 ; +1.0e+154 ]"

#define VTS_REAL_Atan(t, f)                                                                        \
    VTS_WORK("[ -5.0 ; +5.0 ]")                                                                    \
    VTS_ADDITIONAL VTS_EXTRA("Large", f, "[ 5.0 ; 1.0e+6 ]") VTS_NEAR0(f)                          \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_ONES("PPIO4", "NPIO4") VTS_INFS("PPIO2", "NPIO2") VTS_NANS

#define VTS_REAL_Atan2(t, f)                                                                       \
    VTS_WORK("[ -10000 ; +10000 ] & [ -10000 ; +10000 ]")                                          \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("PZero_PZero", "PZERO", "PZERO", "PZERO")                                            \
    VTS_LINE2("NZero_PZero", "NZERO", "PZERO", "NZERO")                                            \
    VTS_LINE2("PZero_NZero", "PZERO", "NZERO", "PPI")                                              \
    VTS_LINE2("NZero_NZero", "NZERO", "NZERO", "NPI")                                              \
    VTS_LINE2("PZero_Pos", "PZERO", "GTZERO", "PZERO")                                             \
    VTS_LINE2("NZero_Neg", "NZERO", "LTZERO", "NPI")                                               \
    VTS_LINE2("Pos_NZero", "GTZERO", "NZERO", "PPIO2")                                             \
    VTS_LINE2("Neg_PZero", "LTZERO", "PZERO", "NPIO2")                                             \
    VTS_LINE2("Pos_PInf", "GTZERO", "PINF", "PZERO")                                               \
    VTS_LINE2("Neg_NInf", "LTZERO", "NINF", "NPI")                                                 \
    VTS_LINE2("PInf_Any", "PINF", "ANY", "PPIO2")                                                  \
    VTS_LINE2("NInf_Any", "NINF", "ANY", "NPIO2")                                                  \
    VTS_LINE2("PInf_PInf", "PINF", "PINF", "PPIO4")                                                \
    VTS_LINE2("NInf_PInf", "NINF", "PINF", "NPIO4")                                                \
    VTS_LINE2("PInf_NInf", "PINF", "NINF", "PTHREEPIO4")                                           \
    VTS_LINE2("NInf_NInf", "NINF", "NINF", "NTHREEPIO4")                                           \
    VTS_NANS2

#define VTS_REAL_Atanh(t, f)                                                                       \
    VTS_WORK(VTS_ATANH_##t)                                                                        \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_ONES("PINF" VTS_POLE, "NINF" VTS_POLE) VTS_NO_INFS                          \
    VTS_LINE("Outside", "ABSGTONE", VTS_NONE)                                                      \
    VTS_NANS
#define VTS_ATANH_s "[ 0.77 ; 0.99999 ]"
#define VTS_ATANH_d "[ 0.005 ; 0.99999 ]"

#define VTS_REAL_Cbrt(t, f)                                                                        \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_ADDITIONAL VTS_DENORMALS(t, f)                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS VTS_ONES("PONE", "NONE") VTS_NANS

#define VTS_REAL_CdfNorm(t, f)                                                                     \
    VTS_WORK(VTS_CDFNORM_##t##f)                                                                   \
    VTS_ADDITIONAL VTS_EXTRA("Tail", f, VTS_CDFTAIL_##t)                                           \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PHALF", "PHALF") VTS_INFS("PONE", "PZERO") VTS_NANS
#define VTS_CDFNORM_sHA "[ -8.0 ; 5.0 ]"
#define VTS_CDFNORM_sLA VTS_CDFNORM_sHA
#define VTS_CDFNORM_sEP "[ -3.8 ; 5.0 ]"
#define VTS_CDFNORM_dHA "[ -32.0 ; 8.0 ]"
#define VTS_CDFNORM_dLA VTS_CDFNORM_dHA
#define VTS_CDFNORM_dEP VTS_CDFNORM_dHA
#define VTS_CDFTAIL_s "[ -13.0 ; -8.0 ]"
#define VTS_CDFTAIL_d "[ -37.5 ; -32.0 ]"

#define VTS_REAL_CdfNormInv(t, f)                                                                  \
    VTS_WORK("[ 0.00001 ; 0.99999 ]")                                                              \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("NINF" VTS_POLE, "NINF" VTS_POLE)                                                    \
    VTS_LINE("PosOne", "PONE", "PINF" VTS_POLE)                                                    \
    VTS_LINE("PosHalf", "PHALF", "PZERO")                                                          \
    VTS_NO_INFS VTS_NO_NEGATIVE                                                                    \
    VTS_LINE("PosTwo", "PTWO", VTS_NONE)                                                           \
    VTS_NANS

#define VTS_REAL_Ceil(t, f)                                                                        \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS                                                                   \
    VTS_LINE("PosHalf", "PHALF", "PONE")                                                           \
    VTS_LINE("NegHalf", "NHALF", "NZERO")                                                          \
    VTS_LINE("PosBig", "PBIG", "PBIG")                                                             \
    VTS_NANS

#define VTS_REAL_Cos(t, f)                                                                         \
    VTS_WORK("[ -10000 ; 10000.0 ]")                                                               \
    VTS_FIXED VTS_REDUCTION_##t                                                                    \
    VTS_ADDITIONAL VTS_EXTRA("Large", f, "[ 1.0e+5 ; 1.0e+30 ]")                                   \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PONE", "PONE") VTS_NO_INFS VTS_NANS

#define VTS_REAL_Cosh(t, f)                                                                        \
    VTS_WORK(VTS_HYPERBOLIC_##t)                                                                   \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PONE", "PONE") VTS_INFS("PINF", "PINF")                                             \
    VTS_LINE("Above", "GTSINHOVERFLOW", "PINF" VTS_OVER)                                           \
    VTS_LINE("Below", "LTSINHNOVERFLOW", "PINF" VTS_OVER)                                          \
    VTS_NANS
#define VTS_HYPERBOLIC_s "[ -87.0 ; 87.0 ]"
#define VTS_HYPERBOLIC_d "[ -675.0 ; 675.0 ]"

#define VTS_REAL_Div(t, f)                                                                         \
    VTS_WORK("[ 0.0001 ; 10000.0 ] & [ 0.0001 ; 10000.0 ]")                                        \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("Pos_PZero", "GTZERO", "PZERO", "PINF" VTS_POLE)                                     \
    VTS_LINE2("Neg_PZero", "LTZERO", "PZERO", "NINF" VTS_POLE)                                     \
    VTS_LINE2("PZero_NZero", "PZERO", "NZERO", VTS_NONE)                                           \
    VTS_LINE2("PZero_Neg", "PZERO", "LTZERO", "NZERO")                                             \
    VTS_LINE2("PInf_NInf", "PINF", "NINF", VTS_NONE)                                               \
    VTS_LINE2("PInf_Neg", "PINF", "LTZERO", "NINF")                                                \
    VTS_LINE2("Pos_PInf", "GTZERO", "PINF", "PZERO")                                               \
    VTS_LINE2("Neg_PInf", "LTZERO", "PINF", "NZERO")                                               \
    VTS_LINE2("POne_PTwo", "PONE", "PTWO", "PHALF")                                                \
    VTS_LINE2("PBig_PHalf", "PBIG", "PHALF", "PINF" VTS_OVER)                                      \
    VTS_NANS2

#define VTS_REAL_Erf(t, f)                                                                         \
    VTS_WORK(VTS_ERF_##t##f)                                                                       \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_INFS("PONE", "NONE") VTS_NANS
#define VTS_ERF_sHA "[ 1.0 ; 4.0 ]"
#define VTS_ERF_sLA "[ 0.126 ; 4.0 ]"
#define VTS_ERF_sEP VTS_ERF_sLA
#define VTS_ERF_dHA "[ 0.5 ; 5.9 ]"
#define VTS_ERF_dLA VTS_ERF_dHA
#define VTS_ERF_dEP VTS_ERF_dHA

#define VTS_REAL_ErfInv(t, f)                                                                      \
    VTS_WORK("[ -0.99999 ; 0.99999 ]")                                                             \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_ONES("PINF" VTS_POLE, "NINF" VTS_POLE) VTS_NO_INFS                          \
    VTS_LINE("Outside", "ABSGTONE", VTS_NONE)                                                      \
    VTS_NANS

#define VTS_REAL_Erfc(t, f)                                                                        \
    VTS_WORK(VTS_ERFC_##t)                                                                         \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PONE", "PONE") VTS_INFS("PZERO", "PTWO")                                            \
    VTS_LINE("Above", "GTERFCUNDERFLOW", "PZERO" VTS_UNDER)                                        \
    VTS_NANS
#define VTS_ERFC_s "[ -3.0 ; 9.0 ]"
#define VTS_ERFC_d "[ -5.0 ; 25.0 ]"

#define VTS_REAL_ErfcInv(t, f)                                                                     \
    VTS_WORK("[ 0.00001 ; 1.99999 ]")                                                              \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PINF" VTS_POLE, "PINF" VTS_POLE)                                                    \
    VTS_LINE("PosTwo", "PTWO", "NINF" VTS_POLE)                                                    \
    VTS_LINE("PosOne", "PONE", "PZERO")                                                            \
    VTS_NO_INFS VTS_NO_NEGATIVE VTS_NANS

#define VTS_REAL_Exp(t, f)                                                                         \
    VTS_WORK(VTS_EXP_##t##f)                                                                       \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PONE", "PONE") VTS_INFS("PINF", "PZERO")                                            \
    VTS_LINE("Limit", "EXPOVERFLOW", "PINF" VTS_OVER)                                              \
    VTS_LINE("Above", "GTEXPOVERFLOW", "PINF" VTS_OVER)                                            \
    VTS_LINE("Below", "LTEXPUNDERFLOW", "PZERO" VTS_UNDER)                                         \
    VTS_NANS
#define VTS_EXP_sHA VTS_HYPERBOLIC_s
#define VTS_EXP_sLA VTS_HYPERBOLIC_s
#define VTS_EXP_sEP VTS_HYPERBOLIC_s
#define VTS_EXP_dHA "[ -707.0 ; 707.0 ]"
#define VTS_EXP_dLA "[ -700.0 ; 707.0 ]"
#define VTS_EXP_dEP "[ -87.0 ; 87.0 ]"

#define VTS_REAL_Expm1(t, f)                                                                       \
    VTS_WORK(VTS_EXPM1_##t)                                                                        \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_INFS("PINF", "NONE")                                                        \
    VTS_LINE("Above", "GTEXPOVERFLOW", "PINF" VTS_OVER)                                            \
    VTS_LINE("Below", "LTEXPUNDERFLOW", "NONE")                                                    \
    VTS_NANS
#define VTS_EXPM1_s "[ -70.0 ; 70.0 ]"
#define VTS_EXPM1_d "[ -500.0 ; 500.0 ]"

#define VTS_REAL_Floor(t, f)                                                                       \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS                                                                   \
    VTS_LINE("PosHalf", "PHALF", "PZERO")                                                          \
    VTS_LINE("NegHalf", "NHALF", "NONE")                                                           \
    VTS_LINE("PosBig", "PBIG", "PBIG")                                                             \
    VTS_NANS

#define VTS_REAL_Frac(t, f)                                                                        \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_INFS("PZERO", "NZERO") VTS_ONES("PZERO", "NZERO")                           \
    VTS_LINE("PosOneHalf", "PONEHALF", "PHALF")                                                    \
    VTS_LINE("NegOneHalf", "NONEHALF", "NHALF")                                                    \
    VTS_NANS

#define VTS_REAL_Hypot(t, f)                                                                       \
    VTS_WORK(VTS_WIDE2)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("NZero_NZero", "NZERO", "NZERO", "PZERO")                                            \
    VTS_LINE2("NOne_PZero", "NONE", "PZERO", "PONE")                                               \
    VTS_LINE2("PInf_Any", "PINF", "ANY", "PINF")                                                   \
    VTS_LINE2("Any_NInf", "ANY", "NINF", "PINF")                                                   \
    VTS_LINE2("PInf_Nan", "PINF", "QNAN", "PINF")                                                  \
    VTS_LINE2("Nan_NInf", "QNAN", "NINF", "PINF")                                                  \
    VTS_LINE2("PBig_PBig", "PBIG", "PBIG", "PINF" VTS_OVER)                                        \
    VTS_NANS2

#define VTS_REAL_Inv(t, f)                                                                         \
    VTS_WORK("[ 0.0001 ; 10000.0 ]")                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PINF" VTS_POLE, "NINF" VTS_POLE) VTS_INFS("PZERO", "NZERO")                         \
    VTS_ONES("PONE", "NONE")                                                                       \
    VTS_LINE("PosTwo", "PTWO", "PHALF")                                                            \
    VTS_NANS

#define VTS_REAL_InvCbrt(t, f)                                                                     \
    VTS_WORK("[ 0.1 ; 10000.0 ]")                                                                  \
    VTS_ADDITIONAL VTS_DENORMALS(t, f)                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PINF" VTS_POLE, "NINF" VTS_POLE) VTS_INFS("PZERO", "NZERO")                         \
    VTS_ONES("PONE", "NONE") VTS_NANS

#define VTS_REAL_InvSqrt(t, f)                                                                     \
    VTS_WORK("[ 0.1 ; 10000.0 ]")                                                                  \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PINF" VTS_POLE, "NINF" VTS_POLE) VTS_INFS("PZERO", VTS_NONE)                        \
    VTS_LINE("PosOne", "PONE", "PONE")                                                             \
    VTS_NO_NEGATIVE VTS_NANS

#define VTS_REAL_Ln(t, f)                                                                          \
    VTS_WORK(VTS_LN_##f)                                                                           \
    VTS_ADDITIONAL VTS_NEAR1(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("NINF" VTS_POLE, "NINF" VTS_POLE) VTS_INFS("PINF", VTS_NONE)                         \
    VTS_LINE("PosOne", "PONE", "PZERO")                                                            \
    VTS_NO_NEGATIVE VTS_NANS
#define VTS_LN_HA "[ 0.1 ; 10000.0 ]"
#define VTS_LN_LA VTS_LN_HA
#define VTS_LN_EP "[ 1.2 ; 10000.0 ]"

#define VTS_REAL_Log10(t, f) VTS_REAL_Ln(t, f)

#define VTS_REAL_Log1p(t, f)                                                                       \
    VTS_WORK("[ 1.0 ; 999.0 ]")                                                                    \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_INFS("PINF", VTS_NONE)                                                      \
    VTS_LINE("NegOne", "NONE", "NINF" VTS_POLE)                                                    \
    VTS_LINE("NegTwo", "NTWO", VTS_NONE)                                                           \
    VTS_NANS

#define VTS_REAL_Modf(t, f)                                                                        \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS(VTS_BOTH("PZERO", "PZERO"), VTS_BOTH("NZERO", "NZERO"))                              \
    VTS_INFS(VTS_BOTH("PINF", "PZERO"), VTS_BOTH("NINF", "NZERO"))                                 \
    VTS_ONES(VTS_BOTH("PONE", "PZERO"), VTS_BOTH("NONE", "NZERO"))                                 \
    VTS_LINE("PosOneHalf", "PONEHALF", VTS_BOTH("PONE", "PHALF"))                                  \
    VTS_LINE("NegOneHalf", "NONEHALF", VTS_BOTH("NONE", "NHALF"))                                  \
    VTS_LINE("QuietNan", "QNAN", VTS_BOTH("QNAN", "QNAN"))

#define VTS_REAL_Mul(t, f)                                                                         \
    VTS_WORK(VTS_WIDE2)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("PZero_Neg", "PZERO", "LTZERO", "NZERO")                                             \
    VTS_LINE2("NZero_Neg", "NZERO", "LTZERO", "PZERO")                                             \
    VTS_LINE2("PInf_Neg", "PINF", "LTZERO", "NINF")                                                \
    VTS_LINE2("NInf_Neg", "NINF", "LTZERO", "PINF")                                                \
    VTS_LINE2("PInf_PZero", "PINF", "PZERO", VTS_NONE)                                             \
    VTS_LINE2("NTwo_PHalf", "NTWO", "PHALF", "NONE")                                               \
    VTS_LINE2("PBig_PTwo", "PBIG", "PTWO", "PINF" VTS_OVER)                                        \
    VTS_NANS2

#define VTS_REAL_NearbyInt(t, f)                                                                   \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS VTS_HALVES_TO_EVEN("")
#define VTS_HALVES_TO_EVEN(clause)                                                                 \
    VTS_LINE("PosHalf", "PHALF", "PZERO" clause)                                                   \
    VTS_LINE("NegHalf", "NHALF", "NZERO" clause)                                                   \
    VTS_LINE("PosOneHalf", "PONEHALF", "PTWO" clause)                                              \
    VTS_LINE("NegOneHalf", "NONEHALF", "NTWO" clause)                                              \
    VTS_NANS

#define VTS_REAL_Pow(t, f)                                                                         \
    VTS_WORK(VTS_POW_##t)                                                                          \
    VTS_SPECIAL_POW
#define VTS_POW_s "[ 0.1 ; 10.0 ] & [ 0.1 ; 10.0 ]"
#define VTS_POW_d "[ 5.0 ; 100.0 ] & [ 5.0 ; 100.0 ]"
#define VTS_SPECIAL_POW                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("PZero_NOdd", "PZERO", "NODDINT", "PINF" VTS_POLE)                                   \
    VTS_LINE2("NZero_NOdd", "NZERO", "NODDINT", "NINF" VTS_POLE)                                   \
    VTS_LINE2("NZero_NEven", "NZERO", "NEVENINT", "PINF" VTS_POLE)                                 \
    VTS_LINE2("PZero_POdd", "PZERO", "PODDINT", "PZERO")                                           \
    VTS_LINE2("NZero_POdd", "NZERO", "PODDINT", "NZERO")                                           \
    VTS_LINE2("NZero_PEven", "NZERO", "PEVENINT", "PZERO")                                         \
    VTS_LINE2("NZero_PHalf", "NZERO", "PHALF", "PZERO")                                            \
    VTS_LINE2("Any_PZero", "ANY", "PZERO", "PONE")                                                 \
    VTS_LINE2("Nan_NZero", "QNAN", "NZERO", "PONE")                                                \
    VTS_LINE2("POne_Any", "PONE", "ANY", "PONE")                                                   \
    VTS_LINE2("POne_Nan", "PONE", "QNAN", "PONE")                                                  \
    VTS_LINE2("NOne_PInf", "NONE", "PINF", "PONE")                                                 \
    VTS_LINE2("NOne_NInf", "NONE", "NINF", "PONE")                                                 \
    VTS_LINE2("NOne_POdd", "NONE", "PODDINT", "NONE")                                              \
    VTS_LINE2("NHalf_PInf", "NHALF", "PINF", "PZERO")                                              \
    VTS_LINE2("PHalf_NInf", "PHALF", "NINF", "PINF")                                               \
    VTS_LINE2("NTwo_PInf", "NTWO", "PINF", "PINF")                                                 \
    VTS_LINE2("PTwo_NInf", "PTWO", "NINF", "PZERO")                                                \
    VTS_LINE2("PInf_Pos", "PINF", "GTZERO", "PINF")                                                \
    VTS_LINE2("PInf_Neg", "PINF", "LTZERO", "PZERO")                                               \
    VTS_LINE2("NInf_POdd", "NINF", "PODDINT", "NINF")                                              \
    VTS_LINE2("NInf_PEven", "NINF", "PEVENINT", "PINF")                                            \
    VTS_LINE2("NInf_NOdd", "NINF", "NODDINT", "NZERO")                                             \
    VTS_LINE2("NInf_NEven", "NINF", "NEVENINT", "PZERO")                                           \
    VTS_LINE2("Neg_PHalf", "LTZERO", "PHALF", VTS_NONE)                                            \
    VTS_LINE2("PBig_PTwo", "PBIG", "PTWO", "PINF" VTS_OVER)                                        \
    VTS_LINE2("PSmall_PTwo", "PSMALL", "PTWO", "PZERO" VTS_UNDER)                                  \
    VTS_NANS2

#define VTS_REAL_Powx(t, f)                                                                        \
    VTS_WORK(VTS_POWX_##t)                                                                         \
    VTS_SPECIAL_POW
#define VTS_POWX_s VTS_POW_s
#define VTS_POWX_d "[ 5.0 ; 100.0 ] & [ 5.0 ; 10.0 ]"

#define VTS_REAL_Pow2o3(t, f)                                                                      \
    VTS_WORK("[ 0.1 ; 10000.0 ]")                                                                  \
    VTS_ADDITIONAL VTS_EXTRA("Negative", f, "[ -10000.0 ; -0.1 ]")                                 \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PZERO", "PZERO") VTS_INFS("PINF", "PINF") VTS_ONES("PONE", "PONE") VTS_NANS

#define VTS_REAL_Pow3o2(t, f)                                                                      \
    VTS_WORK("[ 0.1 ; 10000.0 ]")                                                                  \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("PosZero", "PZERO", "PZERO")                                                          \
    VTS_LINE("PosInf", "PINF", "PINF")                                                             \
    VTS_LINE("PosOne", "PONE", "PONE")                                                             \
    VTS_NO_NEGATIVE                                                                                \
    VTS_LINE("PosBig", "PBIG", "PINF" VTS_OVER)                                                    \
    VTS_NANS

#define VTS_REAL_Rint(t, f)                                                                        \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS VTS_HALVES_TO_EVEN(" ( 0 / INEXACT )")

#define VTS_REAL_Round(t, f)                                                                       \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS                                                                   \
    VTS_LINE("PosHalf", "PHALF", "PONE")                                                           \
    VTS_LINE("NegHalf", "NHALF", "NONE")                                                           \
    VTS_LINE("PosOneHalf", "PONEHALF", "PTWO")                                                     \
    VTS_LINE("NegOneHalf", "NONEHALF", "NTWO")                                                     \
    VTS_NANS

#define VTS_REAL_Sin(t, f)                                                                         \
    VTS_WORK(VTS_SIN_##t##f)                                                                       \
    VTS_FIXED VTS_REDUCTION_##t                                                                    \
    VTS_ADDITIONAL VTS_EXTRA("Large", f, "[ 1.0e+5 ; 1.0e+30 ]") VTS_NEAR0(f)                      \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_NO_INFS VTS_NANS
#define VTS_SIN_sHA "[ -10000 ; 10000.0 ]"
#define VTS_SIN_sLA VTS_SIN_sHA
#define VTS_SIN_sEP "[ -1000 ; 1000.0 ]"
#define VTS_SIN_dHA VTS_SIN_sHA
#define VTS_SIN_dLA VTS_SIN_sHA
#define VTS_SIN_dEP VTS_SIN_sHA

#define VTS_REAL_SinCos(t, f)                                                                      \
    VTS_WORK("[ -10000 ; 10000.0 ]")                                                               \
    VTS_FIXED VTS_REDUCTION_##t                                                                    \
    VTS_ADDITIONAL VTS_EXTRA("Large", f, "[ 1.0e+5 ; 1.0e+30 ]")                                   \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS(VTS_BOTH("PZERO", "PONE"), VTS_BOTH("NZERO", "PONE"))                                \
    VTS_INFS(VTS_BOTH("QNAN", VTS_NONE), VTS_BOTH("QNAN", VTS_NONE))                               \
    VTS_LINE("QuietNan", "QNAN", VTS_BOTH("QNAN", "QNAN"))

#define VTS_REAL_Sinh(t, f)                                                                        \
    VTS_WORK(VTS_HYPERBOLIC_##t)                                                                   \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS                                                                   \
    VTS_LINE("Above", "GTSINHOVERFLOW", "PINF" VTS_OVER)                                           \
    VTS_LINE("Below", "LTSINHNOVERFLOW", "NINF" VTS_OVER)                                          \
    VTS_NANS

#define VTS_REAL_Sqr(t, f)                                                                         \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS("PZERO", "PZERO") VTS_INFS("PINF", "PINF") VTS_ONES("PONE", "PONE")                  \
    VTS_LINE("NegBig", "NBIG", "PINF" VTS_OVER)                                                    \
    VTS_NANS

#define VTS_REAL_Sqrt(t, f)                                                                        \
    VTS_WORK("[ 0.0 ; 10000.0 ]")                                                                  \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_INFS("PINF", VTS_NONE)                                                      \
    VTS_LINE("PosOne", "PONE", "PONE")                                                             \
    VTS_NO_NEGATIVE VTS_NANS

#define VTS_REAL_Sub(t, f)                                                                         \
    VTS_WORK(VTS_WIDE2)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("PZero_PZero", "PZERO", "PZERO", "PZERO")                                            \
    VTS_LINE2("NZero_PZero", "NZERO", "PZERO", "NZERO")                                            \
    VTS_LINE2("POne_NOne", "PONE", "NONE", "PTWO")                                                 \
    VTS_LINE2("PInf_Any", "PINF", "ANY", "PINF")                                                   \
    VTS_LINE2("Any_PInf", "ANY", "PINF", "NINF")                                                   \
    VTS_LINE2("PInf_PInf", "PINF", "PINF", VTS_NONE)                                               \
    VTS_LINE2("NBig_PBig", "NBIG", "PBIG", "NINF" VTS_OVER)                                        \
    VTS_NANS2

#define VTS_REAL_Tan(t, f)                                                                         \
    VTS_WORK("[ -1000 ; 1000.0 ]")                                                                 \
    VTS_FIXED VTS_REDUCTION_##t                                                                    \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_NO_INFS VTS_NANS

#define VTS_REAL_Tanh(t, f)                                                                        \
    VTS_WORK(VTS_TANH_##t)                                                                         \
    VTS_ADDITIONAL VTS_NEAR0(f)                                                                    \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_INFS("PONE", "NONE") VTS_NANS
#define VTS_TANH_s "[ -9.0 ; 9.0 ]"
#define VTS_TANH_d "[ -19.0 ; 19.0 ]"

#define VTS_REAL_Trunc(t, f)                                                                       \
    VTS_WORK(VTS_WIDE)                                                                             \
    VTS_SPECIAL                                                                                    \
    VTS_SAME_ZEROS VTS_SAME_INFS                                                                   \
    VTS_LINE("PosHalf", "PHALF", "PZERO")                                                          \
    VTS_LINE("NegHalf", "NHALF", "NZERO")                                                          \
    VTS_LINE("PosOneHalf", "PONEHALF", "PONE")                                                     \
    VTS_LINE("NegOneHalf", "NONEHALF", "NONE")                                                     \
    VTS_NANS

// clang-format on

#endif
