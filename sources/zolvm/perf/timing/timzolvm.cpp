// timzolvm.cpp - what a timing test does before and between its measurements.
#include "timing/timzolvm.h"

#include <cstdio>

#include "psstream/pscstream.h"
#include "psstream/psostream.h"
#include "timing/timsides.h"
#include "timing/timvectors.h"
#include "vts/vtsconfig.h"
#include "vts/vtsdefs.h"
#include "vts/vtsfill.h"
#include "vts/vtslookup.h"
#include "vts/vtspowx.h"
#include "vts/vtsrandom.h"

namespace {

int drawIndex() { return static_cast<int>(timPoolSize * vtsDraw()); }

// Fills both sources with values drawn from the first values of the pools. A test of one operand
// draws from the second pool too, so the generator goes alike for all.
template <typename T>
void fillSources() {
    T const* const pool1 = static_cast<T const*>(defData.arg1);
    T const* const pool2 = static_cast<T const*>(defData.arg2);
    T* const source1 = static_cast<T*>(pSrc);
    T* const source2 = static_cast<T*>(pSrc2);
    for (int index = 0; index < timLastLength; ++index) {
        int const i = drawIndex();
        int const j = drawIndex();
        source1[index] = pool1[i];
        source2[index] = pool2[j];
    }
}

template <typename T>
void copyFirst(void* scalar, void const* parameters) {
    *static_cast<T*>(scalar) = *static_cast<T const*>(parameters);
}

} // namespace

TimZolVM::TimZolVM(psFuncOld body, psString funcName, psString fileName, psString bodyName,
                   psString tag)
    : zoTest(body, funcName, fileName, bodyName), m_inc(tag) {}

int TimZolVM::beginStart() {
    TimZolVM::flushStart(); // a signal may have ended the test before this one
    len.init(timFirstLength, timLastLength, 2, StepMul, "Length");
    vtsConfigure();
    int const row = vtsFindFunc(m_inc.c_str());
    if (row < 0) {
        g_ostrm << "Cannot find inc file for function: " << m_inc;
        return -1;
    }
    if (*vtsGetLibraryFunc(row) == nullptr) {
        g_ostrm << MSG_ERR << "-- Function " << m_funcName << " is missing in the library\n"
                << MSG_RESTORE;
        return -1;
    }
    timBeginSides(vtsGetLibraryFunc(row), m_funcName);
    return row;
}

bool TimZolVM::allocateAll(size_t source, size_t result, size_t scalar) {
    bool all = timAllocVectors(source, result);
    if (scalar != 0) {
        all = timAllocScalars(scalar) && all;
    }
    if (!all) {
        printf("Malloc failed!\n");
        return false;
    }
    timAlignVectors();
    return true;
}

// A block without a usable line leaves the pools as they are.
void TimZolVM::fillPools(int row) {
    vtsAllocData();
    vtsBeginFillData(row);
    vtsFillData(row);
}

void TimZolVM::flushStart() {
    timEndSides();
    vtsDeAllocData();
    timFreeVectors();
}

bool TimZolVM::canContinue() { return len.nextValue(); }

double TimZolVM::getDivisor() { return static_cast<int>(len); }

psString TimZolVM::getUnit() { return unitStr(1); }

void TimZolVM::funcToCstrm() {
    g_cstrm << m_func.baseName() << m_func.typeName() << m_func.descrName();
}

void TimZolVM::parmsToOstrm() { len.toOStream(g_ostrm); }

void TimZolVM::parmsToCstrm() { g_cstrm << static_cast<int>(len); }

template <typename T, typename U>
bool TimZolVMReal<T, U>::canStart() {
    int const row = beginStart();
    if (row < 0 || !allocateAll(sizeof(T), sizeof(U), sizeof(T))) {
        return false;
    }
    fillPools(row);
    fillSources<T>();
    copyFirst<T>(x_A, defData.par1);
    copyFirst<T>(x_B, defData.par2);
    copyFirst<T>(x_C, defData.par3);
    copyFirst<T>(x_D, defData.par4);
    return true;
}

template <typename T, typename U>
bool TimZolVMComplex<T, U>::canStart() {
    int const row = beginStart();
    if (row < 0 || !allocateAll(sizeof(T), sizeof(U), 0)) {
        return false;
    }
    fillPools(row);
    fillSources<T>();
    return true;
}

template class TimZolVMReal<float, float>;
template class TimZolVMReal<double, double>;
template class TimZolVMReal<float, _KRV_Complex8>;
template class TimZolVMReal<double, _KRV_Complex16>;
template class TimZolVMComplex<_KRV_Complex8, float>;
template class TimZolVMComplex<_KRV_Complex16, double>;
template class TimZolVMComplex<_KRV_Complex8, _KRV_Complex8>;
template class TimZolVMComplex<_KRV_Complex16, _KRV_Complex16>;
