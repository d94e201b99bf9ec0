// psreportformat.h - layout of the framed 79-column reports.
#ifndef PSTEST_PSREPORTFORMAT_H
#define PSTEST_PSREPORTFORMAT_H

#include "psbase/psstring.h"

// The columns of a line's six items, and whether the frame around the lines is open. A line is put
// together from the left; what is too long pushes the rest on.
class psReportFormat {
public:
    psReportFormat(int startFrame, int startIndent, int p0, int p1, int p2, int p3, int p4, int p5)
        : frame(startFrame), indent(startIndent), pos{p0, p1, p2, p3, p4, p5} {}

    psString sepLine() const;
    psString firstLine(); // a separator, which opens the frame
    psString lastLine();  // or closes it
    void setStartLine(psString& line) const;
    void setEndLine(psString& line) const;
    static int getLastLen(psString const& text);           // characters behind the last newline
    static bool setOffsetLine(psString& line, int column); // blanks up to it; false: it is behind
    static void setItemLeft(psString& line, psString const& item, int column);
    static void setItem(psString& line, psString const& item, int column); // by the column's sign
    psString getLine(psString a, psString b = "", psString c = "", psString d = "", psString e = "",
                     psString f = "") const;
    static psString getTimeStr(int seconds); // hours, minutes, seconds

    int frame;  // the frame is open
    int indent; // of the form; nothing reads it
    int pos[6]; // columns of the items; negative: right-aligned
};

psString cutoffNL(psString text); // up to the first newline

#endif
