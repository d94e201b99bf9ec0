// psexception.h - the only exception of the framework: a text, kept in fixed arrays
// so that throwing it allocates nothing.
#ifndef PSBASE_PSEXCEPTION_H
#define PSBASE_PSEXCEPTION_H

#include "psbase/psstring.h"
#include <exception>

class psException : public std::exception {
public:
    // A failure found by the framework: msg() is "--ZOL. Exception: " and the text.
    explicit psException(psString const& text);
    // A signal: msg() is "--ZOL. Signal: " and the text, info() is empty.
    explicit psException(char const* text);
    // A failure as of a psString, where there may be no memory for one.
    static psException failure(char const* text);

    char const* msg() const { return m_msg; }
    char const* info() const { return m_info; }
    char const* what() const noexcept override { return m_msg; }

private:
    void setFailure(char const* text);

    char m_msg[274];
    char m_info[256];
};

#endif
