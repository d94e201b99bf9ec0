// zolvm_reference.h - the functions of the library in many digits, to measure its results by.
#ifndef TESTS_PLATFORM_ZOLVM_REFERENCE_H
#define TESTS_PLATFORM_ZOLVM_REFERENCE_H

#include <complex>
#include <string>

#include "zolvm_catalogue.h"

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
// inverse error functions are solved for.
Reference reference(std::string const& family, bool complexSource, std::complex<double> z,
                    std::complex<double> w);

// Error in units of the last place: of the number, or of the norm of a complex result. That of the
// enhanced-performance forms is relative, the unit being that of 1.
double errorOf(std::complex<double> got, Reference const& wanted, Function const& function);

// What the suffix promises, in units of the last place.
double boundOf(Function const& function);

#endif
