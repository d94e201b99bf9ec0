// zofunc_test.cpp - the language of function names.
#include "zo/zofunc.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TEST(ZoFunc, SplitsNames) {
    char const* const cases[][5] = {
        // name, prefix, base, types, descriptor
        {"zolsAcos_32f_A21", "zols", "Acos", "32f", "A21"},
        {"zolsFloor_32f", "zols", "Floor", "32f", ""},
        {"zoliAdd_16s32f_AC4IRSfs", "zoli", "Add", "16s32f", "AC4IRSfs"},
        {"Sum", "", "Sum", "", ""},
        {"zolAdd_1u", "", "zolAdd", "1u", ""},
        {"zols_32f", "zols", "", "32f", ""},
        {"_32f", "", "", "32f", ""},
        {"Sum_A_32f", "", "Sum_A", "32f", ""},
        {"", "", "", "", ""}};
    for (auto const& [name, prefix, base, types, descr] : cases) {
        SCOPED_TRACE(name);
        zoFunc const func(name);
        EXPECT_STREQ(prefix, func.prefix().c_str());
        EXPECT_STREQ(base, func.baseName().c_str());
        EXPECT_STREQ(types, func.typeName().c_str());
        EXPECT_STREQ(descr, func.descrName().c_str());
    }
}

TEST(ZoFunc, TypeTokensAndCodes) {
    std::pair<char const*, int> const lengths[] = {
        {"32f", 3}, {"32fc", 4}, {"8u16s", 2}, {"16scx", 4}, {"", 0}, {"32", 0}, {"A21", 0}};
    for (auto const& [text, length] : lengths) {
        EXPECT_EQ(length, zoFunc::lenOfType(text)) << text;
    }
    EXPECT_EQ(0x620, zoFunc::stringToType("32fc"));
    EXPECT_EQ(0, zoFunc::stringToType("24f"));
}

TEST(ZoFunc, ConstantsOfTheLibrary) {
    EXPECT_EQ(zol32fc, zoFunc::zolType(zo32fc));
    EXPECT_EQ(zol8u, zoFunc::zolType(zo1u));
    EXPECT_EQ(zolTypeUndef, zoFunc::zolType(0));
    struct {
        char const* name;
        ZolChannels source;
        ZolChannels destination;
    } const cases[] = {{"zoliCopy_8u_C3A0C4R", zolC3, zolA0C4},
                       {"zoliCopy_8u_C3P3R", zolC3, zolP3},
                       {"zoliCompare_8u_AC4R", zolAC4, zolC1}, // one answer for all channels
                       {"zolsAbs_32f_A24", zolC0, zolC0}};
    for (auto const& [name, source, destination] : cases) {
        EXPECT_EQ(source, zoFunc(name).zolChannels(0)) << name;
        EXPECT_EQ(destination, zoFunc(name).zolChannels(1)) << name;
    }
}

// Every name against every other: the order is total and turns round with its arguments.
TEST(ZoFunc, OrdersNames) {
    char const* const sorted[] = {
        "Acos_32f",         "zolsAcos_8u",      "zolsAcos_8u16s",    "zolsAcos_16u",
        "zolsAcos_32f",     "zolsAcos_32f_A11", "zolsAcos_32f_A24",  "zolsAcos_32f_C1",
        "zolsAcos_32f_AC4", "zolsAcos_32f_C1I", "zolsAcos_32f_AC4I", "zolsAcos_32fc_A11",
        "zolsAcos_64f_A26", "zolsAcos_64fc",    "zolsAcos_64fc64f",  "zolsAcosh_32f_A11"};
    for (size_t i = 0; i < std::size(sorted); ++i) {
        for (size_t j = 0; j < std::size(sorted); ++j) {
            int const order = zoFunc(sorted[i]).compare(zoFunc(sorted[j]));
            EXPECT_EQ(i < j, order < 0) << sorted[i] << " " << sorted[j];
            EXPECT_EQ(i > j, order > 0) << sorted[i] << " " << sorted[j];
        }
    }
    EXPECT_EQ(1, zoFunc::compareTypes("32f", ""));
    EXPECT_EQ(-1, zoFunc::compareTypes("", "32f"));
}

