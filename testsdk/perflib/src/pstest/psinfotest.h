// psinfotest.h - tests that print information instead of measuring.
#ifndef PSTEST_PSINFOTEST_H
#define PSTEST_PSINFOTEST_H

#include "pstest/pstest.h"

// Runs like any test, and prints in place of the walk over parameter sets.
class __psInfoTest : public psTest {
public:
    __psInfoTest(psString funcName, psString testName, psString note, psString fileName);
    void loopData() override;
    void outputRegInfo() override {}
    virtual void printInformation() {}
};

class __psHostTest : public __psInfoTest {
public:
    using __psInfoTest::__psInfoTest;
    void printInformation() override;
};

class __psOSTest : public __psInfoTest {
public:
    using __psInfoTest::__psInfoTest;
    void printInformation() override;
};

#endif
