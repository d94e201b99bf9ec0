// pscacherun_test.cpp - cache iterators, driven through the run of a test that allocates its data
// anew for each set.
#include "pscpu/pszolentry.h"
#include "runfixture.h"

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

    CachedTest test;
};

} // namespace

TEST_F(PsCacheRun, BothPlacementsAreFound) {
    EXPECT_EQ(test.run(), psResOk);
    std::string const told = lines();
    EXPECT_EQ(told.substr(told.find("Const\n")),
              "Const\n"
              "      inCache try: cacheParm=32 totalSize=256 < 3276\n"
              "      inCache try: cacheParm=256 totalSize=2048 < 3276\n"
              "inCache:Length=512 \n"
              "  nLps=10     perf=      100/        8=     12.5 clocks\n"
              "      outofCache try: cacheParm=32 totalSize=256 < 34406\n"
              "      outofCache try: cacheParm=4096 totalSize=32768 < 34406\n"
              "outofCache:Length=8192 \n"
              "  nLps=10     perf=      100/        8=     12.5 clocks\n");
    EXPECT_EQ(rows(), "zCached,512,inCache nLps=10,12.5,elem,0.1,-\n"
                      "zCached,8192,outofCache nLps=10,12.5,elem,0.1,-\n");
}

TEST_F(PsCacheRun, AnOscillatingSizeWidensTheBand) {
    test.bytes = [](int elements) { return elements <= 64 ? 2000 : 40000; };
    EXPECT_EQ(test.run(), psResOk);
    EXPECT_EQ(rows(), "zCached,64,inCache nLps=10,12.5,elem,0.1,-\n"
                      "zCached,512,outofCache nLps=10,12.5,elem,0.1,-\n");
}

TEST_F(PsCacheRun, AnImpossibleSizeFailsAndShowsTheTries) {
    test.bytes = [](int elements) { return elements <= 64 ? 100 : 40000; };
    g_ostrm.setOutLevel(1);
    EXPECT_EQ(test.run(), psResDataFail);
    EXPECT_EQ(lines(), "      inCache try: cacheParm=32 totalSize=100 < 3276\n"
                       "      inCache try: cacheParm=1024 totalSize=40000 > 29491\n"
                       "      inCache try: cacheParm=512 totalSize=40000 > 29491\n"
                       "      inCache try: cacheParm=256 totalSize=40000 > 29491\n"
                       "      inCache try: cacheParm=128 totalSize=40000 > 29491\n"
                       "      inCache try: cacheParm=64 totalSize=100 < 3276\n"
                       "      inCache try: cacheParm=64 totalSize=100 < 327\n"
                       "inCache:Length=64 \n"
                       "-- Fail to allocate inCache data\n");
    EXPECT_EQ(rows(), "");
}

TEST_F(PsCacheRun, TriesEnd) {
    int tries = 0;
    test.bytes = [&tries](int elements) { return ++tries <= 12 ? 100 : 8 * elements; };
    test.length.translate("1; 1024; *2");
    g_ostrm.setOutLevel(1);
    EXPECT_EQ(test.run(), psResDataFail);
    EXPECT_EQ(tries, 12) << "the first and eleven adjustments";

    psCacheIterator::m_cacheSizeHook = [](int*) { return 37; }; // the size is not known
    EXPECT_EQ(test.run(), psResDataFail);
}

TEST_F(PsCacheRun, TestsWithoutSupportAreNotRun) {
    ScriptedTest plain;
    EXPECT_EQ(plain.run(), psResUndefined);
    EXPECT_EQ(lines(),
              "-- Can't run In-Outof-Cache timing: no program support for function zScript\n");
}
