// vtslookup.cpp - answers from the tags, and the include and exclude lists.
#include "vts/vtslookup.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "vts/vtsdefs.h"

namespace {

bool holds(char const* text, char const* part) { return strstr(text, part) != nullptr; }

bool holdsOneOf(char const* text, char const* const* parts, int count) {
    for (int i = 0; i < count; ++i) {
        if (holds(text, parts[i])) {
            return true;
        }
    }
    return false;
}

// Where the tag stands in a block: between the two pointers.
struct TagSpan {
    char const* first;
    char const* last;
};

TagSpan tagSpan(char const* text) {
    while (*text != '\0' && !vtsIsFuncNameChar(*text)) {
        ++text;
    }
    char const* end = text;
    while (vtsIsFuncNameChar(*end)) {
        ++end;
    }
    return {text, end};
}

// Words of the names that change the shape. The packing functions' words go with bits of their
// own; no current row has them.
struct PackWord {
    char const* word;
    int bits;
};
constexpr PackWord packWords[] = {{"UnpackI", 0x120000}, {"UnpackM", 0x220000},
                                  {"UnpackV", 0x420000}, {"PackI", 0x110000},
                                  {"PackM", 0x210000},   {"PackV", 0x410000}};
constexpr char const* realResult[] = {"cAbs", "zAbs", "cArg", "zArg", "Real", "Imag"};
constexpr char const* realSource[] = {"cCIS", "zCIS"};
constexpr char const* twoResults[] = {"SinCos", "Modf"};
constexpr char const* twoSources[] = {"Div", "Pow", "Hypot", "Sub", "Add", "Mul", "Atan2"};
constexpr char const* oneSource[] = {"Pow3o2", "Pow2o3"};

template <int N>
bool holdsOneOf(char const* text, char const* const (&parts)[N]) {
    return holdsOneOf(text, parts, N);
}

// Type code of the first letter; 0 for a letter that is no type.
int letterCode(char letter) {
    switch (letter) {
    case 's':
        return vtsSingle;
    case 'd':
        return vtsDouble;
    case 'c':
        return vtsSingle | vtsComplexMask;
    case 'z':
        return vtsDouble | vtsComplexMask;
    default:
        return 0;
    }
}

// The next blank-separated word of a list; null at its end.
char const* nextWord(char const* list, size_t& size) {
    list += strspn(list, " \t");
    size = strcspn(list, " \t");
    return size != 0 ? list : nullptr;
}

bool holdsWord(char const* text, char const* word, size_t size) {
    for (; *text != '\0'; ++text) {
        if (strncmp(text, word, size) == 0) {
            return true;
        }
    }
    return false;
}

// True if some word of the list is part of the text; anyWord tells whether the list has a word.
bool listFits(char const* text, char const* list, bool& anyWord) {
    anyWord = false;
    size_t size = 0;
    for (char const* word = nextWord(list, size); word != nullptr;
         word = nextWord(word + size, size)) {
        anyWord = true;
        if (holdsWord(text, word, size)) {
            return true;
        }
    }
    return false;
}

} // namespace

// By hand: the locale has no say in names.
bool vtsIsFuncNameChar(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || letter == '_';
}

void vtsGetFuncName(int row, char* name) {
    TagSpan const tag = tagSpan(defFunc[row].text);
    int size = static_cast<int>(tag.last - tag.first);
    if (size >= vtsNameSize) {
        size = vtsNameSize - 1;
    }
    memcpy(name, tag.first, static_cast<size_t>(size));
    name[size] = '\0';
}

// Compares in place: each body looks its row up at every call.
int vtsFindFunc(char const* tag) {
    size_t const size = strlen(tag);
    for (int row = 0; row < defParam.numFuncs; ++row) {
        TagSpan const found = tagSpan(defFunc[row].text);
        if (static_cast<size_t>(found.last - found.first) == size &&
            memcmp(found.first, tag, size) == 0) {
            return row;
        }
    }
    return -1;
}

int vtsGetFuncType(int row) {
    char tag[vtsNameSize];
    vtsGetFuncName(row, tag);
    int code = letterCode(tag[0]);
    if (code == 0) {
        return -1;
    }
    for (PackWord const& pack : packWords) {
        // The word behind "Un" is another one: it begins with a small letter.
        if (holds(tag, pack.word)) {
            code += pack.bits;
        }
    }
    if (holdsOneOf(tag, realResult)) {
        code &= ~vtsComplexResult;
    }
    if (holdsOneOf(tag, realSource)) {
        code &= ~vtsComplexSource;
    }
    if (holdsOneOf(tag, twoResults)) {
        return code + vtsShapeTwoResults;
    }
    if (holdsOneOf(tag, twoSources) && !holdsOneOf(tag, oneSource)) {
        return code + vtsShapeBinary;
    }
    if (holds(tag, "LinearFrac")) {
        code += vtsShapeLinearFrac;
    }
    if ((code & vtsShapeMask) == 0) {
        code += vtsShapeUnary;
    }
    return code;
}

int vtsGetFuncShape(int row) { return vtsGetFuncType(row) & vtsShapeMask; }

int vtsGetFlavourIndexByName(char const* name) {
    for (int i = 0; i < vtsNumFlavours; ++i) {
        if (strcmp(flavData[i].name, name) == 0) {
            return i;
        }
    }
    printf("flavour : %s doesn't exists\n", name);
    exit(-1);
}

int vtsGetFuncFlavorIndex(int row) {
    char tag[vtsNameSize];
    vtsGetFuncName(row, tag);
    char const* const mark = strchr(tag, '_');
    if (mark == nullptr) {
        return vtsGetFlavourIndexByName("HA");
    }
    if (holds(mark + 1, "EP")) {
        bool const single = (letterCode(tag[0]) & vtsSingle) != 0;
        return vtsGetFlavourIndexByName(single ? "A11" : "A26");
    }
    return vtsGetFlavourIndexByName(mark + 1);
}

int vtsIsStringIncluded(char const* text, char const* include, char const* exclude) {
    bool anyWord = false;
    bool const wanted = listFits(text, include, anyWord) || !anyWord;
    return wanted && !listFits(text, exclude, anyWord) ? 1 : 0;
}

int vtsIsValuesIncluded() {
    return vtsIsStringIncluded(defData.valuesName, defParam.valuesInclude,
                               defParam.valuesExclude) != 0 &&
                   vtsIsStringIncluded(defData.valuesType, defParam.typesInclude,
                                       defParam.typesExclude) != 0
               ? 1
               : 0;
}

int vtsIsFuncIncluded(int row) {
    constexpr int typeBits = vtsPrecisionMask | vtsComplexMask;
    if (defParam.precision != 0 && (vtsGetFuncType(row) & typeBits) != defParam.precision) {
        return 0;
    }
    if (defParam.flavourOn[vtsGetFuncFlavorIndex(row)] == 0) {
        return 0;
    }
    char tag[vtsNameSize];
    vtsGetFuncName(row, tag);
    return vtsIsStringIncluded(tag, defParam.functionInclude, defParam.functionExclude);
}

int vtsIsTestIncluded(char const* text) {
    return vtsIsStringIncluded(text, defParam.testInclude, defParam.testExclude);
}
