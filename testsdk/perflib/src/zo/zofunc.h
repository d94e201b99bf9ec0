// zofunc.h - a library function's name, and the small language that it is written in:
// prefix, base, types, descriptor.
#ifndef ZO_ZOFUNC_H
#define ZO_ZOFUNC_H

#include "psbase/psstring.h"
#include "zolcore.h"

// Width in bits in the low byte, and bits for signed, floating and complex.
using zoType = int;
enum : zoType {
    zoSigned = 0x100,
    zoFloating = 0x200,
    zoComplex = 0x400,
    zo1u = 0x008, // counts as a byte
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

// A name, and what it tells.
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
    static ZolDataType zolType(zoType type);   // the library's constant
    zoType typeFromBase() const;               // of a name that carries its type in the base

    // Types of the arguments. The int is an argument's number, as in zoArg; 0 for any other.
    void getTypes(zoType& src, zoType& src2, zoType& dst, zoType& dst2) const;
    zoType type(int arg) const;
    zoType type(zoArg arg) const { return type(static_cast<int>(arg)); }
    zoType srcType() const { return type(zoSrc); }
    zoType src2Type() const { return type(zoSrc2); }
    zoType dstType() const { return type(zoDst); }
    zoType dst2Type() const { return type(zoDst2); }

    // Questions about image and signal functions. The int here is no argument's number but a side:
    // 0 is all sources, 1 all destinations. So type(1) is that of the second source, channels(1)
    // and channels(zoDst) those of the destinations. A descriptor with a single channel token tells
    // of both sides.
    psString channelsName(int side = 0) const; // the channel token, empty if there is none
    psString channelsName(zoArg arg) const { return channelsName(side(arg)); }
    psString srcChannelsName() const { return channelsName(0); }
    psString dstChannelsName() const { return channelsName(1); }
    void getChannelsName(psString& src, psString& dst) const;
    int channels(int side = 0) const; // 0 without a channel token
    int channels(zoArg arg) const { return channels(side(arg)); }
    int srcChannels() const { return channels(0); }
    int dstChannels() const { return channels(1); }
    void getChannels(int& src, int& dst) const;
    ZolChannels zolChannels(int side = 0) const; // the library's constant
    bool alpha(int side = 0) const;
    bool alpha(zoArg arg) const { return alpha(side(arg)); }
    bool srcAlpha() const { return alpha(0); }
    bool dstAlpha() const { return alpha(1); }
    void getAlpha(bool& src, bool& dst) const;
    bool plane(int side = 0) const;
    bool plane(zoArg arg) const { return plane(side(arg)); }
    bool srcPlane() const { return plane(0); }
    bool dstPlane() const { return plane(1); }
    void getPlanes(bool& src, bool& dst) const;
    bool scale() const;   // a scale factor, "Sfs"
    bool mask() const;    // "M"
    bool roi() const;     // a region of interest, "R"
    bool inplace() const; // "I"
    bool coi() const;     // a channel of interest, a "C" that no channel count follows

protected:
    // Rules of names whose arguments differ in type, channels or planes. Each gets what the type
    // list and the descriptor say, and changes what the name's base says otherwise.
    virtual void updateTypes(zoType types[4]) const;
    virtual void updateChannels(int channelCounts[2]) const;
    virtual void updatePlanes(bool planes[2]) const;

private:
    static int side(zoArg arg) { return arg < zoDst ? 0 : 1; } // that an argument stands on
};

#endif
