// psnorvocputest_test.cpp - the processor report: its pieces from recorded registers, and the
// whole on this machine.
#include "pstest/psnorvocputest.h"

#include <algorithm>
#include <cpuid.h>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "pscpu/pshost.h"
#include "pscpu/pszolentry.h"
#include "support/messagecapture.h"

namespace {

std::string const starLine = std::string(79, '*') + "\n";
std::string const section = std::string("\n").append(79, '=') + "\n    ";

// A recorded processor, which gives the same leaf 4 whatever subleaf is asked for.
unsigned maxLeaf;
unsigned leaf1Edx;
CPUID leaf4(0, 0, 0, 0);
CPUID readMachine(unsigned leaf, unsigned) {
    return leaf == 0   ? CPUID(maxLeaf, 0, 0, 0)
           : leaf == 1 ? CPUID(0x000306A9, 0xAB10CDEF, 0, leaf1Edx)
                       : leaf4;
}

TEST(PsNorvoCpuTest, FieldsOfRecordedRegisters) {
    using Report = __psNorvoCpuTest;
    std::string const threads =
        section + "Multi Threading Features\n\n"
                  "Twinlane Technology or Core Multi-Processing is supported\n"
                  "Logical Processors 16 - Number of logical processors per physical package\n";
    // All fields at their largest; reserved bits set around them must not show.
    EXPECT_EQ(section + "Processor Identification Signature\n\n"
                        "Family   270\nModel    255\nStepping 15\nType     3\n",
              Report::signature(CPUID(0xFFFFFFFF, 0, 0, 0)).c_str());
    std::string const cores = " - Maximum number of processor cores per package\n";
    std::string const none = "No support of Twinlane Technology and Core Multi-Processing\n";
    std::string const caches = section + "Deterministic Cache Parameters\n";
    constexpr unsigned htt = 1U << 28;
    struct {
        unsigned maxLeaf;
        unsigned leaf1Edx;
        unsigned leaf4Eax; // of another maker it is 0, the leaf empty
        std::string threading;
        std::string caches;
        int cacheCount;
    } const cases[] = {{0, htt, 0x1C004121, none, "", 0},
                       {3, htt, 0x1C004121, threads, "", 0},
                       {4, htt, 0, threads + "Cores per Package  1" + cores, caches, 0},
                       {4, htt, 0x1C004121, threads + "Cores per Package  8" + cores, caches, 32},
                       {4, ~htt, 0, none, caches, 0}};
    for (auto const& row : cases) {
        maxLeaf = row.maxLeaf;
        leaf1Edx = row.leaf1Edx;
        leaf4 = CPUID(row.leaf4Eax, 0, 0, 0);
        EXPECT_EQ(row.threading, Report::multiThreading(readMachine).c_str());
        std::string const text = Report::caches(readMachine).c_str();
        EXPECT_TRUE(text.starts_with(row.caches));
        int count = 0;
        for (size_t at = 0; (at = text.find("Cache Type", at)) != std::string::npos; ++at) {
            ++count;
        }
        EXPECT_EQ(row.cacheCount, count) << row.maxLeaf;
    }
    // Every flag, two partitions, a number of four digits.
    EXPECT_STREQ("Cache Type 3 Unified Cache\n\nCache Level       3\nCache Size Kb     16384\n"
                 "Threads Sharing   4096 - Maximum number of threads sharing this cache\n"
                 "Number of Sets    8192\nLine Size         64   - System coherency line size\n"
                 "Line Partitions   2    - Physical line partitions\n"
                 "Associativity     16   - Ways of associativity\nFully Associative cache\n"
                 "Self Initializing cache level\nCache is inclusive to lower cache levels\n"
                 "WBINVD/INVD behavior on lower level caches\n",
                 Report::cacheParms(3, CPUID(0x03FFC363, 0x03C0103F, 0x1FFF, 3)).c_str());
    EXPECT_STREQ("", Report::cacheParms(4, CPUID(0x20, ~0U, ~0U, 0)).c_str());
}

TEST(PsNorvoCpuTest, ExtendedL2Associativity) {
    std::pair<unsigned, char const*> const cases[] = {
        {0, "Disabled"}, {6, "8-Way"}, {9, "code 0x09"}, {15, "Fully associative"}};
    for (auto const& [code, text] : cases) {
        CPUID const leaf(~0U, ~0U, 0x04000F40 | (code << 12), ~0U); // the F belongs to no field
        EXPECT_EQ(section +
                      "Extended L2 Cache Features\n\nL2 Cache Size Kb       1024\n"
                      "L2 Cache Line Size     64\nL2 Cache Associativity " +
                      text + "\n",
                  __psNorvoCpuTest::extendedL2(leaf).c_str());
    }
}

std::string maskFlags(Zol64u features, Zol64u enabled) {
    MessageCapture const table(MSG_PERF);
    __psNorvoCpuTest::printMaskFlags(features, enabled);
    return table.text();
}

TEST(PsNorvoCpuTest, MaskRowsAndUnknownFlags) {
    std::string const known = maskFlags(zolCPUID_MMX | zolCPUID_SHA, zolCPUID_SHA | zolCPUID_AVX);
    std::string const head =
        section +
        "Feature Flags\n    got by zolGetCpuFeatures & zolGetEnabledCpuFeatures\n\n"
        "Features            CPU  Enabled  Info\n"
        "zolCPUID_MMX        1    0        Norvo Architecture MMX technology supported  \n"
        "zolCPUID_SSE        0    0        Streaming SIMD Extensions                    \n";
    EXPECT_EQ(head, known.substr(0, head.size()));
    EXPECT_NE(std::string::npos, known.find("zolCPUID_AVX        0    1        Advanced Vector "));
    EXPECT_NE(std::string::npos, known.find("zolCPUID_SHA        1    1        SHA new "));
    EXPECT_EQ(6 + 27, std::count(known.begin(), known.end(), '\n'));
    // Each of the 27 flags shows in its own row.
    for (int bit = 0; bit < 27; ++bit) {
        std::string const one = maskFlags(1ULL << bit, 0);
        std::string const before = one.substr(0, one.find("  1    0  "));
        EXPECT_EQ(6 + bit, std::count(before.begin(), before.end(), '\n'));
    }
    std::string const unknown = maskFlags(zolCPUID_MMX | 0x8000000 | (1ULL << 63), 0);
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

TEST(PsNorvoCpuTest, ReportsThisProcessor) {
    psFillZolEntries();
    __psNorvoCpuTest test("__psNorvoCpuTest", "__psNorvoCpu", "Norvo CPU information", "dir/ps");
    MessageCapture capture(7);
    psTest::m_currentResult = psResUndefined;
    test.loopData();
    EXPECT_EQ(psResOk, psTest::m_currentResult);
    std::string const report = capture.text();
    // The system's own word, and for the brand the instruction: some hosts hide it from the system.
    for (auto const& [label, key] : {std::pair{"Vendor-ID      ", "vendor_id"},
                                     {"Family   ", "cpu family"},
                                     {"Model    ", "model"},
                                     {"Stepping ", "stepping"}}) {
        std::string const line = std::string("\n") + label + cpuinfoValue(key) + "\n";
        EXPECT_NE(std::string::npos, report.find(line)) << line << report;
    }
    unsigned brand[13] = {};
    for (unsigned i = 0; i < 12; i += 4) {
        __get_cpuid(0x80000002 + i / 4, brand + i, brand + i + 1, brand + i + 2, brand + i + 3);
    }
    std::string const brandLine =
        std::string("\nBrand String   ") + reinterpret_cast<char const*>(brand) + "\n";
    EXPECT_NE(std::string::npos, report.find(brandLine)) << brandLine << report;
    EXPECT_NE(std::string::npos, report.find("\nLargest Standard Function 0x"));
    EXPECT_TRUE(report.ends_with(starLine));
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
    std::string const atErrors = quiet.text();
    EXPECT_EQ(std::string::npos, atErrors.find("Largest"));
    EXPECT_TRUE(
        atErrors.ends_with(maskFlags(zolCPUID_MRC | (1ULL << 40), zolCPUID_SSE) + starLine));
}

TEST(PsInfoTest, PrintsHostAndSystem) {
    MessageCapture capture(1);
    __psHostTest("__psHost", "host", "", "ps").loopData();
    __psOSTest("__psOS", "os", "", "ps").loopData();
    EXPECT_EQ(std::string(" Computer : ") + host.name() + "\n OS       : " + os.text() + "\n",
              capture.text());
}

} // namespace
