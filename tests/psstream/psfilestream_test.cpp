// psfilestream_test.cpp - opening, lines of any kind, and writes that fail.
#include "psstream/psfilestream.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "psstream/streamfixture.h"

namespace {

using PsFileStream = StreamFixture;

TEST_F(PsFileStream, TellsEachKindOfFailureToOpen) {
    std::string const missing = path("no/file");
    EXPECT_FALSE(io_stream(missing.c_str(), 257, true).isOpen());
    EXPECT_FALSE(io_stream(missing.c_str(), 258, true).isOpen());
    EXPECT_FALSE(io_stream(path("").c_str(), 257, true).isOpen()); // a directory
    EXPECT_FALSE(io_stream("", 258, true).isOpen());
    EXPECT_FALSE(io_stream("neither", 256, true).isOpen());
    EXPECT_FALSE(io_stream(missing.c_str(), 257, false).isOpen());
    std::string const start = "-- Can't open file ";
    EXPECT_EQ(console(), start + missing + " to read: \n" + start + missing + " to write: \n" +
                             start + path("") +
                             " to read: \n"
                             "-- Can't open file. Wrong filename (NULL)  to write: \n" +
                             start + "neither: \n");
}

TEST_F(PsFileStream, HooksPlaceNamesThatAreNotRaw) {
    auto* const oldIn = io_stream::inPathHook;
    auto* const oldOut = io_stream::outPathHook;
    io_stream::inPathHook = [](psString name) { return psString("no/in/") + name; };
    io_stream::outPathHook = [](psString name) { return psString("no/out/") + name; };
    for (int const mode : {1, 2, 3, 258}) {
        EXPECT_FALSE(io_stream("/no/x", mode, true).isOpen());
    }
    io_stream::inPathHook = oldIn;
    io_stream::outPathHook = oldOut;
    EXPECT_EQ(console(), "-- Can't open file no/in//no/x to read: \n"
                         "-- Can't open file no/out//no/x to write: \n"
                         "-- Can't open file no/in//no/x to read: \n"
                         "-- Can't open file /no/x to write: \n");
}

TEST_F(PsFileStream, ReadsLinesOfAnyLengthWithoutZeroBytes) {
    std::vector<std::string> wanted;
    std::string text;
    for (std::size_t length : {0U, 510U, 511U, 512U, 600U, 1022U, 5000U}) {
        wanted.emplace_back(length, 'x');
        text += wanted.back() + "\n";
    }
    text += std::string("a\0b\r\n\0\nc", 9) + std::string(600, '\0') + "d\nno newline";
    wanted.insert(wanted.end(), {"ab\r", "", "cd", "no newline"});
    fill("lines", text);
    i_stream in(path("lines").c_str(), 257, true);
    psString line;
    for (std::string const& each : wanted) {
        ASSERT_TRUE(in.getline(line));
        EXPECT_EQ(line.c_str(), each);
    }
    EXPECT_FALSE(in.getline(line));
    EXPECT_TRUE(line.empty());
    EXPECT_FALSE(i_stream("/dev/zero", 257, true).getline(line)); // ends on zeros alone
}

TEST_F(PsFileStream, TellsAFailedWriteOnce) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ::close(ends[0]);
    o_stream nameless(fdopen(ends[1], "w"));
    testing::internal::CaptureStderr();
    nameless << "text";
    nameless.flush();
    nameless.close();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "-- Can't write to a file: Broken pipe\n");
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
}

TEST_F(PsFileStream, StandardStreamsAreLetGoAndStandInForNoFile) {
    for (FILE* const standard : {stdin, stdout, stderr}) {
        int const number = fileno(standard);
        o_stream stream(standard);
        stream.close();
        EXPECT_TRUE(!stream.isOpen() && fcntl(number, F_GETFD) >= 0);
    }
    testing::internal::CaptureStdout();
    o_stream(static_cast<FILE*>(nullptr)).write("text");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "text");
}

// In a process that begins with all three closed: 0 is opened to write, the others to read, and
// lines of standard output leave at once.
TEST_F(PsFileStream, ClosedStandardStreamsAreLentToNoFile) {
    if (std::getenv("BEGUN_CLOSED") != nullptr) {
        int modes = __flbf(stdout) != 0 ? 1 : 0;
        for (int number = 0; number < 3; ++number) {
            modes = modes * 4 + (fcntl(number, F_GETFL) & O_ACCMODE);
        }
        std::_Exit(modes);
    }
    int const status = std::system(("BEGUN_CLOSED=1 /proc/" + std::to_string(getpid()) +
                                    "/exe --gtest_filter=*Closed* <&- >&- 2>&-")
                                       .c_str());
    EXPECT_EQ(WEXITSTATUS(status), 64 + 16 * O_WRONLY + 4 * O_RDONLY + O_RDONLY);
}

TEST_F(PsFileStream, WritesToNoFileThatAnotherProcessWritesTo) {
    std::string const file = path("table");
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    pid_t const child = fork();
    if (child == 0) {
        psTargetList targets;
        (void)targets.addStream(file.c_str(), false);
        (*targets.begin())->write("whole\nhalf"); // a line is there at once, and as a whole
        (void)::write(ready[1], "x", 1);
        pause();
    }
    char byte;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    for (bool const append : {false, true}) {
        psTargetList targets;
        EXPECT_TRUE(targets.addStream(file.c_str(), append));
        EXPECT_TRUE(targets.empty());
        EXPECT_EQ(content(file), "whole\n");
    }
    std::string const line = "-- Can't open file " + file + " to write: process " +
                             std::to_string(child) + " writes to it\n";
    EXPECT_EQ(console(), line + line);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    psTargetList targets;
    EXPECT_TRUE(targets.addStream(file.c_str(), false));
    EXPECT_FALSE(targets.empty());
    EXPECT_TRUE(targets.addStream("/dev/null", true)); // devices are for everyone
    EXPECT_EQ(content(file), "");
}

} // namespace
