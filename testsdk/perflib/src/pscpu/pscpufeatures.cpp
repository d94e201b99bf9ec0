// pscpufeatures.cpp - the table of features and flavours. A flavour shares its mask with
// the feature it was built for, so features stand first.
#include "pscpu/pscpufeatures.h"

namespace {

struct CpuFeature {
    char const* label;
    unsigned long long mask; // with the bits that a set implies
    bool isFlavour;          // of the library; else an instruction set

    psString name() const {
        psString const text(label);
        return isFlavour ? "ZOL " + text + " library version" : text + " (TM) Technology";
    }
};

constexpr CpuFeature cpuFeatureArray[] = {
    {"MMX", 0x1, false},
    {"SSE", 0x3, false},
    {"SSE2", 0x7, false},
    {"SSE3", 0xf, false},
    {"SSSE3", 0x1f, false},
    {"MOVBE", 0x3f, false},
    {"SSE41", 0x5f, false},
    {"SSE42", 0xdf, false},
    {"AVX", 0x1df, false},
    {"AES", 0x400, false},
    {"CLMUL", 0x800, false},
    {"RDRAND", 0x2000, false},
    {"F16C", 0x4000, false},
    {"AVX2", 0x81df, false},
    {"ADCOX", 0x10000, false},
    {"RDSEED", 0x20000, false},
    {"PREFETCHW", 0x40000, false},
    {"SHA", 0x80000, false},
    {"AVX512F", 0x100000, false},
    {"AVX512CD", 0x200000, false},
    {"AVX512ER", 0x400000, false},
    {"AVX512PF", 0x800000, false},
    {"AVX512BW", 0x1000000, false},
    {"AVX512DQ", 0x2000000, false},
    {"AVX512VL", 0x4000000, false},
    {"MRD", 0x80000000, false},
    {"Q0", 0x3, true},
    {"Q1", 0x7, true},
    {"Q2", 0xf, true},
    {"Q3", 0x3f, true},
    {"Q4", 0x3f, true},
    {"Q5", 0xdf, true},
    {"Q6", 0xdf, true},
    {"Q5+", 0x6cdf, true},
    {"Q6+", 0x6cdf, true},
    {"Q7", 0x1df, true},
    {"Q8", 0x1df, true},
    {"Q7+", 0x6ddf, true},
    {"Q8+", 0x6ddf, true},
    {"Q9", 0x81df, true},
    {"R1", 0x81df, true},
    {"Q9+", 0xfeddf, true},
    {"R1+", 0xfeddf, true},
    {"R2", 0xf081df, true},
    {"R2+", 0xf7eddf, true},
    {"R3", 0x73081df, true},
    {"R3+", 0x737eddf, true},
};
static_assert(sizeof cpuFeatureArray / sizeof cpuFeatureArray[0] == 47);

CpuFeature const* findMask(unsigned long long mask) {
    for (CpuFeature const& row : cpuFeatureArray) {
        if (row.mask == mask) {
            return &row;
        }
    }
    return nullptr;
}

psString formatLabel(char const* label) {
    constexpr int width = 9;
    psString text(label);
    if (text.size() < width) {
        text.resize(width, ' ');
    }
    return text;
}

} // namespace

psString psCpuFeatures::cpuLabel(unsigned long long mask) {
    CpuFeature const* const row = findMask(mask);
    return row != nullptr ? row->label : "Undefined";
}

psString psCpuFeatures::cpuName(unsigned long long mask) {
    CpuFeature const* const row = findMask(mask);
    return row != nullptr ? row->name() : "Unknown processor";
}

unsigned long long psCpuFeatures::cpuFeatures(psString const& list) {
    int count = 0;
    split(nullptr, list, ',', count);
    psString* const parts = new psString[static_cast<unsigned>(count)];
    split(parts, list, ',', count);
    unsigned long long mask = 0;
    for (int i = 0; i < count; ++i) {
        for (CpuFeature const& row : cpuFeatureArray) {
            if (parts[i] == row.label) {
                mask |= row.mask;
            }
        }
    }
    delete[] parts;
    return mask;
}

psString psCpuFeatures::optimizedList() {
    psString text;
    for (CpuFeature const& row : cpuFeatureArray) {
        text << formatLabel(row.label) << ": optimized for " << row.name() << "\n";
    }
    return text;
}

void psCpuFeatures::split(psString* parts, psString const& text, char separator, int& count) {
    count = 0;
    int start = 0;
    for (int i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == separator) {
            if (parts != nullptr) {
                parts[count] = text.substr(start, i - start);
            }
            ++count;
            start = i + 1;
        }
    }
}
