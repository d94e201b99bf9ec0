// zosession.h - the session of a program with library tests: its table names a function
// by base, types and descriptor, and it may measure two libraries in turns.
#ifndef ZO_ZOSESSION_H
#define ZO_ZOSESSION_H

#include "ps/pssession.h"

class zoSession : public psSession {
public:
    int run(int argc, char** argv) override; // or serves another process's paired readings
    void funcTitleToCStream() override;      // titles of the three cells
    bool startComparison() override;         // the two libraries of -dBaseline
    void readCommonData() override;
};

#endif
