// vtsconfig_test.cpp - the settings in force without a source, and what a source's keys do.
#include <sstream>

#include "support/storedtext.h"
#include "vtsfixture.h"

namespace {

std::string source; // ";key=value" for each key, and ";"

int valueOf(void*, char const* key, int size, char* text) {
    size_t const found = source.find(std::string(";") + key + "=");
    size_t const begin = source.find('=', found) + 1;
    std::string const value =
        found == std::string::npos ? "" : source.substr(begin, source.find(';', begin) - begin);
    strcpy(text, value.substr(0, static_cast<size_t>(size)).c_str());
    return value.empty() ? -1 : 0;
}

template <size_t N>
std::string shown(char const (&text)[N]) {
    return std::string("\"") + text + "\"";
}
template <typename T>
std::string shown(T const& value) {
    return testing::PrintToString(value);
}

template <typename T>
void tell(std::ostream& out, char const* name, T const& value, T const& usual) {
    if (shown(value) != shown(usual)) {
        out << "  " << name << " " << shown(value) << "\n";
    }
}

#define FIELDS(F)                                                                                  \
    F(numFuncs)                                                                                    \
    F(console) F(setInclude) F(functionInclude) F(functionExclude) F(testInclude) F(testExclude)   \
        F(typesInclude) F(typesExclude) F(valuesInclude) F(valuesExclude) F(filesInclude)          \
            F(filesExclude) F(timingMode) F(specialMode) F(dataBase) F(controlMetering)            \
                F(compareMetering1) F(compareMetering2) F(compareCpu1) F(compareCpu2)              \
                    F(cpeThreshold) F(perfGraph) F(details) F(verbose) F(createFolder)             \
                        F(precision) F(flavourOn) F(fullThreads) F(catchExceptions)                \
                            F(checkNegZero) F(checkSNAN) F(bwrLog) F(ftzDazMode) F(ftzDazHro)      \
                                F(ftzDazVts) F(epExclude) F(fdExclude) F(timingLengths)            \
                                    F(perfFrom) F(perfTo) F(perfStep)

// All settings that differ from their defaults.
std::string settings() {
    static vtsParam const usual;
    std::ostringstream out;
#define TELL(field) tell(out, #field, defParam.field, usual.field);
    FIELDS(TELL)
    out << "  n " << defData.n << " seed " << iBrngMCG31m1();
    for (vtsFlavour const& flavour : flavData) {
        out << " " << flavour.name << " " << flavour.failBound << " " << flavour.warnBound << " "
            << flavour.errorClass;
    }
    return out.str() + "\n";
}

using VtsConfig = VtsFixture;

} // namespace

TEST_F(VtsConfig, EveryKey) {
    std::string const longWord(300, 'x');
    std::string const configurations[] = {
        "", // the defaults
        "SetInclude=S;FunctionInclude=Sin Cos;FunctionExclude=E;TestInclude=TI;TestExclude=TE;"
        "TypesInclude=YI;TypesExclude=YE;ValuesInclude=VI;ValuesExclude=Int;FilesInclude=FI;"
        "FilesExclude=FE;TimingMode=TM;SpecialMode=E;DataBase=D;ControlMetering=C;"
        "CompareMeterings=first second;CompareCpu=averylongname b;CpeThreshold=T;Seed=5",
        "Details=2.5;Verbose=2;PerfGraph=10 30 100;Console=ERR_TXT;HA_FAIL=3;LA_FAIL=4;A26_FAIL=2;"
        "A11_FAIL=5;HA_WARNING=6;LA_WARNING=1.5;A26_WARNING=7;A11_WARNING=8;TimingLengths=5 6 7 8",
        "SetInclude=" + longWord + ";CompareCpu=a " + longWord + ";DataBase=" + longWord,
        "Details=10000;Verbose=-1;TimingLengths=0 20 10000000 7;PerfGraph=50 20 3;Console=NONE;"
        "HA_FAIL=1e16;CompareCpu=only",
        "Details=9999;PerfGraph=50 50 3;TimingLengths=9999999;LA_WARNING=0",
        "PerfGraph=0x10 20 2",
        "Accuracy=la a26;CreateFolder=No;TestingLevel=Quick;CheckSNAN=yes;BWR_LOG=yd;"
        "FTZDAZ_VTS=FTZ-STRICT ON;EP_Exclude=0;FullThreads=1;CatchExceptions=0;CheckNegZero=N",
        "TestingLevel=Express;BWR_LOG=Y;FTZDAZ_VTS=ftz-weak;FTZDAZ_HRO=on",
        "FTZDAZ_VTS=daz-strict;FTZDAZ_ALL=1;FD_Exclude=n;TestingLevel=Detail;BWR_LOG=D",
        "FTZDAZ_VTS=daz-weak;FTZDAZ_ALL=off;TestExclude=kept;CheckSNAN=0;CreateFolder=1"};
    defParam.numFuncs = 17; // the catalogue's size is no setting
    vtsGetStringFromFile = valueOf;
    std::string text;
    for (std::string const& configuration : configurations) {
        source = ";" + configuration + ";";
        printed.clear();
        vtsConfigure();
        text += configuration + "\n" + settings() + printed;
    }
    for (char const* word : {"s", "double", "c2s", "Z2D", "f2c", "d2z", "sz", "x", "F", "C", "S2C",
                             "D2Z", "C2F", "c2f", "z", "D"}) {
        source = std::string(";Precision=") + word + ";";
        vtsConfigure();
        text += word + std::string(" ") + std::to_string(defParam.precision) + "\n";
    }
    EXPECT_TRUE(matchesStored("vts/config", text));
    source = ";Seed=0;"; // of the clock
    vtsConfigure();
    EXPECT_GT(iBrngMCG31m1(), 1U);
    char old[8] = "old";
    EXPECT_EQ(vtsGetStringFromFileStub(nullptr, "Seed", 8, old), -1);
    EXPECT_STREQ(old, "");
}
