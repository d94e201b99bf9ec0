// process.h - one child process: started in a group of its own, its lines handed on, ended when the
// user interrupts or when it stays silent.
#ifndef RUN_PROCESS_H
#define RUN_PROCESS_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tables {

// How a process ended.
struct Ended {
    int code = 0;             // exit code, if no signal
    int signal = 0;           // that ended it
    bool silent = false;      // was ended, having printed nothing for too long
    bool interrupted = false; // was ended, since the user interrupted
};

// Runs the words as a command, both its outputs handed on line by line; ends it with its group
// after so many seconds without a line, and kills it where it hasn't ended some seconds after it
// was asked to. Throws Failure if it cannot be started.
Ended runProcess(std::vector<std::string> const& words,
                 std::function<void(std::string_view line)> const& onLine, double silenceLimit,
                 double grace = 5);

// From now on Ctrl-C and SIGTERM are noted, and end the running process.
void noteInterrupts();
bool interrupted();

} // namespace tables

#endif
