// vtscatalogue.cpp - the 392 rows of the catalogue. The lists of families stand once; a macro
// for each type and flavour makes rows of them. The compiler joins the texts of a block;
// vtspieces.h says how to see a finished one.
#include "vts/vtscomplexblocks.h"
#include "vts/vtsdefs.h"
#include "vts/vtspowx.h"
#include "vts/vtsrealblocks.h"
#include "vts/vtsweak.h"

// Families by their variants; ROW takes a family.

// clang-format off

// In every accuracy, real and complex. Powx makes the nineteenth: its rows hold adaptors.
#define VTS_TWELVE(ROW)                                                                            \
    ROW(Acos) ROW(Acosh) ROW(Asin) ROW(Asinh) ROW(Atan) ROW(Atanh) ROW(Cos) ROW(Cosh) ROW(Div)     \
    ROW(Exp) ROW(Ln) ROW(Log10) ROW(Pow) ROW(Sin) ROW(Sinh) ROW(Sqrt) ROW(Tan) ROW(Tanh)

// In every accuracy, real.
#define VTS_SIX_REAL(ROW)                                                                          \
    ROW(Atan2) ROW(Cbrt) ROW(CdfNorm) ROW(CdfNormInv) ROW(Erf) ROW(ErfInv) ROW(Erfc) ROW(ErfcInv)  \
    ROW(Expm1) ROW(Hypot) ROW(Inv) ROW(InvCbrt) ROW(InvSqrt) ROW(Log1p) ROW(Pow2o3) ROW(Pow3o2)    \
    ROW(SinCos)

// In every accuracy, complex.
#define VTS_SIX_COMPLEX(ROW) ROW(Arg) ROW(CIS) ROW(MulByConj) ROW(Abs) ROW(Mul)

// In one accuracy: no flavour in the tag.
#define VTS_BEST_REAL(ROW) ROW(Abs) ROW(Add) ROW(Mul) ROW(Sqr) ROW(Sub)
#define VTS_BEST_COMPLEX(ROW) ROW(Add) ROW(Conj) ROW(Sub)

// Exact, without an accuracy in the library's name either.
#define VTS_ROUNDING(ROW)                                                                          \
    ROW(Ceil) ROW(Floor) ROW(Frac) ROW(Modf) ROW(NearbyInt) ROW(Rint) ROW(Round) ROW(Trunc)

// A heading of its own line, then the block.
#define VTS_ROW(function, tag, block)                                                              \
    {reinterpret_cast<vtsFunc>(function), tag "\n" block, nullptr, 0},
#define VTS_REAL_ROW(function, t, family, flavour, f)                                              \
    VTS_ROW(function, #t #family flavour, VTS_REAL_##family(t, f))
#define VTS_COMPLEX_ROW(function, t, family, flavour, f)                                           \
    VTS_ROW(function, #t #family flavour, VTS_COMPLEX_##family(t, f))

#define VTS_s_HA(family) VTS_REAL_ROW(zols##family##_32f_A24, s, family, "_HA", HA)
#define VTS_s_LA(family) VTS_REAL_ROW(zols##family##_32f_A21, s, family, "_LA", LA)
#define VTS_s_EP(family) VTS_REAL_ROW(zols##family##_32f_A11, s, family, "_EP", EP)
#define VTS_d_HA(family) VTS_REAL_ROW(zols##family##_64f_A53, d, family, "_HA", HA)
#define VTS_d_LA(family) VTS_REAL_ROW(zols##family##_64f_A50, d, family, "_LA", LA)
#define VTS_d_EP(family) VTS_REAL_ROW(zols##family##_64f_A26, d, family, "_EP", EP)
#define VTS_c_HA(family) VTS_COMPLEX_ROW(zols##family##_32fc_A24, c, family, "_HA", HA)
#define VTS_c_LA(family) VTS_COMPLEX_ROW(zols##family##_32fc_A21, c, family, "_LA", LA)
#define VTS_c_EP(family) VTS_COMPLEX_ROW(zols##family##_32fc_A11, c, family, "_EP", EP)
#define VTS_z_HA(family) VTS_COMPLEX_ROW(zols##family##_64fc_A53, z, family, "_HA", HA)
#define VTS_z_LA(family) VTS_COMPLEX_ROW(zols##family##_64fc_A50, z, family, "_LA", LA)
#define VTS_z_EP(family) VTS_COMPLEX_ROW(zols##family##_64fc_A26, z, family, "_EP", EP)

#define VTS_s_BEST(family) VTS_REAL_ROW(zols##family##_32f_A24, s, family, "", HA)
#define VTS_d_BEST(family) VTS_REAL_ROW(zols##family##_64f_A53, d, family, "", HA)
#define VTS_c_BEST(family) VTS_COMPLEX_ROW(zols##family##_32fc_A24, c, family, "", HA)
#define VTS_z_BEST(family) VTS_COMPLEX_ROW(zols##family##_64fc_A53, z, family, "", HA)
#define VTS_s_PLAIN(family) VTS_REAL_ROW(zols##family##_32f, s, family, "", HA)
#define VTS_d_PLAIN(family) VTS_REAL_ROW(zols##family##_64f, d, family, "", HA)

// The rows of one type and one flavour. adaptor is the Powx row's function.
#define VTS_REAL_GROUP(t, f, adaptor)                                                              \
    VTS_TWELVE(VTS_##t##_##f)                                                                      \
    VTS_REAL_ROW(adaptor, t, Powx, "_" #f, f)                                                      \
    VTS_SIX_REAL(VTS_##t##_##f)
#define VTS_COMPLEX_GROUP(t, f, adaptor)                                                           \
    VTS_TWELVE(VTS_##t##_##f)                                                                      \
    VTS_COMPLEX_ROW(adaptor, t, Powx, "_" #f, f)                                                   \
    VTS_SIX_COMPLEX(VTS_##t##_##f)

// Addresses of functions and texts alone, so nothing here is built at run time. That can't be said
// with constinit: a cast of a function's address is no constant to the language.
vtsFuncRow defFunc[vtsNumFuncs] = {
    VTS_REAL_GROUP(s, HA, hrosPowx_HA) VTS_BEST_REAL(VTS_s_BEST) VTS_ROUNDING(VTS_s_PLAIN)
    VTS_COMPLEX_GROUP(c, HA, hrocPowx_HA) VTS_BEST_COMPLEX(VTS_c_BEST)
    VTS_REAL_GROUP(d, HA, hrodPowx_HA) VTS_BEST_REAL(VTS_d_BEST) VTS_ROUNDING(VTS_d_PLAIN)
    VTS_COMPLEX_GROUP(z, HA, hrozPowx_HA) VTS_BEST_COMPLEX(VTS_z_BEST)
    VTS_REAL_GROUP(s, LA, hrosPowx_LA) VTS_COMPLEX_GROUP(c, LA, hrocPowx_LA)
    VTS_REAL_GROUP(s, EP, hrosPowx_A11) VTS_COMPLEX_GROUP(c, EP, hrocPowx_A11)
    VTS_REAL_GROUP(d, LA, hrodPowx_LA) VTS_COMPLEX_GROUP(z, LA, hrozPowx_LA)
    VTS_REAL_GROUP(d, EP, hrodPowx_A26) VTS_COMPLEX_GROUP(z, EP, hrozPowx_A26)};

// clang-format on
