// zolvm_reference.h - the functions of the library in many digits, to measure its results by.
#ifndef TESTS_PLATFORM_ZOLVM_REFERENCE_H
#define TESTS_PLATFORM_ZOLVM_REFERENCE_H

#include <complex>
#include <string>

// A real number as the nearest double and the rest.
struct Digits {
    double high;
    double low;
};
struct Reference {
    Digits re;
    Digits im;
};

// The value of a family at z, or at z and w. The second result of SinCos is called Cos. The
// inverse error functions are solved for, from a start near the value.
Reference reference(std::string const& family, bool complexSource, std::complex<double> z,
                    std::complex<double> w, double start);

#endif
