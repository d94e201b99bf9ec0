// vtsrandom.h - the suite's random generator, a multiplicative congruential one, and the
// uniform and constant fills of operand arrays.
#ifndef VTS_VTSRANDOM_H
#define VTS_VTSRANDOM_H

constexpr double vtsRandomSpan = 2147483647.0; // the modulus: draws lie in 1 to vtsRandomSpan - 1

void MCG31m1Init(unsigned seed);
unsigned iBrngMCG31m1(); // the state, which only then advances

inline double vtsDraw() { return iBrngMCG31m1() / vtsRandomSpan; }

// Complex elements are interleaved pairs; part says which halves: 1 the real, 2 the imaginary.
// Bounds may run downward.
void vtssFillInterval(float* array, int count, float low, float high);
void vtsdFillInterval(double* array, int count, double low, double high);
void vtscFillInterval(float* array, int count, float low, float high, int part);
void vtszFillInterval(double* array, int count, double low, double high, int part);
void vtsUniformFloat(float* array, int count, float low, float high); // maps in a way of its own
void vtsUniformDouble(double* array, int count, double low, double high);

void vtsiFillFixed(int* array, int count, int value);
void vtssFillFixed(float* array, int count, unsigned bits);
void vtsdFillFixed(double* array, int count, unsigned long long bits);
void vtscFillFixed(float* array, int count, unsigned bits, int part);
void vtszFillFixed(double* array, int count, unsigned long long bits, int part);

#endif
