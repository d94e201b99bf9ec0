// zosides.h - the two libraries of a paired run: the one under test and the baseline that
// -dBaseline names, both in name spaces of this process, or the baseline in a second one.
#ifndef ZO_ZOSIDES_H
#define ZO_ZOSIDES_H

#include "pstool/pspairing.h"
#include "zo/zolibrary.h"

class zoPeer;

// What -d gives. Read only where there is a Baseline, so that other runs show none of it.
struct zoPairSettings {
    psString baseline;                       // folder or file; empty: no paired readings
    int pairTime = 1;                        // milliseconds a point, 1 to 10000
    int where = 0;                           // 0 as it goes, else zoSides::InSpace, InProcess
    int first = psTested;                    // psSide loaded, and read, first: "BaselineFirst"
    unsigned long long baselineFeatures = 0; // instead of -T's; 0: the same

    // False: a value is bad, which error says.
    bool read(psString& error);
};

class zoSides {
public:
    enum Where { InSpace = 1, InProcess = 2 };

    zoSides() = default;
    zoSides(zoSides const&) = delete;
    zoSides& operator=(zoSides const&) = delete;
    ~zoSides();

    // Loads and starts both sides, adds them to the report's libraries, and enables the readings.
    // False, told in one line: nothing can be measured.
    bool open(zoPairSettings const& settings, zoStart const& start);
    bool isOpen() const { return m_where != 0; }
    int where() const { return m_where; }

    // A side's function; null where it has none, or where it lives in the other process.
    void* function(psSide side, char const* name) const;
    bool baselineHas(char const* name); // in either place
    zoPeer* peer() { return m_peer; }   // null unless InProcess

private:
    bool openSpaces(zoPairSettings const& settings, zoLibraryFiles const (&files)[2],
                    zoStart const (&starts)[2], psString& error);
    bool openProcess(zoLibraryFiles const& baseline, zoStart const& start, psString& error);

    zoLibrary* m_libraries[2] = {nullptr, nullptr}; // by psSide; none in two processes
    zoPeer* m_peer = nullptr;
    int m_where = 0;
    bool m_wantsProcess = false; // what openSpaces failed for
};

extern zoSides g_sides;

#endif
