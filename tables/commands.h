// commands.h - what each subcommand of ps_tables does with its options. Exit codes: 0 nothing to
// complain of, 1 something was called that --fail-on names, 2 it could not be measured or read, 130
// the user interrupted. Throws Failure.
#ifndef TABLES_COMMANDS_H
#define TABLES_COMMANDS_H

#include <string>
#include <vector>

#include "core/verdict.h"

namespace tables {

enum ExitCode { exitFine = 0, exitCalled = 1, exitFailed = 2, exitInterrupted = 130 };

// How a verdict is shown, and what of it makes exit code 1.
struct ShowOptions {
    VerdictSettings settings;
    std::string format = "text";
    std::string failOn = "slower";
    std::size_t rows = 40;
};

// How passes are made.
struct PassOptions {
    std::string program; // "": beside this program, else found through PATH
    std::string library;
    std::string launch;
    std::string output;
    std::vector<std::string> keys;
    int passes = 20;
    double silenceLimit = 300;
    bool resume = false;
    bool quiet = false;
    bool array = false;                   // print the job array's script
    std::vector<std::string> commandLine; // for it
    int only = 0;                         // make this pass alone; 0: all
};

struct PairOptions {
    PassOptions passes;
    ShowOptions show;
    std::string baseline;
    int more = 0;
    bool confirm = true;
    bool control = true;
};

// run: plain passes
struct RunOptions {
    PassOptions passes{};
    RunOptions() { passes.passes = 5; }
};

struct VerdictOptions {
    std::vector<std::string> files;
    ShowOptions show;
};

struct CompareOptions {
    std::string before;
    std::string after;
    ShowOptions show{};
    bool strict = false; // other rows, machines, libraries or keys are a failure
    CompareOptions() { show.settings.threshold = 0.03; }
};

struct MergeOptions {
    std::vector<std::string> files;
    std::string output;
};

// Tables, and what they are held against.
struct ReportOptions {
    std::vector<std::string> files;
    std::string against; // the table before, of absolute numbers; "": none
    std::string output;
    double threshold = 0; // 0: what the commands that compare have
};

struct ExportOptions {
    ReportOptions tables;
    std::string format;
    bool baseline = false; // its readings, for formats that hold those of one library
    std::string failOn = "slower";
};

// Tables of many dates.
struct HistoryOptions {
    std::vector<std::string> files;  // or folders of tables
    std::vector<std::string> labels; // one a table, in the order of the files
    std::string output;              // a page; "": none
    std::string format = "text";
    std::size_t rows = 40;
    double threshold = 0.03;
    bool chain = false;
};

struct ImportOptions {
    std::string file;
    std::string output;
    double mhz = 0; // 0: as the file says
};

int pairCommand(PairOptions const& options);
int runCommand(RunOptions const& options);
int verdictCommand(VerdictOptions const& options);
int compareCommand(CompareOptions const& options);
int mergeCommand(MergeOptions const& options);
int reportCommand(ReportOptions const& options);
int exportCommand(ExportOptions const& options);
int historyCommand(HistoryOptions const& options);
int importCommand(ImportOptions const& options);
int machineCommand();

} // namespace tables

#endif
