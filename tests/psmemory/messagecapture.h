// messagecapture.h - for tests: what g_ostrm writes while an object of this class lives.
#ifndef PSMEMORY_MESSAGECAPTURE_H
#define PSMEMORY_MESSAGECAPTURE_H

#include <cstdio>
#include <string>

#include "psstream/psostream.h"

class MessageCapture {
public:
    explicit MessageCapture(OutputLevel level) { g_ostrm.setOutLevel(level); }
    MessageCapture(MessageCapture const&) = delete;
    MessageCapture& operator=(MessageCapture const&) = delete;
    ~MessageCapture() {
        g_ostrm.setOutLevel(savedLevel);
        g_ostrm.erase(place);
    }

    std::string text() { // all so far
        std::rewind(target.file);
        std::string all(1 << 16, '\0');
        all.resize(std::fread(all.data(), 1, all.size(), target.file));
        return all;
    }

private:
    o_stream target{std::tmpfile()};
    psOStream::iterator place = g_ostrm.insert(g_ostrm.end(), &target);
    OutputLevel savedLevel = g_ostrm.getOutLevel();
};

#endif
