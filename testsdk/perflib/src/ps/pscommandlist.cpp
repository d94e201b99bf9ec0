// pscommandlist.cpp - how words become keys and arguments.
#include "ps/pscommandlist.h"

#include "psstream/psostream.h"

namespace {

// The quote turns quoting on, it does not separate.
constexpr char const* wordSeparators = " \";\t\r\n";

// Far above any list of keys that a person writes. A device that never ends stops here.
constexpr int maxResponseText = 1 << 22;

} // namespace

bool isKeyString(psString const& word) {
    return word.size() >= 2 && (word[0] == '-' || word[0] == '/');
}

bool psCommandKey::setArg(psString word, psString next) {
    if (!isKeyString(word)) {
        return false;
    }
    key = word[1];
    int rest = 2;
    arg = "";
    if (word[rest] == '-' || word[rest] == '+' || word[rest] == '=') {
        arg += word[rest++];
    }
    arg += rest < word.size() ? word.c_str() + rest : next.c_str();
    return true;
}

bool psCommandKey::getArg(char letter, psString& target) const {
    if (key != letter) {
        return false;
    }
    target = arg;
    return true;
}

bool psCommandList::isKey(char letter) const {
    for (psCommandKey const& item : *this) {
        if (item.key == letter) {
            return true;
        }
    }
    return false;
}

bool psCommandList::getArg(char letter, psString& arg) const {
    psCommandKey const* last = nullptr;
    for (psCommandKey const& item : *this) {
        if (item.key == letter) {
            last = &item;
        }
    }
    return last != nullptr && last->getArg(letter, arg);
}

bool psCommandList::insertArg(psString word, psString next, iterator where) {
    psCommandKey item;
    if (!item.setArg(word, next)) {
        return false;
    }
    insert(where, item);
    return true;
}

bool psCommandList::setArg(psString word, psString next) { return insertArg(word, next, end()); }

bool psCommandList::setArg(char letter, psString arg) {
    psString word("-");
    word += letter;
    return setArg(word, arg);
}

void psCommandList::insertArgs(psStringList const& words, iterator where) {
    auto word = words.begin();
    while (word != words.end()) {
        psString const& key = *word;
        ++word;
        psString next;
        // Taken from the words also when the key has a text of its own and has no use for it.
        if (word != words.end() && !isKeyString(*word)) {
            next = *word;
            ++word;
        }
        insertArg(key, next, where);
    }
}

void psCommandList::insertArgs(char const* text, iterator where) {
    psStringList words;
    psString(text).parse(words, wordSeparators);
    insertArgs(words, where);
}

void psCommandList::setArgs(psStringList const& words) { insertArgs(words, end()); }

void psCommandList::setArgs(char const* text) { insertArgs(text, end()); }

void psCommandList::setArgs(int count, char** words) {
    psStringList list;
    for (int i = 0; i < count; ++i) {
        list.insert(list.end(), words[i]);
    }
    setArgs(list);
}

bool psCommandList::insertFromFile(psString name, iterator where) {
    i_stream in(name, io_stream::Read, true);
    if (!in.isOpen()) {
        return false;
    }
    psString text;
    psString line;
    while (in.getline(line)) {
        text += line;
        text += ' ';
        if (text.size() > maxResponseText) {
            g_ostrm << MSG_ERR << "-- File " << name
                    << " is too long to hold command line options\n"
                    << MSG_RESTORE;
            return false;
        }
    }
    insertArgs(text.c_str(), where);
    return true;
}
