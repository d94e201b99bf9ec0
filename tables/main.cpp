// main.cpp - the command line of ps_tables.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <functional>

#include "commands.h"

namespace {

using namespace tables;

void addThreshold(CLI::App& command, double& share) {
    command
        .add_option_function<double>(
            "--threshold", [&share](double percent) { share = percent / 100; },
            "Percent that matter: smaller changes are not called")
        ->check(CLI::Range(0.01, 100.0));
}

void addTables(CLI::App& command, ReportOptions& options) {
    command.add_option("tables", options.files, "Tables, files of passes or of pairs")->required();
    command.add_option("--against", options.against,
                       "Table of absolute numbers to compare with, measured before");
    addThreshold(command, options.threshold);
}

void addShow(CLI::App& command, ShowOptions& options) {
    addThreshold(command, options.settings.threshold);
    command.add_option("--format", options.format, "How the verdict is printed")
        ->check(CLI::IsMember({"text", "markdown", "csv", "json"}))
        ->capture_default_str();
    command.add_option("--fail-on", options.failOn, "What makes exit code 1")
        ->check(CLI::IsMember({"slower", "changed", "undecided", "never"}))
        ->capture_default_str();
    command.add_option("--rows", options.rows, "Called rows to print at most; 0 for all")
        ->capture_default_str();
}

void addPasses(CLI::App& command, PassOptions& options) {
    command.add_option("--passes", options.passes, "Processes to measure in")
        ->check(CLI::Range(1, 999))
        ->capture_default_str();
    command.add_option("--library", options.library,
                       "Folder of the library under test, instead of what ps_zolvm finds");
    command.add_option("--program", options.program,
                       "ps_zolvm, instead of the one beside this program or in PATH");
    command.add_option("-o,--output", options.output,
                       "Table to write; FILE.passes.csv beside it has all readings");
    command.add_flag("--resume", options.resume, "Go on where the same command was interrupted");
    command.add_option("--launch", options.launch,
                       "Words ahead of each pass, such as 'taskset -c 3' or 'srun -n1'");
    command
        .add_option("--patience", options.silenceLimit,
                    "Seconds without a line after which a pass is ended")
        ->check(CLI::Range(0.1, 1e6))
        ->capture_default_str();
    command.add_flag("--array", options.array,
                     "Print a job-array script for Slurm whose tasks make a pass each, and end");
    command.add_option("--only", options.only, "Make this pass alone, for --resume to find");
    command.add_flag("-q,--quiet", options.quiet, "No progress");
    command.add_option("keys", options.keys, "Keys for ps_zolvm, behind --");
}

// What is to be done when all words have been read.
using Command = std::function<int()>;

void addPair(CLI::App& app, PairOptions& options, Command& command) {
    CLI::App& pairApp = *app.add_subcommand("pair", "Did a change make anything slower?");
    pairApp.add_option("--baseline", options.baseline, "Folder of the library before the change")
        ->required();
    addPasses(pairApp, options.passes);
    pairApp
        .add_option("--more", options.more,
                    "Further passes of what is undecided or was called, at most")
        ->check(CLI::Range(0, 999));
    pairApp.add_flag("!--no-confirm", options.confirm,
                     "Don't measure again what was called before it is reported");
    pairApp.add_flag("!--no-control", options.control, "No passes of the baseline against itself");
    addShow(pairApp, options.show);
    pairApp.callback([&] { command = [&options] { return pairCommand(options); }; });
}

void addRun(CLI::App& app, RunOptions& options, Command& command) {
    CLI::App& runApp = *app.add_subcommand("run", "Absolute numbers: one table of several passes");
    addPasses(runApp, options.passes);
    runApp.callback([&] { command = [&options] { return runCommand(options); }; });
}

void addVerdict(CLI::App& app, VerdictOptions& options, Command& command) {
    CLI::App& verdictApp = *app.add_subcommand("verdict", "The verdict of pairs that are there");
    verdictApp.add_option("tables", options.files, "Tables of pairs, or files of passes")
        ->required();
    addShow(verdictApp, options.show);
    verdictApp.callback([&] { command = [&options] { return verdictCommand(options); }; });
}

void addCompare(CLI::App& app, CompareOptions& options, Command& command) {
    CLI::App& compareApp =
        *app.add_subcommand("compare", "Two tables of absolute numbers, or files of passes");
    compareApp.add_option("before", options.before, "The first table")->required();
    compareApp.add_option("after", options.after, "The second table")->required();
    compareApp.add_flag("--strict", options.strict,
                        "Other rows, machines, libraries or keys are a failure");
    addShow(compareApp, options.show);
    compareApp.callback([&] { command = [&options] { return compareCommand(options); }; });
}

void addMerge(CLI::App& app, MergeOptions& options, Command& command) {
    CLI::App& mergeApp = *app.add_subcommand("merge", "Several passes become one table");
    mergeApp.add_option("tables", options.files, "Tables, or files of passes")->required();
    mergeApp.add_option("-o,--output", options.output,
                        "Table to write; FILE.passes.csv beside it has all readings; "
                        "without it the table is printed");
    mergeApp.callback([&] { command = [&options] { return mergeCommand(options); }; });
}

void addReport(CLI::App& app, ReportOptions& options, Command& command) {
    CLI::App& reportApp = *app.add_subcommand("report", "A page to look at, in one html file");
    addTables(reportApp, options);
    reportApp.add_option("-o,--output", options.output, "The page to write")->required();
    reportApp.callback([&] { command = [&options] { return reportCommand(options); }; });
}

void addExport(CLI::App& app, ExportOptions& options, Command& command) {
    CLI::App& exportApp = *app.add_subcommand("export", "Tables in other tools' formats");
    addTables(exportApp, options.tables);
    exportApp
        .add_option("--to", options.format,
                    "gbench: JSON of Google Benchmark; gobench: Go's benchmark text; long, json: "
                    "all readings; junit: XML of tests")
        ->check(CLI::IsMember({"gbench", "gobench", "long", "json", "junit"}))
        ->required();
    exportApp.add_option("-o,--output", options.tables.output, "The file to write");
    exportApp.add_flag("--baseline", options.baseline,
                       "For gbench and gobench, the baseline's readings");
    exportApp.add_option("--fail-on", options.failOn, "For junit, what is a failure")
        ->check(CLI::IsMember({"slower", "changed"}))
        ->capture_default_str();
    exportApp.callback([&] { command = [&options] { return exportCommand(options); }; });
}

void addHistory(CLI::App& app, HistoryOptions& options, Command& command) {
    CLI::App& historyApp =
        *app.add_subcommand("history", "Tables of many dates: when did what become slower?");
    historyApp.add_option("tables", options.files, "Tables, or folders of them")->required();
    historyApp
        .add_option("--label", options.labels,
                    "Name of a table instead of date and library; one for each, in order")
        ->allow_extra_args(false);
    historyApp.add_flag("--baseline-chain", options.chain,
                        "Tables of pairs, each against the one before: ratios are multiplied");
    historyApp.add_option("-o,--output", options.output, "Page to write: steps and curves");
    addThreshold(historyApp, options.threshold);
    historyApp.add_option("--format", options.format, "How the steps are printed")
        ->check(CLI::IsMember({"text", "csv", "json"}))
        ->capture_default_str();
    historyApp.add_option("--rows", options.rows, "Steps to print at most; 0 for all")
        ->capture_default_str();
    historyApp.callback([&] { command = [&options] { return historyCommand(options); }; });
}

void addImport(CLI::App& app, ImportOptions& options, Command& command) {
    CLI::App& importApp = *app.add_subcommand("import", "A table of Google Benchmark's JSON");
    importApp.add_option("file", options.file, "The JSON")->required();
    importApp.add_option("--mhz", options.mhz, "Frequency that makes clocks of times")
        ->check(CLI::Range(1.0, 1e6));
    importApp.add_option("-o,--output", options.output,
                         "Table to write; FILE.passes.csv beside it has all repetitions; "
                         "without it the table is printed");
    importApp.callback([&] { command = [&options] { return importCommand(options); }; });
}

int runCommandLine(int argc, char** argv) {
    CLI::App app("From tables of ps_zolvm to verdicts", "ps_tables");
    app.set_version_flag("--version", "ps_tables " PS_VERSION);
    app.require_subcommand(1);
    Command command;
    PairOptions pair;
    RunOptions run;
    VerdictOptions verdict;
    CompareOptions compare;
    MergeOptions merge;
    ReportOptions report;
    ExportOptions exported;
    HistoryOptions history;
    ImportOptions imported;
    pair.passes.commandLine = run.passes.commandLine = {argv, argv + argc};
    addPair(app, pair, command);
    addRun(app, run, command);
    addVerdict(app, verdict, command);
    addCompare(app, compare, command);
    addMerge(app, merge, command);
    addReport(app, report, command);
    addExport(app, exported, command);
    addHistory(app, history, command);
    addImport(app, imported, command);
    app.add_subcommand("machine", "What this machine is fit for, in two seconds")->callback([&] {
        command = machineCommand;
    });

    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? exitFine : exitFailed;
    }
    return command();
}

} // namespace

int main(int argc, char** argv) {
    try {
        return runCommandLine(argc, argv);
    } catch (std::exception const& failure) { // Failure, or what the machine cannot give
        (void)std::fprintf(stderr, "ps_tables: %s\n", failure.what());
        return exitFailed;
    }
}
