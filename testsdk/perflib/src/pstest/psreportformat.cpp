// psreportformat.cpp - layout of the framed 79-column reports.
#include "pstest/psreportformat.h"

#include <cstdio>

namespace {
constexpr int barColumn = 78; // of the closing bar
} // namespace

psString psReportFormat::sepLine() const {
    psString line("+");
    line.resize(barColumn, '-');
    line += "+\n";
    return line;
}

psString psReportFormat::firstLine() {
    frame = 1;
    return sepLine();
}

psString psReportFormat::lastLine() {
    frame = 0;
    return sepLine();
}

void psReportFormat::setStartLine(psString& line) const { line += frame != 0 ? '|' : ' '; }

void psReportFormat::setEndLine(psString& line) const {
    if (frame != 0 && setOffsetLine(line, barColumn)) {
        line += '|';
    }
    line += '\n';
}

int psReportFormat::getLastLen(psString const& text) {
    return text.size() - (text.rfind("\n") + 1); // rfind gives -1 for a single line
}

bool psReportFormat::setOffsetLine(psString& line, int column) {
    int const missing = column - getLastLen(line);
    if (missing < 0) {
        return false;
    }
    for (int i = 0; i < missing; ++i) { // not resize, which leaves an empty text without its fill
        line += ' ';
    }
    return true;
}

void psReportFormat::setItemLeft(psString& line, psString const& item, int column) {
    setOffsetLine(line, column); // a line that is too long already takes the item at its end
    line += item;
}

void psReportFormat::setItem(psString& line, psString const& item, int column) {
    if (item.empty()) {
        return;
    }
    if (column < 0) {
        int const start = -column - 1 - item.size();
        if (start >= 0) {
            setItem(line, item, start);
        }
        return;
    }
    int const length = getLastLen(line);
    setItemLeft(line, item, column <= length ? length + 1 : column);
}

psString psReportFormat::getLine(psString a, psString b, psString c, psString d, psString e,
                                 psString f) const {
    psString line;
    setStartLine(line);
    psString const* const items[] = {&a, &b, &c, &d, &e, &f};
    for (int i = 0; i < 6; ++i) {
        setItem(line, *items[i], pos[i]);
    }
    setEndLine(line);
    return line;
}

psString psReportFormat::getTimeStr(int seconds) {
    char text[40];
    snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
    return text;
}

psString cutoffNL(psString text) {
    int const end = text.find("\n", 0);
    return end < 0 ? text : text.substr(0, end);
}
