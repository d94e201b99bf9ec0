// pscacheiterator.h - a size parameter under cache control: two placements, data in the
// largest cache and data out of it, and the sizes that get there by trial.
#ifndef PSPARAMETER_PSCACHEITERATOR_H
#define PSPARAMETER_PSCACHEITERATOR_H

#include "psmemory/psobject.h"
#include "psparameter/psiterator.h"

// A test's own way to change the size parameter: parameter, size, limit, by steps.
using psSetNewValue = bool (*)(psParameter* parm, int size, int limit, bool bySteps);

// Stands in a test's parameter list in the place of the size parameter.
class psCacheIterator : public psIterator<int> {
public:
    psCacheIterator(psParameter& parm, psObject* object, psSetNewValue adjuster);

    // All forwarded: to user and tables this is the size parameter. Only the table of names knows
    // the iterator by its own name.
    psString valueString() const override;
    psString defaultString() const override;
    psString validString() const override;
    psString description() const override;
    psString prompt() const override;
    psOStream& toOStream(psOStream& out) const override;
    psCStream& toCStream(psCStream& out) const override;
    psIStream& fromIStream(psIStream& in) override;
    bool nextValue() override; // the other placement, the size parameter at its first value

    virtual bool repeatValue(); // the next adjustment; false when no further try is allowed
    virtual bool setNewValueToParm(int size, int limit, bool bySteps);

    bool validateSize();         // the data allocated now lie right
    psString getComment() const; // "inCache", "outofCache"
    void outputInfo() const;     // the failed tries, where they were not shown as they happened
    psParameter* cacheParm() const { return m_pCacheParm; }

    // Bytes of the largest cache; 0 if unknown. The hook is ps_zolGetMaxCacheSizeB by default.
    static int cacheSize();
    static int (*m_cacheSizeHook)(int* bytes);

protected:
    psParameter* m_pCacheParm; // not owned

private:
    int highSize() const;
    int lowSize() const;
    bool setNewValue();
    bool lowerRatio(); // widens the band; false, with no try left, when it is wide already

    psObject* m_pObject;  // its size decides; may be null; not owned
    int m_tryCount = 0;   // adjustments for the present placement
    int m_objectSize = 0; // bytes, as last seen
    int m_totalSize = 0;  // bytes of all blocks, as last seen
    bool m_wasTooBig = false;
    double m_lowRatio;  // share of the cache below which data in cache are too small
    psString m_comment; // text of the failed tries
    psSetNewValue m_setNewValue;
};

// For a parameter that holds an integer.
class psCacheIteratorInt : public psCacheIterator {
public:
    using psCacheIterator::psCacheIterator;
    bool setNewValueToParm(int size, int limit, bool bySteps) override;
    static bool updateValue(int& value, int size, int limit, bool bySteps);
};

// For a parameter that holds a ZoliSize.
class psCacheIteratorSize : public psCacheIterator {
public:
    using psCacheIterator::psCacheIterator;
    bool setNewValueToParm(int size, int limit, bool bySteps) override;
    static bool updateValue(ZoliSize& value, int size, int limit, bool bySteps);
};

#endif
