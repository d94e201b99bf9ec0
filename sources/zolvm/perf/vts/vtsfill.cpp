// vtsfill.cpp - operand arrays: their memory, and the fills by kind of line.
#include "vts/vtsfill.h"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "psbase/psexception.h"
#include "vts/vtsdefs.h"
#include "vts/vtslines.h"
#include "vts/vtslookup.h"
#include "vts/vtsrandom.h"
#include "vts/vtsspecial.h"

namespace {

constexpr size_t arrayBoundary = 65536;
constexpr size_t arrayGap = 512;
constexpr int minValues = 1000;
constexpr int maxValues = 10000000;

size_t roundUp(size_t value) { return (value + arrayBoundary - 1) / arrayBoundary * arrayBoundary; }

// Bytes of an array: a complex double takes 16, so it suits every type.
size_t arrayWidth() { return roundUp(16 * static_cast<size_t>(defData.n) + 1024); }

// One allocation of so many widths, which holds four arrays; null without memory for it.
void* allocBlock(size_t widths, void*& first, void*& second, void*& third, void*& fourth) {
    size_t const width = arrayWidth();
    void* const block = malloc(widths * width);
    if (block == nullptr) {
        return nullptr;
    }
    size_t const slack =
        roundUp(reinterpret_cast<uintptr_t>(block)) - reinterpret_cast<uintptr_t>(block);
    char* const start = static_cast<char*>(block) + slack;
    first = start;
    second = start + (width + arrayGap);
    third = start + 2 * (width + arrayGap);
    fourth = start + 3 * (width + arrayGap);
    return block;
}

void release() {
    free(defData.auxCodes);
    free(defData.errCodes);
    free(defData.block1);
    free(defData.block2);
    defData.auxCodes = nullptr;
    defData.errCodes = nullptr;
    defData.block1 = defData.arg1 = defData.arg2 = defData.arg3 = defData.arg4 = nullptr;
    defData.block2 = defData.par1 = defData.par2 = defData.par3 = defData.par4 = nullptr;
}

void allocate(size_t firstWidths) {
    size_t const codes = static_cast<size_t>(defData.n) + 1024;
    defData.auxCodes = static_cast<int*>(malloc(codes * sizeof(int)));
    defData.errCodes = static_cast<int*>(calloc(codes, sizeof(int)));
    defData.block1 =
        allocBlock(firstWidths, defData.arg1, defData.arg2, defData.arg3, defData.arg4);
    defData.block2 = allocBlock(6, defData.par1, defData.par2, defData.par3, defData.par4);
    if (defData.auxCodes == nullptr || defData.errCodes == nullptr || defData.block1 == nullptr ||
        defData.block2 == nullptr) {
        release();
        psString text("no memory for ");
        throw psException(text << defData.n << " values");
    }
}

float* asFloat(void* array) { return static_cast<float*>(array); }
double* asDouble(void* array) { return static_cast<double*>(array); }

float singleOf(char const* token) { return std::bit_cast<float>(vtssGetValue(token)); }
double doubleOf(char const* token) { return std::bit_cast<double>(vtsdGetValue(token)); }

bool hasPrecision(int type) {
    int const bits = type & vtsPrecisionMask;
    return bits == vtsSingle || bits == vtsDouble;
}

// Each of these fills one operand array in the row's source type: bit vtsComplexSource chooses
// between pairs and reals. So a row with a real source and a complex result fills its reals twice,
// and the second fill, from the imaginary text, stands.

void fillInterval(void* array, int type, char const* low, char const* high, int part) {
    bool const pairs = (type & vtsComplexSource) != 0;
    if ((type & vtsSingle) != 0) {
        if (pairs) {
            vtscFillInterval(asFloat(array), defData.n, singleOf(low), singleOf(high), part);
        } else {
            vtssFillInterval(asFloat(array), defData.n, singleOf(low), singleOf(high));
        }
    } else if (pairs) {
        vtszFillInterval(asDouble(array), defData.n, doubleOf(low), doubleOf(high), part);
    } else {
        vtsdFillInterval(asDouble(array), defData.n, doubleOf(low), doubleOf(high));
    }
}

void fillUniform(void* array, int type, char const* low, char const* high) {
    if ((type & vtsSingle) != 0) {
        vtsUniformFloat(asFloat(array), defData.n, singleOf(low), singleOf(high));
    } else {
        vtsUniformDouble(asDouble(array), defData.n, doubleOf(low), doubleOf(high));
    }
}

void fillFixed(void* array, int type, char const* token, int part) {
    bool const pairs = (type & vtsComplexSource) != 0;
    if ((type & vtsSingle) != 0) {
        if (pairs) {
            vtscFillFixed(asFloat(array), defData.n, vtssGetValue(token), part);
        } else {
            vtssFillFixed(asFloat(array), defData.n, vtssGetValue(token));
        }
    } else if (pairs) {
        vtszFillFixed(asDouble(array), defData.n, vtsdGetValue(token), part);
    } else {
        vtsdFillFixed(asDouble(array), defData.n, vtsdGetValue(token));
    }
}

void fillSpecial(void* array, int type, char const* name, int part) {
    bool const pairs = (type & vtsComplexSource) != 0;
    if ((type & vtsSingle) != 0) {
        if (pairs) {
            vtscFillSpecial(asFloat(array), defData.n, name, part);
        } else {
            vtssFillSpecial(asFloat(array), defData.n, name);
        }
    } else if (pairs) {
        vtszFillSpecial(asDouble(array), defData.n, name, part);
    } else {
        vtsdFillSpecial(asDouble(array), defData.n, name);
    }
}

// What interval and fixed lines leave in the names and codes of special ones.
void clearExpectations() {
    defData.resName1[0] = '\0';
    defData.errName[0] = '\0';
    defData.excName[0] = '\0';
    vtsiFillFixed(defData.errCodes, defData.n, 0);
}

// Text behind the "=" and its blanks; null without an "=".
char const* sourceOf(char const* line) {
    char const* const mark = strchr(line, '=');
    return mark != nullptr ? mark + 1 + strspn(mark + 1, " \t") : nullptr;
}

using Token = char[vtsNameSize];

// The templates' widths follow from vtsNameSize.
static_assert(vtsNameSize == 64);
int parseIntervals(char const* source, Token (&low)[6], Token (&high)[6]) {
    return sscanf(source,
                  "[ %63s ; %63s ] & [ %63s ; %63s ] & [ %63s ; %63s ] & "
                  "[ %63s ; %63s ] & [ %63s ; %63s ] & [ %63s ; %63s ]",
                  low[0], high[0], low[1], high[1], low[2], high[2], low[3], high[3], low[4],
                  high[4], low[5], high[5]);
}

// Intervals that a line of the shape has; 0 for a shape that no line fits.
int intervalsOfShape(int shape) {
    switch (shape) {
    case vtsShapeUnary:
    case vtsShapeTwoResults:
        return 1;
    case vtsShapeBinary:
        return 2;
    case vtsShapeLinearFrac:
        return 6;
    default:
        return 0;
    }
}

// Operands of a fixed or a special line; the shape with scalars has no such lines.
int operandsOfShape(int shape) { return shape == vtsShapeLinearFrac ? 0 : intervalsOfShape(shape); }

// Keeps the old name where the line gives none.
void storeName(char* name, Token const& token) {
    if (token[0] != '\0') {
        memcpy(name, token, sizeof(token));
    }
}

int dispatch(int row, char const* line, int kind, int part) {
    switch (kind) {
    case vtsAssignInterval:
        return vtsFillValuesInterval(row, line, part);
    case vtsAssignFixed:
        return vtsFillValuesFixed(row, line, part);
    case vtsAssignSpecial:
        return vtsFillValuesSpecial(row, line, part);
    case vtsAssignArray:
        return vtsFillValuesArray(row, line, part);
    case vtsAssignFile:
        return vtsFillValuesFile(row, line, part);
    default:
        return -1;
    }
}

// Fits the arrays to the weight of a line. Done in single precision: a weight such as 0.1 gives the
// count that its single form gives.
void resizeForWeight(float weight) {
    float const count = 1001.0F * defParam.details * weight;
    if (!(count >= 1.0F && count < static_cast<float>(maxValues + 1))) {
        return;
    }
    defData.requested = static_cast<int>(count);
    int const wanted = defData.requested < minValues ? minValues : defData.requested;
    if (wanted != defData.n) {
        defData.n = wanted;
        vtsReAllocData();
    }
}

} // namespace

