// pshelp.cpp - the version line and the help texts of the keys.
#include "ps/pssession.h"

bool psSession::hintOutput() {
    if (!s_version && s_hintArg == 0) {
        return false;
    }
    g_ostrm << "\n"
            << "Norvo(R) Zolan Primitives. Performance System " << PS_VERSION << ", " << __DATE__
            << "\n";
    if (s_hintArg != 0) {
        hint(s_hintArg, s_hintHide);
    }
    return true;
}

void psSession::hint(char which, bool hide) {
    if (which == shortHelp) {
        hint_quick(hide);
    } else if (which == (hide ? 'h' : '?')) {
        hint_full(hide);
    } else {
        hint_descr(which);
    }
}

void psSession::hint_quick(bool hide) {
    g_ostrm << "QUICK HELP" << (hide ? "" : " with hidden keys") << "\n";
    for (psOption const* option : m_options) {
        if (!hide || !option->hidden) {
            g_ostrm << option->quick;
        }
    }
}

void psSession::hint_full(bool hide) {
    g_ostrm << "EXTENDED HELP" << (hide ? "" : " with hidden keys") << "\n";
    for (psOption const* option : m_options) {
        if (option->quick.empty() || (hide && option->hidden)) {
            continue;
        }
        g_ostrm << "\n" << option->quick;
        if (option->hidden) {
            g_ostrm << "This is hidden key used by developers only\n";
        }
        g_ostrm << option->descr;
    }
}

void psSession::hint_descr(char which) {
    g_ostrm << "EXTENDED KEY HELP\n";
    psOption const* const option = getOption(which);
    if (option == nullptr) {
        g_ostrm << "Key -" << which << " is not valid\n";
    } else {
        if (option->quick.empty()) {
            g_ostrm << "Key -" << which << " is deprecated\n";
        } else {
            g_ostrm << option->quick;
        }
        if (option->descr.empty()) {
            g_ostrm << "No extended description for this key\n";
        } else {
            g_ostrm << option->descr;
        }
    }
    g_ostrm << "\n"
            << "Use -h option to type full key list\n";
}
