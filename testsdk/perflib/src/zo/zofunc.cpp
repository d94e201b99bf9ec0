// zofunc.cpp - the language of function names.
#include "zo/zofunc.h"

#include <cstring>

namespace {

struct TypeName {
    char const* text;
    zoType type;
    ZolDataType constant; // of the library
};
// The first row of a code gives its text and its constant.
TypeName const typeNames[] = {
    {"8u", zo8u, zol8u},       {"1u", zo1u, zol8u},       {"8s", zo8s, zol8s},
    {"8sc", zo8sc, zol8sc},    {"16u", zo16u, zol16u},    {"16s", zo16s, zol16s},
    {"16sc", zo16sc, zol16sc}, {"16uc", zo16uc, zol16uc}, {"32u", zo32u, zol32u},
    {"32s", zo32s, zol32s},    {"32sc", zo32sc, zol32sc}, {"32f", zo32f, zol32f},
    {"32fc", zo32fc, zol32fc}, {"64u", zo64u, zol64u},    {"64s", zo64s, zol64s},
    {"64sc", zo64sc, zol64sc}, {"64f", zo64f, zol64f},    {"64fc", zo64fc, zol64fc},
};
TypeName const noType = {"undef", 0, zolTypeUndef};

TypeName const& rowOfType(zoType type) {
    for (TypeName const& row : typeNames) {
        if (type == row.type) {
            return row;
        }
    }
    return noType;
}

// Searched in this order: longer texts stand before those that they contain.
char const* const baseTypes[] = {"64fc", "64sc", "64s",  "64f", "32fc", "32sc", "32u", "32s",
                                 "32f",  "16sc", "16uc", "16u", "16s",  "8sc",  "8u",  "8s"};

struct ChannelToken {
    char const* text;
    ZolChannels constant; // of the library
};
// No token begins another one, so the order is free.
ChannelToken const channelTokens[] = {
    {"C0", zolC0},   {"C1", zolC1},   {"C2", zolC2},     {"C3", zolC3},
    {"C4", zolC4},   {"P2", zolP2},   {"P3", zolP3},     {"P4", zolP4},
    {"AC1", zolAC1}, {"AC4", zolAC4}, {"A0C4", zolA0C4}, {"AP4", zolAP4},
};

// What a name's base makes of the types that its list gives to the arguments.
enum TypeChange { Keep, Real, Cplx, Byte };
struct TypeRule {
    char const* word;
    TypeChange src;
    TypeChange src2;
    TypeChange dst;
    TypeChange dst2;
};
// The first word that the base holds decides.
TypeRule const typeRules[] = {
    {"PolarToCart", Real, Real, Cplx, Cplx}, {"CartToPolar", Cplx, Cplx, Real, Real},
    {"RealToCplx", Real, Real, Cplx, Cplx},  {"CplxToReal", Cplx, Cplx, Real, Real},
    {"Real", Keep, Keep, Real, Real},        {"Imag", Keep, Keep, Real, Real},
    {"Magnitude", Keep, Keep, Real, Real},   {"Phase", Keep, Keep, Real, Real},
    {"PowerSpectr", Keep, Keep, Real, Real}, {"Goertz", Keep, Keep, Cplx, Cplx},
    {"Compare", Keep, Keep, Byte, Byte},
};

zoType changed(zoType type, TypeChange change) {
    switch (change) {
    case Real:
        return type & ~zoComplex;
    case Cplx:
        return type | zoComplex;
    case Byte:
        return zo8u;
    default:
        return type;
    }
}

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

bool beginsWith(psString const& text, char const* head) {
    return strncmp(text.c_str(), head, strlen(head)) == 0;
}

// Token at the head of the text, null if there is none.
char const* channelToken(char const* text) {
    for (ChannelToken const& token : channelTokens) {
        if (strncmp(text, token.text, strlen(token.text)) == 0) {
            return token.text;
        }
    }
    return nullptr;
}

} // namespace

psString zoFunc::prefix() const {
    return beginsWith(*this, "zols") || beginsWith(*this, "zoli") ? substr(0, 4) : psString();
}

psString zoFunc::baseName() const {
    psString base;
    psString types;
    psString descr;
    parseFunction(base, types, descr);
    return base;
}

psString zoFunc::typeName() const {
    psString base;
    psString types;
    psString descr;
    parseFunction(base, types, descr);
    return types;
}

