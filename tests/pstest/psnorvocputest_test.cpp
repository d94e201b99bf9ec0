// psnorvocputest_test.cpp - the processor report: its pieces from recorded registers, and the
// whole on this machine.
#include "pstest/psnorvocputest.h"

#include <algorithm>
#include <cpuid.h>
#include <fstream>
#include <utility>

#include "pscpu/pshost.h"
#include "pscpu/pszolentry.h"
#include "support/messagecapture.h"
#include "support/storedtext.h"

namespace {

std::string const starLine = std::string(79, '*') + "\n";

// A recorded processor, which gives the same leaf 4 whatever subleaf is asked for.
unsigned maxLeaf;
unsigned leaf1Edx;
CPUID leaf4(0, 0, 0, 0);
CPUID readMachine(unsigned leaf, unsigned) {
    return leaf == 0   ? CPUID(maxLeaf, 0, 0, 0)
           : leaf == 1 ? CPUID(0x000306A9, 0xAB10CDEF, 0, leaf1Edx)
                       : leaf4;
}

std::string maskFlags(Zol64u features, Zol64u enabled) {
    MessageCapture const table(MSG_PERF);
    __psNorvoCpuTest::printMaskFlags(features, enabled);
    return table.text();
}

TEST(PsNorvoCpuTest, PiecesOfRecordedRegisters) {
    using Report = __psNorvoCpuTest;
    psString text = Report::heading("GenuineNorvo") + Report::heading("Other");
    // All fields at their largest; reserved bits set around them must not show.
    text += Report::signature(CPUID(0xFFFFFFFF, 0, 0, 0));
    text += Report::signature(CPUID(0x000306A9, 0, 0, 0));
    constexpr unsigned htt = 1U << 28;
    // eax: of another maker it is 0, the leaf empty
    std::tuple<unsigned, unsigned, unsigned, int> const cases[] = {{0, htt, 0x1C004121, 0},
                                                                   {3, htt, 0x1C004121, 0},
                                                                   {4, htt, 0, 0},
                                                                   {4, htt, 0x1C004121, 32},
                                                                   {4, ~htt, 0, 0}};
    for (auto const& [largest, edx, eax, cacheCount] : cases) {
        maxLeaf = largest;
        leaf1Edx = edx;
        leaf4 = CPUID(eax, 0, 0, 0);
        text += Report::multiThreading(readMachine);
        std::string const caches = Report::caches(readMachine).c_str();
        size_t const first = caches.find("Cache Type");
        text += caches.substr(0, first).c_str();
        int count = 0;
        for (size_t at = first; at != std::string::npos; at = caches.find("Cache Type", at + 1)) {
            ++count;
        }
        EXPECT_EQ(cacheCount, count) << largest;
    }
    // Every flag, two partitions, a number of four digits.
    text += Report::cacheParms(1, CPUID(0x1C004121, 0x02C0003F, 0x3F, 0));
    text += Report::cacheParms(2, CPUID(0x22, 0x03C0003F, 0x7FF, 2));
    text += Report::cacheParms(3, CPUID(0x03FFC363, 0x03C0103F, 0x1FFF, 3));
    text += Report::cacheParms(4, CPUID(0x20, ~0U, ~0U, 0)); // no cache
    for (unsigned code = 0; code < 16; ++code) {
        text += Report::extendedL2(
            CPUID(~0U, ~0U, 0x04000F40 | (code << 12), ~0U)); // the F belongs to no field
    }
    std::string flags = maskFlags(zolCPUID_MMX | zolCPUID_SHA, zolCPUID_SHA | zolCPUID_AVX) +
                        maskFlags(zolCPUID_MMX | 0x8000000 | (1ULL << 63), 0);
    EXPECT_TRUE(matchesStored("pstest/processor", text.c_str() + flags));
    MessageCapture const bare(MSG_PERF); // a table without rows
    Report::printMaskFlag(0, 0, 0, nullptr, nullptr);
    Report::printMaskFlag(1, 0, 0, "Unknown flags", nullptr);
    EXPECT_TRUE(bare.text().ends_with("Unknown flags       1\n"));
    // Each of the 27 flags shows in its own row.
    for (int bit = 0; bit < 27; ++bit) {
        std::string const one = maskFlags(1ULL << bit, 0);
        std::string const before = one.substr(0, one.find("  1    0  "));
        EXPECT_EQ(6 + bit, std::count(before.begin(), before.end(), '\n'));
    }
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
