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
}

TEST(ZoFunc, ArgumentTypes) {
    struct {
        char const* name;
        zoType types[4]; // source, source 2, destination, destination 2
    } const cases[] = {{"zolsAbs_32f_A24", {zo32f, zo32f, zo32f, zo32f}},
                       {"zolsConvert_8u16s", {zo8u, zo8u, zo16s, zo16s}},
                       {"zolsAddC_8u16s32f", {zo8u, zo16s, zo32f, zo32f}},
                       {"zolsMagnitude_16sc", {zo16sc, zo16sc, zo16s, zo16s}},
                       {"zolsFilter64fcTaps", {zo64fc, zo64fc, zo64fc, zo64fc}}}; // by the base
    for (auto const& [name, types] : cases) {
        for (int arg = zoSrc; arg <= zoDst2; ++arg) {
            EXPECT_EQ(types[arg], zoFunc(name).type(arg)) << name << " " << arg;
        }
    }
}

} // namespace
