// pscacheiterator_test.cpp - the trials and the arithmetic of the adjustments.
#include "psparameter/pscacheiterator.h"

#include "pscpu/pszolentry.h"
#include "psmemory/psmemory.h"
#include "support/messagecapture.h"
#include "support/storedtext.h"

namespace {

class SizeParameter : public psDefault_NSC<ZoliSize> {
public:
    SizeParameter(int width, int height) : psDefault_NSC<ZoliSize>({width, height}, "Size") {}
};

class SizedObject : public psObject {
public:
    int objectSize() override { return size; }
    int size = 0;
};

bool tellAdjustment(psParameter* parm, int size, int limit, bool bySteps) {
    g_ostrm << "  adjust " << parm->name() << ": " << size << " to " << limit
            << (bySteps ? " by steps\n" : "\n");
    return true;
}

} // namespace

// In cache: 3276 to 29491 bytes (327 with the band widened); out of it: 34406 and more. The object
// must not be too small, the blocks of memory not too big.
TEST(PsCacheIterator, TrialsOfBothPlacements) {
    // step: to the placement in cache, out of it, or another trial
    std::tuple<char, int, int> const trials[] = {
        {'t', 5000, 5000},  {'i', 0, 100},     {'t', 5000, 40000}, {'t', 100, 5000},
        {'t', 5000, 100},                                       // fits, yet no try is left
        {'o', 5000, 4000},  {'t', 40000, 100}, {'i', 100, 100}, // nothing of the first time is left
        {'t', 100, 40000},  {'t', 400, 40000}, {'t', 400, 5000},   {'t', 5000, 40000},
        {'i', 5000, 40000}, {'t', 100, 100}, // the first adjustment does not widen the band
        {'i', 0, 3275},     {'i', 0, 3276},    {'i', 0, 29491},    {'i', 5000, 29492},
        {'i', 100, 29491},  {'t', 100, 29491}, // too small, yet not too big
        {'o', 0, 34405},    {'o', 0, 34406}};
    psCacheIterator::m_cacheSizeHook = [](int* bytes) {
        *bytes = 32768;
        return 0;
    };
    MessageCapture messages(MSG_ERR | MSG_PERF);
    SizedObject object;
    psDefault<int> parm(32, "Length");
    psCacheIterator iterator(parm, &object, tellAdjustment);
    for (auto const& [step, bytes, blockBytes] : trials) {
        bool more = step == 't' ? iterator.repeatValue() : iterator.firstValue();
        more = more && (step != 'o' || iterator.nextValue());
        object.size = bytes;
        void* const block = psMalloc(blockBytes - 1, 0, 0, MEM_OBJECT_IS_BUFFER);
        void* const another = psMalloc(1, 0, 0, MEM_OBJECT_IS_BUFFER);
        g_ostrm << "object " << bytes << " block " << blockBytes << " " << iterator.getComment()
                << (more ? "\n" : " no more\n");
        g_ostrm << (iterator.validateSize() ? "  fits\n" : "");
        psFree(block);
        psFree(another);
        g_ostrm.setOutLevel(MSG_ERR);
        iterator.outputInfo(); // what was not shown as it happened
        g_ostrm.setOutLevel(MSG_ERR | MSG_PERF);
    }
    EXPECT_TRUE(matchesStored("psparameter/cache_trials", messages.text()));
    psCacheIterator::m_cacheSizeHook = [](int* bytes) { return ++*bytes == 1 ? 37 : 0; };
    EXPECT_EQ(psCacheIterator::cacheSize(), 0);
    psCacheIterator::m_cacheSizeHook = ps_zolGetMaxCacheSizeB;
}

