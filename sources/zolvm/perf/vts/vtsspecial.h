// vtsspecial.h - the dictionary of the special lines: names of constants and of classes of
// numbers, error words and exception words.
#ifndef VTS_VTSSPECIAL_H
#define VTS_VTSSPECIAL_H

struct vtsComplexBits32 {
    unsigned re;
    unsigned im;
};
struct vtsComplexBits64 {
    unsigned long long re;
    unsigned long long im;
};

// Bits of the named value, for a class a fresh member. Each call draws at least once, whatever
// the name. An unknown name is warned of and gives zero.
unsigned vtssGetSpecialValue(char const* name);
unsigned long long vtsdGetSpecialValue(char const* name);

// Names of two halves joined by "_i", and "ZERO". Any other name gives zeros, without a warning.
vtsComplexBits32 vtscGetSpecialValue(char const* name);
vtsComplexBits64 vtszGetSpecialValue(char const* name);

int vtssGetErrCode(char const* word); // 0 for an unknown word
int vtssGetExcCode(char const* word);

// Each element is looked up anew. The complex forms fill both halves, whatever part.
void vtssFillSpecial(float* array, int count, char const* name);
void vtsdFillSpecial(double* array, int count, char const* name);
void vtscFillSpecial(float* array, int count, char const* name, int part);
void vtszFillSpecial(double* array, int count, char const* name, int part);

#endif
