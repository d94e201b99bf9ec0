// zolvm_catalogue.h - the 392 functions of the library as rows that a test can walk: name, shape,
// types, and a call that takes doubles and gives doubles.
#ifndef TESTS_PLATFORM_ZOLVM_CATALOGUE_H
#define TESTS_PLATFORM_ZOLVM_CATALOGUE_H

#include <complex>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "zolvm.h"

using Numbers = std::vector<std::complex<double>>;

// What the last call through a row left behind: exception flags of both units, which are cleared
// before the call but for flagsBefore, the control bits that it changed, and whether it wrote
// behind a destination.
struct Traces {
    unsigned sseFlags;
    unsigned x87Flags;
    unsigned changedControl;
    bool wroteBehind;
};
extern Traces lastTraces;

// Whether calls are made in the modes that the measuring program sets: flush-to-zero, 53 bits and
// an unmasked zero-divide in the x87 unit.
extern bool harnessModes;

// Flags of the vector unit that are up when a call begins.
extern unsigned flagsBefore;

// Whether exceptions of the vector unit, all but inexact, trap during calls.
extern bool trapping;

struct Function {
    std::string name;     // zolsSin_32f_A11
    std::string family;   // Sin
    std::string accuracy; // A11, or empty
    bool single;          // float, not double
    bool complexSource;
    bool complexResult;
    int sources;
    int results;
    bool byValue; // the second source is one number

    // The family that a result belongs to: that of SinCos and Modf tells the first one.
    std::string resultFamily(bool second) const {
        return !second ? family : family == "Modf" ? "Frac" : "Cos";
    }

    // Whether its family is among those of the text, each between blanks.
    bool isOneOf(std::string const& families, std::string const& letter = "") const {
        return families.find(" " + letter + family + " ") != std::string::npos;
    }

    // Calls the function on arrays of its own type, made of the sources. The results of a second
    // destination follow those of the first. The extra elements before the arrays move them off
    // their alignment; inPlace gives the first source as destination, too.
    std::function<ZolStatus(Numbers const& first, Numbers const& second, Numbers& results,
                            int extra, bool inPlace)>
        call;
    // Calls with pointers that may be null: bit i of nulls counts pointers from the left.
    std::function<ZolStatus(unsigned nulls, int length)> callBadly;
};

// A test after which calls are made as usual, on the best path.
class ZolvmFixture : public testing::Test {
protected:
    ~ZolvmFixture() override {
        harnessModes = false;
        flagsBefore = 0;
        trapping = false;
        zolInit();
    }
};

double const infinity = std::numeric_limits<double>::infinity();

std::vector<Function> const& allFunctions();
// Rows of one family and type, without a regard to accuracy.
std::vector<Function> rowsOf(std::string const& family, bool single, bool complexSource);

struct Interval {
    double low;
    double high;
};
// What a function is measured on: real part or number of each source; the imaginary parts have
// intervals of their own.
struct Work {
    Interval first;
    Interval second;
    Interval firstImaginary;
    Interval secondImaginary;
};
Work workOf(Function const& function);

// Numbers for a source of the function, from its Work intervals.
Numbers workNumbers(Function const& function, bool second, std::size_t count);

// Equal, with the sign of a zero; NaNs are all alike.
bool sameNumber(double a, double b);
bool same(std::complex<double> a, std::complex<double> b);

// The masks of the code paths that this machine can run, baseline first.
std::vector<Zol64u> runnablePaths();

#endif