TEST(PsCacheIterator, ToTheUserItIsTheSizeParameter) {
    MessageCapture messages(MSG_PERF);
    psCStream table;
    StreamCapture const rows(table);
    psMapDefault<int> parm;
    parm.add(1, "One");
    parm.add(2, "Two");
    parm.init(1, "Length", "Number");
    psCacheIterator iterator(parm, nullptr, nullptr);
    psIStream in;
    in.setData("Length=two");
    iterator.fromIStream(in);
    iterator.toOStream(g_ostrm);
    iterator.toCStream(table);
    iterator.nameToCStream(table);
    table.lineOut(0);
    g_ostrm << iterator.valueString() << "|" << iterator.defaultString() << "|"
            << iterator.validString() << "|" << iterator.description() << "|" << iterator.prompt();
    EXPECT_EQ(messages.text(), " Length = Two\nLength=Two Two|Two|One|Two|Length = Two|"
                               "Number {One|Two}");
    EXPECT_EQ(rows.text(), "Two,cacheIterator\n");
    EXPECT_EQ(iterator.cacheParm(), &parm);
    EXPECT_FALSE(iterator.repeatValue()) << "no adjuster";
}

TEST(PsCacheIterator, IntegersJumpThenCreep) {
    // wanted: 0: refused
    std::tuple<int, int, int, bool, int> const rows[] = {
        {32, 1000, 100000, false, 2048}, // 64 times is the last power of two below the limit
        {32, 100000, 100000, false, 16}, // at least one halving
        {32, 90000, 100000, false, 32},  {4096, 100000, 1000, false, 32},
        {1, 100000, 1000, false, 0},     {32, 100, 1000, true, 64},
        {32, 1000, 100, true, 16},       {1 << 30, 1, 1000, true, 0}, // no int holds it
        {1 << 20, 1, 1 << 30, false, 0},                              // nor this
        {32, 0, 1000, false, 0},   // no factor changes nothing into something
        {1024, 1000, 0, false, 1}, // an unknown cache: down as far as the size goes
    };
    for (auto const& [value, size, limit, bySteps, wanted] : rows) {
        SCOPED_TRACE(testing::Message() << size << ' ' << limit << ' ' << bySteps);
        psDefault<int> parm(value, "N");
        psCacheIteratorInt iterator(parm, nullptr, nullptr);
        EXPECT_EQ(iterator.setNewValueToParm(size, limit, bySteps), wanted != 0);
        EXPECT_FALSE(psCacheIteratorSize(parm, nullptr, nullptr).setNewValueToParm(1, 9, true));
        EXPECT_EQ(parm.value(), wanted != 0 ? wanted : value);
    }
}

TEST(PsCacheIterator, TwoDimensionsTakeTurns) {
    std::tuple<ZoliSize, int, int, bool, bool, ZoliSize> const rows[] = {
        {{16, 16}, 1000, 9000, false, true, {64, 32}}, // up 2 and 2, down 1 at the second
        {{64, 64}, 9000, 1000, false, true, {16, 16}}, {{2, 1}, 9000, 1000, false, false, {2, 1}},
        {{16, 16}, 100, 1000, true, true, {32, 16}},   {{32, 16}, 1000, 100, true, true, {16, 16}},
        {{16, 16}, 1000, 100, true, true, {16, 8}},    {{1, 1}, 1000, 100, true, false, {1, 1}},
        {{0, 8}, 1000, 100, true, false, {0, 8}}, // the other field is nothing
        {{16, 16}, 0, 1000, false, false, {16, 16}}};
    for (auto const& [value, size, limit, bySteps, changed, wanted] : rows) {
        SCOPED_TRACE(testing::Message() << size << ' ' << limit << ' ' << bySteps);
        SizeParameter parm(value.width, value.height);
        psCacheIteratorSize iterator(parm, nullptr, nullptr);
        EXPECT_EQ(iterator.setNewValueToParm(size, limit, bySteps), changed);
        EXPECT_FALSE(psCacheIteratorInt(parm, nullptr, nullptr).setNewValueToParm(1, 9, true));
        EXPECT_EQ(parm.value().width, wanted.width);
        EXPECT_EQ(parm.value().height, wanted.height);
    }
}
