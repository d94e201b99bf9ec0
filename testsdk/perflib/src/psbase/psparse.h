// psparse.h - splits a text into words by a set of separator characters. A double
// quote among the separators turns quoting on instead of separating.
#ifndef PSBASE_PSPARSE_H
#define PSBASE_PSPARSE_H

#include "psbase/psstring.h"

// One text and the place reached in it.
class psParse {
public:
    explicit psParse(psString const& source) : text(source), position(0), quoted(false) {}

    void initParse(psString newSeparators);
    bool isSeparator(int index) const;
    bool nextWord(psString& word);       // false at the end of the text
    bool nextWord_quote(psString& word); // the same under quoting

    // Each gives the number of words in the text, also those that the target has no room for.
    int parse(psStringList& words, psString newSeparators);
    int parse(psString& a, psString& b, psString newSeparators);
    int parse(psString& a, psString& b, psString& c, psString newSeparators);

private:
    bool skipSeparators(); // false at the end of the text
    void takeQuoted(psString& word);
    int parseInto(psString* const* targets, int room, psString const& newSeparators);

    psString text;
    psString separators;
    int position; // index at which the next word is looked for
    bool quoted;  // a double quote stood among the separators
};

#endif
