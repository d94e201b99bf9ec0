// vtslookup.h - questions about catalogue rows that their tag alone answers, and the
// include and exclude lists of the configuration.
#ifndef VTS_VTSLOOKUP_H
#define VTS_VTSLOOKUP_H

// Bits of a type code.
enum : int {
    vtsSingle = 1,
    vtsDouble = 2,
    vtsComplexResult = 4,
    vtsComplexSource = 8,
    vtsPrecisionMask = vtsSingle | vtsDouble,
    vtsComplexMask = vtsComplexResult | vtsComplexSource
};

// The part of a type code that selects operands and call.
enum : int {
    vtsShapeMask = 0xfff0,
    vtsShapeUnary = 0x110,      // (source, destination, length)
    vtsShapeBinary = 0x210,     // (source, second source, destination, length)
    vtsShapeTwoResults = 0x120, // (source, destination, second destination, length)
    vtsShapeLinearFrac = 0x2010 // two sources and four scalars; no row has it
};

bool vtsIsFuncNameChar(char letter);
void vtsGetFuncName(int row, char* name); // the tag, as "sAcos_LA"
int vtsFindFunc(char const* tag);         // first row of this very tag, -1 if there is none
int vtsGetFuncType(int row);              // -1 for a tag of no known type letter
int vtsGetFuncShape(int row);             // the code under vtsShapeMask

int vtsGetFlavourIndexByName(char const* name); // ends the process on an unknown name
int vtsGetFuncFlavorIndex(int row);

// Lists of blank-separated words, each looked for as a substring of text. No word in include
// admits everything; exclude beats include.
int vtsIsStringIncluded(char const* text, char const* include, char const* exclude);
int vtsIsValuesIncluded(); // the current line of defData
int vtsIsFuncIncluded(int row);
int vtsIsTestIncluded(char const* text);

#endif
