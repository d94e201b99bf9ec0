// main.cpp - the command line of ps_tables.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

#include "core/failure.h"
#include "core/merge.h"
#include "run/files.h"

namespace {

using namespace tables;

constexpr int failed = 2;

struct MergeOptions {
    std::vector<std::string> files;
    std::string output;
};

int merge(MergeOptions const& options) {
    refuseOverwriting(options.output, options.files);
    Passes const passes = readTables(options.files);
    if (std::size_t const machines = byMachine(passes).size(); machines > 1) {
        throw Failure("the tables come from " + std::to_string(machines) +
                      " machines: merge those of each by themselves");
    }
    Merged const merged = mergePasses(passes);
    std::string const text = tableText(passes.points, merged.pass, merged.words);
    if (options.output.empty()) {
        std::cout << text << std::flush;
    } else {
        replaceFile(options.output + ".passes.csv", passesText(passes));
        replaceFile(options.output, text);
    }
    std::cerr << merged.pass.readings.size() << " points of " << passes.list.size() << " passes, "
              << merged.apart << " of them far apart\n";
    return std::cout ? 0 : failed;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("From tables of ps_zolvm to verdicts", "ps_tables");
    app.set_version_flag("--version", "ps_tables " PS_VERSION);
    app.require_subcommand(1);

    MergeOptions mergeOptions;
    CLI::App* const mergeCommand = app.add_subcommand("merge", "Several passes become one table");
    mergeCommand->add_option("tables", mergeOptions.files, "Tables, or files of passes")
        ->required();
    mergeCommand->add_option("-o,--output", mergeOptions.output,
                             "Table to write, and all readings beside it in FILE.passes.csv; "
                             "without it the table is printed");
    try {
        app.parse(argc, argv);
        return merge(mergeOptions);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? 0 : failed;
    } catch (Failure const& failure) {
        std::cerr << "ps_tables: " << failure.what() << '\n';
        return failed;
    }
}
