// psnorvocputest.h - the processor report, the first test of every run.
#ifndef PSTEST_PSNORVOCPUTEST_H
#define PSTEST_PSNORVOCPUTEST_H

#include "pscpu/cpucache.h"
#include "pstest/psinfotest.h"

class __psNorvoCpuTest : public __psInfoTest {
public:
    using __psInfoTest::__psInfoTest;
    void printInformation() override;

    // The pieces of the report, from given register values.
    static psString heading(psString const& vendor); // warns of another maker's processor
    static psString signature(CPUID const& leaf1);
    // Without leaf 4 the number of cores is left out; where the leaf is there and empty, it is 1.
    static psString multiThreading(cpuidReader read);
    static psString caches(cpuidReader read);
    // One cache; empty when the record is of type 0, which ends the caches.
    static psString cacheParms(int subleaf, CPUID const& leaf4);
    static psString extendedL2(CPUID const& leaf);
    static psString registerText(CPUID const& leaf, int const* order, int count);

    // A row of the table of features. Features of 0 begin the table; a flag of 0 ends it with those
    // features that have had no row.
    static void printMaskFlag(unsigned long long features, unsigned long long enabled,
                              unsigned long long flag, char const* name, char const* text);
    static void printMaskFlags(unsigned long long features, unsigned long long enabled);
};

#endif
