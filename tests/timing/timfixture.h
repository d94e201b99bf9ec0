// timfixture.h - tests that are started by hand: rows, vectors and settings are put back.
#ifndef TESTS_TIMING_TIMFIXTURE_H
#define TESTS_TIMING_TIMFIXTURE_H

#include <cstring>

#include "psstream/streamfixture.h"
#include "timing/timregister.h"
#include "timing/timvectors.h"
#include "vts/vtsdefs.h"
#include "vts/vtsfill.h"
#include "vts/vtslookup.h"

class TimFixture : public StreamFixture {
protected:
    TimFixture() {
        memcpy(rows, defFunc, sizeof(defFunc));
        g_ostrm.setMsgLevel(MSG_PERF);
    }
    ~TimFixture() override {
        g_ostrm.restoreMsgLevel();
        timFreeVectors();
        vtsDeAllocData();
        memcpy(defFunc, rows, sizeof(defFunc));
        defData = vtsData();
    }

    template <typename Test>
    static Test make(char const* tag) {
        return Test(nullptr, "zolsTest_32f", PS_TIMING_FILE, "zolsTest_32f_timing_test", tag);
    }

private:
    vtsFuncRow rows[vtsNumFuncs];
};

#endif
