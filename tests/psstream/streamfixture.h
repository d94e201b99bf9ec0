// streamfixture.h - a fixture with a directory of its own, in which what g_ostrm prints is kept.
#ifndef TESTS_PSSTREAM_STREAMFIXTURE_H
#define TESTS_PSSTREAM_STREAMFIXTURE_H

#include "psstream/psostream.h"
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>

class StreamFixture : public testing::Test {
protected:
    StreamFixture()
        : directory(testing::TempDir() + "psstream." + std::to_string(getpid()) + "/"),
          oldLevel(g_ostrm.getOutLevel()) {
        std::filesystem::create_directory(directory);
        target = createOStream(path("console").c_str(), false);
        g_ostrm.insert(g_ostrm.end(), target);
        g_ostrm.setOutLevel(127);
    }

    ~StreamFixture() override {
        auto last = g_ostrm.end();
        last.pNode(last.pNode()->prev);
        g_ostrm.erase(last);
        g_ostrm.setOutLevel(oldLevel);
        delete target;
        std::filesystem::remove_all(directory);
    }

    std::string path(std::string const& name) const { return directory + name; }

    static std::string content(std::string const& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    void fill(std::string const& name, std::string const& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }

    // All that g_ostrm has printed in this test.
    std::string console() const {
        target->flush();
        return content(path("console"));
    }

private:
    std::string directory;
    OutputLevel oldLevel;
    o_stream* target;
};

#endif
