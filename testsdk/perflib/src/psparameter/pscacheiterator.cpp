// pscacheiterator.cpp - the trials that bring a test's data to the wanted side of the cache.
#include "psparameter/pscacheiterator.h"

#include <limits>

#include "pscpu/pszolentry.h"
#include "psmemory/psmemory.h"

namespace {

constexpr int inCacheValue = 0;
constexpr int outOfCacheValue = 1;
constexpr int maxTries = 11;
constexpr double startLowRatio = 0.1;
constexpr double leastLowRatio = 0.01;

// Bytes of all live blocks, at most what an int holds.
int allocatedSize() {
    long long total = 0;
    int size = 0;
    for (void* block = psMallocFirst(&size, nullptr); block != nullptr;
         block = psMallocNext(&size, nullptr)) {
        total += size;
    }
    constexpr long long most = std::numeric_limits<int>::max();
    return static_cast<int>(total < most ? total : most);
}

// value * 2^count, by shifts. False when nothing or too much is left; value is untouched then.
bool shiftValue(int& value, int count) {
    long long const shifted = count > 0 ? static_cast<long long>(value) << count : value >> -count;
    if (shifted <= 0 || shifted > std::numeric_limits<int>::max()) {
        return false;
    }
    value = static_cast<int>(shifted);
    return true;
}

// Doublings of size until it passes the limit; a limit that no int passes takes one too many.
int doublings(long long& size, int limit) {
    int count = 0;
    while (size <= limit) {
        size *= 2;
        ++count;
    }
    return count;
}

// Halvings, at least one, that bring size below the limit, or to nothing where the limit is 0.
int halvings(long long size, int limit) {
    int count = 0;
    do {
        size >>= 1;
        ++count;
    } while (size >= limit && size > 0);
    return count;
}

// Gives parm, if it holds a Type, what update makes of its value. False when there is no such
// value.
template <class Type>
bool setUpdated(psParameter* parm, bool (*update)(Type&, int, int, bool), int size, int limit,
                bool bySteps) {
    auto* const typed = dynamic_cast<psDefault_NSC<Type>*>(parm);
    if (typed == nullptr) {
        return false;
    }
    Type value = typed->value();
    if (!update(value, size, limit, bySteps)) {
        return false;
    }
    typed->setValue(value);
    return true;
}

} // namespace

int (*psCacheIterator::m_cacheSizeHook)(int* bytes) = ps_zolGetMaxCacheSizeB;

int psCacheIterator::cacheSize() {
    int bytes = 0;
    return m_cacheSizeHook(&bytes) == 0 ? bytes : 0;
}

psCacheIterator::psCacheIterator(psParameter& parm, psObject* object, psSetNewValue adjuster)
    : m_pCacheParm(&parm), m_pObject(object), m_lowRatio(startLowRatio), m_setNewValue(adjuster) {
    init("cacheIterator");
    psCacheIterator::add(inCacheValue);
    psCacheIterator::add(outOfCacheValue);
}

psString psCacheIterator::valueString() const { return m_pCacheParm->valueString(); }

psString psCacheIterator::defaultString() const { return m_pCacheParm->defaultString(); }

psString psCacheIterator::validString() const { return m_pCacheParm->validString(); }

psString psCacheIterator::description() const { return m_pCacheParm->description(); }

psString psCacheIterator::prompt() const { return m_pCacheParm->prompt(); }

psOStream& psCacheIterator::toOStream(psOStream& out) const { return m_pCacheParm->toOStream(out); }

psCStream& psCacheIterator::toCStream(psCStream& out) const { return m_pCacheParm->toCStream(out); }

psIStream& psCacheIterator::fromIStream(psIStream& in) { return m_pCacheParm->fromIStream(in); }

bool psCacheIterator::nextValue() {
    m_tryCount = 0;
    m_comment = "";
    m_lowRatio = startLowRatio;
    return psIterator<int>::nextValue() && m_pCacheParm->firstValue();
}

bool psCacheIterator::repeatValue() {
    ++m_tryCount;
    return m_tryCount <= maxTries && setNewValue();
}

bool psCacheIterator::setNewValueToParm(int, int, bool) { return false; }

