// zosession.h - the session of a program with library tests: its table names a function
// by base, types and descriptor.
#ifndef ZO_ZOSESSION_H
#define ZO_ZOSESSION_H

#include "ps/pssession.h"

class zoSession : public psSession {
public:
    void funcTitleToCStream() override;
};

#endif
