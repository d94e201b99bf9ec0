// psnorvocputest.cpp - the processor report.
#include "pstest/psnorvocputest.h"

#include <cstdio>

#include "pscpu/pszolentry.h"

namespace {

enum Register { eax = 0, ebx = 1, ecx = 2, edx = 3 };

constexpr char starLine[] =
    "*******************************************************************************\n";
constexpr char doubleLine[] =
    "===============================================================================\n";
psString section(psString const& title) { return psString("\n") + doubleLine + "    " + title; }

// "label value\n"; with a note, the value takes four columns.
psString valueLine(char const* label, unsigned value) {
    psString text(label);
    return text << value << "\n";
}

psString valueLine(char const* label, unsigned value, char const* note) {
    char number[16];
    snprintf(number, sizeof number, "%-4u", value);
    return psString(label) + number + note + "\n";
}

psString hexLine(char const* label, char const* format, unsigned value) {
    char number[16];
    snprintf(number, sizeof number, format, value);
    return psString(label) + number + "\n";
}

psString vendorText(CPUID const& leaf0) {
    static int const order[] = {ebx, edx, ecx};
    return __psNorvoCpuTest::registerText(leaf0, order, 3);
}

// Leaves that the processor lacks read as zeros and add nothing.
psString brandText() {
    static int const order[] = {eax, ebx, ecx, edx};
    psString brand;
    for (unsigned leaf = 0x80000002; leaf <= 0x80000004; ++leaf) {
        brand += __psNorvoCpuTest::registerText(CPUID(leaf), order, 4);
    }
    return brand;
}

psString associativity(unsigned code) {
    switch (code) {
    case 0:
        return "Disabled";
    case 1:
        return "Direct mapped";
    case 2:
        return "2-Way";
    case 4:
        return "4-Way";
    case 6:
        return "8-Way";
    case 8:
        return "16-Way";
    case 15:
        return "Fully associative";
    default:
        char text[16];
        snprintf(text, sizeof text, "code 0x%02X", code);
        return text;
    }
}

void printHeader() {
    psString const vendor = vendorText(CPUID(0));
    g_ostrm << __psNorvoCpuTest::heading(vendor) << MSG_PERF
            << hexLine("Largest Standard Function ", "0x%08X", CPUID::largestFunction())
            << hexLine("Largest Extended Function ", "0x%08X", CPUID::largestExFunction())
            << MSG_RESTORE << "Vendor-ID      " << vendor << "\n"
            << "Brand String   " << brandText() << "\n";
}

void printMultiThreading() { g_ostrm << __psNorvoCpuTest::multiThreading(readCpuid); }

void printCacheParms() { g_ostrm << __psNorvoCpuTest::caches(readCpuid); }

void printCpuIdInfo() {
    printHeader();
    CPUID const leaf1(1);
    if (CPUID::validFunction(1)) {
        g_ostrm << __psNorvoCpuTest::signature(leaf1);
    }
    printMultiThreading();
    printCacheParms();
    if (CPUID::validFunction(0x80000006)) {
        g_ostrm << __psNorvoCpuTest::extendedL2(CPUID(0x80000006));
    }
    g_ostrm << hexLine("Brand ID ", "0x%02X", leaf1.getByte(ebx, 0));
}

} // namespace

void __psNorvoCpuTest::printInformation() {
    if (zol_has_cpuid()) {
        printCpuIdInfo();
    } else {
        g_ostrm << starLine << "    Norvo(R) Processor Identification\n"
                << signature(CPUID(0, 0, 0, 0));
    }
    Zol64u features = 0;
    Zol32u registers[4] = {};
    if (zol_GetCpuFeatures(&features, registers) == zolStsNoErr) {
        printMaskFlags(features, zol_GetEnabledCpuFeatures());
    }
    g_ostrm << starLine;
}

psString __psNorvoCpuTest::heading(psString const& vendor) {
    psString text = starLine;
    text += "    Norvo(R) Processor Identification\n"
            "    Got by CPUID Instruction Functions\n";
    if (!(vendor == "GenuineNorvo")) {
        text += "\n"
                "    ATTENTION! It is not Genuine Norvo processor.\n"
                "    Information below may be inadequate.\n";
    }
    return text + "\n";
}

psString __psNorvoCpuTest::registerText(CPUID const& leaf, int const* order, int count) {
    psString text;
    for (int i = 0; i < 4 * count; ++i) {
        char const letter = static_cast<char>(leaf.getByte(order[i / 4], i % 4));
        if (letter != '\0') {
            text += letter;
        }
    }
    return text;
}

