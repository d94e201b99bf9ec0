// pscpufeatures.h - names of processor features and library flavours, and their masks.
#ifndef PSCPU_PSCPUFEATURES_H
#define PSCPU_PSCPUFEATURES_H

#include "psbase/psstring.h"

// Looked up in a table that gives the first row of a mask and every row of a label.
class psCpuFeatures {
public:
    static psString cpuLabel(unsigned long long mask); // "Undefined" for an unknown mask
    static psString cpuName(unsigned long long mask);  // "Unknown processor" for an unknown mask

    // Masks of a comma-separated list of labels, joined by or; unknown labels are passed over.
    static unsigned long long cpuFeatures(psString const& list);

    static psString optimizedList(); // help text: a line for each label

private:
    // Parts between separators; with null parts only counts them.
    static void split(psString* parts, psString const& text, char separator, int& count);
};

#endif