bool psCacheIterator::validateSize() {
    m_objectSize = m_pObject != nullptr ? m_pObject->objectSize() : 0;
    m_totalSize = allocatedSize();
    if (m_objectSize == 0) {
        m_objectSize = m_totalSize;
    }
    bool const tooSmall = m_objectSize < lowSize();
    bool const tooBig = m_totalSize > highSize();
    if (!tooSmall && !tooBig) {
        m_tryCount = 0;
        m_comment = "";
        return true;
    }
    psString text;
    if (tooSmall) {
        text << "      " << getComment() << " try: cacheParm=" << valueString()
             << (m_pObject != nullptr ? " objectSize=" : " totalSize=") << m_objectSize << " < "
             << lowSize() << "\n";
    }
    if (tooBig) {
        text << "      " << getComment() << " try: cacheParm=" << valueString()
             << " totalSize=" << m_totalSize << " > " << highSize() << "\n";
    }
    m_comment += text;
    g_ostrm << MSG_PERF << text << MSG_RESTORE;

    if (tooSmall && tooBig) { // the band of sizes is too narrow
        lowerRatio();
    } else if (m_tryCount >= 2 && tooSmall && m_wasTooBig) { // the size goes to and fro
        if (lowerRatio()) {
            return validateSize();
        }
    }
    m_wasTooBig = tooBig;
    return false;
}

psString psCacheIterator::getComment() const {
    switch (m_value) {
    case inCacheValue:
        return "inCache";
    case outOfCacheValue:
        return "outofCache";
    default:
        return "";
    }
}

void psCacheIterator::outputInfo() const {
    if (!g_ostrm.admits(MSG_PERF)) {
        g_ostrm << MSG_ERR << m_comment << MSG_RESTORE;
    }
}

int psCacheIterator::highSize() const {
    return m_value == inCacheValue ? static_cast<int>(0.9 * cacheSize())
                                   : std::numeric_limits<int>::max();
}

int psCacheIterator::lowSize() const {
    return static_cast<int>((m_value == inCacheValue ? m_lowRatio : 1.05) * cacheSize());
}

bool psCacheIterator::setNewValue() {
    bool const tooBig = m_totalSize > highSize();
    int const size = tooBig ? m_totalSize : m_objectSize;
    int const limit = tooBig ? highSize() : lowSize();
    bool const bySteps = m_tryCount > 1; // the first adjustment jumps, later ones creep
    return m_setNewValue != nullptr ? m_setNewValue(m_pCacheParm, size, limit, bySteps)
                                    : setNewValueToParm(size, limit, bySteps);
}

// There are two ratios and nothing between them: a second widening ends the tries.
bool psCacheIterator::lowerRatio() {
    if (m_lowRatio > leastLowRatio) {
        m_lowRatio = leastLowRatio;
        return true;
    }
    m_tryCount = maxTries;
    return false;
}

bool psCacheIteratorInt::setNewValueToParm(int size, int limit, bool bySteps) {
    return setUpdated(m_pCacheParm, updateValue, size, limit, bySteps);
}

bool psCacheIteratorInt::updateValue(int& value, int size, int limit, bool bySteps) {
    if (bySteps) {
        return shiftValue(value, size < limit ? 1 : -1);
    }
    if (size <= 0) { // no factor changes nothing into something
        return false;
    }
    long long reached = size;
    int count = doublings(reached, limit);
    count -= halvings(reached, limit);
    return shiftValue(value, count);
}

bool psCacheIteratorSize::setNewValueToParm(int size, int limit, bool bySteps) {
    return setUpdated(m_pCacheParm, updateValue, size, limit, bySteps);
}

// The two fields take turns, so that the shape stays near a square.
bool psCacheIteratorSize::updateValue(ZoliSize& value, int size, int limit, bool bySteps) {
    if (bySteps) {
        bool const wider = value.width > value.height;
        bool const changed = size < limit ? shiftValue(wider ? value.height : value.width, 1)
                                          : shiftValue(wider ? value.width : value.height, -1);
        return changed && value.width > 0 && value.height > 0;
    }
    if (size <= 0) {
        return false;
    }
    int widthCount = 0;
    int heightCount = 0;
    long long reached = size;
    for (int count = doublings(reached, limit); count > 0; --count) {
        ++(widthCount > heightCount ? heightCount : widthCount);
    }
    for (int count = halvings(reached, limit); count > 0; --count) {
        --(heightCount < widthCount ? widthCount : heightCount);
    }
    return shiftValue(value.width, widthCount) && shiftValue(value.height, heightCount);
}