TEST(ZoFunc, ArgumentTypes) {
    struct {
        char const* name;
        zoType types[4]; // source, source 2, destination, destination 2
    } const cases[] = {{"zolsAbs_32f_A24", {zo32f, zo32f, zo32f, zo32f}},
                       {"zolsConvert_8u16s", {zo8u, zo8u, zo16s, zo16s}},
                       {"zolsAddC_8u16s32f", {zo8u, zo16s, zo32f, zo32f}},
                       {"zolsPolarToCart_32f", {zo32f, zo32f, zo32fc, zo32fc}},
                       {"zolsCartToPolar_32f", {zo32fc, zo32fc, zo32f, zo32f}},
                       {"zolsRealToCplx_64f", {zo64f, zo64f, zo64fc, zo64fc}},
                       {"zolsCplxToReal_64fc", {zo64fc, zo64fc, zo64f, zo64f}},
                       {"zolsReal_32fc", {zo32fc, zo32fc, zo32f, zo32f}},
                       {"zolsImag_32fc", {zo32fc, zo32fc, zo32f, zo32f}},
                       {"zolsMagnitude_16sc", {zo16sc, zo16sc, zo16s, zo16s}},
                       {"zolsPhase_16sc", {zo16sc, zo16sc, zo16s, zo16s}},
                       {"zolsPowerSpectr_64fc", {zo64fc, zo64fc, zo64f, zo64f}},
                       {"zolsGoertz_16s", {zo16s, zo16s, zo16sc, zo16sc}},
                       {"zoliCompare_32f_C1R", {zo32f, zo32f, zo8u, zo8u}},
                       {"zolsMul_16u16s_Sfs", {zo16u, zo16s, zo16s, zo16s}},
                       {"zolsFilter64fcTaps", {zo64fc, zo64fc, zo64fc, zo64fc}}}; // by the base
    for (auto const& [name, types] : cases) {
        for (int arg = zoSrc; arg <= zoDst2; ++arg) {
            EXPECT_EQ(types[arg], zoFunc(name).type(arg)) << name << " " << arg;
        }
        EXPECT_EQ(0, zoFunc(name).type(4));
        EXPECT_EQ(0, zoFunc(name).type(-1));
        EXPECT_EQ(types[zoSrc], zoFunc(name).srcType());
        EXPECT_EQ(types[zoSrc2], zoFunc(name).src2Type());
        EXPECT_EQ(types[zoDst], zoFunc(name).dstType());
        EXPECT_EQ(types[zoDst2], zoFunc(name).dst2Type());
    }
    for (char const* type : {"8u", "8s", "16sc", "16uc", "32u", "32sc", "64s", "64sc", "64f"}) {
        EXPECT_STREQ(type, zoFunc::typeToString(
                               zoFunc((std::string("zols") + type + "Sum").c_str()).srcType())
                               .c_str());
    }
    EXPECT_STREQ("undef", zoFunc::typeToString(0).c_str());
}

psString sideText(psString channelsName, int channels, bool alpha, bool plane) {
    psString text;
    return text << channelsName << "/" << channels << (alpha ? " alpha" : "")
                << (plane ? " plane" : "");
}

// What a descriptor says, as "source destination" and the flags that hold.
TEST(ZoFunc, Descriptors) {
    char const* const cases[][2] = {{"zoliAdd_8u_C1RSfs", "C1/1 C1/1 scale roi"},
                                    {"zoliAdd_8u_C3IR", "C3/3 C3/3 roi inplace"},
                                    {"zoliCopy_8u_AC4C3MR", "AC4/4 alpha C3/3 mask roi"},
                                    {"zoliCopy_8u_C3P3R", "C3/3 P3/3 plane roi"},
                                    {"zoliCopy_8u_AP4C4R", "AP4/4 alpha plane C4/4 roi"},
                                    {"zoliMean_8u_C3CMR", "C3/3 C3/3 mask roi coi"},
                                    {"zoliSum_8u_C0P2", "C0/0 P2/2 plane coi"},
                                    {"zoliSet_8u_C5", "/0 /0 coi"},
                                    {"zoliSwap_8u_A0C4C2AC1", "A0C4/4 alpha C2/2"},
                                    {"zoliCompare_32f_C4R", "C4/4 C4/1 roi"},
                                    {"zolsCompare_32f_P4", "P4/4 plane P4/4 plane"},
                                    {"zolsAbs_32f", "/0 /0"}};
    for (auto const& [name, wanted] : cases) {
        zoFunc const f(name);
        bool alpha[2] = {};
        bool plane[2] = {};
        psString names[2];
        f.getChannelsName(names[0], names[1]);
        f.getAlpha(alpha[0], alpha[1]);
        f.getPlanes(plane[0], plane[1]);
        psString flags;
        flags << (f.scale() ? " scale" : "") << (f.mask() ? " mask" : "") << (f.roi() ? " roi" : "")
              << (f.inplace() ? " inplace" : "") << (f.coi() ? " coi" : "");
        psString const told[] = {
            // by number, by name and by argument
            sideText(f.channelsName(0), f.channels(0), f.alpha(0), f.plane(0)) + " " +
                sideText(f.channelsName(1), f.channels(1), f.alpha(1), f.plane(1)),
            sideText(f.srcChannelsName(), f.srcChannels(), f.srcAlpha(), f.srcPlane()) + " " +
                sideText(f.dstChannelsName(), f.dstChannels(), f.dstAlpha(), f.dstPlane()),
            sideText(names[0], f.channels(zoSrc2), alpha[0], plane[0]) + " " +
                sideText(names[1], f.channels(zoDst), alpha[1], plane[1])};
        for (psString const& sides : told) {
            EXPECT_STREQ(wanted, (sides + flags).c_str()) << name;
        }
    }
}

} // namespace
