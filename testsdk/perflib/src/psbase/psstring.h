// psstring.h - the framework's string: one owned, zero-padded buffer and the
// conversions between text, numbers and named flags.
#ifndef PSBASE_PSSTRING_H
#define PSBASE_PSSTRING_H

#include "psbase/pslist.h"

// A text that would need more memory than there is, or more than 2147483631 characters, is a
// psException, and the string stays as it was.
class psString;
using psStringList = psList<psString>;

class psString {
public:
    psString();
    psString(char const* text); // null counts as ""
    psString(psString const& other);
    psString& operator=(psString const& other);
    virtual ~psString();

    void assign(char const* text);
    void assign(psString const& other);
    void assign(char letter); // length 1, also for a zero character

    // The buffer itself, writable, never null, zero-terminated.
    char* c_str() { return buffer; }
    char const* c_str() const { return buffer; }
    explicit operator char*() { return buffer; }

    // No bounds check.
    char& at(int index) { return buffer[index]; }
    char at(int index) const { return buffer[index]; }
    char& operator[](int index) { return buffer[index]; }
    char operator[](int index) const { return buffer[index]; }

    int size() const { return length; }
    int capacityBytes() const { return capacity; }
    bool empty() const { return length == 0; }

    // Outcome of the last conversion that read this string; nothing else changes it.
    bool errorConvertion() const { return conversionError; }
    void setErrorConvertion(bool failed) { conversionError = failed; }

    // Bytes of the buffer for n characters: n + 1 rounded up to a multiple of 16.
    static int getBufSize(int n);

    void allocate(int n);          // length n (negative counts as 0), all zero bytes
    void growBy(int n);            // n more zero bytes behind the text, if n is above 0
    void resize(int n, char fill); // the fill is left out when the old text was empty

    psString& operator+=(psString const& other);
    psString& operator+=(char const* text);
    psString& operator+=(char letter);

    bool operator==(psString const& other) const; // bytes up to the terminators
    bool operator==(char const* text) const;
    int compare(psString const& other) const; // signed characters, then the lengths' difference

    int find(psString const& pattern, int pos) const; // index, -1 if absent
    bool contains(psString const& pattern) const { return find(pattern, 0) >= 0; }
    int rfind(psString const& pattern) const; // index, -1 if absent
    psString substr(int pos, int n) const;    // pos must not exceed the length
    psString substr(int pos) const;           // empty if pos is above the length

    psString toLower() const;
    void trim(); // a trailing carriage return stays

    static psString prefixI64(); // length modifier of 64-bit formats

    // Parts of a path; both "/" and "\\" separate.
    psString getFileName() const;
    psString getFileDir() const; // with its separator, empty if there is none
    psString getFileTitle() const;

    // Split into words by the separators in the last argument (see psParse); give the number of
    // words. The two- and three-word forms drop what follows.
    int parse(psStringList& words, psString separators) const;
    int parse(psString& a, psString& b, psString separators) const;
    int parse(psString& a, psString& b, psString& c, psString separators) const;

    // Conversions between values and names, over parallel tables of count entries. The first
    // entry that fits wins, so the order of a table is part of its meaning. A name that fits
    // nothing gives 0, and adds no flag: the text is a copy, so its own flag can't tell.
    static psString enumString(int value, int const* values, psString const* names, int count);
    static psString flagString(int value, int const* flags, psString const* names, int count);
    static int enumValue(psString text, int const* values, psString const* names, int count,
                         int offset);
    static int flagValue(psString text, int const* flags, psString const* names, int count,
                         int offset);

private:
    bool owns(char const* text) const; // whether text lies in the buffer

    char* buffer;         // from calloc, never null; every byte behind length is zero
    int length;           // characters, without the terminator
    int capacity;         // bytes, a multiple of 16
    bool conversionError; // see errorConvertion
};

psString operator+(psString const& left, psString const& right);

// True when input abbreviates name, whole or from offset on, in any case.
bool fitString(psString input, psString name, int offset);

// Text to value: the target keeps its value, and the source's flag is set, when the text does not
// begin with a number. A leading 0x takes the hexadecimal form (not for the floating types).
int& operator<<(int& target, psString& source);
long long& operator<<(long long& target, psString& source);
unsigned long long& operator<<(unsigned long long& target, psString& source);
double& operator<<(double& target, psString& source);
float& operator<<(float& target, psString& source);
bool& operator<<(bool& target, psString& source); // false after a failure

// Value to text, appended. Floating values get three significant digits ("%.3g").
psString& operator<<(psString& target, psString const& value);
psString& operator<<(psString& target, char value);
psString& operator<<(psString& target, char const* value);
psString& operator<<(psString& target, int value);
psString& operator<<(psString& target, unsigned value);
psString& operator<<(psString& target, long long value);
psString& operator<<(psString& target, unsigned long long value); // as signed
psString& operator<<(psString& target, double value);
psString& operator<<(psString& target, float value);
psString& operator<<(psString& target, bool value);        // "yes" or "no"
psString& operator<<(psString& target, void const* value); // "NULL" or upper-case hexadecimal

#endif