psString zoFunc::descrName() const {
    psString base;
    psString types;
    psString descr;
    parseFunction(base, types, descr);
    return descr;
}

void zoFunc::parseFunction(psString& base, psString& type, psString& descr) const {
    type = "";
    descr = "";
    int const start = prefix().size();
    int bar = find("_", start);
    while (bar >= 0 && lenOfType(substr(bar + 1)) == 0) {
        bar = find("_", bar + 1);
    }
    if (bar < 0) {
        base = substr(start);
        return;
    }
    base = substr(start, bar - start);
    int const second = find("_", bar + 1);
    if (second < 0) {
        type = substr(bar + 1);
        return;
    }
    type = substr(bar + 1, second - bar - 1);
    descr = substr(second + 1);
}

void zoFunc::parseFunction(psString& base, psString& type1, psString& type2, psString& type3,
                           psString& descr) const {
    psString rest;
    parseFunction(base, rest, descr);
    psString last;
    for (psString* target : {&type1, &type2, &type3}) {
        psString const head = firstType(rest);
        if (!head.empty()) {
            last = head;
            rest = rest.substr(head.size());
        }
        *target = last;
    }
}

int zoFunc::compare(zoFunc other) const {
    psString base;
    psString types;
    psString descr;
    parseFunction(base, types, descr);
    psString otherBase;
    psString otherTypes;
    psString otherDescr;
    other.parseFunction(otherBase, otherTypes, otherDescr);
    int order = (prefix() + base).compare(other.prefix() + otherBase);
    if (order == 0) {
        order = compareTypes(types, otherTypes);
    }
    return order != 0 ? order : compareDescr(descr, otherDescr);
}

int zoFunc::compareTypes(psString a, psString b) {
    for (int round = 0; round < 3; ++round) {
        psString const x = firstType(a);
        psString const y = firstType(b);
        if (x.empty() || y.empty()) {
            return (x.empty() ? 0 : 1) - (y.empty() ? 0 : 1);
        }
        zoType const xType = stringToType(x);
        zoType const yType = stringToType(y);
        int const plain = (xType & ~zoComplex) - (yType & ~zoComplex);
        int const order = plain != 0 ? plain : (xType & zoComplex) - (yType & zoComplex);
        if (order != 0) {
            return order;
        }
        a = a.substr(x.size());
        b = b.substr(y.size());
    }
    return 0;
}

// In-place forms stand behind the others, alpha forms behind their plain channel forms.
int zoFunc::compareDescr(psString a, psString b) {
    bool const aInplace = a.contains("I");
    bool const bInplace = b.contains("I");
    if (aInplace != bInplace) {
        return aInplace ? 1 : -1;
    }
    if (beginsWith(a, "AC4") && beginsWith(b, "C")) {
        return 1;
    }
    if (beginsWith(a, "C") && beginsWith(b, "AC4")) {
        return -1;
    }
    return a.compare(b);
}

int zoFunc::lenOfType(psString const& text) {
    int length = 0;
    while (isDigit(text[length])) { // a text ends with a zero byte
        ++length;
    }
    char const kind = text[length];
    if (length == 0 || (kind != 'u' && kind != 's' && kind != 'f')) {
        return 0;
    }
    ++length;
    return text[length] == 'c' ? length + 1 : length;
}

psString zoFunc::firstType(psString const& text) { return text.substr(0, lenOfType(text)); }

zoType zoFunc::stringToType(psString text) {
    for (TypeName const& row : typeNames) {
        if (text == row.text) {
            return row.type;
        }
    }
    return 0;
}

psString zoFunc::typeToString(zoType type) { return rowOfType(type).text; }

ZolDataType zoFunc::zolType(zoType type) { return rowOfType(type).constant; }

zoType zoFunc::typeFromBase() const {
    psString const base = baseName();
    for (char const* text : baseTypes) {
        if (base.contains(text)) {
            return stringToType(text);
        }
    }
    return 0;
}