void vtsAllocData() { allocate(6); }

void vtsReAllocData() {
    release();
    allocate(12);
}

void vtsDeAllocData() {
    vtsClearMetrixes();
    release();
}

void vtsBeginFillData(int row) {
    RewindMetrix(row);
    defData.valuesCount = 0;
    defData.valuesName[0] = '\0';
    strcpy(defData.valuesType, "Normal");
}

int vtsFillData(int row) {
    char line[vtsLineSize];
    while (GetMetrixLine(row, line, vtsLineSize) == 0) {
        if (strchr(line, '!') != nullptr || strstr(line, "//") != nullptr) {
            continue;
        }
        if (strchr(line, ':') != nullptr) {
            vtsGetValuesType(line, defData.valuesType);
            continue;
        }
        if (strchr(line, '=') == nullptr) {
            continue;
        }
        vtsGetValuesName(line, defData.valuesName);
        vtsGetValuesData(line, defData.valuesData);
        if (vtsIsValuesIncluded() == 0) {
            continue;
        }
        resizeForWeight(vtsGetValuesDetails(line));
        if (vtsFillValues(row, line) != -1) {
            ++defData.valuesCount;
            return 1;
        }
    }
    return 0;
}

int vtsFillValues(int row, char const* line) {
    if ((vtsGetFuncType(row) & vtsComplexMask) != 0) {
        return vtsFillComplexValues(row, line);
    }
    defData.assignType = vtsGetValuesAssignType(line);
    // A sweep gives no values, and counts all the same.
    return defData.assignType == vtsAssignSweep ? 0 : dispatch(row, line, defData.assignType, 0);
}

