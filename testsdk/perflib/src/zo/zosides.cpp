// zosides.cpp - opening the two libraries of a paired run.
#include "zo/zosides.h"

#include "pscpu/pscpufeatures.h"
#include "pscpu/pscputicker.h"
#include "pscpu/pszolentry.h"
#include "psparameter/psdefault.h"
#include "psstream/psistream.h"
#include "zo/zopeer.h"

zoSides g_sides;

namespace {

constexpr int mostPairTime = 10000;

// The sanitizers' run time knows one name space.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool hasSpaces = false;
#else
constexpr bool hasSpaces = true;
#endif

void tell(psString const& text) {
    g_ostrm << MSG_ERR << "-- Baseline: " << text << "\n" << MSG_RESTORE_FLUSH;
}

void tellStart(zoLibraryFiles const& files, ZolStatus status) {
    if (status != zolStsNoErr) {
        psString text("the start of ");
        text << files.vm << " gave status " << status << ": " << zol_GetStatusString(status);
        tell(text);
    }
}

// The value of a setting that is there.
psString valueOf(char const* name) { return g_istrm.getItemValue(name, "", "", ""); }

// A number of the settings, in bounds.
bool readNumber(char const* name, int least, int most, int* value, psString& error) {
    if (!g_istrm.hasItem(name)) {
        return true;
    }
    psString text = valueOf(name);
    int const number = psStringToNumber(text);
    if (text.errorConvertion() || number < least || number > most) {
        error << name << "=" << text << " is not a number from " << least << " to " << most;
        return false;
    }
    *value = number;
    return true;
}

bool readWhere(int* where, psString& error) {
    if (!g_istrm.hasItem("BaselineIn")) {
        return true;
    }
    psString text = valueOf("BaselineIn");
    psMapDefault<int> places;
    places.add(zoSides::InSpace, "space");
    places.add(zoSides::InProcess, "process");
    *where = places.stringToValue(text);
    if (text.errorConvertion() || text.empty()) {
        error << "BaselineIn=" << text << " is neither space nor process";
        return false;
    }
    return true;
}

// The labels of -T, or a number.
bool readFeatures(unsigned long long* features, psString& error) {
    if (!g_istrm.hasItem("BaselineFeatures")) {
        return true;
    }
    psString text = valueOf("BaselineFeatures");
    *features = psCpuFeatures::cpuFeatures(text);
    if (*features == 0) {
        *features << text;
    }
    if (*features == 0) {
        error << "BaselineFeatures=" << text << " names no features";
        return false;
    }
    return true;
}

} // namespace

bool zoPairSettings::read(psString& error) {
    if (!g_istrm.hasItem("Baseline")) {
        return true;
    }
    baseline = valueOf("Baseline");
    bool const good =
        readNumber("PairTime", 1, mostPairTime, &pairTime, error) && readWhere(&where, error) &&
        readNumber("BaselineFirst", 0, 1, &first, error) && readFeatures(&baselineFeatures, error);
    if (good && baseline.empty()) {
        error = "no path is given";
        return false;
    }
    return good;
}

zoSides::~zoSides() {
    delete m_libraries[psTested];
    delete m_libraries[psBaseline];
    delete m_peer;
}

bool zoSides::open(zoPairSettings const& settings, zoStart const& start) {
    zoLibraryFiles files[2];
    zoStart starts[2] = {start, start};
    if (settings.baselineFeatures != 0) {
        starts[psBaseline].features = settings.baselineFeatures;
    }
    psString error;
    files[psTested] = zoLibraryFiles::linked();
    if (!files[psBaseline].find(settings.baseline, error)) {
        tell(error);
        return false;
    }
    bool mayMove = true; // to a second process
    if (settings.where == InProcess) {
        error = "as asked";
    } else if (!hasSpaces) {
        error = "this build knows one name space";
    } else if (!openSpaces(settings, files, starts, error)) {
        mayMove = m_wantsProcess;
    }
    if (isOpen()) {
        tell("both libraries in this process, each in a name space of its own");
    } else if (settings.where == InSpace || !mayMove) {
        tell(error);
        return false;
    } else {
        psString const reason = error;
        if (!openProcess(files[psBaseline], starts[psBaseline], error)) {
            tell(error);
            return false;
        }
        tell("in a second process: " + reason);
    }
    long long const clocks = settings.pairTime * 1000LL * psCpuTicker::getFreq();
    if (!g_pairing.enable(clocks, static_cast<psSide>(settings.first))) {
        tell("no memory for the readings");
        return false;
    }
    psString const version =
        m_where == InSpace ? m_libraries[psBaseline]->version() : m_peer->version();
    psRegLibInfo("under test: " + files[psTested].vm);
    psRegLibInfo("baseline: " + version);
    psRegLibInfo("baseline: " + files[psBaseline].vm);
    return true;
}

bool zoSides::openSpaces(zoPairSettings const& settings, zoLibraryFiles const (&files)[2],
                         zoStart const (&starts)[2], psString& error) {
    for (int const side : {settings.first, 1 - settings.first}) {
        zoLibrary*& library = m_libraries[side];
        library = new zoLibrary;
        if (!library->open(files[side], error)) {
            m_wantsProcess = library->wantsProcess();
            break;
        }
        if (library->countFunctions() == 0) {
            error = files[side].vm + " holds none of the measured functions";
            break;
        }
        tellStart(files[side], library->start(starts[side]));
    }
    if (error.empty()) {
        m_where = InSpace;
        return true;
    }
    for (zoLibrary*& library : m_libraries) {
        delete library;
        library = nullptr;
    }
    return false;
}

bool zoSides::openProcess(zoLibraryFiles const& baseline, zoStart const& start, psString& error) {
    m_peer = new zoPeer;
    if (!m_peer->open(baseline, start)) {
        error = m_peer->lastWords();
        return false;
    }
    tellStart(baseline, m_peer->status());
    m_where = InProcess;
    return true;
}

void* zoSides::function(psSide side, char const* name) const {
    return m_libraries[side] != nullptr ? m_libraries[side]->function(name) : nullptr;
}

bool zoSides::baselineHas(char const* name) {
    return m_where == InProcess ? m_peer->has(name) : function(psBaseline, name) != nullptr;
}
