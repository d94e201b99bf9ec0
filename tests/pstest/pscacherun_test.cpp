// pscacherun_test.cpp - cache iterators, driven through the run of a test that allocates its data
// anew for each set.
#include "pscpu/pszolentry.h"
#include "runfixture.h"
#include "support/storedtext.h"

namespace {

// In cache: 3276 to 29491 bytes (327 with the band widened); out of it: 34406 and more.
int knownSize(int* bytes) {
    *bytes = 32768;
    return 0;
}

class CachedTest : public ScriptedTest {
public:
    CachedTest() : ScriptedTest("zCached") {
        length.init(32, 1024, 2, StepMul, "Length");
        onData = [this] { return (block = allocate(bytes(length.value()), 0)) != nullptr; };
        onFlush = [this] { deallocate(block); };
    }
    bool canStart() override {
        regCacheParm(length, nullptr, nullptr);
        return true;
    }

    psStepIterator<int> length;
    std::function<int(int)> bytes = [](int elements) { return 8 * elements; };

private:
    void* block = nullptr;
};

class PsCacheRun : public RunFixture {
protected:
    PsCacheRun() {
        psTest::m_cache = true;
        psCacheIterator::m_cacheSizeHook = knownSize;
    }
    ~PsCacheRun() override { psCacheIterator::m_cacheSizeHook = ps_zolGetMaxCacheSizeB; }
};

} // namespace

// Both placements, a size that goes to and fro, one that can't be had, one without an end of tries,
// and a test without support: the console at the level, then the table. And an unknown cache.
TEST_F(PsCacheRun, Placements) {
    int tries = 0;
    struct {
        OutputLevel level;
        psResult result;
        std::function<int(int)> bytes;
    } const cases[] = {
        {7, psResOk, [](int elements) { return 8 * elements; }},
        {7, psResOk, [](int elements) { return elements <= 64 ? 2000 : 40000; }},
        {1, psResDataFail, [](int elements) { return elements <= 64 ? 100 : 40000; }},
        {1, psResDataFail, [&tries](int elements) { return ++tries <= 12 ? 100 : 8 * elements; }}};
    for (auto const& row : cases) {
        CachedTest cached;
        cached.bytes = row.bytes;
        if (&row == std::end(cases) - 1) {
            cached.length.translate("1; 1024; *2");
        }
        g_ostrm.setOutLevel(row.level);
        EXPECT_EQ(cached.run(), row.result);
    }
    EXPECT_EQ(tries, 12) << "the first and eleven adjustments";
    EXPECT_EQ(ScriptedTest().run(), psResUndefined);
    EXPECT_TRUE(matchesStored("pstest/cache_run", lines() + rows()));

    psCacheIterator::m_cacheSizeHook = [](int*) { return 37; }; // the size is not known
    EXPECT_EQ(CachedTest().run(), psResDataFail);
}
