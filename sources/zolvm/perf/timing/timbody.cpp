// timbody.cpp - the measured body: finds the row, calls its function in the row's shape.
#include <type_traits>

#include "psstream/psostream.h"
#include "timing/timvectors.h"
#include "timing/timzolvm.h"
#include "vts/vtsdefs.h"
#include "vts/vtslookup.h"
#include "vts/vtsstatus.h"

namespace {

// One function for all tests of a type and a shape: they share the code of the loop, so that its
// place in memory makes no difference between them.
//
// What a round costs beside the call is part of every number, and has to stay what it is: the
// function's address read from the row, the vectors' addresses read, len's conversion to int (a
// virtual call of value()), a decrement and a branch. Nothing of it is hoisted, since the measured
// function might change anything; nothing is unrolled, checked or added; and between the tool's two
// reads of the counter stands the loop alone.
//
// Where two libraries are read in turns, the address in the row changes from turn to turn; what is
// done for one is done for the other.
template <typename Call>
[[gnu::noinline]] void timCalls(psTool& tool, int loops, Call call) {
    do {
        vtsClearStatus();
        for (int i = tool.warmUpCalls(); i > 0; --i) {
            call();
        }
        vtsClearStatus();
        tool.start();
        for (int i = loops; i > 0; --i) {
            call();
        }
        tool.stop();
    } while (tool.nextTurn());
    vtsClearStatus();
}

template <typename T, typename U>
void timUnary(psTool& tool, int loops, int row) {
    using Function = ZolStatus (*)(T const*, U*, int);
    timCalls(tool, loops, [row] {
        reinterpret_cast<Function>(defFunc[row].func)(static_cast<T*>(pSrc), static_cast<U*>(pDst),
                                                      len);
    });
}

template <typename T, typename U>
void timBinary(psTool& tool, int loops, int row) {
    using Function = ZolStatus (*)(T const*, T const*, U*, int);
    timCalls(tool, loops, [row] {
        reinterpret_cast<Function>(defFunc[row].func)(static_cast<T*>(pSrc), static_cast<T*>(pSrc2),
                                                      static_cast<U*>(pDst), len);
    });
}

template <typename T, typename U>
void timTwoResults(psTool& tool, int loops, int row) {
    using Function = ZolStatus (*)(T const*, U*, U*, int);
    timCalls(tool, loops, [row] {
        reinterpret_cast<Function>(defFunc[row].func)(static_cast<T*>(pSrc), static_cast<U*>(pDst),
                                                      static_cast<U*>(pDst2), len);
    });
}

} // namespace

template <typename T, typename U>
psResult timBody(psTool& tool, int loops, char const* tag, char const* funcName) {
    ZolStatus const status = zolStsNoErr; // what the function returns is not looked at
    int const row = vtsFindFunc(tag);
    if (row < 0) {
        g_ostrm << "Cannot find inc file for function: " << tag;
        return psResFail;
    }
    switch (vtsGetFuncShape(row)) {
    case vtsShapeUnary:
        timUnary<T, U>(tool, loops, row);
        break;
    case vtsShapeBinary:
        timBinary<T, U>(tool, loops, row);
        break;
    case vtsShapeTwoResults:
        timTwoResults<T, U>(tool, loops, row);
        break;
    case vtsShapeLinearFrac: // no row has this shape, and no call of it is measured
        if constexpr (std::is_floating_point_v<T>) {
            timCalls(tool, loops, [] {});
        }
        break;
    default:
        break;
    }
    return zoTest::checkFuncStatus(status, funcName);
}

template psResult timBody<float, float>(psTool&, int, char const*, char const*);
template psResult timBody<double, double>(psTool&, int, char const*, char const*);
template psResult timBody<float, _KRV_Complex8>(psTool&, int, char const*, char const*);
template psResult timBody<double, _KRV_Complex16>(psTool&, int, char const*, char const*);
template psResult timBody<_KRV_Complex8, float>(psTool&, int, char const*, char const*);
template psResult timBody<_KRV_Complex16, double>(psTool&, int, char const*, char const*);
template psResult timBody<_KRV_Complex8, _KRV_Complex8>(psTool&, int, char const*, char const*);
template psResult timBody<_KRV_Complex16, _KRV_Complex16>(psTool&, int, char const*, char const*);
