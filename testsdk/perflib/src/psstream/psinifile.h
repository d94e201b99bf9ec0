// psinifile.h - test parameters kept between runs: sections of keys and values, read
// whole at the start and rewritten whole at the end.
#ifndef PSSTREAM_PSINIFILE_H
#define PSSTREAM_PSINIFILE_H

#include "psbase/psstring.h"

// A key of a section.
struct psValueItem {
    psString key;
    psString value; // "~~~" marks a key without a value
    psString comment;
};

// The keys of a section, owned, in order of insertion.
class psValues : public psList<psValueItem*> {
public:
    psValues() = default;
    psValues(psValues const&) = delete;
    psValues& operator=(psValues const&) = delete;
    ~psValues() override;
    psValueItem* exist(psString const& key); // null if absent
};

// A section.
struct psSectionItem {
    psString name;
    psValues values;
};

// The sections of a file, owned, in order of insertion.
class psSections : public psList<psSectionItem*> {
public:
    psSections() = default;
    psSections(psSections const&) = delete;
    psSections& operator=(psSections const&) = delete;
    ~psSections() override;
    psSectionItem* exist(psString const& name); // null if absent
};

// The whole file in memory; only updateFile and close write it.
class psIniFile {
public:
    psIniFile() = default;
    psIniFile(psIniFile const&) = delete;
    psIniFile& operator=(psIniFile const&) = delete;
    ~psIniFile(); // close()

    // Reads the file. A writable one that does not exist is created. False, told, if that fails;
    // also for a file that exists and can't be read, which is left as it is.
    bool open(psString name, bool forWriting);

    bool sectionExist(psString section);
    bool valueExist(psString section, psString key);
    psValues* getSectionValues(psString section); // null if absent; not the caller's

    psString read(psString section, psString key, psString defaultValue);

    // Change the memory only; the comment of a key that is there already stays.
    void write(psString section, psString key, psString value, psString comment);
    void write(psString section, psString key);
    void write(psString section);
    void eraseSection(psString section);
    void deleteKey(psString section, psString key);

    void updateFile(); // replaces the file, as a whole, if it is writable
    void close();      // updateFile, then forgets all and is not writable any more

    // The grammar of a line. getValue is always true.
    static bool getSection(psString line, psString& name);
    static bool getValue(psString line, psString& key, psString& value);

private:
    psSectionItem* provideSection(psString const& name); // found, or made
    void takeLine(psString line, psSectionItem*& current);

    psString fileName;
    psSections sections;
    bool writable = false;
};

#endif
