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
        {"zolsFoo_bar_32fc_A_B", "zols", "Foo_bar", "32fc", "A_B"},
        {"Sum", "", "Sum", "", ""},
        {"zolAdd_1u", "", "zolAdd", "1u", ""},
        {"zols_32f", "zols", "", "32f", ""},
        {"zolsA_", "zols", "A_", "", ""},
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
        {"32f", 3}, {"32fc", 4}, {"8u16s", 2}, {"16scx", 4}, {"", 0},
        {"32", 0},  {"f", 0},    {"32x", 0},   {"A21", 0},   {"32c", 0}};
    for (auto const& [text, length] : lengths) {
        EXPECT_EQ(length, zoFunc::lenOfType(text)) << text;
    }
    for (char const* text : {"8u", "8s", "8sc", "16u", "16s", "16sc", "16uc", "32u", "32s", "32sc",
                             "32f", "32fc", "64u", "64s", "64sc", "64f", "64fc"}) {
        EXPECT_STREQ(text, zoFunc::typeToString(zoFunc::stringToType(text)).c_str());
    }
    EXPECT_EQ(zoFunc::stringToType("8u"), zoFunc::stringToType("1u"));
    EXPECT_EQ(0x620, zoFunc::stringToType("32fc"));
    EXPECT_EQ(0, zoFunc::stringToType("24f"));
    EXPECT_STREQ("undef", zoFunc::typeToString(zo8u | zoComplex).c_str());
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
    EXPECT_EQ(0, zoFunc::compareTypes("8u8u8u8u", "8u8u8u16s")); // the fourth is never seen
}

TEST(ZoFunc, ArgumentTypes) {
    struct {
        char const* name;
        zoType types[4]; // source, source 2, destination, destination 2
    } const cases[] = {{"zolsAbs_32f_A24", {zo32f, zo32f, zo32f, zo32f}},
                       {"zolsConvert_8u16s", {zo8u, zo8u, zo16s, zo16s}},
                       {"zolsAddC_8u16s32f", {zo8u, zo16s, zo32f, zo32f}},
                       {"zolsMul_16u16s", {zo16u, zo16s, zo16s, zo16s}},
                       {"zolsMagnitude_16sc", {zo16sc, zo16sc, zo16s, zo16s}},
                       {"zolsRealToCplx_32f", {zo32f, zo32f, zo32fc, zo32fc}},
                       {"zoliCompare_32f_C1R", {zo32f, zo32f, zo8u, zo8u}},
                       {"zolsFilter64fcTaps", {zo64fc, zo64fc, zo64fc, zo64fc}}, // by the base
                       {"zolsFilter", {0, 0, 0, 0}}};
    for (auto const& [name, types] : cases) {
        for (int arg = zoSrc; arg <= zoDst2; ++arg) {
            EXPECT_EQ(types[arg], zoFunc(name).type(arg)) << name << " " << arg;
        }
    }
}

TEST(ZoFunc, ImageQuestions) {
    struct {
        char const* descr;
        char const* tokens[2]; // source, destination
        int channels[2];
        char const* answers; // letters: alpha, plane, scale, mask, region, in place, coi
    } const cases[] = {{"A21", {"", ""}, {0, 0}, ""},
                       {"C3P2R", {"C3", "P2"}, {3, 2}, "r"},
                       {"AC4IRSfs", {"AC4", "AC4"}, {4, 4}, "asri"},
                       {"AP4C1M", {"AP4", "C1"}, {4, 1}, "apm"},
                       {"C3C", {"C3", "C3"}, {3, 3}, "c"},
                       {"C5", {"", ""}, {0, 0}, "c"}};
    for (auto const& [descr, tokens, channels, answers] : cases) {
        SCOPED_TRACE(descr);
        zoFunc const func((std::string("zoliAdd_8u_") + descr).c_str());
        bool const given[] = {func.alpha(), func.plane(),   func.scale(), func.mask(),
                              func.roi(),   func.inplace(), func.coi()};
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(std::string(answers).find("apsmric"[i]) != std::string::npos, given[i]);
        }
        for (int side = 0; side < 2; ++side) {
            EXPECT_STREQ(tokens[side], func.channelsName(side).c_str());
            EXPECT_EQ(channels[side], func.channels(side == 0 ? zoSrc2 : zoDst));
        }
    }
    EXPECT_EQ(1, zoFunc("zoliCompare_8u_AC4R").dstChannels());
}

} // namespace
