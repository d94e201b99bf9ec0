// vtsconfig.cpp - reads the suite's configuration, key by key.
#include "vts/vtsconfig.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "vts/vtsdefs.h"
#include "vts/vtsrandom.h"
#include "vts/vtsstatus.h"

namespace {

constexpr int scratchSize = 1025; // the longest value and its terminator

// Reads values of one source into a scratch buffer.
class ConfigReader {
public:
    explicit ConfigReader(void* source) : handle(source) {}

    // True if the key has a value, which then stands in value().
    bool has(char const* key, int size) {
        vtsGetStringFromFile(handle, key, size, text);
        return text[0] != '\0';
    }
    char* value() { return text; }

    // Straight into a field: an absent key empties it.
    void read(char const* key, int size, char* field) const {
        vtsGetStringFromFile(handle, key, size, field);
    }

    template <int N>
    void readText(char const* key, int size, char (&field)[N]) {
        if (has(key, size)) {
            copy(field, text);
        }
    }

    // Two words, each cut to its field: what is left of a long first one is not the second.
    template <int N>
    void readPair(char const* key, char (&first)[N], char (&second)[N]) {
        char words[2][256];
        int const count = has(key, 255) ? sscanf(text, "%255s %255s", words[0], words[1]) : 0;
        if (count > 0) {
            copy(first, words[0]);
        }
        if (count > 1) {
            copy(second, words[1]);
        }
    }

    bool readNumber(char const* key, int size, double limit, float& field) {
        double const number = has(key, size) ? strtod(text, nullptr) : 0.0;
        bool const good = number > 0.0 && number < limit;
        if (good) {
            field = static_cast<float>(number);
        }
        return good;
    }

    bool holds(char const* part) const { return strstr(text, part) != nullptr; }
    bool holdsYes() const { return holds("1") || holds("y") || holds("Y"); }
    bool holdsNo() const { return holds("0") || holds("n") || holds("N"); }
    bool holdsOn() const { return holds("1") || holds("on") || holds("ON"); }

    void switchOn(char const* key, int& field) {
        if (has(key, 16) && holdsYes()) {
            field = 1;
        }
    }
    void switchOff(char const* key, int& field) {
        if (has(key, 16) && holdsNo()) {
            field = 0;
        }
    }

private:
    template <int N>
    static void copy(char (&field)[N], char const* word) {
        snprintf(field, N, "%.*s", static_cast<int>(N - 1), word);
    }

