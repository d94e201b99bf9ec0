// psnorvocputest_test.cpp - the processor report: its pieces from recorded registers, and the
// whole on this machine.
#include "pstest/psnorvocputest.h"

#include <algorithm>
#include <cpuid.h>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>

#include "../psmemory/messagecapture.h"
#include "pscpu/pshost.h"
#include "pscpu/pszolentry.h"

namespace {

std::string const starLine = std::string(79, '*') + "\n";
std::string const section = std::string("\n").append(79, '=') + "\n    ";

TEST(PsNorvoCpuTest, SignatureCutsTheFields) {
    EXPECT_EQ(section + "Processor Identification Signature\n\n"
                        "Family   6\nModel    58\nStepping 9\nType     0\n",
              __psNorvoCpuTest::signature(CPUID(0x000306A9, 0, 0, 0)).c_str());
    // All fields at their largest; reserved bits set around them must not show.
    EXPECT_EQ(section + "Processor Identification Signature\n\n"
                        "Family   270\nModel    255\nStepping 15\nType     3\n",
              __psNorvoCpuTest::signature(CPUID(0xFFFFFFFF, 0, 0, 0)).c_str());
}

TEST(PsNorvoCpuTest, MultiThreading) {
    CPUID const leaf1(0x000306A9, 0xAB10CDEF, 0, 1U << 28);
    CPUID const leaf4(0x1C004121, 0, 0, 0);
    std::string const two =
        section + "Multi Threading Features\n\n"
                  "Twinlane Technology or Core Multi-Processing is supported\n"
                  "Logical Processors 16 - Number of logical processors per physical package\n";
    EXPECT_EQ(two + "Cores per Package  8 - Maximum number of processor cores per package\n",
              __psNorvoCpuTest::multiThreading(leaf1, true, leaf4, true).c_str());
    EXPECT_EQ(two, __psNorvoCpuTest::multiThreading(leaf1, true, leaf4, false).c_str());
    CPUID const single(0x000306A9, 0xAB10CDEF, 0, ~(1U << 28));
    EXPECT_STREQ("No support of Twinlane Technology and Core Multi-Processing\n",
                 __psNorvoCpuTest::multiThreading(single, true, leaf4, true).c_str());
}

TEST(PsNorvoCpuTest, CacheParameters) {
    CPUID const data(0x1C004121, 0x01C0003F, 0x3F, 0);
    EXPECT_STREQ("Cache Type 0 Data Cache\n\nCache Level       1\nCache Size Kb     32\n"
                 "Threads Sharing   2    - Maximum number of threads sharing this cache\n"
                 "Number of Sets    64\nLine Size         64   - System coherency line size\n"
                 "Line Partitions   1    - Physical line partitions\n"
                 "Associativity     8    - Ways of associativity\nSelf Initializing cache level\n",
                 __psNorvoCpuTest::cacheParms(0, data).c_str());
    // Every flag, two partitions, a number of four digits.
    CPUID const unified(0x03FFC363, 0x03C0103F, 0x1FFF, 3);
    EXPECT_STREQ("Cache Type 3 Unified Cache\n\nCache Level       3\nCache Size Kb     16384\n"
                 "Threads Sharing   4096 - Maximum number of threads sharing this cache\n"
                 "Number of Sets    8192\nLine Size         64   - System coherency line size\n"
                 "Line Partitions   2    - Physical line partitions\n"
                 "Associativity     16   - Ways of associativity\nFully Associative cache\n"
                 "Self Initializing cache level\nCache is inclusive to lower cache levels\n"
                 "WBINVD/INVD behavior on lower level caches\n",
                 __psNorvoCpuTest::cacheParms(3, unified).c_str());
    EXPECT_NE(-1, __psNorvoCpuTest::cacheParms(1, CPUID(2, 0, 0, 0)).find("Instruction Cache", 0));
    EXPECT_STREQ("", __psNorvoCpuTest::cacheParms(4, CPUID(0x20, ~0U, ~0U, 0)).c_str());
}

TEST(PsNorvoCpuTest, ExtendedL2Associativity) {
    struct {
        unsigned code;
        char const* text;
    } const cases[] = {{0, "Disabled"},  {1, "Direct mapped"}, {2, "2-Way"},
                       {4, "4-Way"},     {6, "8-Way"},         {8, "16-Way"},
                       {9, "code 0x09"}, {10, "code 0x0A"},    {15, "Fully associative"}};
    for (auto const& [code, text] : cases) {
        CPUID const leaf(~0U, ~0U, 0x04000F40 | (code << 12), ~0U); // the F belongs to no field
        EXPECT_EQ(section +
                      "Extended L2 Cache Features\n\nL2 Cache Size Kb       1024\n"
                      "L2 Cache Line Size     64\nL2 Cache Associativity " +
                      text + "\n",
                  __psNorvoCpuTest::extendedL2(leaf).c_str());
    }
}

TEST(PsNorvoCpuTest, MaskRowsAndUnknownFlags) {
    std::string const known =
        __psNorvoCpuTest::maskFlags(zolCPUID_MMX | zolCPUID_SHA, zolCPUID_SHA | zolCPUID_AVX)
            .c_str();
    std::string const head =
        section +
        "Feature Flags\n    got by zolGetCpuFeatures & zolGetEnabledCpuFeatures\n\n"
        "Features            CPU  Enabled  Info\n"
        "zolCPUID_MMX        1    0        Norvo Architecture MMX technology supported  \n"
        "zolCPUID_SSE        0    0        Streaming SIMD Extensions                    \n";
    EXPECT_EQ(head, known.substr(0, head.size()));
    EXPECT_NE(std::string::npos, known.find("zolCPUID_AVX        0    1        Advanced Vector "));
    EXPECT_NE(std::string::npos, known.find("zolCPUID_SHA        1    1        SHA new "));
    EXPECT_EQ(std::string::npos, known.find("Unknown"));
    EXPECT_EQ(6 + 27, std::count(known.begin(), known.end(), '\n'));

    // Each of the 27 flags has a row of its own, and a row of its own only.
    for (int bit = 0; bit < 27; ++bit) {
        std::string const one = __psNorvoCpuTest::maskFlags(1ULL << bit, 0).c_str();
        size_t const row = one.find("  1    0  ");
        ASSERT_NE(std::string::npos, row) << bit;
        EXPECT_EQ(std::string::npos, one.find("  1    0  ", row + 1)) << bit;
        EXPECT_EQ(6 + bit, std::count(one.begin(), one.begin() + static_cast<long>(row), '\n'));
    }
    std::string const unknown =
        __psNorvoCpuTest::maskFlags(zolCPUID_MMX | 0x8000000 | (1ULL << 63), 0).c_str();
    EXPECT_EQ("Unknown flags       8000000008000000\n", unknown.substr(unknown.rfind("Unknown")));
}

TEST(PsNorvoCpuTest, HeadingWarnsOfAnotherMaker) {
    std::string const head = starLine + "    Norvo(R) Processor Identification\n"
                                        "    Got by CPUID Instruction Functions\n";
    EXPECT_EQ(head + "\n", __psNorvoCpuTest::heading("GenuineNorvo").c_str());
    EXPECT_EQ(head + "\n    ATTENTION! It is not Genuine Norvo processor.\n"
                     "    Information below may be inadequate.\n\n",
              __psNorvoCpuTest::heading("Other").c_str());
}

// Value of a line of /proc/cpuinfo.
std::string cpuinfoValue(std::string const& key) {
    std::ifstream in("/proc/cpuinfo");
    for (std::string line; std::getline(in, line);) {
        size_t const colon = line.find(':');
        if (colon != std::string::npos && line.substr(0, line.find('\t')) == key) {
            return line.substr(colon + 2);
        }
    }
    return "";
}

TEST(PsNorvoCpuTest, ReportsThisProcessorAsTheSystemKnowsIt) {
    psFillZolEntries();
    __psNorvoCpuTest test("__psNorvoCpuTest", "__psNorvoCpu", "Norvo CPU information", "dir/ps");
    EXPECT_STREQ("Norvo CPU information", test.m_info.m_note.c_str());
    MessageCapture capture(7);
    psTest::m_currentResult = psResUndefined;
    test.loopData();
    EXPECT_EQ(psResOk, psTest::m_currentResult);
    std::string const report = capture.text();
    for (auto const& [label, key] : {std::pair{"Vendor-ID      ", "vendor_id"},
                                     {"Family   ", "cpu family"},
                                     {"Model    ", "model"},
                                     {"Stepping ", "stepping"}}) {
        std::string const line = std::string("\n") + label + cpuinfoValue(key) + "\n";
        EXPECT_NE(std::string::npos, report.find(line)) << line << report;
    }
    unsigned brand[13] = {}; // by the instruction itself: some hosts hide it from the system
    for (unsigned i = 0; i < 12; i += 4) {
        __get_cpuid(0x80000002 + i / 4, brand + i, brand + i + 1, brand + i + 2, brand + i + 3);
    }
    std::string const brandLine =
        std::string("\nBrand String   ") + reinterpret_cast<char const*>(brand) + "\n";
    EXPECT_NE(std::string::npos, report.find(brandLine)) << brandLine << report;
    long const l2 = sysconf(_SC_LEVEL2_CACHE_SIZE);
    std::string const l2Line =
        std::string("\nL2 Cache Size Kb       ") + std::to_string(l2 / 1024) + "\n";
    EXPECT_TRUE(l2 <= 0 || report.find(l2Line) != std::string::npos) << l2Line << report;
    EXPECT_NE(std::string::npos, report.find("\nLargest Standard Function 0x"));
    EXPECT_EQ(starLine, report.substr(report.size() - 80));
    EXPECT_EQ(std::string::npos, report.find("\nFeature")) << "no library, no features";

    zol_GetCpuFeatures = [](Zol64u* mask, Zol32u*) -> ZolStatus {
        *mask = zolCPUID_MRC | (1ULL << 40);
        return zolStsNoErr;
    };
    zol_GetEnabledCpuFeatures = []() -> Zol64u { return zolCPUID_SSE; };
    MessageCapture quiet(1);
    test.loopData();
    zol_GetCpuFeatures = s_zolGetCpuFeatures;
    zol_GetEnabledCpuFeatures = s_zolGetEnabledCpuFeatures;
    EXPECT_EQ(std::string::npos, quiet.text().find("Largest"));
    psString const features =
        __psNorvoCpuTest::maskFlags(zolCPUID_MRC | (1ULL << 40), zolCPUID_SSE);
    std::string const tail = std::string(features.c_str()) + starLine;
    ASSERT_GT(quiet.text().size(), tail.size());
    EXPECT_EQ(tail, quiet.text().substr(quiet.text().size() - tail.size()));
}

TEST(PsInfoTest, PrintsHostAndSystem) {
    MessageCapture capture(1);
    __psHostTest("__psHost", "host", "", "ps").loopData();
    __psOSTest("__psOS", "os", "", "ps").loopData();
    EXPECT_EQ(std::string(" Computer : ") + host.name() + "\n OS       : " + os.text() + "\n",
              capture.text());
}

} // namespace
