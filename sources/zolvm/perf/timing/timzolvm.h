// timzolvm.h - the timing tests of the vector math functions: templates over the types of
// source and destination elements, which prepare the data and steer the Length.
#ifndef TIMING_TIMZOLVM_H
#define TIMING_TIMZOLVM_H

#include "zo/zotest.h"
#include "zolcore.h"

// Complex elements, real part first.
using _KRV_Complex8 = Zol32fc;
using _KRV_Complex16 = Zol64fc;

// What doesn't depend on the types.
class TimZolVM : public zoTest {
public:
    TimZolVM(psFuncOld body, psString funcName, psString fileName, psString bodyName, psString tag);

    void flushStart() override;
    bool canContinue() override;
    double getDivisor() override; // Length: results are clocks per element
    psString getUnit() override;
    void funcToCstrm() override; // three cells, without the prefix
    void parmsToOstrm() override;
    void parmsToCstrm() override;

    psString m_inc; // tag of the test's catalogue row

protected:
    int beginStart(); // Length, configuration; the row, or -1, told, if there is nothing to measure
    static bool allocateAll(size_t source, size_t result, size_t scalar); // 0: no scalars
    static void fillPools(int row);
};

// The work of a test's timing function: 16 calls to warm up, then loops calls between the tool's
// start and stop.
template <typename T, typename U>
psResult timBody(psTool& tool, int loops, char const* tag, char const* funcName);

// T is the source element, U the destination element.
template <typename T, typename U>
class TimZolVMReal : public TimZolVM {
public:
    using TimZolVM::TimZolVM;
    bool canStart() override;
    static psResult body(psTool& tool, int loops, char const* tag, char const* funcName) {
        return timBody<T, U>(tool, loops, tag, funcName);
    }
};

template <typename T, typename U>
class TimZolVMComplex : public TimZolVM {
public:
    using TimZolVM::TimZolVM;
    bool canStart() override;
    static psResult body(psTool& tool, int loops, char const* tag, char const* funcName) {
        return timBody<T, U>(tool, loops, tag, funcName);
    }
};

extern template class TimZolVMReal<float, float>;
extern template class TimZolVMReal<double, double>;
extern template class TimZolVMReal<float, _KRV_Complex8>;
extern template class TimZolVMReal<double, _KRV_Complex16>;
extern template class TimZolVMComplex<_KRV_Complex8, float>;
extern template class TimZolVMComplex<_KRV_Complex16, double>;
extern template class TimZolVMComplex<_KRV_Complex8, _KRV_Complex8>;
extern template class TimZolVMComplex<_KRV_Complex16, _KRV_Complex16>;

extern template psResult timBody<float, float>(psTool&, int, char const*, char const*);
extern template psResult timBody<double, double>(psTool&, int, char const*, char const*);
extern template psResult timBody<float, _KRV_Complex8>(psTool&, int, char const*, char const*);
extern template psResult timBody<double, _KRV_Complex16>(psTool&, int, char const*, char const*);
extern template psResult timBody<_KRV_Complex8, float>(psTool&, int, char const*, char const*);
extern template psResult timBody<_KRV_Complex16, double>(psTool&, int, char const*, char const*);
extern template psResult timBody<_KRV_Complex8, _KRV_Complex8>(psTool&, int, char const*,
                                                               char const*);
extern template psResult timBody<_KRV_Complex16, _KRV_Complex16>(psTool&, int, char const*,
                                                                 char const*);

#endif