// Two types are those of sources and destinations, three those of both sources and the
// destinations. A name without a list may carry its type in the base.
void zoFunc::getTypes(zoType& src, zoType& src2, zoType& dst, zoType& dst2) const {
    psString base;
    psString texts[3];
    psString descr;
    parseFunction(base, texts[0], texts[1], texts[2], descr);
    zoType types[4] = {};
    if (texts[0].empty()) {
        types[zoSrc] = types[zoSrc2] = types[zoDst] = types[zoDst2] = typeFromBase();
    } else {
        bool const three = typeName().size() > texts[0].size() + texts[1].size();
        types[zoSrc] = stringToType(texts[0]);
        types[zoSrc2] = stringToType(texts[three ? 1 : 0]);
        types[zoDst] = types[zoDst2] = stringToType(texts[2]);
    }
    updateTypes(types);
    src = types[zoSrc];
    src2 = types[zoSrc2];
    dst = types[zoDst];
    dst2 = types[zoDst2];
}

zoType zoFunc::type(int arg) const {
    zoType types[4] = {};
    getTypes(types[zoSrc], types[zoSrc2], types[zoDst], types[zoDst2]);
    return arg >= 0 && arg < 4 ? types[arg] : 0;
}

psString zoFunc::channelsName(int side) const {
    psString const descr = descrName();
    psString found;
    for (int i = 0, count = 0; i < descr.size() && count <= side;) {
        char const* const token = channelToken(descr.c_str() + i);
        if (token == nullptr) {
            ++i;
            continue;
        }
        found = token;
        i += found.size();
        ++count;
    }
    return found;
}

void zoFunc::getChannelsName(psString& src, psString& dst) const {
    src = channelsName(0);
    dst = channelsName(1);
}

int zoFunc::channels(int side) const {
    int counts[2] = {};
    getChannels(counts[0], counts[1]);
    return counts[side == 0 ? 0 : 1];
}

void zoFunc::getChannels(int& src, int& dst) const {
    int counts[2] = {};
    for (int side = 0; side < 2; ++side) {
        psString const token = channelsName(side);
        if (!token.empty()) {
            counts[side] = token[token.size() - 1] - '0';
        }
    }
    updateChannels(counts);
    src = counts[0];
    dst = counts[1];
}

// A count other than the token's is one of plain channels.
ZolChannels zoFunc::zolChannels(int side) const {
    int const count = channels(side);
    psString token = channelsName(side);
    if (token.empty() || token[token.size() - 1] - '0' != count) {
        token = "C";
        token << count;
    }
    for (ChannelToken const& row : channelTokens) {
        if (token == row.text) {
            return row.constant;
        }
    }
    return zolC0;
}

bool zoFunc::alpha(int side) const { return beginsWith(channelsName(side), "A"); }

void zoFunc::getAlpha(bool& src, bool& dst) const {
    src = alpha(0);
    dst = alpha(1);
}

bool zoFunc::plane(int side) const {
    bool planes[2] = {};
    getPlanes(planes[0], planes[1]);
    return planes[side == 0 ? 0 : 1];
}

void zoFunc::getPlanes(bool& src, bool& dst) const {
    bool planes[2] = {};
    for (int side = 0; side < 2; ++side) {
        psString const token = channelsName(side);
        planes[side] = beginsWith(token, "P") || beginsWith(token, "AP");
    }
    updatePlanes(planes);
    src = planes[0];
    dst = planes[1];
}

bool zoFunc::scale() const { return descrName().contains("Sfs"); }
bool zoFunc::mask() const { return descrName().contains("M"); }
bool zoFunc::roi() const { return descrName().contains("R"); }
bool zoFunc::inplace() const { return descrName().contains("I"); }

bool zoFunc::coi() const {
    psString const descr = descrName();
    for (int i = descr.find("C", 0); i >= 0; i = descr.find("C", i + 1)) {
        char const next = descr[i + 1];
        if (next < '1' || next > '4') {
            return true;
        }
    }
    return false;
}

void zoFunc::updateTypes(zoType types[4]) const {
    psString const base = baseName();
    for (TypeRule const& rule : typeRules) {
        if (base.contains(rule.word)) {
            types[zoSrc] = changed(types[zoSrc], rule.src);
            types[zoSrc2] = changed(types[zoSrc2], rule.src2);
            types[zoDst] = changed(types[zoDst], rule.dst);
            types[zoDst2] = changed(types[zoDst2], rule.dst2);
            return;
        }
    }
    if (contains("Mul_16u16s")) { // its list names the two sources
        types[zoSrc2] = types[zoDst];
    }
}

void zoFunc::updateChannels(int channelCounts[2]) const {
    if (prefix() == "zoli" && baseName().contains("Compare")) {
        channelCounts[1] = 1;
    }
}

void zoFunc::updatePlanes(bool /*planes*/[2]) const {} // no name differs from its descriptor
