// vtsfill.h - turns the lines of a row's definition block into operand arrays.
#ifndef VTS_VTSFILL_H
#define VTS_VTSFILL_H

// The arrays of defData, each on a 65536-byte boundary or 512 bytes behind its neighbour's end, so
// that they don't meet in the same cache sets. A psException, and no arrays, without memory for
// them.
void vtsAllocData();
void vtsReAllocData(); // for another n; its first block is twice as large
void vtsDeAllocData(); // also without data

void vtsBeginFillData(int row);
int vtsFillData(int row); // from the next usable value line; 0 at the end of the block

// Fills by the line: 0, or -1 if it fits no form. The part is 0 for a real row, 1 for the real and
// 2 for the imaginary half of a complex one.
int vtsFillValues(int row, char const* line);
int vtsFillComplexValues(int row, char const* line);
int vtsFillValuesInterval(int row, char const* line, int part);
int vtsFillValuesFixed(int row, char const* line, int part);
int vtsFillValuesSpecial(int row, char const* line, int part);
int vtsFillValuesArray(int row, char const* line, int part); // no such values yet
int vtsFillValuesFile(int row, char const* line, int part);  // no such values yet

#endif
