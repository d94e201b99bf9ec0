// vtspowx.h - adaptors for the functions that take their second operand by value, while the
// tests hand a second array.
#ifndef VTS_VTSPOWX_H
#define VTS_VTSPOWX_H

#include "zolvm.h"

extern int b_index; // element of the second array that is handed over

// DO(adaptor, library function, element)
#define VTS_POWX_ROWS(DO)                                                                          \
    DO(hrosPowx_HA, zolsPowx_32f_A24, Zol32f)                                                      \
    DO(hrodPowx_HA, zolsPowx_64f_A53, Zol64f)                                                      \
    DO(hrosPowx_LA, zolsPowx_32f_A21, Zol32f)                                                      \
    DO(hrodPowx_LA, zolsPowx_64f_A50, Zol64f)                                                      \
    DO(hrosPowx_A11, zolsPowx_32f_A11, Zol32f)                                                     \
    DO(hrodPowx_A26, zolsPowx_64f_A26, Zol64f)                                                     \
    DO(hrocPowx_HA, zolsPowx_32fc_A24, Zol32fc)                                                    \
    DO(hrozPowx_HA, zolsPowx_64fc_A53, Zol64fc)                                                    \
    DO(hrocPowx_LA, zolsPowx_32fc_A21, Zol32fc)                                                    \
    DO(hrozPowx_LA, zolsPowx_64fc_A50, Zol64fc)                                                    \
    DO(hrocPowx_A11, zolsPowx_32fc_A11, Zol32fc)                                                   \
    DO(hrozPowx_A26, zolsPowx_64fc_A26, Zol64fc)

#define VTS_POWX_DECLARE(adaptor, function, T)                                                     \
    ZolStatus adaptor(T const* source, T const* second, T* destination, int length);
VTS_POWX_ROWS(VTS_POWX_DECLARE)
#undef VTS_POWX_DECLARE

// Where the address of the library's function behind a catalogue row stands, from which every call
// reads it: behind the row's adaptor, or in the row itself. Null there when the library doesn't
// have the function; another library's function may be put there.
using vtsFunc = void (*)();
vtsFunc* vtsGetLibraryFunc(int row);

#endif
