// pstest.h - one measured function variant: what is needed to call it, its parameters,
// its measuring tool and its last result. Derived tests supply data and calls.
#ifndef PSTEST_PSTEST_H
#define PSTEST_PSTEST_H

#include "psmemory/psobject.h"
#include "psparameter/pscacheiterator.h"
#include "psstream/pstrace.h"
#include "pstool/pstool.h"
#include <ctime>

class psConditions;
class psException;

// "name/note/macro" cut at its first two slashes.
struct psTestInfo {
    explicit psTestInfo(psString text);
    psString m_name;
    psString m_note;  // description in the test's title
    psString m_macro; // registration macro
};

// A run goes beginTest, canStart, then canContinue, initData, runTiming, outputResult and flushData
// for each parameter set, flushStart, endTest. A derived test overrides what it needs of these.
class psTest {
public:
    // Function name, source file, info text.
    psTest(psFuncOld funcOld, psString funcName, psString fileName, psString infoText);
    psTest(psFuncLoop funcLoop, psFuncStat funcStat, psString funcName, psString fileName,
           psString infoText);
    psTest(psFuncCall funcCall, psFuncCall funcInit, psFuncLoop funcLoop, psFuncStat funcStat,
           psString funcName, psString fileName, psString infoText);
    psTest(psTest const&) = delete;
    psTest& operator=(psTest const&) = delete;
    virtual ~psTest();

    virtual bool tobeRun(psConditions& conditions);
    virtual psResult run();
    virtual int compareFunc(psTest const* other) const; // order of the test list
    virtual void putTableResult_Deprecated(psResult result);
    virtual bool canStart() { return true; }
    virtual void flushStart() {}
    virtual bool canContinue(); // sets the next parameter set; the last parameter turns fastest
    virtual bool initData() { return true; }
    virtual void flushData() {}
    virtual psResult runTiming();
    virtual double getFlops() { return -1.0; }  // floating-point operations per call; -1: none
    virtual double getDivisor() { return 1.0; } // elements of one call
    virtual psString getUnit() { return " "; }  // what the clocks are per
    virtual void funcToCstrm();
    virtual void parmsFromIstrm();
    virtual void parmsToOstrm();
    virtual void parmsToCstrm();
    virtual void parmsNameToCstrm();
    virtual void resultToCstrm(psResult result);
    virtual void constToOstrm() {}
    virtual void beginTest();
    virtual void endTest() {}
    virtual psString getComment();
    virtual bool isFloatFunction();
    virtual bool isHotLine();
    virtual void initSettings();
    virtual int printAllMemoryBlocks(psString title);
    virtual psString formatClocks(double clocks);
    virtual psString regInfo();
    virtual void putTableParms();
    virtual void putTableResult(psResult result);
    virtual void putTextParms();
    virtual void putTextParms(MessageLevel level);
    virtual void loopData(); // all parameter sets, one after the other
    virtual void outputResult(psResult result);
    virtual void outputConst();
    virtual void outputRegInfo();
    virtual void putTextResult(psResult result);

    // A test vector. A negative align asks for a multiple of the session's misalignment; a null
    // owner is an ordinary buffer. Null when there is no memory.
    static void* allocate(int size, int align, void* owner = nullptr);
    static void deallocate(void* vector);
    static int resetAllVectors();
    static int reserveAllVectors();

    // Adds a parameter; under -C the first such parameter of a test is steered by the cache size.
    void regCacheParm(psStepIterator<int>& parm, psObject* object, psSetNewValue setNewValue);
    void regCacheParm(psIterator<int>& parm, psObject* object, psSetNewValue setNewValue);
    void setTimingResult(double ticks, psString comment); // for a test that measures by itself

    double performance(bool flops); // clocks per element, or MFlops
    psString perfString(bool flops);
    psString testResultString();
    psString pairString(); // of paired readings, as "base=2.95 ratio=1.0312 lo=..."; else empty
    void putTextError(psResult result);
    void putTableName();
    void putTableNameLine();

    bool setDeprecatedFlag(bool on);
    int setIniSection(psString name); // 0: not to be run
    void startAndStop();              // a dry start, for the choice of common parameters
    int checkCtrlStatus();            // 3, told, if a status is bad; clears it
    static void printCtrlStatus(bool bad87, bool badSSX);
    static void clearCtrlStatus();
    static void initCtrlStatus();
    static bool badCtrlStatus(bool& bad87, bool& badSSX);

    bool m_deprecated = false; // a line of deprecated values is being written
    time_t m_startTime;
    time_t m_stopTime;
    psString m_funcName;
    psString m_fileName; // without directory
    psTestInfo m_info;
    psTool m_tool; // overwritten from g_tool at every run
    psResult m_result = psResUndefined;
    psFuncLoop m_funcLoop = nullptr;
    psFuncStat m_funcStat = nullptr;
    psFuncCall m_funcCall = nullptr;
    psFuncCall m_funcInit = nullptr;
    psFuncOld m_funcOld = nullptr;
    bool m_firstData = true; // until the first parameter set has been taken
    bool m_bad87 = false;
    bool m_badSSX = false;
    psList<psParameter*> m_parms;               // not owned, but for a cache iterator
    psCacheIterator* m_cacheIterator = nullptr; // stands in m_parms too
    bool m_cacheRetry = false;

    static psResult m_currentResult; // worst so far in the test now running
    static int m_numParmsColm;       // leading table columns: function and parameters
    static int m_numResultColm;      // result columns of the table
    static int m_hot;                // 0 no -H, 1 column 'Interest', 2 hot functions only
    static bool m_pressing;          // -P
    static bool m_cache;             // -C
    static int m_vectorNum;          // vectors allocated for the present data set
    static int m_vectorShift;        // shift that the next vector gets

protected:
    // Adds the parameter, or, when it is not null, the iterator that wraps it and is owned from now
    // on.
    void regParm(psParameter& parm, psCacheIterator* wrapped);

private:
    // Runs the body with a landing place for signals, which become a psException. The place is gone
    // behind the body.
    bool callGuarded(bool (psTest::*body)());

    // The bodies, out of line: the frame of the landing place shall hold callGuarded's own plain
    // data alone, so that a jump finds in it what setjmp saw.
    [[gnu::noinline]] bool runBody(); // false: not to be run
    [[gnu::noinline]] bool endBody();
    [[gnu::noinline]] bool startAndStopBody();
    void takeFailure(psException const& failure);
    void outputReport();
    static void useNameTable(bool on); // lets g_cstrm write to the targets of g_qstrm
    void outputTitle();
    void startAndMeasure();
    bool retryCacheSize();
    void measureData();
    void putTableLine(psResult result);
    char const* usedCallable() const;

    bool m_summaryBegun = false; // the title stands in the row of the summary
    psTrace::State m_traceState; // open calls at the start of loopData; here, as a jump may end it
};

extern psList<psParameter*>* g_pParmList; // common parameters; null until one is registered

// Padded with blanks to |width|: at the right end for a negative width, else at the left.
psString sFormat(psString text, int width);
psString sFormat(double value, int width);

#endif
