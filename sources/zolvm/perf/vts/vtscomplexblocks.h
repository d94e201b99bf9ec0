// vtscomplexblocks.h - definition blocks of the families with complex operands or results,
// without their heading. Special results are those of the C standard's complex functions.
// vtspieces.h says how to see a block joined.
#ifndef VTS_VTSCOMPLEXBLOCKS_H
#define VTS_VTSCOMPLEXBLOCKS_H

#include "vts/vtspieces.h"

// The sections of a block stand on lines of their own.
// clang-format off

#define VTS_CZERO VTS_C("PZERO", "PZERO")
#define VTS_CONE VTS_C("PONE", "PZERO")
#define VTS_CTWO VTS_C("PTWO", "PZERO")
#define VTS_CONES VTS_C("PONE", "PONE")
#define VTS_CINFS VTS_C("PINF", "PINF")
#define VTS_CNONE VTS_CNAN VTS_DOMAIN
#define VTS_CWIDE VTS_WIDE " # " VTS_WIDE

#define VTS_COMPLEX_Abs(t, f)                                                                      \
    VTS_WORK(VTS_CWIDE)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_CLINE("Zero", "NZERO", "PZERO", "PZERO")                                                   \
    VTS_CLINE("NegOne", "NONE", "NZERO", "PONE")                                                   \
    VTS_CLINE("ImagTwo", "PZERO", "PTWO", "PTWO")                                                  \
    VTS_CLINE("Inf_Any", "NINF", "ANY", "PINF")                                                    \
    VTS_CLINE("Inf_Nan", "PINF", "QNAN", "PINF")                                                   \
    VTS_CLINE("Nan_Inf", "QNAN", "NINF", "PINF")                                                   \
    VTS_CLINE("Big_Big", "PBIG", "PBIG", "PINF" VTS_OVER)                                          \
    VTS_CLINE("Nan", "QNAN", "PONE", "QNAN")

#define VTS_COMPLEX_Acos(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_C("PPIO2", "NZERO"))                                           \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PPIO2", "NINF"))                                   \
    VTS_CLINE("PInf_Fin", "PINF", "PONE", VTS_C("PZERO", "NINF"))                                  \
    VTS_CLINE("NInf_Fin", "NINF", "PONE", VTS_C("PPI", "NINF"))                                    \
    VTS_CLINE("PInf_Inf", "PINF", "PINF", VTS_C("PPIO4", "NINF"))                                  \
    VTS_CLINE("NInf_Inf", "NINF", "PINF", VTS_C("PTHREEPIO4", "NINF"))                             \
    VTS_CLINE("Nan_Inf", "QNAN", "PINF", VTS_C("QNAN", "NINF"))                                    \
    VTS_CNANS

#define VTS_COMPLEX_Acosh(t, f)                                                                    \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_C("PZERO", "PPIO2"))                                           \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PINF", "PPIO2"))                                   \
    VTS_CLINE("PInf_Fin", "PINF", "PONE", VTS_C("PINF", "PZERO"))                                  \
    VTS_CLINE("NInf_Fin", "NINF", "PONE", VTS_C("PINF", "PPI"))                                    \
    VTS_CLINE("PInf_Inf", "PINF", "PINF", VTS_C("PINF", "PPIO4"))                                  \
    VTS_CLINE("NInf_Inf", "NINF", "PINF", VTS_C("PINF", "PTHREEPIO4"))                             \
    VTS_CLINE("Nan_Inf", "QNAN", "PINF", VTS_C("PINF", "QNAN"))                                    \
    VTS_CNANS

#define VTS_COMPLEX_Add(t, f)                                                                      \
    VTS_WORK(VTS_WIDE2 " # " VTS_WIDE2)                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("One_Conj", VTS_CONES, VTS_C("PONE", "NONE"), VTS_CTWO)                              \
    VTS_LINE2("Zero_Zero", VTS_C("NZERO", "PZERO"), VTS_C("NZERO", "NZERO"),                       \
              VTS_C("NZERO", "PZERO"))                                                             \
    VTS_LINE2("Inf_One", VTS_C("PINF", "NINF"), VTS_CONES, VTS_C("PINF", "NINF"))                  \
    VTS_LINE2("Inf_Inf", VTS_C("PINF", "PONE"), VTS_C("NINF", "PONE"),                             \
              VTS_C("QNAN", "PTWO") VTS_DOMAIN)                                                    \
    VTS_CNANS2

