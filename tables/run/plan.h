// plan.h - which passes a command makes, and how each is started.
#ifndef RUN_PLAN_H
#define RUN_PLAN_H

#include <string>
#include <vector>

namespace tables {

// What all passes of a command share. Paths are absolute.
struct Job {
    std::string program;             // ps_zolvm
    std::string library;             // folder of the library under test; "": as it is started
    std::string baseline;            // the other side; "": plain passes
    std::vector<std::string> keys;   // of the user, for the program
    std::vector<std::string> launch; // ahead of each pass
    int frequency = 0;               // MHz, handed to the passes; 0: each finds it
    std::string folder;              // of the passes

    // What has to be equal for a started job to be gone on with.
    std::string identity() const;
};

// One process to come.
struct PlannedPass {
    int number = 1;   // counts from 1; names the files
    std::string kind; // as in the head of its table
    bool baselineFirst = false;
    std::vector<std::string> functions; // Sin_32f_A24; none: what the keys select
};

// So many passes, sides in turns, with a control two of them of the baseline against itself.
std::vector<PlannedPass> planPairs(int passes, bool control);
// Passes of a kind, of these functions alone or of what the keys select; numbers begin at first.
std::vector<PlannedPass> planPasses(std::string const& kind, int passes, int first,
                                    std::vector<std::string> const& functions = {});

// Throws Failure if one of the keys would take over what the passes need for themselves.
void refuseOwnKeys(std::vector<std::string> const& keys);

// The shell script that makes a pass, with its table in this file.
std::string passScript(Job const& job, PlannedPass const& pass, std::string const& table);

// A job-array script for Slurm, each task of which makes one pass of the command, whose words these
// are, the subcommand second.
std::string arrayScript(std::vector<std::string> const& commandLine, int passes);

// The words as a shell reads them back.
std::string shellWords(std::vector<std::string> const& words);

} // namespace tables

#endif