// A failed fill of the real half still lets the imaginary one run; its answer alone counts.
int vtsFillComplexValues(int row, char const* line) {
    char imaginary[vtsLineSize];
    vtsGetImaginaryValues(line, imaginary);
    defData.assignType = vtsGetValuesAssignType(line);
    defData.assignTypeImag = vtsGetValuesAssignType(imaginary);
    if (defData.assignType < vtsAssignInterval || defData.assignType > vtsAssignFile) {
        return -1;
    }
    dispatch(row, line, defData.assignType, 1);
    return dispatch(row, imaginary, defData.assignTypeImag, 2);
}

int vtsFillValuesInterval(int row, char const* line, int part) {
    char const* const source = sourceOf(line);
    if (source == nullptr) {
        return -1;
    }
    clearExpectations();
    int const type = vtsGetFuncType(row);
    Token low[6];
    Token high[6];
    int const tokens = parseIntervals(source, low, high);
    int const shape = type & vtsShapeMask;
    int const intervals = intervalsOfShape(shape);
    if (intervals == 0 || tokens < 2 * intervals || !hasPrecision(type)) {
        return -1;
    }
    if (shape == vtsShapeLinearFrac) {
        fillInterval(defData.arg1, type & ~vtsComplexMask, low[0], high[0], part);
        fillInterval(defData.arg2, type & ~vtsComplexMask, low[1], high[1], part);
        fillUniform(defData.par1, type, low[2], high[2]);
        fillUniform(defData.par2, type, low[3], high[3]);
        fillUniform(defData.par3, type, low[4], high[4]);
        fillUniform(defData.par4, type, low[5], high[5]);
        return 0;
    }
    fillInterval(defData.arg1, type, low[0], high[0], part);
    if (intervals == 2) {
        fillInterval(defData.arg2, type, low[1], high[1], part);
    }
    return 0;
}

int vtsFillValuesFixed(int row, char const* line, int part) {
    char const* const source = sourceOf(line);
    if (source == nullptr) {
        return -1;
    }
    clearExpectations();
    int const type = vtsGetFuncType(row);
    int const operands = operandsOfShape(type & vtsShapeMask);
    Token first;
    Token second;
    int const tokens = sscanf(source, "%63s & %63s", first, second);
    if (operands == 0 || tokens < operands || !hasPrecision(type)) {
        return -1;
    }
    fillFixed(defData.arg1, type, first, part);
    if (operands == 2) {
        fillFixed(defData.arg2, type, second, part);
    }
    return 0;
}

int vtsFillValuesSpecial(int row, char const* line, int part) {
    char const* const source = sourceOf(line);
    if (source == nullptr) {
        return -1;
    }
    int const type = vtsGetFuncType(row);
    int const shape = type & vtsShapeMask;
    int const operands = operandsOfShape(shape);
    Token source1 = "";
    Token source2 = "";
    Token result1 = "";
    Token result2 = "";
    Token error = "";
    Token exception = "";
    int tokens = 0;
    if (shape == vtsShapeUnary) {
        tokens = sscanf(source, "%63s -> %63s ( %63s / %63s )", source1, result1, error, exception);
    } else if (shape == vtsShapeBinary) {
        tokens = sscanf(source, "%63s & %63s -> %63s ( %63s / %63s )", source1, source2, result1,
                        error, exception);
    } else if (shape == vtsShapeTwoResults) {
        tokens = sscanf(source, "%63s -> %63s & %63s ( %63s / %63s )", source1, result1, result2,
                        error, exception);
    }
    if (operands == 0 || tokens < operands || !hasPrecision(type)) {
        return -1;
    }
    bool const imaginary = part == 2;
    storeName(imaginary ? defData.srcName1Imag : defData.srcName1, source1);
    storeName(imaginary ? defData.srcName2Imag : defData.srcName2, source2);
    storeName(imaginary ? defData.resName1Imag : defData.resName1, result1);
    storeName(imaginary ? defData.resName2Imag : defData.resName2, result2);
    // A name that the line lacks says nothing, and an older one stays. A clause that it lacks says
    // that no error and no exception is expected.
    memcpy(defData.errName, error, sizeof(error));
    memcpy(defData.excName, exception, sizeof(exception));
    vtsiFillFixed(defData.errCodes, defData.n, vtssGetErrCode(error));
    fillSpecial(defData.arg1, type, source1, part);
    if (operands == 2) {
        fillSpecial(defData.arg2, type, source2, part);
    }
    return 0;
}

int vtsFillValuesArray(int, char const*, int) { return 0; }

int vtsFillValuesFile(int, char const*, int) { return 0; }
