// vtsfixture.h - a test that may change rows, settings and data of the suite: all are put back.
#ifndef VTSFIXTURE_H
#define VTSFIXTURE_H

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "vts/vtsconfig.h"
#include "vts/vtsdefs.h"
#include "vts/vtsfill.h"
#include "vts/vtslookup.h"
#include "vts/vtsrandom.h"
#include "vts/vtsstatus.h"

class VtsFixture : public testing::Test {
protected:
    VtsFixture() {
        memcpy(rows, defFunc, sizeof(defFunc));
        vtsConfigure();
        printed.clear();
        vtsPrintSink = [](int stream, char const* text) {
            printed += std::to_string(stream) + ":" + text;
        };
    }
    ~VtsFixture() override {
        vtsDeAllocData();
        memcpy(defFunc, rows, sizeof(defFunc));
        defData = vtsData();
        defParam.numFuncs = vtsNumFuncs;
        vtsSetDefaultParams();
        vtsGetStringFromFile = vtsGetStringFromFileStub;
        vtsPrintSink = vtsPrintConsole;
        MCG31m1Init(1);
    }

    // Row 0 with another block.
    void setBlock(std::string const& text) {
        block = text;
        defFunc[0].text = block.c_str();
        vtsBeginFillData(0);
    }

    static inline std::string printed; // stream, colon and text of all that was printed

private:
    std::string block;
    vtsFuncRow rows[vtsNumFuncs];
};

#endif
