// psistream.h - where parameter values come from: -d data, then the ini file, then the
// console, then the default.
#ifndef PSSTREAM_PSISTREAM_H
#define PSSTREAM_PSISTREAM_H

#include "psstream/psfilestream.h"
#include "psstream/psinifile.h"

// A value given on the command line.
struct psData {
    psString key;
    psString value;
};

// The given values, oldest first; a key stands there once.
class psDataList : public psList<psData> {
public:
    void set(psString text);                // "key=value"; what stands behind a further "=" is lost
    void set(psString key, psString value); // trims both; an old pair of the key is removed
    iterator find(psString const& key);     // end() if absent
    bool get(psString const& key, psString& value);
};

// Answers what the value of an item is, and remembers where the answer came from.
class psIStream {
public:
    enum Source { FromDefault = 0, FromConsole = 1, FromIni = 2, FromData = 3 };

    psIStream() = default;
    psIStream(psIStream const&) = delete;
    psIStream& operator=(psIStream const&) = delete;
    virtual ~psIStream();

    bool batchMode() const { return stream == nullptr; }
    int source() const { return itemSource; } // of the last value, a Source

    void setIStream(i_stream* input); // takes it over, but for c_in; null ends the dialogue
    bool setIniFile(psString name, bool writable);
    void deleteIniFile();
    bool hasIniFile() const { return iniFile != nullptr; }
    psIniFile* getIniFile() { return iniFile; } // null if none
    bool savesToIni() const { return saveToIni && iniFile != nullptr; }
    psString setIniSection(psString section); // gives the previous one
    void setData(psString text) { dataList.set(text); }
    bool hasItem(psString const& key); // without a question

    // The value of an item, and source() of it: by find, else typed, else the default. Stores it in
    // a writable ini file, with the comment.
    psString getItemValue(psString key, psString defaultValue, psString title, psString comment);

    // Prompts on c_out and reads one line. source() is FromDefault for an empty one.
    psString getItemValue(i_stream& input, psString title, psString defaultValue);

    void close() {}

private:
    // By -d data or in the ini file's section; FromDefault if in neither, value stays then.
    Source find(psString const& key, psString& value);

    i_stream* stream = nullptr;
    psIniFile* iniFile = nullptr;
    psDataList dataList;
    psString iniSection = "Perf System";
    bool saveToIni = false; // of iniFile, while there is one
    int itemSource = FromDefault;
};

extern psIStream g_istrm;

#endif
