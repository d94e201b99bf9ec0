// psostream_test.cpp - the two filters, the stack of levels, and the targets.
#include "psstream/psostream.h"

#include "psstream/streamfixture.h"

namespace {

class PsOStream : public StreamFixture {
protected:
    PsOStream() { stream.addStream(path("text").c_str(), false); }

    std::string text() {
        stream.flush();
        return content(path("text"));
    }

    psOStream stream;
};

TEST_F(PsOStream, FiltersByBitAndAsksByNumber) {
    stream << "before any level";
    stream.setOutLevel(23);
    EXPECT_TRUE(stream.beginMessage(MSG_INFO)); // 8 is below 23, yet not among its bits
    stream << "measurement process";
    stream.endMessage();
    EXPECT_FALSE(stream.beginMessage(MSG_MEMORY));
    EXPECT_EQ(stream.getMsgLevel(), MSG_PERF);
    EXPECT_TRUE(stream.beginMessage(static_cast<MessageLevel>(23)));
    stream.endMessageFlush();
    EXPECT_EQ(text(), "");

    stream << MSG_TRACE << "trace " << 'c' << -1 << 2U << " " << 12345.678 << MSG_RESTORE;
    stream.setOutLevel(7);
    stream << MSG_MEMORY << "memory at 7" << MSG_RESTORE;
    stream.setOutLevel(39);
    stream << MSG_MEMORY << " memory at 39" << MSG_RESTORE_FLUSH;
    EXPECT_EQ(content(path("text")), "trace c-12 1.23e+04 memory at 39");
}

TEST_F(PsOStream, NestsLevelsAndFallsBackToErrors) {
    stream << MSG_ERR << "1" << MSG_DATA << "dropped" << MSG_ERR << "2" << MSG_RESTORE << "dropped"
           << MSG_RESTORE << "3" << MSG_RESTORE;
    EXPECT_EQ(stream.getMsgLevel(), MSG_PERF);
    stream << "dropped" << MSG_RESTORE << "4" << MSG_RESTORE << "5";
    EXPECT_EQ(text(), "12345");
}

TEST_F(PsOStream, WritesToAllTargetsAndAppends) {
    EXPECT_FALSE(stream.addStream("", false));
    fill("old", "old ");
    fill("new", "old ");
    EXPECT_TRUE(stream.addStream(path("old").c_str(), true));
    EXPECT_TRUE(stream.addStream(path("new").c_str(), false));
    psUStream summary;
    summary.addStream(path("summary").c_str(), false);
    summary << "always";
    summary.close();
    stream << MSG_ERR << "text";
    stream.close();
    stream.close();
    EXPECT_EQ(content(path("summary")), "always");
    EXPECT_EQ(text(), "text");
    EXPECT_EQ(content(path("old")), "old text");
    EXPECT_EQ(content(path("new")), "text");
}

} // namespace
