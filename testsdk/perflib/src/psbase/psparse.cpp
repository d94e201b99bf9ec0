// psparse.cpp - the word splitter.
#include "psbase/psparse.h"

#include <cstring>

void psParse::initParse(psString newSeparators) {
    position = 0;
    quoted = false;
    separators.allocate(0);
    for (int i = 0; i < newSeparators.size(); ++i) {
        if (newSeparators[i] == '"') {
            quoted = true;
        } else {
            separators += newSeparators[i];
        }
    }
}

bool psParse::isSeparator(int index) const {
    return std::memchr(separators.c_str(), text[index],
                       static_cast<std::size_t>(separators.size())) != nullptr;
}

bool psParse::nextWord(psString& word) {
    if (quoted) {
        return nextWord_quote(word);
    }
    word.allocate(0);
    if (!skipSeparators()) {
        return false;
    }
    int const first = position;
    while (position < text.size() && !isSeparator(position)) {
        ++position;
    }
    word = text.substr(first, position - first);
    return true;
}

bool psParse::nextWord_quote(psString& word) {
    word.allocate(0);
    // Once more after an empty word in quotes, which does not count.
    while (word.empty()) {
        if (!skipSeparators()) {
            return false;
        }
        if (text[position] == '"') {
            takeQuoted(word);
            continue;
        }
        int const first = position;
        while (position < text.size() && text[position] != '"' && !isSeparator(position)) {
            ++position;
        }
        word = text.substr(first, position - first);
    }
    return true;
}

int psParse::parse(psStringList& words, psString newSeparators) {
    initParse(newSeparators);
    words.clear();
    int count = 0;
    psString word;
    while (nextWord(word)) {
        words.insert(words.end(), word);
        ++count;
    }
    return count;
}

int psParse::parse(psString& a, psString& b, psString newSeparators) {
    psString* const targets[] = {&a, &b};
    return parseInto(targets, 2, newSeparators);
}

int psParse::parse(psString& a, psString& b, psString& c, psString newSeparators) {
    psString* const targets[] = {&a, &b, &c};
    return parseInto(targets, 3, newSeparators);
}

bool psParse::skipSeparators() {
    while (position < text.size() && isSeparator(position)) {
        ++position;
    }
    return position < text.size();
}

// Takes the word in quotes that begins at the position. The end of the text closes it as well.
void psParse::takeQuoted(psString& word) {
    for (++position; position < text.size(); ++position) {
        if (text[position] == '"') {
            ++position;
            if (position >= text.size() || text[position] != '"') {
                return;
            }
        }
        word += text[position];
    }
}

int psParse::parseInto(psString* const* targets, int room, psString const& newSeparators) {
    initParse(newSeparators);
    for (int i = 0; i < room; ++i) {
        targets[i]->allocate(0);
    }
    int count = 0;
    psString word;
    for (; nextWord(word); ++count) {
        if (count < room) {
            *targets[count] = word;
        }
    }
    return count;
}
