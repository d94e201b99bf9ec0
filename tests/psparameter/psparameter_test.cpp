// psparameter_test.cpp - how a parameter is asked for and printed.
#include "psparameter/psparameter.h"

#include "psbase/tssignal.h"
#include "psparameter/psdefault.h"
#include "psstream/streamfixture.h"
#include "support/leaksofjumps.h"

namespace {

using PsParameter = StreamFixture;

class FixedColumn : public psDefault<int> {
public:
    using psDefault<int>::psDefault;
    int colmIndex() const override { return 0; }
};

class Faulting : public psDefault<int> {
public:
    using psDefault<int>::psDefault;
    void translate(psString) override { std::raise(SIGSEGV); }
};

// Whether a fault after the reading lands here, where the landing place was set before it.
[[gnu::noinline]] bool landsHereAfter(psParameter& parm, psIStream& in) {
    if (setjmp(tsSignal::m_jmpbuf) != 0) {
        unblockSignals();
        return true;
    }
    parm.fromIStream(in);
    unblockSignals();
    std::raise(SIGSEGV);
    return false;
}

} // namespace

TEST_F(PsParameter, AFaultWhileItIsReadIsToldAndTheLandingPlaceStays) {
    [[maybe_unused]] LeaksOfJumps const lost;
    psIStream in;
    Faulting parm(3, "F");
    EXPECT_TRUE(landsHereAfter(parm, in));
    EXPECT_EQ(console(), "-Illegal storage access.\n F = 3\n");
}

TEST_F(PsParameter, TheQuestionIsSeenAtEveryLevel) {
    fill("answers", "9\n\n");
    psIStream in;
    psDefault<int> parm(3, "N");
    testing::internal::CaptureStdout();
    g_ostrm.setOutLevel(MSG_ERR);
    parm.fromIStream(in); // batch: only what the level lets pass
    in.setIStream(new i_stream(path("answers").c_str(), io_stream::Read | io_stream::Raw, true));
    parm.fromIStream(in);
    EXPECT_EQ(g_ostrm.getOutLevel(), MSG_ERR);
    parm.fromIStream(in); // an empty answer keeps the value
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\n N [3] = \n N [9] = ");
    EXPECT_EQ(console(), " N = 9\n N = 9\n");
}

TEST_F(PsParameter, AsksUnlessNamelessOrKnown) {
    fill("answers", "9\n");
    psIStream in;
    in.setIStream(new i_stream(path("answers").c_str(), io_stream::Read | io_stream::Raw, true));
    psDefault<int> silent(1, "");
    psDefault<int> known(2, "K");
    known.m_toRead = false;
    psDefault<int> asked(3, "N", "Number");
    testing::internal::CaptureStdout();
    for (psParameter* parm : {&silent, &known, &asked}) {
        parm->fromIStream(in);
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\n Number [3] = ");
    for (psParameter* parm : {&silent, &known, &asked}) {
        parm->toOStream(g_ostrm);
    }
    EXPECT_EQ(console(), " K = 2\n N = 9\nK=2 N=9 ");
}

TEST_F(PsParameter, TableColumns) {
    psCStream table;
    StreamCapture const rows(table);
    psDefault<int> plain(1, "Plain");
    psDefault<int> silent(2, "");
    psDefault<int> old(4, "Old");
    old.addDeprecated(4, "four");
    EXPECT_TRUE(old.setDeprecatedFlag(true));
    FixedColumn fixed(5, "Fixed");
    psDefault<int> quoted(6, "Quoted");
    quoted.m_flags = psParameter::textInQuotes;
    psParameter* const all[] = {&plain, &silent, &old, &fixed, &quoted};
    for (psParameter* parm : all) {
        parm->toCStream(table);
    }
    table.lineOut(0);
    for (psParameter* parm : all) {
        parm->nameToCStream(table);
    }
    table.lineOut(0);
    EXPECT_EQ(rows.text(), "5,-,four, \"6\"\nFixed,-,Old,Quoted\n");
    EXPECT_TRUE(old.isDeprecatedParm() && !plain.isDeprecatedParm());
    EXPECT_FALSE(old.setDeprecatedFlag(false) || plain.setDeprecatedFlag(true));
    EXPECT_TRUE(old.setDeprecatedFlag(true));
    old.init(4, "Old");
    old.toCStream(table);
    table.lineOut(0);
    EXPECT_TRUE(rows.text().ends_with("\n4\n"));
    old.translate("5");
    EXPECT_FALSE(old.setDeprecatedFlag(true));
}
