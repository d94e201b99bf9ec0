// plan.h - which passes a command makes, and how each is started.
#ifndef RUN_PLAN_H
#define RUN_PLAN_H

#include <string>
#include <vector>

#include "core/table.h"

namespace tables {

// What all passes of a command share.
struct Job {
    std::string program;  // ps_zolvm
    std::string library;  // folder of the library under test, "" for the one it is linked with
    std::string baseline; // the other side, "" for plain passes
    std::vector<std::string> keys; // of the user, for the program
    std::vector<std::string> launch;
    std::string folder; // of the passes
    bool control = true;

    // What has to be equal for a started job to be resumed.
    std::string identity() const;
};

// One process to come.
struct PlannedPass {
    int number = 1;   // counts from 1; names the files
    std::string kind; // as in the head of its table
    bool baselineFirst = false;
    std::vector<std::string> functions; // full names; none: what the keys select
};

// So many passes, sides in turns, the control's two spread among them; numbers begin at first.
std::vector<PlannedPass> planPairs(int passes, bool control, int first = 1);
// Further passes of these functions alone, of the kind more or confirm.
std::vector<PlannedPass> planFurther(std::string const& kind, int passes,
                                     std::vector<std::string> const& functions, int first);
std::vector<PlannedPass> planPlain(int passes);

// The shell script that makes the pass, to be started behind the launch prefix.
std::string passScript(Job const& job, PlannedPass const& pass);

// A job-array script for Slurm, each task of which makes one of the passes.
std::string arrayScript(Job const& job, int passes);

} // namespace tables

#endif
