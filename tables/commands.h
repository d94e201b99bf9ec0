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

// What has an output writes there, or prints where it is ""; a verdict is always printed.

// Measures passes of pairs, further ones of what is unclear, and judges them.
int pairCommand(PairOptions const& options);
// Measures plain passes and makes one table of them.
int runCommand(RunOptions const& options);
// Judges pairs that were measured before.
int verdictCommand(VerdictOptions const& options);
// Judges the second table's absolute numbers against the first's.
int compareCommand(CompareOptions const& options);
// Makes one table of several passes.
int mergeCommand(MergeOptions const& options);
// Writes a page of tables, judged where they have pairs or are held against a table.
int reportCommand(ReportOptions const& options);
// The same in another tool's format.
int exportCommand(ExportOptions const& options);
// Finds the steps in tables of many dates, prints them, and writes a page of them where one is
// wanted.
int historyCommand(HistoryOptions const& options);
// Makes a table of Google Benchmark's JSON.
int importCommand(ImportOptions const& options);
// Watches this machine for two seconds and prints what it is fit for.
int machineCommand();

} // namespace tables

#endif
