// psparameter_test.cpp - how a value reaches a parameter, and how it is printed.
#include "psparameter/psparameter.h"

#include <csignal>

#include "psbase/tssignal.h"
#include "psparameter/psdefault.h"
#include "streamfixture.h"

namespace {

class PsParameter : public StreamFixture {
protected:
    PsParameter() { g_ostrm.setOutLevel(7); }

    // A console whose user types the given text.
    void type(std::string const& answers) {
        fill("answers", answers);
        in.setIStream(
            new i_stream(path("answers").c_str(), io_stream::Read | io_stream::Raw, true));
    }

    // What reading the parameter prints at the console itself.
    std::string promptOf(psParameter& parm) {
        testing::internal::CaptureStdout();
        parm.fromIStream(in);
        return testing::internal::GetCapturedStdout();
    }

    psIStream in;
};

class RaisingParameter : public psParameter {
public:
    explicit RaisingParameter(int raised) : psParameter("P", ""), signal(raised) {}
    void translate(psString) override { raise(signal); }

private:
    int signal;
};

class FixedColumn : public psDefault<int> {
public:
    using psDefault<int>::psDefault;
    int colmIndex() const override { return 2; }
};

bool faultLandsHere(psParameter& parm, psIStream& in) {
    if (setjmp(tsSignal::m_jmpbuf) != 0) {
        return true;
    }
    parm.fromIStream(in);
    raise(SIGILL);
    return false;
}

} // namespace

TEST_F(PsParameter, SourcesByTheirPriority) {
    psDefault<int> parm(5, "N", "Number");
    parm.fromIStream(in);
    EXPECT_EQ(in.source(), psIStream::FromDefault);
    EXPECT_EQ(console(), " N = 5\n");

    type("6\n\n");
    EXPECT_EQ(promptOf(parm), "\n Number [5] = ");
    EXPECT_EQ(in.source(), psIStream::FromConsole);
    EXPECT_EQ(parm.value(), 6);
    parm.fromIStream(in);
    EXPECT_EQ(in.source(), psIStream::FromDefault);
    EXPECT_EQ(parm.value(), 6) << "an empty answer keeps the value";

    fill("p.ini", "[Perf System]\nN=7\n");
    in.setIniFile(path("p.ini").c_str(), false);
    EXPECT_EQ(promptOf(parm), "");
    EXPECT_EQ(parm.value(), 7);

    in.setData("N=8");
    parm.fromIStream(in);
    EXPECT_EQ(in.source(), psIStream::FromData);
    EXPECT_EQ(console(), " N = 5\n N = 6\n N = 6\n N = 7\n N = 8\n");
}

TEST_F(PsParameter, BadTextIsToldAndLeavesTheValue) {
    psMapDefault<int> method;
    method.add(0, "Auto");
    method.add(1, "Manual");
    method.init(0, "Method");
    type("Mx\nman\n");
    g_ostrm.setOutLevel(1); // raised while the console talks, and put back
    EXPECT_EQ(promptOf(method), "\n Method {Auto|Manual} [Auto] = ");
    EXPECT_EQ(g_ostrm.getOutLevel(), 1);
    method.fromIStream(in);
    EXPECT_EQ(console(), "-Invalid value of Method = Mx\n Method = Auto\n Method = Manual\n");
}

TEST_F(PsParameter, SilentWithoutNameAndUnaskedOnceRead) {
    psDefault<int> silent(1, "");
    psDefault<int> known(2, "K");
    known.m_toRead = false;
    type("9\n");
    EXPECT_EQ(promptOf(silent) + promptOf(known), "");
    g_ostrm << MSG_PERF;
    silent.toOStream(g_ostrm);
    known.toOStream(g_ostrm);
    g_ostrm << MSG_RESTORE;
    EXPECT_EQ(console(), " K = 2\nK=2 ");
}

TEST_F(PsParameter, SignalIsBadTextAndTheOuterLandingPlaceStays) {
    EXPECT_EXIT(
        {
            RaisingParameter parm(SIGFPE);
            bool const landed = faultLandsHere(parm, in);
            std::fputs(console().c_str(), stderr);
            _exit(landed ? 0 : 1);
        },
        testing::ExitedWithCode(0), "-FP error, .*operation.\n P = \n");
}

TEST_F(PsParameter, TableColumns) {
    psCStream table;
    ASSERT_TRUE(table.addStream(path("table").c_str(), false));
    psDefault<int> plain(1, "Plain");
    psDefault<int> silent(2, "");
    psDefault<int> quoted(3, "Quoted");
    quoted.m_flags = psParameter::textInQuotes;
    psDefault<int> old(4, "Old");
    old.addDeprecated(3, "three");
    old.addDeprecated(4, "four");
    EXPECT_TRUE(old.setDeprecatedFlag(true));
    FixedColumn fixed(5, "Fixed");
    plain.toCStream(table);
    silent.toCStream(table);
    quoted.toCStream(table);
    old.toCStream(table);
    fixed.toCStream(table);
    table.lineOut(0);
    plain.nameToCStream(table);
    silent.nameToCStream(table);
    old.nameToCStream(table);
    fixed.nameToCStream(table);
    table.lineOut(0);
    old.setDeprecatedFlag(false);
    old.toCStream(table);
    old.translate("5");
    EXPECT_FALSE(old.setDeprecatedFlag(true));
    old.toCStream(table);
    table.lineOut(0);
    EXPECT_EQ(content(path("table")), "1,-,5,four\nPlain,-,Fixed\n4,5\n");
}
