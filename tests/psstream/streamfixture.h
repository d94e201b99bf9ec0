// streamfixture.h - a fixture with a directory of its own, in which what g_ostrm prints is kept.
#ifndef TESTS_PSSTREAM_STREAMFIXTURE_H
#define TESTS_PSSTREAM_STREAMFIXTURE_H

#include <gtest/gtest.h>
#include <string>

#include "support/messagecapture.h"
#include "support/tempdirectory.h"

class StreamFixture : public testing::Test {
protected:
    std::string path(std::string const& name) const { return directory.path + name; }

    static std::string content(std::string const& file) { return readFile(file); }

    void fill(std::string const& name, std::string const& text) const {
        writeFile(path(name), text);
    }

    auto files() const { // in the directory
        return std::distance(std::filesystem::directory_iterator(path("")), {});
    }

    // All that g_ostrm has printed in this test.
    std::string console() const { return messages.text(); }

private:
    TempDirectory directory;
    MessageCapture messages{127};
};

#endif
