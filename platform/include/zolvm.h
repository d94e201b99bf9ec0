/* zolvm.h - the C interface of libzolvm: 392 vector math functions, the rows of zolvmtable.h.
 *
 * Names are zols<Family>_<type>_<accuracy>. Types: 32f, 64f, 32fc, 64fc. Accuracies, from fast
 * to exact: A11, A21, A24 for single, A26, A50, A53 for double. Each function takes its sources,
 * its destinations and the number of elements, and returns a status: negative for a null pointer
 * or a length below 1, a warning of zolcore.h where an argument was out of the ordinary. */
#ifndef ZOLVM_H
#define ZOLVM_H

#include "zolcore.h"
#include "zolvmtable.h"

#ifdef __cplusplus
extern "C" {
#endif

ZolLibraryVersion const* zolvmGetLibVersion(void);

#define ZOLVM_DECLARE(shape, name, S, D, family, kind) \
    ZolStatus name ZOLVM_PARAMETERS_##shape(S, D);
ZOLVM_FUNCTIONS(ZOLVM_DECLARE)

#ifdef __cplusplus
}
#endif

#endif
