// pstrace_test.cpp - lines, indent and repair of the call trace.
#include "psstream/pstrace.h"

#include "psstream/streamfixture.h"

namespace {

class PsTrace : public StreamFixture {
protected:
    // The number of stars in front of the next line, without a change of the stack.
    std::size_t depth() {
        std::size_t const before = console().size();
        trace.traceIn("probe");
        std::string const line = console().substr(before);
        trace.traceOut("probe");
        return line.find(' ');
    }

    psTrace trace;
};

TEST_F(PsTrace, PrintsBothLinesOfACallWithItsIndent) {
    trace.traceIn("outer");
    trace.traceIn("inner");
    trace.traceOut("inner");
    trace.traceOut("outer");
    EXPECT_EQ(console(), "****** trace into   outer\n"
                         "******* trace into   inner\n"
                         "******* trace out of inner\n"
                         "****** trace out of outer\n");
    g_ostrm.setOutLevel(127 - MSG_TRACE);
    trace.traceIn("silent");
    trace.traceOut("silent");
    EXPECT_TRUE(console().ends_with("outer\n"));
}

TEST_F(PsTrace, ClosesWhatAJumpLeftOpenAndKeepsItsState) {
    trace.traceIn("outer");
    trace.traceIn("middle");
    trace.traceIn("lost");
    trace.traceIn("lost too");
    trace.traceOut("middle");
    EXPECT_STREQ(trace.getCurName().c_str(), "outer");
    EXPECT_EQ(depth(), 7U);

    trace.traceOut("unknown"); // empties the indent alone
    EXPECT_EQ(depth(), 6U);

    trace.clearState();
    trace.traceIn("outer");
    psTrace::State const saved = trace.saveState();
    trace.clearState();
    EXPECT_EQ(depth(), 6U);
    trace.restoreState(saved);
    EXPECT_STREQ(trace.getCurName().c_str(), "outer");
    EXPECT_EQ(depth(), 7U);
}

} // namespace
