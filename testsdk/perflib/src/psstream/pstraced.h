// pstraced.h - a call between the two trace lines of its name.
#ifndef PSSTREAM_PSTRACED_H
#define PSSTREAM_PSTRACED_H

#include "psstream/pstrace.h"
#include <type_traits>

// Nothing with a destructor is alive while the hook runs: it may be left by a jump.
template <typename Hook>
auto traced(char const* name, Hook hook) {
    g_trace.traceIn(name);
    if constexpr (std::is_void_v<decltype(hook())>) {
        hook();
        g_trace.traceOut(name);
    } else {
        auto result = hook();
        g_trace.traceOut(name);
        return result;
    }
}

#endif