#define VTS_COMPLEX_Arg(t, f)                                                                      \
    VTS_WORK(VTS_CWIDE)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_CLINE("PZero_PZero", "PZERO", "PZERO", "PZERO")                                            \
    VTS_CLINE("PZero_NZero", "PZERO", "NZERO", "NZERO")                                            \
    VTS_CLINE("NZero_PZero", "NZERO", "PZERO", "PPI")                                              \
    VTS_CLINE("NZero_NZero", "NZERO", "NZERO", "NPI")                                              \
    VTS_CLINE("Zero_Neg", "PZERO", "LTZERO", "NPIO2")                                              \
    VTS_CLINE("Neg_Zero", "LTZERO", "PZERO", "PPI")                                                \
    VTS_CLINE("PInf_PInf", "PINF", "PINF", "PPIO4")                                                \
    VTS_CLINE("NInf_NInf", "NINF", "NINF", "NTHREEPIO4")                                           \
    VTS_CLINE("Any_PInf", "ANY", "PINF", "PPIO2")                                                  \
    VTS_CLINE("Nan", "QNAN", "PONE", "QNAN")

#define VTS_COMPLEX_Asin(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PZERO", "PINF"))                                   \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_C("PPIO2", "PINF"))                                   \
    VTS_CLINE("Inf_Inf", "PINF", "PINF", VTS_C("PPIO4", "PINF"))                                   \
    VTS_CLINE("Nan_Inf", "QNAN", "PINF", VTS_C("QNAN", "PINF"))                                    \
    VTS_CNANS

#define VTS_COMPLEX_Asinh(t, f)                                                                    \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PINF", "PPIO2"))                                   \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_C("PINF", "PZERO"))                                   \
    VTS_CLINE("Inf_Inf", "PINF", "PINF", VTS_C("PINF", "PPIO4"))                                   \
    VTS_CLINE("Inf_Nan", "PINF", "QNAN", VTS_C("PINF", "QNAN"))                                    \
    VTS_CNANS

#define VTS_COMPLEX_Atan(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Pole", "PZERO", "PONE", VTS_C("PZERO", "PINF") VTS_POLE)                            \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PPIO2", "PZERO"))                                  \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_C("PPIO2", "PZERO"))                                  \
    VTS_CLINE("Inf_Inf", "PINF", "PINF", VTS_C("PPIO2", "PZERO"))                                  \
    VTS_CNANS

#define VTS_COMPLEX_Atanh(t, f)                                                                    \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Pole", "PONE", "PZERO", VTS_C("PINF", "PZERO") VTS_POLE)                            \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PZERO", "PPIO2"))                                  \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_C("PZERO", "PPIO2"))                                  \
    VTS_CLINE("Inf_Inf", "PINF", "PINF", VTS_C("PZERO", "PPIO2"))                                  \
    VTS_CNANS

#define VTS_COMPLEX_CIS(t, f)                                                                      \
    VTS_WORK(VTS_CWIDE)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_ZEROS(VTS_CONE, VTS_C("PONE", "NZERO")) VTS_INFS(VTS_CNONE, VTS_CNONE)                     \
    VTS_LINE("Nan", "QNAN", VTS_CNAN)

#define VTS_COMPLEX_Conj(t, f)                                                                     \
    VTS_WORK(VTS_CWIDE)                                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_C("PZERO", "NZERO"))                                           \
    VTS_LINE("One", VTS_C("NONE", "NONE"), VTS_C("NONE", "PONE"))                                  \
    VTS_LINE("Inf", VTS_C("PINF", "NINF"), VTS_CINFS)                                              \
    VTS_CNANS

#define VTS_COMPLEX_Cos(t, f)                                                                      \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_C("PONE", "NZERO"))                                            \
    VTS_CLINE("Zero_Inf", "PZERO", "PINF", VTS_C("PINF", "NZERO"))                                 \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PINF", "NINF"))                                    \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_CNONE)                                                \
    VTS_CNANS

#define VTS_COMPLEX_Cosh(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CONE)                                                          \
    VTS_CLINE("Inf_Zero", "PINF", "PZERO", VTS_C("PINF", "PZERO"))                                 \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_CINFS)                                                \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_CNONE)                                                \
    VTS_CNANS

