// vtspieces.h - the pieces that definition blocks are put together from, by the compiler:
// section titles, value lines, and the special lines that families share.
//
// In a family's macro t is the type letter of the row (s, d, c, z) and f its flavour (HA, LA, EP).
// A finished block, here that of the row cMul_EP, is shown after a build by
//     strings -w build/release/sources/zolvm/perf/CMakeFiles/vts.dir/vts/vtscatalogue.cpp.o |
//         sed -n '/^cMul_EP$/,/^$/p'
#ifndef VTS_VTSPIECES_H
#define VTS_VTSPIECES_H

// A piece or a line of a block on each line.
// clang-format off

// Head of every block: what a measurement reads.
#define VTS_WORK(source) "Normal:\n    Work = " source " * 2.0\n"
#define VTS_FIXED "Fixed:\n"
#define VTS_ADDITIONAL "Additional:\n"
#define VTS_SPECIAL "Special:\n"

// A line of the Additional section; in blocks of enhanced performance its name says so.
#define VTS_EXTRA_HA ""
#define VTS_EXTRA_LA ""
#define VTS_EXTRA_EP "_ep"
#define VTS_EXTRA(name, f, source) "    " name VTS_EXTRA_##f " = " source " * 0.5\n"

// Every denormal number, as the line says. But intervals are filled with flush-to-zero, in which all
// of the program computes: what these lines give are zeros of their sign.
#define VTS_DENORMAL_s(f)                                                                          \
    "    PosDen" VTS_EXTRA_##f "_fd = [ 0x00000001 ; 0x007FFFFF ] * 0.25\n"                        \
    "    NegDen" VTS_EXTRA_##f "_fd = [ 0x80000001 ; 0x807FFFFF ] * 0.25\n"
#define VTS_DENORMAL_d(f)                                                                          \
    "    PosDen" VTS_EXTRA_##f "_fd = [ 0x0000000000000001 ; 0x000FFFFFFFFFFFFF ] * 0.25\n"        \
    "    NegDen" VTS_EXTRA_##f "_fd = [ 0x8000000000000001 ; 0x800FFFFFFFFFFFFF ] * 0.25\n"
#define VTS_DENORMALS(t, f) VTS_DENORMAL_##t(f)

// The number whose reduction by multiples of pi/2 is the hardest.
#define VTS_REDUCTION_s "    Reduct = 0x6F79BE45 * 0.1\n"
#define VTS_REDUCTION_d "    Reduct = 0x7506AC5B262CA1FF * 0.1\n"

// A special line, and the clauses behind results.
#define VTS_LINE(name, source, result) "    " name " = " source " -> " result " * 0.1\n"
#define VTS_DOMAIN " ( ERRDOM / INVALID )"
#define VTS_POLE " ( SING / ZERODIVIDE )"
#define VTS_OVER " ( OVERFLOW / OVERFLOW )"
#define VTS_UNDER " ( UNDERFLOW / UNDERFLOW )"
#define VTS_SIGNAL " ( 0 / INVALID )"
#define VTS_NONE "QNAN" VTS_DOMAIN

// Special lines of functions of one real.
#define VTS_ZEROS(positive, negative)                                                              \
    VTS_LINE("PosZero", "PZERO", positive)                                                         \
    VTS_LINE("NegZero", "NZERO", negative)
#define VTS_INFS(positive, negative)                                                               \
    VTS_LINE("PosInf", "PINF", positive)                                                           \
    VTS_LINE("NegInf", "NINF", negative)
#define VTS_ONES(positive, negative)                                                               \
    VTS_LINE("PosOne", "PONE", positive)                                                           \
    VTS_LINE("NegOne", "NONE", negative)
#define VTS_NANS                                                                                   \
    VTS_LINE("QuietNan", "QNAN", "QNAN")                                                           \
    VTS_LINE("SignalNan", "SNAN", "QNAN" VTS_SIGNAL)
#define VTS_SAME_ZEROS VTS_ZEROS("PZERO", "NZERO")
#define VTS_SAME_INFS VTS_INFS("PINF", "NINF")
#define VTS_NO_INFS VTS_INFS(VTS_NONE, VTS_NONE)
#define VTS_NO_NEGATIVE VTS_LINE("Neg", "LTZERO", VTS_NONE)

// A special line of two operands, of two results, of a complex number.
#define VTS_LINE2(name, a, b, result) VTS_LINE(name, a " & " b, result)
#define VTS_BOTH(a, b) a " & " b
#define VTS_C(re, im) re "_i" im
#define VTS_CNAN VTS_C("QNAN", "QNAN")
#define VTS_NANS2                                                                                  \
    VTS_LINE2("QuietNan_Y", "QNAN", "PONE", "QNAN")                                                \
    VTS_LINE2("X_QuietNan", "PTWO", "QNAN", "QNAN")                                                \
    VTS_LINE2("SignalNan_Y", "SNAN", "PTWO", "QNAN" VTS_SIGNAL)
#define VTS_CLINE(name, re, im, result) VTS_LINE(name, VTS_C(re, im), result)
#define VTS_CNANS VTS_LINE("Nan", VTS_CNAN, VTS_CNAN)
#define VTS_CNANS2                                                                                 \
    VTS_LINE2("Nan_Y", VTS_CNAN, VTS_C("PONE", "PONE"), VTS_CNAN)                                  \
    VTS_LINE2("X_Nan", VTS_C("PONE", "PONE"), VTS_CNAN, VTS_CNAN)

// Sources that many families share.
#define VTS_WIDE "[ -10000.0 ; 10000.0 ]"
#define VTS_WIDE2 VTS_WIDE " & " VTS_WIDE
#define VTS_QUARTER "[ 0.01 ; 20.00 ]"
#define VTS_NEAR0(f) VTS_EXTRA("Near0", f, "[ -0.001 ; 0.001 ]")
#define VTS_NEAR1(f) VTS_EXTRA("Near1", f, "[ 0.9 ; 1.1 ]")

// Head of the complex functions of one number: the first quadrant, then the other three.
#define VTS_QUADRANTS(f)                                                                           \
    VTS_WORK(VTS_QUARTER " # " VTS_QUARTER)                                                        \
    VTS_ADDITIONAL                                                                                 \
    VTS_EXTRA("Quadrant2", f, "[ -20.00 ; -0.01 ] # [ 0.01 ; 20.00 ]")                             \
    VTS_EXTRA("Quadrant3", f, "[ -20.00 ; -0.01 ] # [ -20.00 ; -0.01 ]")                           \
    VTS_EXTRA("Quadrant4", f, "[ 0.01 ; 20.00 ] # [ -20.00 ; -0.01 ]")

// Products of complex numbers: the enhanced-performance forms are kept away from cancellation.
#define VTS_PRODUCT_HA VTS_WIDE2 " # " VTS_WIDE2
#define VTS_PRODUCT_LA VTS_PRODUCT_HA
#define VTS_PRODUCT_EP "[ 1000.0 ; 10000.0 ] & [ 1.0 ; 10.0 ] # [ 1.0 ; 10.0 ] & [ 1.0 ; 10.0 ]"

// clang-format on

#endif
