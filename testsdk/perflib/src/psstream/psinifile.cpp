// psinifile.cpp - reading, changing and rewriting an ini file.
#include "psstream/psinifile.h"

#include <sys/stat.h>

#include "psstream/psfilestream.h"
#include "psstream/psreplacefile.h"

namespace {

constexpr char bareKey[] = "~~~"; // the value of a key without a value

bool isRegularFile(psString const& path) {
    struct stat facts = {};
    return stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
}

} // namespace

psValues::~psValues() {
    for (psValueItem* item : *this) {
        delete item;
    }
}

psValueItem* psValues::exist(psString const& key) {
    for (psValueItem* item : *this) {
        if (item->key == key) {
            return item;
        }
    }
    return nullptr;
}

psSections::~psSections() {
    for (psSectionItem* item : *this) {
        delete item;
    }
}

psSectionItem* psSections::exist(psString const& name) {
    for (psSectionItem* item : *this) {
        if (item->name == name) {
            return item;
        }
    }
    return nullptr;
}

psIniFile::~psIniFile() { close(); }

bool psIniFile::open(psString name, bool forWriting) {
    close();
    fileName = name;
    writable = forWriting;
    // A file that exists and can't be read is no new file: creating it would destroy it.
    bool const mayCreate = forWriting && !isRegularFile(name);
    i_stream input(name, io_stream::Raw | io_stream::Read, !mayCreate);
    if (input.isOpen()) {
        psSectionItem* current = nullptr;
        psString line;
        while (input.getline(line)) {
            takeLine(line, current);
        }
        return true;
    }
    writable = mayCreate && o_stream(name, io_stream::Raw | io_stream::Write, true).isOpen();
    return writable;
}

bool psIniFile::sectionExist(psString section) { return sections.exist(section) != nullptr; }

bool psIniFile::valueExist(psString section, psString key) {
    psSectionItem* const item = sections.exist(section);
    return item != nullptr && item->values.exist(key) != nullptr;
}

psValues* psIniFile::getSectionValues(psString section) {
    psSectionItem* const item = sections.exist(section);
    return item != nullptr ? &item->values : nullptr;
}

psString psIniFile::read(psString section, psString key, psString defaultValue) {
    key.trim();
    psSectionItem* const item = sections.exist(section);
    psValueItem const* const found = item != nullptr ? item->values.exist(key) : nullptr;
    return found != nullptr ? found->value : defaultValue;
}

void psIniFile::write(psString section, psString key, psString value, psString comment) {
    psSectionItem* const item = provideSection(section);
    key.trim();
    if (key.empty()) {
        return;
    }
    if (psValueItem* const present = item->values.exist(key)) {
        present->value = value;
    } else {
        item->values.insert(item->values.end(), new psValueItem{key, value, comment});
    }
}

void psIniFile::write(psString section, psString key) { write(section, key, bareKey, ""); }

void psIniFile::write(psString section) { write(section, "", "", ""); }

void psIniFile::eraseSection(psString section) {
    for (auto place = sections.begin(); place != sections.end(); ++place) {
        if ((*place)->name == section) {
            delete *place;
            sections.erase(place);
            return;
        }
    }
}

void psIniFile::deleteKey(psString section, psString key) {
    psSectionItem* const item = sections.exist(section);
    if (item == nullptr) {
        return;
    }
    for (auto place = item->values.begin(); place != item->values.end(); ++place) {
        if ((*place)->key == key) {
            delete *place;
            item->values.erase(place);
            return;
        }
    }
}

void psIniFile::updateFile() {
    if (!writable) {
        return;
    }
    psString text;
    for (psSectionItem const* section : sections) {
        text << "\n[" << section->name << "]\n";
        for (psValueItem const* item : section->values) {
            text << item->key;
            if (!(item->value == bareKey)) {
                text << "=" << item->value;
                if (!item->comment.empty()) {
                    text << "\t// " << item->comment;
                }
            }
            text << "\n";
        }
    }
    (void)psReplaceFile(fileName, text); // tells a failure, and leaves the file as it was
}

void psIniFile::close() {
    updateFile();
    writable = false; // what is forgotten is not to be written
    for (psSectionItem* item : sections) {
        delete item;
    }
    sections.clear();
}

bool psIniFile::getSection(psString line, psString& name) {
    int const opening = line.find("[", 0);
    int const closing = opening < 0 ? -1 : line.find("]", opening + 1);
    if (closing < 0) {
        return false;
    }
    name = line.substr(opening + 1, closing - opening - 1);
    name.trim();
    return true;
}

bool psIniFile::getValue(psString line, psString& key, psString& value) {
    int const sign = line.find("=", 0);
    key = sign < 0 ? line : line.substr(0, sign);
    value = sign < 0 ? psString(bareKey) : line.substr(sign + 1);
    key.trim();
    value.trim();
    return true;
}

psSectionItem* psIniFile::provideSection(psString const& name) {
    psSectionItem* item = sections.exist(name);
    if (item == nullptr) {
        item = new psSectionItem;
        item->name = name;
        sections.insert(sections.end(), item);
    }
    return item;
}

// One line of the file: current is the section that it belongs to, or null, and is changed by a
// section's header.
void psIniFile::takeLine(psString line, psSectionItem*& current) {
    int const comment = line.find("//", 0);
    if (comment >= 0) {
        line = line.substr(0, comment);
    }
    line.trim();
    psString name;
    if (line.empty()) {
        return;
    }
    if (getSection(line, name)) {
        current = provideSection(name);
        return;
    }
    psString key;
    psString value;
    // The first of two equal keys wins. An empty key is kept here, unlike in write.
    if (current != nullptr && getValue(line, key, value) && current->values.exist(key) == nullptr) {
        current->values.insert(current->values.end(), new psValueItem{key, value, ""});
    }
}
