// pscstream.h - comma-separated tables: a line is put together column by column and
// written to all target files at once. Lines can be held back, and watched for repeats.
#ifndef PSSTREAM_PSCSTREAM_H
#define PSSTREAM_PSCSTREAM_H

#include "psstream/psfilestream.h"

// A table: the line under construction, the lines held back and the lines under watch.
class psCStream : public psTargetList {
public:
    static constexpr int maxColumns = 32;

    void setNextColm(psString const& value); // dropped when all columns are filled
    // A column by its number, ignored outside the columns. Doesn't count as filled: who fills out
    // of turn sets nextColm behind the last column that shall be written.
    void setColm(int i, psString const& value);
    bool getColm(int i, psString& value) const; // false outside the columns

    void tableOut(int n);        // writes n columns (0: those filled), "-" for an empty one
    void tableFlush();           // empties the line
    void lineOut(int n);         // tableOut, count, watch, tableFlush
    void linePostpone();         // holds the line back
    void linePostponeOut(int n); // writes the held lines, oldest first
    void lineAbandon();          // forgets the line, the held lines and the watch

    // Watch for lines whose first n columns repeat, from start to stop. A repeat is told on
    // g_ostrm as a warning; stop answers whether there was one.
    void identicalLinesStart(int n);
    bool identicalLinesCheck();
    bool identicalLinesStop();
    static bool identicalColms(psString const* a, psString const* b, int n);

    int nextColm = 0; // columns filled so far; "-" is written for any behind them

private:
    static void addStore(psStringList* store, psString const* line);
    static int getStoreCount(psStringList const* store);
    static void resetStoreIterator(psStringList* store, psStringList::iterator* places);
    static bool getStoreNext(psStringList* store, psString* line, psStringList::iterator* places);
    static void clearStore(psStringList* store);

    psString columns[maxColumns];
    int lineCount = 0;                       // lines written since construction
    int identicalCount = 0;                  // leading columns under watch, 0: no watch
    psStringList identicalStore[maxColumns]; // list k holds column k of every stored line
    psStringList postponeStore[maxColumns];
};

// The text "\n" ends the line; any other text fills the next column.
psCStream& operator<<(psCStream& out, psString const& text);

template <typename T>
psCStream& tmOutTpl(psCStream& out, T value) {
    psString text;
    text << value;
    return out << text;
}
inline psCStream& operator<<(psCStream& out, char const* value) { return tmOutTpl(out, value); }
inline psCStream& operator<<(psCStream& out, int value) { return tmOutTpl(out, value); }

extern psCStream g_cstrm; // performance table
extern psCStream g_qstrm; // table of parameter names
extern psCStream g_mstrm; // has no target

#endif
