// psexception.cpp - the two texts of an exception.
#include "psbase/psexception.h"

#include <cstdio>

psException::psException(psString const& text) { setFailure(text.c_str()); }

psException::psException(char const* text) : m_info{} {
    (void)std::snprintf(m_msg, sizeof m_msg, "--ZOL. Signal: %s", text != nullptr ? text : "");
}

psException psException::failure(char const* text) {
    psException made("");
    made.setFailure(text);
    return made;
}

// A text that is too long is cut: the arrays are what a handler can count on.
void psException::setFailure(char const* text) {
    (void)std::snprintf(m_info, sizeof m_info, "%s", text);
    (void)std::snprintf(m_msg, sizeof m_msg, "--ZOL. Exception: %s", text);
}
