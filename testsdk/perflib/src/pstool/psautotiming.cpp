// psautotiming.cpp - the Auto method: finds the loop count that gives enough clocks,
// raises it until two readings agree, and takes the least of a few at the last count.
#include "pstool/pstool.h"

#include <algorithm>
#include <cmath>

#include "psstream/psostream.h"
#include "psstream/pstraced.h"
#include "pstool/psctrl.h"

namespace {

constexpr int zeroReadingFactor = 10;  // loops, after a reading without clocks
constexpr int iterationStep = 4;       // loops, from one stage to the next
constexpr double earlyAccuracy = 0.01; // good enough to leave out the simple measurements
constexpr int simpleMeasurements = 3;
constexpr int avoidingMeasurements = 6;   // after a bad control status
constexpr double avoidingTolerance = 2.0; // times the accuracy asked for

// The method's lines until the next writeInfo. Not a local: a fault in measured code leaves by a
// jump, which runs no destructor, so no string may live across a measurement.
psString story;

// One line of the story, put together only if someone will see it.
template <typename T>
void tell(char const* label, T const& value) {
    if (g_ostrm.admits(MSG_INFO)) {
        story << label << value << "\n";
    }
}

void tellCount(bool useCalls, int loops) {
    tell(useCalls ? "        numCalls   = " : "        numLoops   = ", loops);
}

void tellLine(char const* line) { tell(line, ""); }

// Loop counts are 32-bit and may wrap.
int timesLoops(int loops, int factor) {
    return static_cast<int>(static_cast<unsigned>(loops) * static_cast<unsigned>(factor));
}

// Low half of target / clocks.
unsigned lowQuotient(long long target, long long clocks) {
    if (clocks == -1) { // the one quotient that can overflow
        return 0U - static_cast<unsigned>(target);
    }
    return static_cast<unsigned>(target / clocks);
}

// What takes a reading of clocks to the target: the least power of two that is not below their
// quotient, 0 if its low half is 0.
int loopMultiplier(long long target, long long clocks) {
    if (clocks == 0) { // no reading to go by
        return zeroReadingFactor;
    }
    unsigned const quotient = lowQuotient(target, clocks);
    if (quotient == 0) {
        return 0;
    }
    unsigned power = 1U << 30;
    while (power > quotient) {
        power >>= 1;
    }
    return static_cast<int>(power == quotient ? power : power << 1);
}

} // namespace

void psTool::autoLoopTiming() {
    int start;
    int max;
    long long minClocks;
    getAutoParameters(start, max, minClocks);
    if (m_factorStart != 0) {
        start = m_factorStart;
    }
    if (m_factorMax != 0) {
        max = m_factorMax;
    }
    bestTiming(start, max, minClocks);
}

void psTool::bestTiming(int startLoops, int maxLoops, long long minClocks) {
    m_checkStatus = m_initAndCheck;
    info.assign("");
    story.assign("");
    if (m_funcStat == nullptr && m_funcCall == nullptr) {
        m_useCalls = false;
    }
    tellLine("    Auto method: start");
    tell("        minClocks  = ", clockStr(minClocks));
    writeInfo(story);

    psResult result = priorMeasurement(startLoops, maxLoops, minClocks);
    if (!isFailure(result)) {
        result = iterationMeasurement(maxLoops);
    }
    if (isFailure(result)) {
        m_result = result;
        tellLine("    Auto method: exit");
        writeInfo(story);
        if (result == psResAccurFail) {
            writeError();
        }
        return;
    }

    m_comment << (m_useCalls ? "nCalls=" : "nLps=") << m_curLoops;
    if (m_actualAccuracy > m_accuracy) {
        psString const reached = getAccuracyStr(m_actualAccuracy);
        m_comment << " acc=" << reached;
        if (m_result <= psResOk) {
            m_result = psResAccurWrn;
            m_resultText << "actual accuracy = " << reached;
        }
    }
    tellLine("    Auto method: stop");
    writeInfo(story);
}

// maxLoops grows with the loop count, so that it counts from the corrected start. One correction
// is made: the reading that follows is taken as it is.
psResult psTool::priorMeasurement(int loops, int& maxLoops, long long minClocks) {
    long long const target =
        static_cast<long long>(2ULL * static_cast<unsigned long long>(minClocks));
    for (bool retried = false;; retried = true) {
        tellLine("    Prior Measurement: ");
        tellCount(m_useCalls, loops);
        writeInfo(story);
        psResult const result = startIterations(loops, minClocks);
        tell("        numClocks  = ", m_numClocks);
        tell("        funcClocks = ", m_funcTicks);
        tell("        result     = ", resultText(result));
        writeInfo(story);

        bool const unseen = result == psResAccurFail;
        bool const tooShort = result == psResAccurWrn;
        if (retried || (!unseen && !tooShort)) {
            return result;
        }
        int const factor = unseen ? zeroReadingFactor : loopMultiplier(target, m_numClocks);
        loops = timesLoops(loops, factor);
        maxLoops = timesLoops(maxLoops, factor);
    }
}

// From four times the count on it is raised until two readings agree, and the last one is settled;
// where it does not settle, from four times that count on again, up to the maximum.
psResult psTool::iterationMeasurement(int maxLoops) {
    int next = timesLoops(m_curLoops, iterationStep);
    while (maxLoops > m_curLoops) {
        psResult const result = raiseLoops(next, maxLoops);
        if (result == psResAccurFail) {
            if (next > 0) { // a reading without clocks
                return result;
            }
            // Only where the multiplication has wrapped, from 536870912 loops on.
            next = timesLoops(next, zeroReadingFactor);
            maxLoops = timesLoops(maxLoops, zeroReadingFactor);
            continue;
        }
        if (result == psResBadStsWrn) {
            avoidBadStatus();
            break;
        }
        if (isSettled()) {
            break;
        }
        next = timesLoops(m_curLoops, iterationStep);
    }
    return psResOk;
}

