// zofunc_test.cpp - the language of function names.
#include "zo/zofunc.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "support/storedtext.h"

namespace {

TEST(ZoFunc, TypeTokensAndCodes) {
    std::pair<char const*, int> const lengths[] = {
        {"32f", 3}, {"32fc", 4}, {"8u16s", 2}, {"16scx", 4}, {"", 0}, {"32", 0}, {"A21", 0}};
    for (auto const& [text, length] : lengths) {
        EXPECT_EQ(length, zoFunc::lenOfType(text)) << text;
    }
    EXPECT_EQ(0x620, zoFunc::stringToType("32fc"));
    EXPECT_EQ(0, zoFunc::stringToType("24f"));
    EXPECT_EQ(zol32fc, zoFunc::zolType(zo32fc));
    EXPECT_EQ(zol8u, zoFunc::zolType(zo1u));
    EXPECT_EQ(zolTypeUndef, zoFunc::zolType(0));
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

psString sideText(psString channelsName, int channels, bool alpha, bool plane) {
    psString text;
    return text << " " << channelsName << "/" << channels << (alpha ? " alpha" : "")
                << (plane ? " plane" : "");
}

// A line for all that a name says: its parts, the types of the arguments, the channels of both
// sides and the flags that hold.
TEST(ZoFunc, WhatNamesSay) {
    std::istringstream names(
        " " // the empty one, too
        "zolsAcos_32f_A21 zolsFloor_32f zoliAdd_16s32f_AC4IRSfs Sum zolAdd_1u zols_32f _32f "
        "Sum_A_32f zolsAbs_32f_A24 zolsConvert_8u16s zolsAddC_8u16s32f zolsPolarToCart_32f "
        "zolsCartToPolar_32f zolsRealToCplx_64f zolsCplxToReal_64fc zolsReal_32fc zolsImag_32fc "
        "zolsMagnitude_16sc zolsPhase_16sc zolsPowerSpectr_64fc zolsGoertz_16s "
        "zoliCompare_32f_C1R zolsMul_16u16s_Sfs zolsFilter64fcTaps zols8uSum zols8sSum "
        "zols16scSum zols16ucSum zols32uSum zols32scSum zols64sSum zols64scSum zols64fSum "
        "zoliAdd_8u_C1RSfs zoliAdd_8u_C3IR zoliCopy_8u_AC4C3MR zoliCopy_8u_C3P3R "
        "zoliCopy_8u_AP4C4R zoliMean_8u_C3CMR zoliSum_8u_C0P2 zoliSet_8u_C5 "
        "zoliSwap_8u_A0C4C2AC1 zoliCompare_32f_C4R zolsCompare_32f_P4 zoliCopy_8u_C3A0C4R "
        "zoliCompare_8u_AC4R");
    psString text;
    for (std::string name; std::getline(names, name, ' ');) {
        zoFunc const f(name.c_str());
        text << name.c_str() << " = " << f.prefix() << "|" << f.baseName() << "|" << f.typeName()
             << "|" << f.descrName() << "|";
        for (int arg = -1; arg <= 4; ++arg) {
            text << " " << zoFunc::typeToString(f.type(arg)) << " " << f.type(arg);
        }
        zoType const types[] = {f.srcType(), f.src2Type(), f.dstType(), f.dst2Type()};
        for (int arg = zoSrc; arg <= zoDst2; ++arg) {
            EXPECT_EQ(f.type(arg), types[arg]) << name;
        }
        bool alpha[2] = {};
        bool plane[2] = {};
        psString channels[2];
        f.getChannelsName(channels[0], channels[1]);
        f.getAlpha(alpha[0], alpha[1]);
        f.getPlanes(plane[0], plane[1]);
        psString const sides[][2] = {
            // by name, by number and by argument
            {sideText(f.srcChannelsName(), f.srcChannels(), f.srcAlpha(), f.srcPlane()),
             sideText(f.dstChannelsName(), f.dstChannels(), f.dstAlpha(), f.dstPlane())},
            {sideText(f.channelsName(0), f.channels(0), f.alpha(0), f.plane(0)),
             sideText(f.channelsName(1), f.channels(1), f.alpha(1), f.plane(1))},
            {sideText(channels[0], f.channels(zoSrc2), alpha[0], plane[0]),
             sideText(channels[1], f.channels(zoDst), alpha[1], plane[1])}};
        for (int side : {0, 1}) {
            text << " |" << sides[0][side] << " " << static_cast<int>(f.zolChannels(side));
            EXPECT_STREQ(sides[0][side].c_str(), sides[1][side].c_str()) << name;
            EXPECT_STREQ(sides[0][side].c_str(), sides[2][side].c_str()) << name;
        }
        text << " |" << (f.scale() ? " scale" : "") << (f.mask() ? " mask" : "")
             << (f.roi() ? " roi" : "") << (f.inplace() ? " inplace" : "")
             << (f.coi() ? " coi" : "") << "\n";
    }
    EXPECT_TRUE(matchesStored("zo/names", text.c_str()));
}

} // namespace
