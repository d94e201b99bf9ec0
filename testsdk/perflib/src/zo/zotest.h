// zotest.h - a test that knows the library: the parsed name of its function, its status
// codes and its memory dump.
#ifndef ZO_ZOTEST_H
#define ZO_ZOTEST_H

#include "pstest/pstest.h"
#include "zo/zofunc.h"
#include "zolcore.h"

class zoVector;

class zoTest : public psTest {
public:
    zoTest(psFuncOld body, psString funcName, psString fileName, psString bodyName);
    zoTest(psFuncCall funcCall, psFuncCall funcInit, psFuncLoop funcLoop, psFuncStat funcStat,
           psString funcName, psString fileName, psString infoText);

    bool tobeRun(psConditions& conditions) override;
    psResult run() override;
    int compareFunc(psTest const* other) const override;
    void funcToCstrm() override; // three cells: prefix and base, types, descriptor
    bool isFloatFunction() override;
    int printAllMemoryBlocks(psString title) override; // number of blocks, at the data level
    psString regInfo() override;

    // Pieces of that dump.
    virtual void printFirstDebugLine(psString title);
    virtual void printLastDebugLine(psString title);
    virtual void printFirstBlockLine(int count, psObject* owner, int size);
    virtual void printLastBlockLine();
    virtual void printVectorBlock(psObject* owner);
    virtual void printByteBlock(void const* data, int size);

    using psTest::regCacheParm;
    // The same for a size in two dimensions, and the image, if any, whose bytes decide.
    void regCacheParm(psIterator<ZoliSize>& parm, psObject* image, psSetNewValue setNewValue);
    void regCacheParm(psIterator<ZoliSize>& parm, psSetNewValue setNewValue);

    static psString unitStr(int index); // what clocks are per; blank outside the table

    // 1 for status 0; 9 for an error, 5 for a warning, both told and raised into the test's result.
    static psResult checkFuncStatus(ZolStatus status, psString name);
    static psResult checkStatus(ZolStatus status, psString name);
    psResult checkStatus(ZolStatus status) const;

    zoFunc m_func;

    static bool m_checkErrorsOnly; // silences warnings; cleared at each run
};

#endif