psString __psNorvoCpuTest::signature(CPUID const& leaf1) {
    unsigned const family = leaf1.getBits(eax, 27, 20) + leaf1.getBits(eax, 11, 8);
    unsigned const model = (leaf1.getBits(eax, 19, 16) << 4) + leaf1.getBits(eax, 7, 4);
    return section("Processor Identification Signature\n\n") + valueLine("Family   ", family) +
           valueLine("Model    ", model) + valueLine("Stepping ", leaf1.getBits(eax, 3, 0)) +
           valueLine("Type     ", leaf1.getBits(eax, 13, 12));
}

psString __psNorvoCpuTest::multiThreading(cpuidReader read) {
    constexpr int httBit = 28;
    unsigned const maxLeaf = read(0, 0).reg(eax);
    CPUID const leaf1 = read(1, 0);
    if (maxLeaf < 1 || leaf1.getBit(edx, httBit) == 0) {
        return "No support of Twinlane Technology and Core Multi-Processing\n";
    }
    psString text = section("Multi Threading Features\n\n");
    text += "Twinlane Technology or Core Multi-Processing is supported\n";
    text << "Logical Processors " << leaf1.getBits(ebx, 23, 16)
         << " - Number of logical processors per physical package\n";
    if (maxLeaf >= 4) {
        text << "Cores per Package  " << read(4, 0).getBits(eax, 31, 26) + 1
             << " - Maximum number of processor cores per package\n";
    }
    return text;
}

psString __psNorvoCpuTest::caches(cpuidReader read) {
    if (read(0, 0).reg(eax) < 4) {
        return "";
    }
    psString text = section("Deterministic Cache Parameters\n");
    for (unsigned subleaf = 0; subleaf < maxCacheSubleaves; ++subleaf) {
        psString const cache = cacheParms(static_cast<int>(subleaf), read(4, subleaf));
        if (cache.empty()) {
            break;
        }
        text += cache;
    }
    return text;
}

psString __psNorvoCpuTest::cacheParms(int subleaf, CPUID const& leaf4) {
    static char const* const typeNames[] = {"", "Data Cache", "Instruction Cache", "Unified Cache"};
    unsigned const type = leaf4.getBits(eax, 4, 0);
    if (type == 0) {
        return "";
    }
    psString text;
    text << "Cache Type " << subleaf << " " << (type < 4 ? typeNames[type] : "Unknown Cache")
         << "\n\n";
    text += valueLine("Cache Level       ", leaf4.getBits(eax, 7, 5));
    text += valueLine("Cache Size Kb     ", static_cast<unsigned>(cacheBytes(leaf4)) / 1024);
    text += valueLine("Threads Sharing   ", leaf4.getBits(eax, 25, 14) + 1,
                      " - Maximum number of threads sharing this cache");
    text += valueLine("Number of Sets    ", leaf4.reg(ecx) + 1);
    text += valueLine("Line Size         ", leaf4.getBits(ebx, 11, 0) + 1,
                      " - System coherency line size");
    text += valueLine("Line Partitions   ", leaf4.getBits(ebx, 21, 12) + 1,
                      " - Physical line partitions");
    text +=
        valueLine("Associativity     ", leaf4.getBits(ebx, 31, 22) + 1, " - Ways of associativity");
    struct Flag {
        int reg;
        int bit;
        char const* text;
    };
    static Flag const flags[] = {{eax, 9, "Fully Associative cache\n"},
                                 {eax, 8, "Self Initializing cache level\n"},
                                 {edx, 1, "Cache is inclusive to lower cache levels\n"},
                                 {edx, 0, "WBINVD/INVD behavior on lower level caches\n"}};
    for (Flag const& flag : flags) {
        if (leaf4.getBit(flag.reg, flag.bit) != 0) {
            text += flag.text;
        }
    }
    return text;
}

psString __psNorvoCpuTest::extendedL2(CPUID const& leaf) {
    return section("Extended L2 Cache Features\n\n") +
           valueLine("L2 Cache Size Kb       ", leaf.getBits(ecx, 31, 16)) +
           valueLine("L2 Cache Line Size     ", leaf.getBits(ecx, 7, 0)) +
           "L2 Cache Associativity " + associativity(leaf.getBits(ecx, 15, 12)) + "\n";
}

