// pscstream.cpp - lines of a table, written, held back and watched.
#include "psstream/pscstream.h"

#include "psstream/psostream.h"

void psCStream::setColm(int i, psString const& value) {
    if (i >= 0 && i < maxColumns) {
        columns[i] = value;
    }
}

bool psCStream::getColm(int i, psString& value) const {
    if (i < 0 || i >= maxColumns) {
        return false;
    }
    value = columns[i];
    return true;
}

void psCStream::setNextColm(psString const& value) {
    if (nextColm < maxColumns) {
        columns[nextColm++] = value;
    }
}

void psCStream::tableOut(int n) {
    psString line;
    int const width = n != 0 ? n : nextColm;
    for (int i = 0; i < width; ++i) {
        bool const filled = i < nextColm && i < maxColumns && !columns[i].empty();
        line << (i > 0 ? "," : "") << (filled ? columns[i].c_str() : "-");
    }
    line << '\n';
    for (o_stream* target : *this) {
        *target << line; // to the disk at once: a crash of measured code takes no finished line
    }
}

void psCStream::tableFlush() {
    nextColm = 0;
    for (psString& column : columns) {
        column.allocate(0);
    }
}

void psCStream::lineOut(int n) {
    tableOut(n);
    ++lineCount;
    if (identicalCount != 0) {
        addStore(identicalStore, columns);
    }
    tableFlush();
}

void psCStream::linePostpone() {
    addStore(postponeStore, columns);
    tableFlush();
}

void psCStream::linePostponeOut(int n) {
    psStringList::iterator places[maxColumns];
    resetStoreIterator(postponeStore, places);
    while (getStoreNext(postponeStore, columns, places)) {
        nextColm = n;
        lineOut(n);
    }
    clearStore(postponeStore);
}

void psCStream::lineAbandon() {
    tableFlush();
    clearStore(postponeStore);
    identicalLinesStart(0);
}

void psCStream::identicalLinesStart(int n) {
    identicalCount = n < 0 ? 0 : n < maxColumns ? n : maxColumns;
    clearStore(identicalStore);
}

bool psCStream::identicalLinesCheck() {
    int const stored = getStoreCount(identicalStore);
    auto const width = static_cast<std::size_t>(identicalCount);
    // The watched columns row by row, so that the comparison of each line with each other walks no
    // lists.
    auto* const rows = new psString[static_cast<std::size_t>(stored) * width];
    psStringList::iterator places[maxColumns];
    resetStoreIterator(identicalStore, places);
    psString line[maxColumns];
    for (psString* row = rows; getStoreNext(identicalStore, line, places); row += width) {
        for (int k = 0; k < identicalCount; ++k) {
            row[k] = line[k];
        }
    }

    bool found = false;
    int const firstLine = lineCount - stored + 1;
    psString const* first = rows;
    for (int i = 0; i < stored && !found; ++i, first += width) {
        psString const* second = first + width;
        for (int j = i + 1; j < stored && !found; ++j, second += width) {
            found = identicalColms(first, second, identicalCount);
            if (found) {
                g_ostrm << MSG_WARN << " Performance table warning:\n"
                        << " Lines " << firstLine + i << " & " << firstLine + j
                        << " have identical parameters\n"
                        << MSG_RESTORE_FLUSH;
            }
        }
    }
    delete[] rows;
    return found;
}

bool psCStream::identicalLinesStop() {
    if (identicalCount == 0 || identicalStore[0].empty()) {
        return false;
    }
    bool const found = identicalLinesCheck();
    identicalCount = 0;
    clearStore(identicalStore);
    return found;
}

bool psCStream::identicalColms(psString const* a, psString const* b, int n) {
    for (int k = 0; k < n; ++k) {
        if (!(a[k] == b[k])) {
            return false;
        }
    }
    return true;
}

void psCStream::addStore(psStringList* store, psString const* line) {
    for (int k = 0; k < maxColumns; ++k) {
        store[k].insert(store[k].end(), line[k]);
    }
}

int psCStream::getStoreCount(psStringList const* store) { return store[0].size(); }

void psCStream::resetStoreIterator(psStringList* store, psStringList::iterator* places) {
    for (int k = 0; k < maxColumns; ++k) {
        places[k] = store[k].begin();
    }
}

bool psCStream::getStoreNext(psStringList* store, psString* line, psStringList::iterator* places) {
    if (places[0] == store[0].end()) {
        return false;
    }
    for (int k = 0; k < maxColumns; ++k) {
        line[k] = *places[k]++;
    }
    return true;
}

void psCStream::clearStore(psStringList* store) {
    for (int k = 0; k < maxColumns; ++k) {
        store[k].clear();
    }
}

psCStream& operator<<(psCStream& out, psString const& text) {
    if (text == "\n") {
        out.lineOut(0);
    } else {
        out.setNextColm(text);
    }
    return out;
}
