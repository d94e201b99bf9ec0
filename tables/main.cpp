// main.cpp - the command line of ps_tables.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>

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

int runCommandLine(int argc, char** argv) {
    CLI::App app("From tables of ps_zolvm to verdicts", "ps_tables");
    app.set_version_flag("--version", "ps_tables " PS_VERSION);
    app.require_subcommand(1);
    std::function<int()> command;

    PairOptions pair;
    CLI::App& pairApp = *app.add_subcommand("pair", "Did a change make anything slower?");
    pairApp.add_option("--baseline", pair.baseline, "Folder of the library before the change")
        ->required();
    addPasses(pairApp, pair.passes);
    pairApp
        .add_option("--more", pair.more,
                    "Further passes of what is undecided or was called, at most")
        ->check(CLI::Range(0, 999));
    pairApp.add_flag("!--no-confirm", pair.confirm,
                     "Don't measure again what was called before it is reported");
    pairApp.add_flag("!--no-control", pair.control, "No passes of the baseline against itself");
    addShow(pairApp, pair.show);
    pairApp.callback([&] { command = [&] { return pairCommand(pair); }; });

    RunOptions run;
    CLI::App& runApp = *app.add_subcommand("run", "Absolute numbers: one table of several passes");
    addPasses(runApp, run.passes);
    runApp.callback([&] { command = [&] { return runCommand(run); }; });
    pair.passes.commandLine = run.passes.commandLine = {argv, argv + argc};

    VerdictOptions verdict;
    CLI::App& verdictApp = *app.add_subcommand("verdict", "The verdict of pairs that are there");
    verdictApp.add_option("tables", verdict.files, "Tables of pairs, or files of passes")
        ->required();
    addShow(verdictApp, verdict.show);
    verdictApp.callback([&] { command = [&] { return verdictCommand(verdict); }; });

    CompareOptions compare;
    CLI::App& compareApp =
        *app.add_subcommand("compare", "Two tables of absolute numbers, or files of passes");
    compareApp.add_option("before", compare.before, "The first table")->required();
    compareApp.add_option("after", compare.after, "The second table")->required();
    compareApp.add_flag("--strict", compare.strict,
                        "Other rows, machines, libraries or keys are a failure");
    addShow(compareApp, compare.show);
    compareApp.callback([&] { command = [&] { return compareCommand(compare); }; });

    MergeOptions merge;
    CLI::App& mergeApp = *app.add_subcommand("merge", "Several passes become one table");
    mergeApp.add_option("tables", merge.files, "Tables, or files of passes")->required();
    mergeApp.add_option("-o,--output", merge.output,
                        "Table to write; FILE.passes.csv beside it has all readings; "
                        "without it the table is printed");
    mergeApp.callback([&] { command = [&] { return mergeCommand(merge); }; });

    ReportOptions report;
    CLI::App& reportApp = *app.add_subcommand("report", "A page to look at, in one html file");
    addTables(reportApp, report);
    reportApp.add_option("-o,--output", report.output, "The page to write")->required();
    reportApp.callback([&] { command = [&] { return reportCommand(report); }; });

    ExportOptions exported;
    CLI::App& exportApp = *app.add_subcommand("export", "Tables in other tools' formats");
    addTables(exportApp, exported.tables);
    exportApp
        .add_option("--to", exported.format,
                    "gbench: JSON of Google Benchmark; gobench: Go's benchmark text; long, json: "
                    "all readings; junit: XML of tests")
        ->check(CLI::IsMember({"gbench", "gobench", "long", "json", "junit"}))
        ->required();
    exportApp.add_option("-o,--output", exported.tables.output, "The file to write");
    exportApp.add_flag("--baseline", exported.baseline,
                       "For gbench and gobench, the baseline's readings");
    exportApp.add_option("--fail-on", exported.failOn, "For junit, what is a failure")
        ->check(CLI::IsMember({"slower", "changed"}))
        ->capture_default_str();
    exportApp.callback([&] { command = [&] { return exportCommand(exported); }; });

    HistoryOptions history;
    CLI::App& historyApp =
        *app.add_subcommand("history", "Tables of many dates: when did what become slower?");
    historyApp.add_option("tables", history.files, "Tables, or folders of them")->required();
    historyApp
        .add_option("--label", history.labels,
                    "Name of a table instead of date and library; one for each, in order")
        ->allow_extra_args(false);
    historyApp.add_flag("--baseline-chain", history.chain,
                        "Tables of pairs, each against the one before: ratios are multiplied");
    historyApp.add_option("-o,--output", history.output, "Page to write: steps and curves");
    addThreshold(historyApp, history.threshold);
    historyApp.add_option("--format", history.format, "How the steps are printed")
        ->check(CLI::IsMember({"text", "csv", "json"}))
        ->capture_default_str();
    historyApp.add_option("--rows", history.rows, "Steps to print at most; 0 for all")
        ->capture_default_str();
    historyApp.callback([&] { command = [&] { return historyCommand(history); }; });

    ImportOptions imported;
    CLI::App& importApp = *app.add_subcommand("import", "A table of Google Benchmark's JSON");
    importApp.add_option("file", imported.file, "The JSON")->required();
    importApp.add_option("--mhz", imported.mhz, "Frequency that makes clocks of times")
        ->check(CLI::Range(1.0, 1e6));
    importApp.add_option("-o,--output", imported.output,
                         "Table to write; FILE.passes.csv beside it has all repetitions; "
                         "without it the table is printed");
    importApp.callback([&] { command = [&] { return importCommand(imported); }; });

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
