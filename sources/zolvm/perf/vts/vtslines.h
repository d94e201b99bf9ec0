// vtslines.h - reads a definition block line by line, and takes a line to pieces: name,
// source, weight, numbers.
//
// A line that holds "!" or "//" is off, one with ":" is a section title, one with "=" a value
// line: name = source [ -> result ] [ * weight ].
#ifndef VTS_VTSLINES_H
#define VTS_VTSLINES_H

// How a value line gives its values.
enum : int {
    vtsAssignNone = -1,
    vtsAssignInterval = 1,
    vtsAssignFixed = 2,
    vtsAssignSpecial = 3,
    vtsAssignArray = 4,
    vtsAssignFile = 5,
    vtsAssignSweep = 6
};

// The next line without its newline: 0, or -1 at the end of the text with what is left. A line of
// size - 1 characters or more comes in pieces.
int GetMetrixLine(int row, char* line, int size);
void RewindMetrix(int row);
void vtsClearMetrixes(); // frees the buffers that rows own

void vtsGetValuesType(char const* line, char* type); // of a title, without its colon
void vtsGetValuesName(char const* line, char* name);
void vtsGetValuesData(char const* line, char* data);
int vtsGetValuesAssignType(char const* line);
float vtsGetValuesDetails(char const* line); // the weight, 1 where there is no good one

// "= " and what stands behind the first "#"; the whole line if it has none.
void vtsGetImaginaryValues(char const* line, char* imaginary);

// A decimal, or a bit pattern when the second character is "x" or "X".
unsigned vtssGetValue(char const* token);
unsigned long long vtsdGetValue(char const* token);

#endif
