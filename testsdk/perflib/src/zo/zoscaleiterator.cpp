// zoscaleiterator.cpp - the scale factor of scaled functions.
#include "zo/zoscaleiterator.h"

#include "pstest/pstest.h"

void zoScaleIterator::init(psString name) { psIterator<int>::init(name); }

void zoScaleIterator::init(int count, int const* values, psString name) {
    init(name);
    for (int i = 0; i < count && i < maxValues; ++i) {
        add(values[i]);
    }
}

int zoScaleIterator::colmIndex() const { return psTest::m_numParmsColm - 1; }

bool zoScaleIterator::isScaled(zoFunc const& func) {
    psString const descr = func.descrName();
    return descr.contains("Sfs") || descr.contains("Fix");
}
