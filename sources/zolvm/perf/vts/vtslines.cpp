// vtslines.cpp - the line reader of the definition blocks.
#include "vts/vtslines.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "vts/vtsdefs.h"

namespace {

// First token of the line, ended by a blank, the end of the line or mark.
void firstToken(char const* line, char mark, char* token) {
    char const stops[] = {' ', '\t', '\n', mark, '\0'};
    line += strspn(line, " \t");
    size_t size = strcspn(line, stops);
    if (size >= vtsNameSize) {
        size = vtsNameSize - 1;
    }
    memcpy(token, line, size);
    token[size] = '\0';
}

void cutAt(char* text, char const* mark) {
    if (char* const found = strstr(text, mark)) {
        *found = '\0';
    }
}

bool isLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

bool isPattern(char const* token) { return token[0] != '\0' && (token[1] | 0x20) == 'x'; }

} // namespace

int GetMetrixLine(int row, char* line, int size) {
    vtsFuncRow& entry = defFunc[row];
    int count = 0;
    int result = 0;
    if (entry.text == nullptr) {
        result = -1;
    } else {
        while (count < size - 1) {
            char const letter = entry.text[entry.cursor];
            if (letter == '\0') {
                result = -1;
                break;
            }
            ++entry.cursor;
            if (letter == '\n') {
                break;
            }
            line[count++] = letter;
        }
    }
    line[count] = '\0';
    return result;
}

void RewindMetrix(int row) { defFunc[row].cursor = 0; }

void vtsClearMetrixes() {
    for (int row = 0; row < defParam.numFuncs; ++row) {
        free(defFunc[row].metrix);
        defFunc[row].metrix = nullptr;
    }
}

void vtsGetValuesType(char const* line, char* type) { firstToken(line, ':', type); }

void vtsGetValuesName(char const* line, char* name) { firstToken(line, '=', name); }

void vtsGetValuesData(char const* line, char* data) {
    char const* const mark = strchr(line, '=');
    snprintf(data, vtsLineSize, "%s", mark != nullptr ? mark + 1 : "");
    cutAt(data, "*");
    cutAt(data, "->");
}

int vtsGetValuesAssignType(char const* line) {
    char const* source = strchr(line, '=');
    if (source == nullptr) {
        return vtsAssignNone;
    }
    ++source;
    source += strspn(source, " \t");
    if (*source == '\0') {
        return vtsAssignNone;
    }
    if (strstr(line, "for") != nullptr && strstr(line, "from") != nullptr &&
        strstr(line, "to") != nullptr) {
        return vtsAssignSweep;
    }
    switch (*source) {
    case '[':
        return vtsAssignInterval;
    case '{':
        return vtsAssignArray;
    case '.':
        return vtsAssignFile;
    default:
        return isLetter(*source) ? vtsAssignSpecial : vtsAssignFixed;
    }
}

float vtsGetValuesDetails(char const* line) {
    char const* const mark = strchr(line, '*');
    float const weight = mark != nullptr ? strtof(mark + 1, nullptr) : 0.0F;
    return weight > 0.0F && weight <= 1000.0F ? weight : 1.0F; // a NaN fails too
}

void vtsGetImaginaryValues(char const* line, char* imaginary) {
    char const* const mark = strchr(line, '#');
    if (mark != nullptr) {
        snprintf(imaginary, vtsLineSize, "= %s", mark + 1);
    } else {
        snprintf(imaginary, vtsLineSize, "%s", line);
    }
}

// Of a longer pattern the low half is kept.
unsigned vtssGetValue(char const* token) {
    return isPattern(token) ? static_cast<unsigned>(strtoull(token, nullptr, 16))
                            : std::bit_cast<unsigned>(strtof(token, nullptr));
}

unsigned long long vtsdGetValue(char const* token) {
    return isPattern(token) ? strtoull(token, nullptr, 16)
                            : std::bit_cast<unsigned long long>(strtod(token, nullptr));
}
