// psstring.cpp - buffer handling, search, and the conversions of psString.
#include "psbase/psstring.h"

#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "psbase/psexception.h"
#include "psbase/psparse.h"

namespace {

constexpr int maxLength = INT_MAX - 16; // the greatest whose buffer's size is an int

std::size_t bytes(int count) { return static_cast<std::size_t>(count); }

// The length of a text that is not ours.
int lengthOf(char const* text) {
    std::size_t const length = std::strlen(text);
    return length < bytes(INT_MAX) ? static_cast<int>(length) : INT_MAX;
}

void checkLength(long long length) {
    if (length > maxLength) {
        throw psException::failure("a text of more than 2147483631 characters");
    }
}

// What calloc or realloc gave.
char* checkMemory(void* memory) {
    if (memory == nullptr) {
        throw psException::failure("no memory for a text");
    }
    return static_cast<char*>(memory);
}

// A failed conversion is sscanf's 0. Its end-of-input result, for an empty text, is no failure.
template <typename T>
T& scanInteger(T& target, psString& source, char const* decimal, char const* hexadecimal) {
    bool const isHex = source.size() >= 2 && source[0] == '0' && (source[1] | 0x20) == 'x';
    int const done = std::sscanf(source.c_str(), isHex ? hexadecimal : decimal, &target);
    source.setErrorConvertion(done == 0);
    return target;
}

template <typename T>
psString& appendFormatted(psString& target, char const* format, T value) {
    char text[40];
    (void)std::snprintf(text, sizeof text, format, value);
    return target += text;
}

} // namespace

psString::psString() : psString("") {}

psString::psString(char const* text)
    : buffer(nullptr), length(0), capacity(0), conversionError(false) {
    assign(text);
}

psString::psString(psString const& other)
    : buffer(nullptr), length(0), capacity(0), conversionError(false) {
    assign(other);
}

psString& psString::operator=(psString const& other) {
    if (this != &other) {
        assign(other);
    }
    return *this;
}

psString::~psString() { std::free(buffer); }

void psString::assign(char const* text) {
    if (text == nullptr) {
        text = "";
    }
    if (owns(text)) {
        psString const copy(text);
        assign(copy);
        return;
    }
    allocate(lengthOf(text));
    std::memcpy(buffer, text, bytes(length));
}

void psString::assign(psString const& other) {
    if (this != &other) {
        allocate(other.length);
        std::memcpy(buffer, other.buffer, bytes(length));
    }
}

void psString::assign(char letter) {
    allocate(1);
    buffer[0] = letter;
}

int psString::getBufSize(int n) { return (n + 16) / 16 * 16; }

void psString::allocate(int n) {
    checkLength(n);
    int const newLength = n > 0 ? n : 0;
    int const wanted = getBufSize(newLength);
    if (buffer != nullptr && capacity == wanted) {
        std::memset(buffer, 0, bytes(capacity));
    } else {
        char* const made = checkMemory(std::calloc(bytes(wanted), 1));
        std::free(buffer);
        buffer = made;
        capacity = wanted;
    }
    length = newLength;
}

void psString::growBy(int n) {
    if (n <= 0) {
        return;
    }
    checkLength(static_cast<long long>(length) + n);
    int const newLength = length + n;
    if (newLength >= capacity) {
        int const wanted = getBufSize(newLength);
        // Not allocate and copy: realloc extends in place or moves pages, so that a text of many
        // megabytes can grow by short pieces.
        char* const grown = checkMemory(std::realloc(buffer, bytes(wanted)));
        std::memset(grown + capacity, 0, bytes(wanted - capacity));
        buffer = grown;
        capacity = wanted;
    }
    length = newLength;
}

void psString::resize(int n, char fill) {
    if (n == length) {
        return;
    }
    psString const old(*this);
    allocate(n);
    int const kept = old.length < length ? old.length : length;
    std::memcpy(buffer, old.buffer, bytes(kept));
    if (!old.empty()) {
        std::memset(buffer + kept, fill, bytes(length - kept));
    }
}

psString& psString::operator+=(psString const& other) {
    int const at = length;
    int const count = other.length;
    growBy(count);
    std::memcpy(buffer + at, other.buffer, bytes(count)); // other may be this string
    return *this;
}

psString& psString::operator+=(char const* text) {
    if (text == nullptr) {
        return *this;
    }
    if (owns(text)) {
        return *this += psString(text);
    }
    int const at = length;
    int const count = lengthOf(text);
    growBy(count);
    std::memcpy(buffer + at, text, bytes(count));
    return *this;
}

psString& psString::operator+=(char letter) {
    growBy(1);
    buffer[length - 1] = letter;
    return *this;
}

bool psString::operator==(psString const& other) const { return *this == other.buffer; }

bool psString::operator==(char const* text) const {
    return std::strcmp(buffer, text != nullptr ? text : "") == 0;
}

int psString::compare(psString const& other) const {
    for (int i = 0; i < length && i < other.length; ++i) {
        auto const mine = static_cast<signed char>(buffer[i]);
        auto const others = static_cast<signed char>(other.buffer[i]);
        if (mine != others) {
            return mine < others ? -1 : 1;
        }
    }
    return length - other.length;
}

int psString::find(psString const& pattern, int pos) const {
    if (pattern.empty()) {
        return pos;
    }
    for (int i = pos > 0 ? pos : 0; i <= length - pattern.length; ++i) {
        if (std::memcmp(buffer + i, pattern.buffer, bytes(pattern.length)) == 0) {
            return i;
        }
    }
    return -1;
}

