// messagecapture.h - for tests: what a stream writes while an object of this class lives.
#ifndef TESTS_SUPPORT_MESSAGECAPTURE_H
#define TESTS_SUPPORT_MESSAGECAPTURE_H

#include <cstdio>
#include <gtest/gtest.h>
#include <string>

#include "psstream/psostream.h"

// Of any stream: a further target, whose text can be asked for.
class StreamCapture {
public:
    explicit StreamCapture(psTargetList& stream)
        : list(stream), place(stream.insert(stream.end(), &target)) {}
    StreamCapture(StreamCapture const&) = delete;
    StreamCapture& operator=(StreamCapture const&) = delete;
    ~StreamCapture() { list.erase(place); }

    std::string text() const { // all so far
        std::fflush(target.file);
        std::string all(static_cast<std::size_t>(std::ftell(target.file)), '\0');
        std::rewind(target.file);
        all.resize(std::fread(all.data(), 1, all.size(), target.file));
        std::fseek(target.file, 0, SEEK_END); // the next write goes on there
        return all;
    }

private:
    o_stream target{std::tmpfile()};
    psTargetList& list;
    psTargetList::iterator place;
};

// Of g_ostrm, at an output level. Each message puts the message level back.
class MessageCapture : public StreamCapture {
public:
    explicit MessageCapture(OutputLevel level) : StreamCapture(g_ostrm) {
        g_ostrm.setOutLevel(level);
    }
    ~MessageCapture() {
        g_ostrm.setOutLevel(savedLevel);
        EXPECT_EQ(g_ostrm.getMsgLevel(), savedMessageLevel);
    }

private:
    OutputLevel savedLevel = g_ostrm.getOutLevel();
    decltype(g_ostrm.getMsgLevel()) savedMessageLevel = g_ostrm.getMsgLevel();
};

#endif
