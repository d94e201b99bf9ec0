// timsides.cpp - the two sides of a timing test's function.
#include "timing/timsides.h"

#include "psstream/psostream.h"
#include "timing/timvectors.h"
#include "zo/zopeer.h"
#include "zo/zosides.h"

namespace {

using Function = void (*)();

class Sides : public psPairSides {
public:
    void begin(Function* place, psString const& funcName);
    void end();
    bool beginPoint() override;
    bool select(psSide side) override;
    bool readElsewhere(int warmUpCalls, int loops, long long* clocks) override;

private:
    bool isHere(psSide side) const { return m_functions[side] != nullptr; }
    bool told(bool there); // a side that is gone is told

    psString m_funcName;
    Function* m_place = nullptr;                  // that the body reads; null between tests
    Function m_linked = nullptr;                  // what stood there
    Function m_functions[2] = {nullptr, nullptr}; // null: in the other process
};

void Sides::begin(Function* place, psString const& funcName) {
    m_funcName = funcName;
    m_place = place;
    m_linked = *place;
    for (psSide const side : {psTested, psBaseline}) {
        m_functions[side] = reinterpret_cast<Function>(g_sides.function(side, funcName.c_str()));
    }
    // With a second process the linked library itself is the one under test.
    if (!isHere(psTested)) {
        m_functions[psTested] = m_linked;
    }
}

void Sides::end() {
    if (m_place != nullptr) {
        *m_place = m_linked;
        m_place = nullptr;
    }
}

bool Sides::beginPoint() {
    return g_sides.peer() == nullptr || told(g_sides.peer()->beginPoint(m_funcName.c_str(), len));
}

bool Sides::select(psSide side) {
    if (!isHere(side)) {
        return false;
    }
    *m_place = m_functions[side];
    if (!isHere(psBaseline)) {
        g_sides.peer()->giveWay();
    }
    return true;
}

bool Sides::readElsewhere(int warmUpCalls, int loops, long long* clocks) {
    return told(g_sides.peer()->read(warmUpCalls, loops, clocks));
}

bool Sides::told(bool there) {
    if (!there) {
        g_ostrm << MSG_ERR << "-- The baseline's process ended: " << g_sides.peer()->lastWords()
                << "\n"
                << MSG_RESTORE;
    }
    return there;
}

Sides sides;

// The second process's part.
void setPoint(void* const* vectors, int length) {
    timSetVectors(vectors);
    len.setValue(length);
}

[[maybe_unused]] bool const b_peerPoint = (zoPeerPoint = setPoint) != nullptr;

} // namespace

void timBeginSides(void (**place)(), psString const& funcName) {
    if (!g_pairing.enabled()) {
        return;
    }
    if (!g_sides.baselineHas(funcName.c_str())) {
        g_ostrm << MSG_ERR << "-- Function " << funcName
                << " is missing in the baseline, and is measured alone\n"
                << MSG_RESTORE;
        return;
    }
    sides.begin(place, funcName);
    g_pairing.setSides(&sides);
}

void timEndSides() {
    g_pairing.setSides(nullptr);
    g_pairing.endSeries(); // a fault may have left one
    sides.end();
}
