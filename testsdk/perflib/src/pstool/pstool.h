// pstool.h - the measuring tool: turns a callable into clocks per call, and says how far
// the number can be trusted.
#ifndef PSTOOL_PSTOOL_H
#define PSTOOL_PSTOOL_H

#include "psbase/psstring.h"
#include "pscpu/pscputicker.h"
#include "pstool/pspairing.h"
#include "pstool/psresult.h"
#include <ctime>

class psTool;

// What a test may give to be measured: a loop that reads the counter around so many calls; one that
// makes at least *calls calls in at least *clocks and answers with what it made and read; a bare
// call, which gives the library's status; and the tool form, which brackets its calls by start()
// and stop() of the tool that it is given.
using psFuncLoop = psResult (*)(int loops, long long* clocks);
using psFuncStat = psResult (*)(int* calls, long long* clocks);
using psFuncCall = int (*)();
using psFuncOld = psResult (*)(psTool& tool, int loops);

// A choice of method, and the results of the measurement that was made by it last.
class psTool {
public:
    // Loop is called Manual to the user, Best Iterative.
    enum Method { Auto = 0, Loop = 1, Stat = 2, Best = 3 };

    // What a method takes where nobody chose: Auto and Best the same but for the clocks. The
    // dialogue offers those of Auto for Best, and fewer calls for Stat.
    static constexpr int defaultStartLoops = 1;
    static constexpr int defaultMaxLoops = 2048;
    static constexpr long long autoMinClocks = 10000;
    static constexpr long long bestMinClocks = 100;
    static constexpr int defaultLoops = 10;
    static constexpr int defaultCalls = 12;
    static constexpr int offeredCalls = 3;
    static constexpr long long defaultMaxClocks = 10000;

    psTool();
    virtual ~psTool() = default;
    psTool(psTool const&) = default;
    psTool& operator=(psTool const&) = default;

    // Choice of the method.
    void setMethodAuto();
    void setMethodLoop(int loops);
    void setMethodStat(int minCalls, long long maxClocks);
    void setMethodBest(int start, int max, long long minClocks);
    bool getMethodAuto() const;
    bool getMethodLoop(int& loops) const; // each fills its targets only if the method is chosen
    bool getMethodStat(int& minCalls, long long& maxClocks) const;
    bool getMethodBest(int& start, int& max, long long& minClocks) const;
    static void getAutoParameters(int& start, int& max, long long& minClocks);
    void setLoopFactor(int factor); // the Auto method's constants, scaled by a power of two

    void setFuncTicks(double ticks) { m_funcTicks = ticks; }
    void reset(); // the results, not the choices

    // Measures by the chosen method. The answer is in m_funcTicks, m_actualAccuracy, m_comment.
    psResult timing(psFuncLoop funcLoop, psFuncStat funcStat, psFuncCall funcCall,
                    psFuncCall funcInit);
    psResult timing(psFuncOld funcOld);

    // One call of a timing function of the tool form, whose readings g_turns takes.
    void takeTurns(psFuncOld funcOld, int loops);

    // Bracket the calls of a timing function of the tool form. Between the two stands nothing but
    // the calls: both must stay inline and a counter read each.
    void start() { m_numClocks = static_cast<long long>(psCpuTicker::rdtsc()); }
    void stop() { m_numClocks = static_cast<long long>(psCpuTicker::rdtsc()) - m_numClocks; }

    // Readings in turns with another library's: the timing function warms up by so many calls ahead
    // of each reading, and takes one more while there is a next turn.
    int warmUpCalls() {
        return g_turns == nullptr ? psPairing::firstCalls : g_turns->warmUpCalls();
    }
    bool nextTurn() { return g_turns != nullptr && g_turns->next(m_numClocks); }

    // One single measurement; all methods but the statistic one go through it.
    void runTimFunc(int loops, double* funcClocks, bool forceLoop);
    void runTimFuncStat(long long clocks, int* calls, double* funcClocks);
    psResult timCall_Loop(int loops, long long* clocks, bool reset);
    psResult timCall_Stat(int* calls, long long* clocks, bool reset);