    void* handle;
    char text[scratchSize] = ""; // of the key that was asked for last
};

void mapLetters(char* text, int (*map)(int)) {
    for (; *text != '\0'; ++text) {
        *text = static_cast<char>(map(static_cast<unsigned char>(*text)));
    }
}

template <int N>
void append(char (&list)[N], char const* word) {
    strncat(list, word, N - 1 - strlen(list));
}

// Words of the precision key; a later one that the value holds wins.
struct PrecisionWord {
    char const* word;
    int precision;
};
constexpr PrecisionWord precisionWords[] = {
    {"s", 1},   {"S", 1},   {"f", 1},    {"F", 1},    {"d", 2},   {"D", 2},
    {"c", 13},  {"C", 13},  {"z", 14},   {"Z", 14},   {"c2s", 9}, {"C2S", 9},
    {"c2f", 9}, {"C2F", 9}, {"z2d", 10}, {"Z2D", 10}, {"s2c", 5}, {"S2C", 5},
    {"f2c", 5}, {"F2C", 5}, {"d2z", 6},  {"D2Z", 6}};

void readLists(ConfigReader& reader) {
    constexpr int size = 255;
    reader.read("FunctionInclude", size, defParam.functionInclude);
    reader.read("FunctionExclude", size, defParam.functionExclude);
    reader.read("TestInclude", size, defParam.testInclude);
    reader.read("TestExclude", size, defParam.testExclude);
    reader.read("TypesInclude", size, defParam.typesInclude);
    reader.read("TypesExclude", size, defParam.typesExclude);
    reader.read("ValuesInclude", size, defParam.valuesInclude);
    reader.read("ValuesExclude", size, defParam.valuesExclude);
    reader.read("FilesInclude", size, defParam.filesInclude);
    reader.read("FilesExclude", size, defParam.filesExclude);
    reader.read("TimingMode", 31, defParam.timingMode);
    reader.read("PerfGraph", size, defParam.perfGraph);
    sscanf(defParam.perfGraph, "%i %i %i", &defParam.perfFrom, &defParam.perfTo,
           &defParam.perfStep);
}

void readNames(ConfigReader& reader) {
    reader.readText("SetInclude", 255, defParam.setInclude);
    reader.readText("DataBase", 255, defParam.dataBase);
    reader.readText("CpeThreshold", 255, defParam.cpeThreshold);
    if (reader.has("ControlMetering", 63)) {
        hrotsCreateMeteringName(reader.value(), defParam.controlMetering);
    }
    reader.readPair("CompareMeterings", defParam.compareMetering1, defParam.compareMetering2);
    reader.readPair("CompareCpu", defParam.compareCpu1, defParam.compareCpu2);
}

void readOutput(ConfigReader& reader) {
    if (reader.has("Console", 64)) {
        int const stream = GetStream(reader.value());
        if (stream != -1) {
            defParam.console = stream;
        }
    }
    if (reader.readNumber("Details", 16, 10000.0, defParam.details)) {
        defData.n = static_cast<int>(1001.0 * static_cast<double>(defParam.details));
    }
    reader.readNumber("Verbose", 16, 10000.0, defParam.verbose);
    reader.switchOff("CreateFolder", defParam.createFolder);
}

// A bound of each flavour, from the key with this ending.
void readBounds(ConfigReader& reader, char const* ending, char const* word,
                float vtsFlavour::*bound) {
    char key[vtsNameSize];
    for (vtsFlavour& flavour : flavData) {
        snprintf(key, sizeof(key), "%s_%s", flavour.name, ending);
        if (reader.readNumber(key, 64, 1e16, flavour.*bound)) {
            vtsPrint(vtsStreamLstTxt, "for %s flavour we have %f %s bound\n", flavour.name,
                     static_cast<double>(flavour.*bound), word);
        }
    }
}

void readFlavours(ConfigReader& reader) {
    if (reader.has("Precision", 16)) {
        for (PrecisionWord const& row : precisionWords) {
            if (reader.holds(row.word)) {
                defParam.precision = row.precision;
            }
        }
    }
    if (reader.has("Accuracy", 16)) {
        mapLetters(reader.value(), toupper);
        for (int i = 0; i < vtsNumFlavours; ++i) {
            defParam.flavourOn[i] = reader.holds(flavData[i].name) ? 1 : 0;
        }
    }
    readBounds(reader, "FAIL", "fail", &vtsFlavour::failBound);
    readBounds(reader, "WARNING", "warn", &vtsFlavour::warnBound);
}

void readTiming(ConfigReader& reader) {
    if (reader.has("TimingLengths", 256)) {
        int lengths[4];
        int const count = sscanf(reader.value(), "%d %d %d %d", &lengths[0], &lengths[1],
                                 &lengths[2], &lengths[3]);
        for (int i = 0; i < count; ++i) {
            if (lengths[i] > 0 && lengths[i] < 10000000) {
                defParam.timingLengths[i] = lengths[i];
            }
        }
    }
    if (reader.has("PerfGraph", 256)) {
        constexpr vtsParam defaults;
        sscanf(reader.value(), "%d %d %d", &defParam.perfFrom, &defParam.perfTo,
               &defParam.perfStep);
        if (defParam.perfTo <= defParam.perfFrom) {
            defParam.perfFrom = defaults.perfFrom;
            defParam.perfTo = defaults.perfTo;
            defParam.perfStep = defaults.perfStep;
        }
        long long const span = static_cast<long long>(defParam.perfTo) - defParam.perfFrom;
        if (defParam.perfStep > span) {
            defParam.perfStep = static_cast<int>(span);
        }
    }
}

void readChecks(ConfigReader& reader) {
    reader.readText("SpecialMode", 32, defParam.specialMode);
    reader.switchOn("FullThreads", defParam.fullThreads);
    reader.switchOff("CatchExceptions", defParam.catchExceptions);
    reader.switchOff("CheckNegZero", defParam.checkNegZero);
    reader.switchOn("CheckSNAN", defParam.checkSNAN);
}

// Both flush-to-zero and denormals-are-zero, in their weak form.
void flushWeakly() {
    defParam.ftzDazVts = 1;
    defParam.ftzDazMode |= 0x40000 | 4;
}

void readDenormals(ConfigReader& reader) {
    if (reader.has("FTZDAZ_HRO", 16) && reader.holdsOn()) {
        defParam.ftzDazHro = 1;
    }
    if (reader.has("BWR_LOG", 1024)) {
        if (reader.holds("y") || reader.holds("Y")) {
            defParam.bwrLog = 1;
        }
        if (reader.holds("d") || reader.holds("D")) {
            defParam.bwrLog = 3;
        }
    }
    if (reader.has("FTZDAZ_VTS", 16)) {
        mapLetters(reader.value(), tolower);
        int const flush = reader.holds("ftz-strict") ? 0x20000
                          : reader.holds("ftz-weak") ? 0x40000
                                                     : 0x10000;
        int const zero = reader.holds("daz-strict") ? 2 : reader.holds("daz-weak") ? 4 : 1;
        defParam.ftzDazMode |= flush | zero;
        if (reader.holdsOn()) {
            flushWeakly();
        }
    }
    if (reader.has("FTZDAZ_ALL", 64) && reader.holdsOn()) {
        defParam.ftzDazHro = 1;
        flushWeakly();
    }
}

void readExclusions(ConfigReader& reader) {
    reader.switchOff("EP_Exclude", defParam.epExclude);
    if (defParam.epExclude != 0) {
        append(defParam.valuesExclude, " _ep");
    }
    reader.switchOff("FD_Exclude", defParam.fdExclude);
    if (defParam.fdExclude != 0 && defParam.ftzDazVts != 0) {
        append(defParam.valuesExclude, " _fd");
    }
}

void applyLevel(char const* level) {
    bool const quick = strcmp(level, "Quick") == 0;
    if (quick || strcmp(level, "Express") == 0) {
        append(defParam.testExclude, " Threads");
        defParam.details = quick ? 0.25F : 1.0F;
    } else if (strcmp(level, "Detail") == 0) {
        defParam.details = 5.0F;
    }
}

} // namespace

