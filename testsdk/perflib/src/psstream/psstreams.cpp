// psstreams.cpp - the global stream objects, in the order in which they need each other.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>

#include "psstream/pscstream.h"
#include "psstream/psistream.h"
#include "psstream/psostream.h"
#include "psstream/pstrace.h"

namespace {

// What the streams expect of the process that they live in.
struct ProcessSetup {
    ProcessSetup() {
        // A standard stream that came closed would lend its number to the first file opened, and
        // console text would land in a table. Opened the wrong way round it still fails, and is
        // told.
        for (int number = 0; number < 3; ++number) {
            if (fcntl(number, F_GETFD) < 0 && errno == EBADF) {
                (void)::open("/dev/null", number == 0 ? O_WRONLY : O_RDONLY);
            }
        }
        // A closed pipe and a file at its size limit are failed writes, told once, and not the end
        // of the run.
        std::signal(SIGPIPE, SIG_IGN);
        std::signal(SIGXFSZ, SIG_IGN);
        // Of a redirected console, too, a kill shall leave whole lines.
        (void)std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    }
};

} // namespace

// Before the file-scope objects of all other files, so that these may use the streams until their
// own end.
#define PS_EARLY [[gnu::init_priority(200)]]

PS_EARLY static ProcessSetup const processSetup;
PS_EARLY i_stream c_in(stdin);
PS_EARLY o_stream c_out(stdout);
PS_EARLY psOStream g_ostrm;
PS_EARLY psCStream g_cstrm;
PS_EARLY psCStream g_qstrm;
PS_EARLY psUStream g_ustrm;
PS_EARLY psCStream g_mstrm;
PS_EARLY psIStream g_istrm;
PS_EARLY psTrace g_trace;