int psString::rfind(psString const& pattern) const {
    for (int i = length - pattern.length; i >= 0; --i) {
        if (std::memcmp(buffer + i, pattern.buffer, bytes(pattern.length)) == 0) {
            return i;
        }
    }
    return -1;
}

psString psString::substr(int pos, int n) const {
    psString part;
    int const behind = length - pos;
    int const count = n < behind ? n : behind;
    if (count > 0) {
        part.allocate(count);
        std::memcpy(part.buffer, buffer + pos, bytes(count));
    }
    return part;
}

psString psString::substr(int pos) const { return substr(pos, length); }

psString psString::toLower() const {
    psString lowered(*this);
    for (int i = 0; i < length; ++i) {
        lowered[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(buffer[i])));
    }
    return lowered;
}

void psString::trim() {
    int first = 0;
    while (first < length &&
           (buffer[first] == ' ' || buffer[first] == '\t' || buffer[first] == '\r')) {
        ++first;
    }
    // No carriage return at this end: only blanks and tabs go behind the text.
    int last = length - 1;
    while (last >= first && (buffer[last] == ' ' || buffer[last] == '\t')) {
        --last;
    }
    if (last - first + 1 != length) {
        *this = substr(first, last - first + 1);
    }
}

psString psString::prefixI64() { return "L"; }

psString psString::getFileName() const { return substr(getFileDir().length); }

psString psString::getFileDir() const {
    int const slash = rfind("/");
    int const backslash = rfind("\\");
    return substr(0, (slash > backslash ? slash : backslash) + 1);
}

psString psString::getFileTitle() const {
    psString const name = getFileName();
    int const point = name.rfind(".");
    return point < 0 ? name : name.substr(0, point);
}

int psString::parse(psStringList& words, psString separators) const {
    return psParse(*this).parse(words, separators);
}

int psString::parse(psString& a, psString& b, psString separators) const {
    return psParse(*this).parse(a, b, separators);
}

int psString::parse(psString& a, psString& b, psString& c, psString separators) const {
    return psParse(*this).parse(a, b, c, separators);
}

psString psString::enumString(int value, int const* values, psString const* names, int count) {
    for (int i = 0; i < count; ++i) {
        if (values[i] == value) {
            return names[i];
        }
    }
    psString number;
    return number << value;
}

psString psString::flagString(int value, int const* flags, psString const* names, int count) {
    psString joined;
    bool any = false;
    for (int i = 0; i < count; ++i) {
        if ((flags[i] & value) != 0) {
            joined << (any ? "|" : "") << names[i];
            any = true;
        }
    }
    return any ? joined : joined << value;
}

int psString::enumValue(psString text, int const* values, psString const* names, int count,
                        int offset) {
    for (int i = 0; i < count; ++i) {
        if (fitString(text, names[i], offset)) {
            return values[i];
        }
    }
    return 0;
}

int psString::flagValue(psString text, int const* flags, psString const* names, int count,
                        int offset) {
    psStringList words;
    text.parse(words, "|,; ");
    int united = 0;
    for (psString const& word : words) {
        for (int i = 0; i < count; ++i) {
            if (fitString(word, names[i], offset)) {
                united |= flags[i];
                break;
            }
        }
    }
    return united;
}

bool psString::owns(char const* text) const { return text >= buffer && text < buffer + capacity; }

psString operator+(psString const& left, psString const& right) {
    psString sum(left);
    return sum += right;
}

bool fitString(psString input, psString name, int offset) {
    input = input.toLower();
    name = name.toLower();
    return name.substr(offset, input.size()) == input || name.substr(0, input.size()) == input;
}

int& operator<<(int& target, psString& source) { return scanInteger(target, source, "%d", "%x"); }

long long& operator<<(long long& target, psString& source) {
    return scanInteger(target, source, "%lld", "%llx");
}

unsigned long long& operator<<(unsigned long long& target, psString& source) {
    return scanInteger(target, source, "%lld", "%llx");
}

double& operator<<(double& target, psString& source) {
    source.setErrorConvertion(std::sscanf(source.c_str(), "%lf", &target) == 0);
    return target;
}

float& operator<<(float& target, psString& source) {
    double wide = static_cast<double>(target);
    wide << source;
    target = static_cast<float>(wide);
    return target;
}

bool& operator<<(bool& target, psString& source) {
    psString text = source.toLower();
    text.trim();
    char const first = text[0];
    bool const isTrue = first == 'y' || first == 't' || text == "1";
    bool const isFalse = first == 'n' || first == 'f' || text == "0";
    source.setErrorConvertion(!isTrue && !isFalse);
    target = isTrue;
    return target;
}

psString& operator<<(psString& target, psString const& value) { return target += value; }
psString& operator<<(psString& target, char value) { return target += value; }
psString& operator<<(psString& target, char const* value) { return target += value; }
psString& operator<<(psString& target, int value) { return appendFormatted(target, "%d", value); }

psString& operator<<(psString& target, unsigned value) {
    return appendFormatted(target, "%u", value);
}

psString& operator<<(psString& target, long long value) {
    return appendFormatted(target, "%lld", value);
}

psString& operator<<(psString& target, unsigned long long value) {
    return target << static_cast<long long>(value);
}

psString& operator<<(psString& target, double value) {
    return appendFormatted(target, "%.3g", value);
}

psString& operator<<(psString& target, float value) { return target << static_cast<double>(value); }
psString& operator<<(psString& target, bool value) { return target += value ? "yes" : "no"; }

psString& operator<<(psString& target, void const* value) {
    if (value == nullptr) {
        return target += "NULL";
    }
    return appendFormatted(target, "%llX", reinterpret_cast<unsigned long long>(value));
}