psResult psTool::raiseLoops(int startLoops, int maxLoops) {
    tellLine("    Iteration Measurement: ");
    tell("        startLoops = ", startLoops);
    tell("        maxLoops   = ", maxLoops);
    writeInfo(story);
    psResult const result = continueIterations(startLoops, maxLoops);
    tell("        stopLoops  = ", m_curLoops);
    tell("        stopClocks = ", m_numClocks);
    tell("        accuracy   = ", getAccuracyStr(m_actualAccuracy));
    tell("        funcClocks = ", m_funcTicks);
    tell("        result     = ", resultText(result));
    writeInfo(story);
    return result;
}

// The two last readings are near each other, or a few more at their count are.
bool psTool::isSettled() {
    if (m_actualAccuracy <= earlyAccuracy) {
        return true;
    }
    tellLine("    Simple Measurements: ");
    writeInfo(story);
    return repeatTiming(m_curLoops, simpleMeasurements) != psResAccurWrn;
}

// More loops raised a flag, and the count is back at the last good one: see if it stays good.
void psTool::avoidBadStatus() {
    double const tolerance = avoidingTolerance * m_accuracy;
    printBadCtrlStatus(m_checkStatus);
    g_ostrm << MSG_WARN << "-- Attempting to avoid bad control status\n" << MSG_RESTORE;
    tellLine("    Reduce loops to avoid bad ctrl status.");
    tellLine("    Simple Measurements: ");
    writeInfo(story);
    psClearCtrlStatus();
    psResult const result = repeatTiming(m_curLoops, avoidingMeasurements);
    if (result != psResBadStsWrn && tolerance >= m_actualAccuracy) {
        g_ostrm << MSG_WARN << "-- Attempt is successful\n" << MSG_RESTORE;
        return;
    }
    tellLine("    Cannot avoid bad ctrl status");
    writeInfo(story);
    g_ostrm << MSG_WARN << "-- Attempt fails: " << MSG_RESTORE;
    g_ostrm << MSG_WARN
            << (result == psResBadStsWrn ? "Bad control status repeats.\n"
                                         : "Accuracy is unsatisfactory.\n")
            << MSG_RESTORE;
}

psResult psTool::startIterations(int loops, long long minClocks) {
    m_curLoops = loops;
    runTraced(&m_funcTicks);
    if (isFailure(m_result)) {
        return m_result;
    }
    if (m_funcTicks <= 0.0) { // a NaN passes
        return psResAccurFail;
    }
    return static_cast<double>(minClocks) > m_funcTicks * m_curLoops ? psResAccurWrn : psResOk;
}

psResult psTool::continueIterations(int startLoops, int maxLoops) {
    int loops = std::min(startLoops, maxLoops);
    double previous = m_funcTicks;
    m_curLoops = loops;
    while (maxLoops >= loops) {
        runTraced(&m_funcTicks);
        if (m_funcTicks <= 0.0) { // a NaN passes
            return psResAccurFail;
        }
        m_actualAccuracy = 2.0 * std::fabs(m_funcTicks - previous) / (m_funcTicks + previous);
        if (m_checkStatus && badCtrlStatus()) {
            m_curLoops >>= 1; // the count and the reading from before the status went bad
            m_funcTicks = previous;
            return psResBadStsWrn;
        }
        if (m_accuracy >= m_actualAccuracy) {
            return psResOk;
        }
        previous = m_funcTicks;
        loops = timesLoops(m_curLoops, 2);
        m_curLoops = loops;
        if (loops == 0) { // would never pass the maximum
            break;
        }
    }
    m_curLoops = loops / 2; // the last count that was run
    return psResAccurWrn;
}

psResult psTool::repeatTiming(int loops, int count) {
    // The last reading counts as the first sample if it was taken at the same loop count.
    int taken = m_curLoops == loops ? 1 : 0;
    double sum = taken != 0 ? m_funcTicks : 0.0;
    double least = m_funcTicks;
    double greatest = m_funcTicks;
    m_curLoops = loops;
    for (; taken < count; ++taken) {
        double sample = 0.0;
        runTraced(&sample);
        tellCount(m_useCalls, loops);
        tell("        numClocks  = ", m_numClocks);
        tell("        funcClocks = ", sample);
        sum += sample;
        least = taken == 0 || sample < least ? sample : least;
        greatest = taken == 0 || sample > greatest ? sample : greatest;
    }
    // Largest deviation from the mean; it belongs to the least or the greatest sample.
    double const mean = sum / count;
    m_actualAccuracy =
        std::max({0.0, std::fabs(least - mean) / mean, std::fabs(greatest - mean) / mean});
    m_funcTicks = least; // disturbances only add clocks
    psResult result = m_actualAccuracy > m_accuracy ? psResAccurWrn : psResOk;
    if (m_checkStatus && badCtrlStatus()) {
        result = psResBadStsWrn;
    }
    tell("        accuracy   = ", getAccuracyStr(m_actualAccuracy));
    tell("        bestClocks = ", m_funcTicks);
    tell("        result     = ", resultText(result));
    printBadCtrlStatus(m_checkStatus);
    writeInfo(story);
    return result;
}

void psTool::runTraced(double* funcClocks) {
    traced("runTimFunc", [=, this] { runTimFunc(m_curLoops, funcClocks, false); });
}
