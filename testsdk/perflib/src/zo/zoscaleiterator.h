// zoscaleiterator.h - the scale factor of scaled functions, in a table column of its own.
#ifndef ZO_ZOSCALEITERATOR_H
#define ZO_ZOSCALEITERATOR_H

#include "psparameter/psiterator.h"
#include "zo/zofunc.h"

class zoScaleIterator : public psIterator<int> {
public:
    static constexpr int maxValues = 6;

    void init(psString name = "ScaleFactor");
    // Listed values; those beyond maxValues are left out.
    void init(int count, int const* values, psString name = "ScaleFactor");
    int colmIndex() const override; // the last leading column of the table

    static bool isScaled(zoFunc const& func);
};

#endif
