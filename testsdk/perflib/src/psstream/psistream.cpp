// psistream.cpp - the order in which the value of an item is looked for.
#include "psstream/psistream.h"

void psDataList::set(psString text) {
    psString key;
    psString value;
    text.parse(key, value, "=");
    set(key, value);
}

void psDataList::set(psString key, psString value) {
    key.trim();
    value.trim();
    if (key.empty()) {
        return;
    }
    auto const old = find(key);
    if (old != end()) {
        erase(old);
    }
    insert(end(), psData{key, value});
}

psDataList::iterator psDataList::find(psString const& key) {
    auto place = begin();
    while (place != end() && !(place->key == key)) {
        ++place;
    }
    return place;
}

bool psDataList::get(psString const& key, psString& value) {
    auto const place = find(key);
    if (place == end()) {
        return false;
    }
    value = place->value;
    return true;
}

psIStream::~psIStream() {
    setIStream(nullptr);
    deleteIniFile();
}

void psIStream::setIStream(i_stream* input) {
    if (stream != &c_in && stream != input) {
        delete stream;
    }
    stream = input;
}

bool psIStream::setIniFile(psString name, bool writable) {
    delete iniFile;
    iniFile = new psIniFile;
    saveToIni = writable;
    return iniFile->open(io_stream::inPathHook(name), writable);
}

void psIStream::deleteIniFile() {
    delete iniFile;
    iniFile = nullptr;
}

psString psIStream::setIniSection(psString section) {
    psString const previous = iniSection;
    iniSection = section;
    return previous;
}

bool psIStream::hasItem(psString const& key) {
    psString value;
    return find(key, value) != FromDefault;
}

psString psIStream::getItemValue(psString key, psString defaultValue, psString title,
                                 psString comment) {
    psString value = defaultValue;
    itemSource = find(key, value);
    if (itemSource == FromDefault && stream != nullptr) {
        // Says the source anew. An empty answer stays empty: the caller sees by source() that its
        // default holds.
        value = getItemValue(*stream, title.empty() ? key : title, defaultValue);
    }
    if (savesToIni()) {
        iniFile->write(iniSection, key, value, comment);
    }
    return value;
}

psString psIStream::getItemValue(i_stream& input, psString title, psString defaultValue) {
    c_out << "\n " << title << " [" << defaultValue << "] = ";
    c_out.flush();
    psString answer;
    input.getline(answer);
    itemSource = answer.empty() ? FromDefault : FromConsole;
    return answer;
}

psIStream::Source psIStream::find(psString const& key, psString& value) {
    if (dataList.get(key, value)) {
        return FromData;
    }
    psString const stored = iniFile != nullptr ? iniFile->read(iniSection, key, "") : psString();
    if (stored.empty()) {
        return FromDefault;
    }
    value = stored;
    return FromIni;
}
