// vtsdefs.cpp - the suite's global records, but for the catalogue rows.
#include "vts/vtsdefs.h"

constinit vtsParam defParam;
constinit vtsData defData;

constexpr vtsFlavour flavDefaults[vtsNumFlavours] = {
    {"HA", 1.0F, 0.0F, 2},
    {"LA", 4.0F, 3.9F, 1},
    {"A26", 67000000.0F, 50000000.0F, 3},
    {"A11", 5000.0F, 4990.0F, 3},
};
constinit vtsFlavour flavData[vtsNumFlavours] = {flavDefaults[0], flavDefaults[1], flavDefaults[2],
                                                 flavDefaults[3]};

char const* const pcTestNames[vtsNumTests] = {"Badargs",   "Unalign",  "Inplace",
                                              "Unrolling", "Safety",   "Threads",
                                              "Special",   "Accuracy", "Timing"};
