// pstestlist.cpp - sorting, running and counting of all tests.
#include "pstest/pstestlist.h"

namespace {

constexpr int numBins = 16; // bin k holds a sorted run of 2^k tests, the last one all beyond

void append(psList<psTest*>& list, psTest* test) { list.insert(list.end(), test); }

// Merges the run later into earlier. Of two equal tests that of the earlier run goes first.
void mergeInto(psList<psTest*>& earlier, psList<psTest*>& later) {
    auto place = earlier.begin();
    for (psTest*& test : later) {
        while (place != earlier.end() && !aless(test, *place)) {
            ++place;
        }
        earlier.insert(place, test);
    }
    later.clear();
}

bool uses(psTest const& test, psParameter const* candidate) {
    for (psParameter const* parm : test.m_parms) {
        bool const wrapped = parm == test.m_cacheIterator;
        if ((wrapped ? test.m_cacheIterator->cacheParm() : parm) == candidate) {
            return true;
        }
    }
    return false;
}

} // namespace

constinit psTestList* pTestList = nullptr;
psTest* psTestList::m_pCurrentTest = nullptr;
psString psTestList::m_startFunc;

psTestList::psTestList() : m_startTime(time(nullptr)), m_stopTime(m_startTime) {}

void psTestList::plus(psResult result) {
    ++m_numTests;
    if (result < 0 || result >= psNumResults) {
        return; // no counter of its own
    }
    ++m_numResult[result];
    if (result > psResOk && result < psResWarning) {
        ++m_numResult[psResWarning];
    }
    if (result > psResWarning && result < psResFail) {
        ++m_numResult[psResFail];
    }
}

// Merge sort from the bottom up: each test goes through the bins like a carry.
void psTestList::sortFunc() {
    psList<psTest*> bins[numBins];
    for (psTest* test : *this) {
        psList<psTest*> carry;
        append(carry, test);
        int bin = 0;
        while (bin < numBins - 1 && !bins[bin].empty()) {
            mergeInto(bins[bin], carry);
            carry.swap(bins[bin]);
            ++bin;
        }
        mergeInto(bins[bin], carry);
    }
    clear();
    for (int bin = numBins - 1; bin >= 0; --bin) { // the highest holds the earliest tests
        mergeInto(*this, bins[bin]);
    }
}

// Those that stand in front already stay where they are, so all keep their relative order.
void psTestList::startWithCpuTest() {
    auto place = begin();
    while (place != end() && (*place)->m_funcName[0] == '_') {
        ++place;
    }
    for (auto test = place; test != end();) {
        if ((*test)->m_funcName[0] == '_') {
            insert(place, *test);
            test = erase(test);
        } else {
            ++test;
        }
    }
}

bool psTestList::runTests(psConditions& conditions) {
    for (psTest* test : *this) {
        bool const skipped = !m_startFunc.empty() && !test->m_funcName.contains(m_startFunc);
        if (!test->tobeRun(conditions) || skipped) {
            continue;
        }
        m_startFunc = "";
        m_pCurrentTest = test;
        psResult const result = test->run();
        // A test that its section refused answers 0 and keeps 1: it was not there.
        if (result != psResUndefined || test->m_result != psResOk) {
            plus(result);
        }
        m_pCurrentTest = nullptr;
    }
    return m_numResult[psResFail] != 0;
}

// m_toRead is the mark of a parameter that some selected test uses.
void psTestList::selectCommonParms(psConditions& conditions, psList<psParameter*>& commonParms) {
    for (psParameter* candidate : commonParms) {
        candidate->m_toRead = false;
    }
    for (psTest* test : *this) {
        if (!test->tobeRun(conditions)) {
            continue;
        }
        test->startAndStop();
        bool allMarked = true;
        for (psParameter* candidate : commonParms) {
            if (!candidate->m_toRead) {
                allMarked = false;
                candidate->m_toRead = uses(*test, candidate);
            }
        }
        delete test->m_cacheIterator;
        test->m_cacheIterator = nullptr;
        test->m_parms.clear();
        if (allMarked) {
            break;
        }
    }
    for (auto place = commonParms.begin(); place != commonParms.end();) {
        if ((*place)->m_toRead) {
            ++place;
        } else {
            place = commonParms.erase(place);
        }
    }
}

bool aless(psTest*& a, psTest*& b) { return a != nullptr && b != nullptr && a->compareFunc(b) < 0; }

int psRegTest(psTest* test) {
    if (pTestList == nullptr) {
        pTestList = new psTestList;
    }
    append(*pTestList, test);
    return 1;
}
