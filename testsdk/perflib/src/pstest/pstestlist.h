// pstestlist.h - all registered tests: their order, their run, and the count of results.
#ifndef PSTEST_PSTESTLIST_H
#define PSTEST_PSTESTLIST_H

#include "pstest/psconditions.h"

// The tests, not owned, with the run's times and totals.
class psTestList : public psList<psTest*> {
public:
    psTestList();

    void plus(psResult result);              // result has to be a valid code
    void sortFunc();                         // stable, by compareFunc
    void startWithCpuTest();                 // names that begin with "_" to the front
    bool runTests(psConditions& conditions); // true if some test failed

    // Keeps the parameters that selected tests use; finds them by starting each test.
    void selectCommonParms(psConditions& conditions, psList<psParameter*>& commonParms);

    time_t m_startTime;
    time_t m_stopTime;
    int m_numTests = 0;
    int m_numResult[psNumResults] = {}; // 6 and 11 also count all warnings and all failures

    static psTest* m_pCurrentTest; // null between tests
    static psString m_startFunc;   // argument of -F; emptied at the first test run
};

// Whether a goes ahead of b; false where one is null.
bool aless(psTest*& a, psTest*& b);

// Stores the test at the end of the list, which the first call makes. Returns 1.
int psRegTest(psTest* test);

extern psTestList* pTestList;

#endif