#define VTS_COMPLEX_Div(t, f)                                                                      \
    VTS_WORK(VTS_PRODUCT_##f)                                                                      \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("Two_Two", VTS_CTWO, VTS_CTWO, VTS_CONE)                                             \
    VTS_LINE2("Ones_Ones", VTS_CONES, VTS_CONES, VTS_CONE)                                         \
    VTS_LINE2("Ones_Zero", VTS_CONES, VTS_CZERO, VTS_CINFS VTS_POLE)                               \
    VTS_LINE2("Zero_Zero", VTS_CZERO, VTS_CZERO, VTS_CNONE)                                        \
    VTS_LINE2("Ones_Infs", VTS_CONES, VTS_CINFS, VTS_CZERO)                                        \
    VTS_CNANS2

#define VTS_COMPLEX_Exp(t, f)                                                                      \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_CLINE("PZero_PZero", "PZERO", "PZERO", VTS_CONE)                                           \
    VTS_CLINE("NZero_NZero", "NZERO", "NZERO", VTS_C("PONE", "NZERO"))                             \
    VTS_CLINE("PInf_Zero", "PINF", "PZERO", VTS_C("PINF", "PZERO"))                                \
    VTS_CLINE("PInf_Fin", "PINF", "PONE", VTS_CINFS)                                               \
    VTS_CLINE("NInf_Fin", "NINF", "PONE", VTS_CZERO)                                               \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_CNONE)                                                \
    VTS_CLINE("Nan_Zero", "QNAN", "PZERO", VTS_C("QNAN", "PZERO"))                                 \
    VTS_CNANS

// The imaginary parts of the logarithms are angles, over the logarithm of the base.
#define VTS_SPECIAL_LOG(base)                                                                      \
    VTS_SPECIAL                                                                                    \
    VTS_CLINE("NZero_PZero", "NZERO", "PZERO", VTS_C("NINF", "PPI" base) VTS_POLE)                 \
    VTS_CLINE("PZero_PZero", "PZERO", "PZERO", VTS_C("NINF", "PZERO") VTS_POLE)                    \
    VTS_LINE("One", VTS_CONE, VTS_CZERO)                                                           \
    VTS_CLINE("Imag", "PZERO", "PONE", VTS_C("PZERO", "PPIO2" base))                               \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PINF", "PPIO2" base))                              \
    VTS_CLINE("PInf_Fin", "PINF", "PONE", VTS_C("PINF", "PZERO"))                                  \
    VTS_CLINE("NInf_Fin", "NINF", "PONE", VTS_C("PINF", "PPI" base))                               \
    VTS_CLINE("PInf_Inf", "PINF", "PINF", VTS_C("PINF", "PPIO4" base))                             \
    VTS_CLINE("NInf_Inf", "NINF", "PINF", VTS_C("PINF", "PTHREEPIO4" base))                        \
    VTS_CLINE("Inf_Nan", "NINF", "QNAN", VTS_C("PINF", "QNAN"))                                    \
    VTS_CNANS

#define VTS_COMPLEX_Ln(t, f) VTS_QUADRANTS(f) VTS_SPECIAL_LOG("")
#define VTS_COMPLEX_Log10(t, f) VTS_QUADRANTS(f) VTS_SPECIAL_LOG("OLN10")

