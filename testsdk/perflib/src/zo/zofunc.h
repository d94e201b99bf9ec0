// zofunc.h - a library function's name, and the small language that it is written in:
// prefix, base, types, descriptor.
#ifndef ZO_ZOFUNC_H
#define ZO_ZOFUNC_H

#include "psbase/psstring.h"

// Width in bits in the low byte, and bits for signed, floating and complex.
using zoType = int;
enum : zoType {
    zoSigned = 0x100,
    zoFloating = 0x200,
    zoComplex = 0x400,
    zo1u = 0x008,
    zo8u = 0x008,
    zo8s = 0x108,
    zo8sc = 0x508,
    zo16u = 0x010,
    zo16s = 0x110,
    zo16sc = 0x510,
    zo16uc = 0x410,
    zo32u = 0x020,
    zo32s = 0x120,
    zo32sc = 0x520,
    zo32f = 0x220,
    zo32fc = 0x620,
    zo64u = 0x040,
    zo64s = 0x140,
    zo64sc = 0x540,
    zo64f = 0x240,
    zo64fc = 0x640
};

// Index of an argument.
enum zoArg { zoSrc = 0, zoSrc2 = 1, zoDst = 2, zoDst2 = 3 };

class zoFunc : public psString {
public:
    zoFunc() = default;
    explicit zoFunc(psString name) : psString(name) {}
    zoFunc(zoFunc const&) = default;
    zoFunc& operator=(zoFunc const&) = default;

    psString prefix() const; // "zols", "zoli" or empty
    psString baseName() const;
    psString typeName() const; // all types, joined
    psString descrName() const;
    void parseFunction(psString& base, psString& type, psString& descr) const;
    void parseFunction(psString& base, psString& type1, psString& type2, psString& type3,
                       psString& descr) const; // a shorter list repeats its last type

    // Order of the test list: prefix and base, then types, then descriptor.
    int compare(zoFunc other) const;
    static int compareTypes(psString a, psString b);
    static int compareDescr(psString a, psString b);

    static int lenOfType(psString const& text); // of the type at the head; 0 if there is none
    static psString firstType(psString const& text);
    static zoType stringToType(psString text); // 0 for an unknown text
    static psString typeToString(zoType type); // "undef" for an unknown code
    zoType typeFromBase() const;
    zoType type(zoArg arg) const; // of an argument

    // Questions about image and signal functions.
    psString channelsName() const; // first channel token of the descriptor
    int channels() const;          // 0 above 4
    bool alpha() const;
    bool plane() const;
    bool scale() const;
    bool mask() const;
    bool roi() const;
    bool inplace() const;
    bool coi() const;

protected:
    // Rules of names whose arguments differ in type, channels or planes.
    virtual void updateTypes(zoType types[4]) const;
    virtual void updateChannels(int channelCounts[2]) const;
    virtual void updatePlanes(bool planes[2]) const;
};

#endif
