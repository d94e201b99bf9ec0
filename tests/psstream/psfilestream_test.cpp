// psfilestream_test.cpp - opening, lines of any kind, and writes that fail.
#include "psstream/psfilestream.h"

#include "streamfixture.h"

namespace {

using PsFileStream = StreamFixture;

TEST_F(PsFileStream, TellsEachKindOfFailureToOpen) {
    std::string const missing = path("no/file");
    EXPECT_FALSE(io_stream(missing.c_str(), 257, true).isOpen());
    EXPECT_FALSE(io_stream(missing.c_str(), 258, true).isOpen());
    EXPECT_FALSE(io_stream(path("").c_str(), 257, true).isOpen()); // a directory
    EXPECT_FALSE(io_stream("", 257, true).isOpen());
    EXPECT_FALSE(io_stream("", 258, true).isOpen());
    EXPECT_FALSE(io_stream("", 256, true).isOpen());
    EXPECT_FALSE(io_stream(missing.c_str(), 257, false).isOpen());
    EXPECT_EQ(console(), "-- Can't open file " + missing + " to read: \n-- Can't open file " +
                             missing + " to write: \n-- Can't open file " + path("") +
                             " to read: \n"
                             "-- Can't open file. Wrong filename (NULL)  to read: \n"
                             "-- Can't open file. Wrong filename (NULL)  to write: \n"
                             "-- Can't open file. Wrong filename (NULL) : \n");
}

std::string hookDirectory;

TEST_F(PsFileStream, AsksThePathHooksUnlessTheNameIsRaw) {
    auto const oldIn = io_stream::inPathHook;
    auto const oldOut = io_stream::outPathHook;
    hookDirectory = path("");
    io_stream::inPathHook = [](psString name) { return psString(hookDirectory.c_str()) + name; };
    io_stream::outPathHook = [](psString name) {
        return psString(hookDirectory.c_str()) + "out_" + name;
    };
    o_stream("file", io_stream::Write, true).write("first\n");
    o_stream("file", io_stream::Write | io_stream::Append | io_stream::Binary, true)
        .write("second\n");
    EXPECT_EQ(content(path("out_file")), "first\nsecond\n");
    psString line;
    EXPECT_TRUE(i_stream("out_file", io_stream::Read | io_stream::Write, true).getline(line));
    EXPECT_STREQ(line.c_str(), "first");
    EXPECT_FALSE(i_stream("out_file", io_stream::Raw | io_stream::Read, false).isOpen());
    io_stream::inPathHook = oldIn;
    io_stream::outPathHook = oldOut;
}

TEST_F(PsFileStream, ReadsLinesAcrossTheEdgesOfAChunk) {
    std::string text;
    for (int length : {0, 510, 511, 512, 600, 1022, 5000}) {
        text += std::string(static_cast<std::size_t>(length), 'x') + "\n";
    }
    fill("lines", text + "a\r\nno newline");
    i_stream in(path("lines").c_str(), 257, true);
    psString line;
    for (int length : {0, 510, 511, 512, 600, 1022, 5000}) {
        ASSERT_TRUE(in.getline(line));
        EXPECT_EQ(line.size(), length);
    }
    EXPECT_TRUE(in.getline(line));
    EXPECT_STREQ(line.c_str(), "a\r");
    EXPECT_TRUE(in.getline(line));
    EXPECT_STREQ(line.c_str(), "no newline");
    EXPECT_FALSE(in.getline(line));
    EXPECT_TRUE(line.empty());
    EXPECT_FALSE(i_stream("", 257, false).getline(line));
}

TEST_F(PsFileStream, LeavesZeroBytesOutOfLinesAndEndsOnThemAlone) {
    fill("binary", std::string("a\0b\n\0\nc", 7) + std::string(600, '\0') + "d\n" +
                       std::string(2000, '\0') + "lost\n");
    i_stream in(path("binary").c_str(), 257, true);
    psString line;
    for (char const* wanted : {"ab", "", "cd"}) {
        ASSERT_TRUE(in.getline(line));
        EXPECT_STREQ(line.c_str(), wanted);
    }
    EXPECT_FALSE(in.getline(line));
    EXPECT_FALSE(i_stream("/dev/zero", 257, true).getline(line));
}

TEST_F(PsFileStream, WritesToStandardOutputWithoutAFile) {
    testing::internal::CaptureStdout();
    o_stream closed(path("target").c_str(), 258, true);
    closed << "to the file";
    closed.close();
    closed.close();
    closed << "to standard output";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "to standard output");
    EXPECT_EQ(content(path("target")), "to the file");
}

TEST_F(PsFileStream, TellsAFailedWriteOnce) {
    for (std::size_t size : {10U, 100000U}) { // shown by the flush, or by the write itself
        SCOPED_TRACE(size);
        testing::internal::CaptureStderr();
        {
            psTargetList targets;
            ASSERT_TRUE(targets.addStream("/dev/full", true));
            o_stream& full = **targets.begin();
            full << std::string(size, 'x').c_str();
            targets.flush();
            full << "again";
            full.close();
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "-- Can't write to /dev/full: No space left on device\n");
    }

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    testing::internal::CaptureStderr();
    {
        o_stream broken(fdopen(ends[1], "w")); // fails in the destructor
        broken << "text";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "-- Can't write to a file: Broken pipe\n");
}

} // namespace