#define VTS_COMPLEX_Mul(t, f)                                                                      \
    VTS_WORK(VTS_PRODUCT_##f)                                                                      \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("Two_Half", VTS_CTWO, VTS_C("PHALF", "PZERO"), VTS_CONE)                             \
    VTS_LINE2("Imag_Imag", VTS_C("PZERO", "PONE"), VTS_C("PZERO", "PONE"), VTS_C("NONE", "PZERO")) \
    VTS_LINE2("Ones_Ones", VTS_CONES, VTS_CONES, VTS_C("PZERO", "PTWO"))                           \
    VTS_CNANS2

#define VTS_COMPLEX_MulByConj(t, f)                                                                \
    VTS_WORK(VTS_PRODUCT_##f)                                                                      \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("Two_Half", VTS_CTWO, VTS_C("PHALF", "PZERO"), VTS_CONE)                             \
    VTS_LINE2("Imag_Imag", VTS_C("PZERO", "PONE"), VTS_C("PZERO", "PONE"), VTS_CONE)               \
    VTS_LINE2("Ones_Ones", VTS_CONES, VTS_CONES, VTS_CTWO)                                         \
    VTS_CNANS2

#define VTS_COMPLEX_Pow(t, f)                                                                      \
    VTS_WORK(VTS_QUARTER " & " VTS_QUARTER " # " VTS_QUARTER " & " VTS_QUARTER)                    \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("One_One", VTS_CONE, VTS_CONE, VTS_CONE)                                             \
    VTS_LINE2("Ones_Zero", VTS_CONES, VTS_CZERO, VTS_CONE)                                         \
    VTS_LINE2("Over1", VTS_C("CPOWOVF1A", "CPOWOVF1B"), VTS_C("CPOWOVF1C", "CPOWOVF1D"),           \
              VTS_C("PINF", "NINF") VTS_OVER)                                                      \
    VTS_LINE2("Over2", VTS_C("CPOWOVF2A", "CPOWOVF2B"), VTS_C("CPOWOVF2C", "CPOWOVF2D"),           \
              VTS_C("NINF", "PINF") VTS_OVER)                                                      \
    VTS_CNANS2

#define VTS_COMPLEX_Powx(t, f) VTS_COMPLEX_Pow(t, f)

#define VTS_COMPLEX_Sin(t, f)                                                                      \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Zero_Inf", "PZERO", "PINF", VTS_C("PZERO", "PINF"))                                 \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_CINFS)                                                \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_CNONE)                                                \
    VTS_CNANS

#define VTS_COMPLEX_Sinh(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Inf_Zero", "PINF", "PZERO", VTS_C("PINF", "PZERO"))                                 \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_CINFS)                                                \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_CNONE)                                                \
    VTS_CNANS

#define VTS_COMPLEX_Sqrt(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_CLINE("NZero_PZero", "NZERO", "PZERO", VTS_CZERO)                                          \
    VTS_CLINE("NZero_NZero", "NZERO", "NZERO", VTS_C("PZERO", "NZERO"))                            \
    VTS_CLINE("NegOne", "NONE", "PZERO", VTS_C("PZERO", "PONE"))                                   \
    VTS_CLINE("Any_Inf", "ANY", "PINF", VTS_CINFS)                                                 \
    VTS_CLINE("Nan_Inf", "QNAN", "PINF", VTS_CINFS)                                                \
    VTS_CLINE("PInf_Fin", "PINF", "PONE", VTS_C("PINF", "PZERO"))                                  \
    VTS_CLINE("NInf_Fin", "NINF", "PONE", VTS_C("PZERO", "PINF"))                                  \
    VTS_CNANS

#define VTS_COMPLEX_Sub(t, f)                                                                      \
    VTS_WORK(VTS_WIDE2 " # " VTS_WIDE2)                                                            \
    VTS_SPECIAL                                                                                    \
    VTS_LINE2("One_Conj", VTS_CONES, VTS_C("NONE", "PONE"), VTS_CTWO)                              \
    VTS_LINE2("Zero_Zero", VTS_C("NZERO", "PZERO"), VTS_CZERO, VTS_C("NZERO", "PZERO"))            \
    VTS_LINE2("Inf_One", VTS_C("PINF", "NINF"), VTS_CONES, VTS_C("PINF", "NINF"))                  \
    VTS_LINE2("Inf_Inf", VTS_C("PINF", "PTWO"), VTS_C("PINF", "PONE"),                             \
              VTS_C("QNAN", "PONE") VTS_DOMAIN)                                                    \
    VTS_CNANS2

#define VTS_COMPLEX_Tan(t, f)                                                                      \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_C("PZERO", "PONE"))                                   \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_CNONE)                                                \
    VTS_CNANS

#define VTS_COMPLEX_Tanh(t, f)                                                                     \
    VTS_QUADRANTS(f)                                                                               \
    VTS_SPECIAL                                                                                    \
    VTS_LINE("Zero", VTS_CZERO, VTS_CZERO)                                                         \
    VTS_CLINE("Inf_Fin", "PINF", "PONE", VTS_CONE)                                                 \
    VTS_CLINE("Fin_Inf", "PONE", "PINF", VTS_CNONE)                                                \
    VTS_CNANS

// clang-format on

#endif
