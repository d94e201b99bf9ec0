// pscstream_test.cpp - columns, held lines and the watch for repeats.
#include "psstream/pscstream.h"

#include "psstream/streamfixture.h"

namespace {

class PsCStream : public StreamFixture {
protected:
    PsCStream() { table.addStream(path("table").c_str(), false); }

    void line(char const* a, char const* b) { table << a << b << "\n"; }
    std::string rows() const { return content(path("table")); } // each line is flushed

    psCStream table;
};

TEST_F(PsCStream, PutsADashIntoEmptyColumns) {
    table << "x";
    table.tableOut(3);
    table.lineOut(0);
    table << "a"
          << "" << 7 << "\n";
    table.setColm(1, "not counted");
    table << "a";
    table.lineOut(2);
    table << "\n";
    table.setColm(0, "out of turn");
    table.nextColm = 1;
    table << "\n";
    EXPECT_EQ(rows(), "x,-,-\nx\na,-,7\na,-\n\nout of turn\n");
    EXPECT_FALSE(table.identicalLinesStop()); // nobody watches
}

TEST_F(PsCStream, DropsColumnsBeyondTheLast) {
    std::string wanted;
    for (int i = 0; i < 34; ++i) {
        table << i;
        wanted.append(i > 0 ? "," : "").append(i < 32 ? std::to_string(i) : "-");
    }
    table.setColm(32, "x");
    psString cell;
    EXPECT_FALSE(table.getColm(32, cell) || table.getColm(-1, cell));
    EXPECT_TRUE(table.getColm(31, cell) && cell == "31");
    EXPECT_TRUE(table.getColm(0, cell) && cell == "0");
    table.lineOut(34);
    EXPECT_EQ(rows(), wanted + "\n");
}

TEST_F(PsCStream, HoldsLinesBackInOrder) {
    table.linePostponeOut(2);
    table << "held"
          << "";
    table.linePostpone();
    table << "held too";
    table.linePostpone();
    line("direct", "1");
    EXPECT_EQ(rows(), "direct,1\n");
    table.linePostponeOut(3);
    table.linePostponeOut(3);
    EXPECT_EQ(rows(), "direct,1\nheld,-,-\nheld too,-,-\n");
}

TEST_F(PsCStream, ReportsTheFirstRepeatByItsLines) {
    line("same", "0"); // line 1, before the watch
    table.identicalLinesStart(1);
    line("other", "1");
    table << "same"
          << "2";
    table.linePostpone();
    line("same", "3");
    line("same", "4");
    table.linePostponeOut(2); // line 5
    EXPECT_TRUE(table.identicalLinesCheck());
    EXPECT_TRUE(table.identicalLinesStop());
    std::string const warning =
        " Performance table warning:\n Lines 3 & 4 have identical parameters\n";
    EXPECT_EQ(console(), warning + warning);

    table.identicalLinesStart(2);
    line("same", "1");
    line("same", "2");
    EXPECT_FALSE(table.identicalLinesStop());
    EXPECT_EQ(console(), warning + warning);
    table.lineAbandon();
    line("same", "1"); // nobody watches
    line("same", "1");
    EXPECT_FALSE(table.identicalLinesStop());
    table.identicalLinesStart(1);
    line("same", "1");
    table.identicalLinesStart(1); // begins anew
    line("same", "1");
    EXPECT_FALSE(table.identicalLinesStop());
    for (auto const& [columns, found] : {std::pair{-1, false}, {100, true}}) { // of 32
        table.identicalLinesStart(columns);
        line("same", "1");
        line("same", "1");
        EXPECT_EQ(table.identicalLinesStop(), found) << columns;
    }
}

} // namespace
