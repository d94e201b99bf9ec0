// psparameter_test.cpp - how a parameter is asked for and printed.
#include "psparameter/psparameter.h"

#include "psparameter/psdefault.h"
#include "psstream/streamfixture.h"

namespace {

using PsParameter = StreamFixture;

class FixedColumn : public psDefault<int> {
public:
    using psDefault<int>::psDefault;
    int colmIndex() const override { return 0; }
};

} // namespace

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
    EXPECT_EQ(console(), " K = 2\n N = 9\n");
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
    psParameter* const all[] = {&plain, &silent, &old, &fixed};
    for (psParameter* parm : all) {
        parm->toCStream(table);
    }
    table.lineOut(0);
    for (psParameter* parm : all) {
        parm->nameToCStream(table);
    }
    table.lineOut(0);
    old.translate("5");
    EXPECT_FALSE(old.setDeprecatedFlag(true));
    EXPECT_EQ(rows.text(), "5,-,four\nFixed,-,Old\n");
}