constinit vtsStringSource vtsGetStringFromFile = vtsGetStringFromFileStub;

int vtsGetStringFromFileStub(void*, char const*, int, char* text) {
    text[0] = '\0';
    return -1;
}

void vtsConfigure() {
    vtsSet_One_Cpu();
    vtsSetDefaultParams();
    vtsReadConfig(nullptr, 0);
}

int vtsSet_One_Cpu() { return 0; }

void vtsSetDefaultParams() {
    vtsClearStatus();
    int const rows = defParam.numFuncs;
    defParam = vtsParam();
    defParam.numFuncs = rows;
    memcpy(flavData, flavDefaults, sizeof(flavData));
}

int vtsReadConfig(void* handle, int) {
    ConfigReader reader(handle);
    char level[32] = "";
    readLists(reader);
    reader.read("TestingLevel", 31, level);
    readNames(reader);
    readOutput(reader);
    readFlavours(reader);
    readTiming(reader);
    readChecks(reader);
    readDenormals(reader);
    readExclusions(reader);
    if (reader.has("Seed", 64)) {
        int const seed = atoi(reader.value());
        defParam.seed = seed != 0 ? seed : static_cast<int>(time(nullptr));
    }
    MCG31m1Init(static_cast<unsigned>(defParam.seed));
    strcpy(defParam.specialMode, "XES"); // whatever the key said
    applyLevel(level);
    return 0;
}

void hrotsCreateMeteringName(char const* text, char* name) { snprintf(name, 64, "%s", text); }
