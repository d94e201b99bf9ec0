// vtsdefs.h - the suite's global records: catalogue rows, run settings, the current data
// set and the flavours.
#ifndef VTS_VTSDEFS_H
#define VTS_VTSDEFS_H

constexpr int vtsNumFuncs = 392;
constexpr int vtsNumFlavours = 4;
constexpr int vtsNumTests = 9;
constexpr int vtsNameSize = 64;   // buffer of a name
constexpr int vtsLineSize = 1024; // buffer of a line of a block

// Any function of the library; its shape follows from the row's tag.
using vtsFunc = void (*)();

// One row of the catalogue.
struct vtsFuncRow {
    vtsFunc func;     // null when the library doesn't have it
    char const* text; // definition block, from the tag on; every line ends in a newline
    char* metrix;     // buffer of the row's own, from malloc; null in every row
    unsigned cursor;  // position in text of the next line to be read
};

// What a configuration can set. The defaults stand here; vtsConfigure puts them back.
struct vtsParam {
    int numFuncs = vtsNumFuncs; // rows of defFunc; bounds every search
    int console = 8;            // mask of the streams that reach the console
    char setInclude[64] = "MAIN";
    char functionInclude[16000] = "";
    char functionExclude[16000] = "";
    char testInclude[256] = "";
    char testExclude[256] = "";
    char typesInclude[256] = "";
    char typesExclude[256] = "";
    char valuesInclude[256] = "";
    char valuesExclude[256] = "";
    char filesInclude[256] = "";
    char filesExclude[256] = "";
    char timingMode[32] = "";
    char specialMode[32] = "EISR";
    char dataBase[256] = "";
    char controlMetering[64] = "";
    char compareMetering1[64] = "";
    char compareMetering2[64] = "";
    char compareCpu1[8] = "";
    char compareCpu2[8] = "";
    char cpeThreshold[256] = "";
    char perfGraph[256] = "";
    float details = 1.0F; // factor on the number of values of every line
    float verbose = 0.1F;
    int createFolder = 1;
    int precision = 0; // low bits of the type codes that take part; 0: all
    int flavourOn[vtsNumFlavours] = {1, 1, 1, 1};
    int fullThreads = 1;
    int catchExceptions = 1;
    int checkNegZero = 1;
    int checkSNAN = 0;
    int bwrLog = 0;
    int ftzDazMode = 0x10001;
    int ftzDazHro = 0;
    int ftzDazVts = 0;
    int epExclude = 1; // leave lines out whose name holds "_ep"
    int fdExclude = 1; // the same for "_fd", when ftzDazVts is on
    int timingLengths[4] = {1, 10, 100, 1000000};
    int perfFrom = 1;
    int perfTo = 10000;
    int perfStep = 100;
    int seed = 1;
};

// The operand arrays and what was read from the block's current line.
struct vtsData {
    int n = 1001;           // values in each operand array
    int requested = 0;      // count of the last value line, before the floor of 1000
    void* block1 = nullptr; // allocation that holds arg1 to arg4
    void* arg1 = nullptr;   // first operand
    void* arg2 = nullptr;   // second operand
    void* arg3 = nullptr;
    void* arg4 = nullptr;
    void* block2 = nullptr; // allocation that holds par1 to par4
    void* par1 = nullptr;   // scalar parameters of the shape 0x2010
    void* par2 = nullptr;
    void* par3 = nullptr;
    void* par4 = nullptr;
    int* auxCodes = nullptr;
    int* errCodes = nullptr;           // expected error code of each value
    char valuesName[vtsNameSize] = ""; // as "Work"
    char valuesType[vtsNameSize] = ""; // section, as "Normal"
    char valuesData[vtsLineSize] = ""; // source part of the line
    char srcName1[vtsNameSize] = "";
    char srcName1Imag[vtsNameSize] = "";
    char srcName2[vtsNameSize] = "";
    char srcName2Imag[vtsNameSize] = "";
    char resName1[vtsNameSize] = "";
    char resName1Imag[vtsNameSize] = "";
    char resName2[vtsNameSize] = "";
    char resName2Imag[vtsNameSize] = "";
    char errName[vtsNameSize] = "";
    char excName[vtsNameSize] = "";
    int assignType = 0;
    int assignTypeImag = 0;
    int valuesCount = 0; // value lines consumed since vtsBeginFillData
};

// An accuracy class. The bounds are single-precision error limits.
struct vtsFlavour {
    char const* name;
    float failBound;
    float warnBound;
    int errorClass;
};

extern vtsFuncRow defFunc[vtsNumFuncs];
extern vtsParam defParam;
extern vtsData defData;
extern vtsFlavour flavData[vtsNumFlavours];
extern vtsFlavour const flavDefaults[vtsNumFlavours]; // what vtsConfigure puts back
extern char const* const pcTestNames[vtsNumTests];

#endif