    // The methods.
    void autoLoopTiming();
    void bestTiming(int startLoops, int maxLoops, long long minClocks);
    psResult startIterations(int loops, long long minClocks);
    psResult continueIterations(int startLoops, int maxLoops);
    psResult repeatTiming(int loops, int count); // the least of count readings
    void customLoopTiming();
    void statisticTiming();
    void pairedTiming(); // in place of the Auto method where there are two libraries

    void updateResult(psResult result); // keeps the worst and its text
    void ctrlStart();                   // both units made ready for the measured calls
    void ctrlStop();
    static psString clockStr(long long clocks);
    static psString getAccuracyStr(double accuracy);
    static void writeInfo(psString& text); // at MSG_INFO; empties text in any case
    void writeError();

    psResult m_result = psResUndefined; // worst of this measurement
    double m_funcTicks = 0.0;           // clocks per loop or call, before the test's divisor
    int m_curLoops = 0;                 // loop count of the last measurement
    double m_accuracy = 0.05;           // wanted, as a fraction
    int m_method = Auto;
    int m_numLoops = defaultLoops;            // method Loop
    int m_startLoops = defaultStartLoops;     // method Best
    int m_maxLoops = defaultMaxLoops;         // method Best
    bool m_useCalls = false;                  // the Stat form of call in the Auto method
    bool m_setAndUse = false;                 // key -SU: reset all vectors before each call
    long long m_minClocks = bestMinClocks;    // method Best
    int m_minCalls = defaultCalls;            // method Stat
    long long m_maxClocks = defaultMaxClocks; // method Stat; a lower bound in spite of its name
    bool m_initAndCheck = false;   // m_funcInit ahead of each measurement, watch the control status
    bool m_checkStatus = false;    // working copy of m_initAndCheck
    psString m_resultText;         // text of the worst result, or the actual accuracy
    psString m_comment;            // for the table's comment column
    psPairResult m_pairResult;     // of paired readings; no pairs without
    long long m_numClocks = 0;     // of the last measurement; between start and stop the start
    double m_actualAccuracy = 1.0; // spread of the last measurements, as a fraction
    int m_factorStart = 0;         // override of the Auto method's start loops; 0: none
    int m_factorMax = 0;           // override of its maximum
    time_t m_resetTime;
    time_t m_createTime;
    psFuncLoop m_funcLoop = nullptr;
    psFuncStat m_funcStat = nullptr;
    psFuncCall m_funcCall = nullptr;
    psFuncCall m_funcInit = nullptr;

    static int m_priority; // during measuring: 0 leave alone, 1 high, 2 normal, 3 low
    // Turns a library status into a result; null: every status counts as good.
    static psResult (*m_pCheckStatus)(int status);

private:
    // Two stages of timing. A fixed method that none of the callables can serve gives way to the
    // other one.
    void leaveUnservedMethod();
    void runMethod();

    // The reading of runTimFunc, in the form that makes the loops or that counts calls, and its two
    // branches: with the data reset, or with control status and priority looked after.
    void takeReading(bool useLoop, int loops, double* funcClocks);
    psResult callSetAndUse(bool useLoop, int* loops);
    psResult callWatched(bool useLoop, int* loops);
    psResult callLoopForm(int loops);
    psResult callStatForm(int* loops);

    // The stages of bestTiming; a failure code ends the method.
    psResult priorMeasurement(int loops, int& maxLoops, long long minClocks);
    psResult iterationMeasurement(int maxLoops);
    psResult raiseLoops(int startLoops, int maxLoops); // continueIterations, told
    bool isSettled();
    void avoidBadStatus();
    // The stages of pairedTiming; false when a side is gone.
    bool readSeries(int loops, int pairs);
    bool findPairLoops();
    void runTraced(double* funcClocks); // at m_curLoops
};

extern psTool g_tool;      // what the user chose
extern psString info;      // text of writeError
extern psFuncOld _funcOld; // the tool form is reached through these two
extern psTool* _pTool;

// The control status as the Auto method asks for it: whether a record is bad, and the line of it.
bool badCtrlStatus();
void printBadCtrlStatus(bool enabled);

#endif
