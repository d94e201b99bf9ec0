// pscommandlist.h - the words of command line, configuration file and response files as
// one list of keys with their arguments.
#ifndef PS_PSCOMMANDLIST_H
#define PS_PSCOMMANDLIST_H

#include "psbase/psstring.h"

// Two characters or more, the first "-" or "/".
bool isKeyString(psString const& word);

// A key's letter and its argument.
class psCommandKey {
public:
    // Takes both from a word, the argument from the next one if the word has none of its own.
    bool setArg(psString word, psString next); // false if word is no key
    bool getArg(char letter, psString& target) const;

    char key = ' ';
    psString arg;
};

// Keys with their arguments, in the order in which they are to be carried out.
class psCommandList : public psList<psCommandKey> {
public:
    bool isKey(char letter) const;
    bool getArg(char letter, psString& arg) const; // of the last such key

    bool insertArg(psString word, psString next, iterator where);
    bool setArg(psString word, psString next);
    bool setArg(char letter, psString arg);
    void insertArgs(psStringList const& words, iterator where);
    void insertArgs(char const* text, iterator where); // split at blanks and ";", quotes count
    void setArgs(psStringList const& words);
    void setArgs(char const* text);
    void setArgs(int count, char** words);              // as they stand
    bool insertFromFile(psString name, iterator where); // false, told, if it can't be opened
};

#endif
