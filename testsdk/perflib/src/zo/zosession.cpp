// zosession.cpp - the session of a program with library tests.
#include "zo/zosession.h"

void zoSession::funcTitleToCStream() {
    g_cstrm << "funcBase"
            << "funcDataType"
            << "funcDescriptor";
}
