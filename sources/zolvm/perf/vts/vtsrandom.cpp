// vtsrandom.cpp - the generator and the plain fills.
#include "vts/vtsrandom.h"

#include <cstring>

namespace {

constexpr unsigned modulus = 0x7fffffff;
constexpr unsigned multiplier = 1132489760;

constinit unsigned state = 1; // 1 to modulus - 1

// Fills through a step over the elements, 1 for reals and 2 for one half of complex pairs. The
// span is formed in the element's precision, the rest in double.
template <typename T>
void fillInterval(T* array, int count, int step, T low, T high) {
    T const span = high - low;
    for (int i = 0; i < count; ++i, array += step) {
        *array = static_cast<T>(low + span * vtsDraw());
    }
}

// By bytes: a signalling NaN has to arrive as it is.
template <typename T, typename Bits>
void fillFixed(T* array, int count, int step, Bits bits) {
    static_assert(sizeof(T) == sizeof(Bits));
    for (int i = 0; i < count; ++i, array += step) {
        memcpy(array, &bits, sizeof(bits));
    }
}

// Start of the half that part names.
template <typename T>
T* half(T* array, int part) {
    return part == 2 ? array + 1 : array;
}

} // namespace

void MCG31m1Init(unsigned seed) {
    state = seed % modulus;
    if (state == 0) {
        state = 1;
    }
}

unsigned iBrngMCG31m1() {
    unsigned const drawn = state;
    state = static_cast<unsigned>(static_cast<unsigned long long>(multiplier) * drawn % modulus);
    return drawn;
}

void vtssFillInterval(float* array, int count, float low, float high) {
    fillInterval(array, count, 1, low, high);
}

void vtsdFillInterval(double* array, int count, double low, double high) {
    fillInterval(array, count, 1, low, high);
}

void vtscFillInterval(float* array, int count, float low, float high, int part) {
    fillInterval(half(array, part), count, 2, low, high);
}

void vtszFillInterval(double* array, int count, double low, double high, int part) {
    fillInterval(half(array, part), count, 2, low, high);
}

// The draw goes through single precision and the divisor is another one, on purpose: the values
// of the scalar parameters are known by this map.
void vtsUniformFloat(float* array, int count, float low, float high) {
    float const span = high - low;
    for (int i = 0; i < count; ++i) {
        double const draw = static_cast<float>(iBrngMCG31m1()) / 2147483649.0;
        array[i] = static_cast<float>(low + span * draw);
    }
}

void vtsUniformDouble(double* array, int count, double low, double high) {
    vtsdFillInterval(array, count, low, high);
}

void vtsiFillFixed(int* array, int count, int value) {
    for (int i = 0; i < count; ++i) {
        array[i] = value;
    }
}

void vtssFillFixed(float* array, int count, unsigned bits) { fillFixed(array, count, 1, bits); }

void vtsdFillFixed(double* array, int count, unsigned long long bits) {
    fillFixed(array, count, 1, bits);
}

void vtscFillFixed(float* array, int count, unsigned bits, int part) {
    fillFixed(half(array, part), count, 2, bits);
}

void vtszFillFixed(double* array, int count, unsigned long long bits, int part) {
    fillFixed(half(array, part), count, 2, bits);
}