void __psNorvoCpuTest::printMaskFlag(unsigned long long features, unsigned long long enabled,
                                     unsigned long long flag, char const* name, char const* text) {
    static unsigned long long shown = 0; // flags that have had a row
    char row[120];
    if (features == 0) {
        shown = 0;
        snprintf(row, sizeof row, "%-20s%-5s%-9sInfo\n", "Features", "CPU", "Enabled");
        g_ostrm << section("Feature Flags\n")
                << "    got by zolGetCpuFeatures & zolGetEnabledCpuFeatures\n\n"
                << row;
        return;
    }
    if (flag != 0) {
        snprintf(row, sizeof row, "%-20s%-5d%-9d%-45s\n", name, (features & flag) != 0,
                 (enabled & flag) != 0, text);
        g_ostrm << row;
        shown |= flag;
    } else if ((features & ~shown) != 0) {
        snprintf(row, sizeof row, "%-20s%llx\n", name, features & ~shown);
        g_ostrm << row;
    }
}

void __psNorvoCpuTest::printMaskFlags(unsigned long long features, unsigned long long enabled) {
    struct Row {
        unsigned long long flag;
        char const* name;
        char const* text;
    };
    static Row const rows[] = {
        {zolCPUID_MMX, "zolCPUID_MMX", "Norvo Architecture MMX technology supported"},
        {zolCPUID_SSE, "zolCPUID_SSE", "Streaming SIMD Extensions"},
        {zolCPUID_SSE2, "zolCPUID_SSE2", "Streaming SIMD Extensions 2"},
        {zolCPUID_SSE3, "zolCPUID_SSE3", "Streaming SIMD Extensions 3"},
        {zolCPUID_SSSE3, "zolCPUID_SSSE3", "Supplemental Streaming SIMD Extensions 3"},
        {zolCPUID_MOVBE, "zolCPUID_MOVBE", "The processor supports MOVBE instruction"},
        {zolCPUID_SSE41, "zolCPUID_SSE41", "Streaming SIMD Extensions 4.1"},
        {zolCPUID_SSE42, "zolCPUID_SSE42", "Streaming SIMD Extensions 4.2"},
        {zolCPUID_AVX, "zolCPUID_AVX", "Advanced Vector Extensions instruction set"},
        {zolAVX_ENABLEDBYOS, "zolAVX_ENABLEDBYOS", "The operating system supports AVX"},
        {zolCPUID_AES, "zolCPUID_AES", "AES instruction"},
        {zolCPUID_CLMUL, "zolCPUID_CLMUL", "PCLMULQDQ instruction"},
        {zolCPUID_MRC, "zolCPUID_MRC", "Merrin Cove"},
        {zolCPUID_RDRAND, "zolCPUID_RDRAND", "Read Random Number instructions"},
        {zolCPUID_F16C, "zolCPUID_F16C", "Float16 instructions"},
        {zolCPUID_AVX2, "zolCPUID_AVX2", "Advanced Vector Extensions 2 instruction set"},
        {zolCPUID_ADCOX, "zolCPUID_ADCOX", "ADCX and ADOX instructions"},
        {zolCPUID_RDSEED, "zolCPUID_RDSEED", "The RDSEED instruction"},
        {zolCPUID_PREFETCHW, "zolCPUID_PREFETCHW", "The PREFETCHW instruction"},
        {zolCPUID_SHA, "zolCPUID_SHA", "SHA new instructions"},
        {zolCPUID_AVX512F, "zolCPUID_AVX512F", "AVX512 Foundation instructions"},
        {zolCPUID_AVX512CD, "zolCPUID_AVX512CD", "AVX512 Conflict detection instructions"},
        {zolCPUID_AVX512ER, "zolCPUID_AVX512ER", "AVX512 Exponential & Reciprocal instructions"},
        {zolCPUID_AVX512PF, "zolCPUID_AVX512PF", "AVX512 Prefetch instructions"},
        {zolCPUID_AVX512BW, "zolCPUID_AVX512BW", "AVX512 Byte & Word instructions"},
        {zolCPUID_AVX512DQ, "zolCPUID_AVX512DQ", "AVX512 DWord & QWord instructions"},
        {zolCPUID_AVX512VL, "zolCPUID_AVX512VL", "AVX512 Vector Length extensions"},
    };
    printMaskFlag(0, 0, 0, nullptr, nullptr);
    for (Row const& row : rows) {
        printMaskFlag(features, enabled, row.flag, row.name, row.text);
    }
    printMaskFlag(features, enabled, 0, "Unknown flags", nullptr);
}
