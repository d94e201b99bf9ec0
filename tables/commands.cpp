// commands.cpp - what each subcommand does.
#include "commands.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

#include "core/compare.h"
#include "core/failure.h"
#include "core/findings.h"
#include "core/history.h"
#include "core/merge.h"
#include "core/show.h"
#include "core/text.h"
#include "export/formats.h"
#include "page/history.h"
#include "page/report.h"
#include "run/campaign.h"
#include "run/files.h"
#include "run/machine.h"
#include "run/process.h"

namespace tables {

namespace {

namespace fs = std::filesystem;

constexpr double noisy = 1.5; // times the errors that passes of one set tell

void print(std::string const& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() ||
        std::fflush(stdout) != 0) {
        throw Failure("standard output: cannot be written");
    }
}

// Absolute, since passes may be started elsewhere.
std::string absolute(std::string const& path) {
    return path.empty() ? path : fs::absolute(path).lexically_normal().string();
}

std::string findProgram(std::string const& given) {
    if (!given.empty()) {
        return given.find('/') == std::string::npos ? given : absolute(given);
    }
    std::error_code error;
    fs::path const beside = fs::read_symlink("/proc/self/exe", error).parent_path() / "ps_zolvm";
    return fs::exists(beside, error) ? beside.string() : "ps_zolvm";
}

std::vector<std::string> wordsOf(std::string const& text) {
    std::vector<std::string> words;
    std::size_t start = 0;
    while ((start = text.find_first_not_of(' ', start)) != std::string::npos) {
        std::size_t const end = std::min(text.find(' ', start), text.size());
        words.push_back(text.substr(start, end - start));
        start = end;
    }
    return words;
}

// The folder of passes: beside the output, or for the time being.
class PassFolder {
public:
    explicit PassFolder(std::string const& output) : m_path(absolute(output) + ".passes") {
        if (output.empty()) {
            m_path = (fs::temp_directory_path() / "ps_tables.XXXXXX").string();
            if (::mkdtemp(m_path.data()) == nullptr) {
                throw Failure(m_path + ": no folder can be made");
            }
            m_forNow = true;
        }
    }
    PassFolder(PassFolder const&) = delete;
    PassFolder& operator=(PassFolder const&) = delete;
    ~PassFolder() {
        std::error_code ignored;
        if (m_forNow) {
            fs::remove_all(m_path, ignored);
        }
    }
    std::string const& path() const { return m_path; }

private:
    std::string m_path;
    bool m_forNow = false;
};

Job jobOf(PassOptions const& options, std::string const& baseline, std::string const& folder) {
    refuseOwnKeys(options.keys);
    for (std::string const& path : {options.library, baseline}) {
        if (!path.empty() && !fs::exists(path)) {
            throw Failure(path + ": no such file or folder");
        }
    }
    Job job{.program = findProgram(options.program),
            .library = absolute(options.library),
            .baseline = absolute(baseline),
            .keys = options.keys,
            .launch = wordsOf(options.launch),
            .folder = folder};
    // Another machine has another frequency, and what the user gives is handed on anyway.
    if (job.launch.empty() && std::getenv("PS_CPU_MHZ") == nullptr) {
        job.frequency = counterMHz();
    }
    return job;
}

Progress progressOf(bool quiet) {
    return Progress(quiet                     ? Progress::Way::none
                    : ::isatty(STDERR_FILENO) ? Progress::Way::terminal
                                              : Progress::Way::lines);
}

std::string pathOr(std::string const& path, char const* otherwise) {
    return path.empty() ? otherwise : path;
}

int exitOf(std::vector<Verdict> const& verdicts, std::string const& failOn) {
    int slower = 0;
    int faster = 0;
    int undecided = 0;
    for (Verdict const& verdict : verdicts) {
        if (!verdict.control.asExpected() || verdict.points.empty()) {
            return exitFailed;
        }
        slower += verdict.count(Call::slower);
        faster += verdict.count(Call::faster);
        undecided += verdict.count(Call::undecided);
    }
    bool const changed = failOn == "changed" && slower + faster > 0;
    bool const fails = changed || (failOn == "slower" && slower > 0) ||
                       (failOn == "undecided" && slower + faster + undecided > 0);
    return fails ? exitCalled : exitFine;
}

void show(Shown shown, ShowOptions const& options) {
    shown.settings = options.settings;
    shown.rows = options.rows;
    char const* const noColour = std::getenv("NO_COLOR");
    shown.colour = ::isatty(STDOUT_FILENO) && (noColour == nullptr || *noColour == '\0');
    print(options.format == "markdown" ? showMarkdown(shown)
          : options.format == "csv"    ? showCsv(shown)
          : options.format == "json"   ? showJson(shown)
                                       : showText(shown));
}

std::string noVerdict(Verdict const& verdict) {
    return "no verdict for " + verdict.machine + ": no pairs in " +
           counted(static_cast<std::size_t>(verdict.passes), "pass");
}

// One verdict a machine. Passes of a machine without pairs, as those that confirm elsewhere, have
// none, which the notes tell; but for where no machine has pairs.
std::vector<Verdict> judgeMachines(Passes const& passes, VerdictSettings const& settings,
                                   std::vector<std::string>& notes) {
    std::vector<Verdict> verdicts;
    for (Passes const& one : byMachine(passes)) {
        verdicts.push_back(judgePairs(one, settings));
    }
    auto const noPairs = [](Verdict const& verdict) { return verdict.points.empty(); };
    if (!std::all_of(verdicts.begin(), verdicts.end(), noPairs)) {
        for (Verdict const& verdict : verdicts) {
            if (noPairs(verdict)) {
                notes.push_back(noVerdict(verdict));
            }
        }
        std::erase_if(verdicts, noPairs);
    }
    return verdicts;
}

void tell(std::string const& text) { (void)std::fprintf(stderr, "%s\n", text.c_str()); }

std::string mergedText(Merged const& merged, Passes const& passes) {
    std::size_t const points = merged.pass.readings.size();
    std::string text = std::to_string(points) + " points of " + std::to_string(passes.list.size()) +
                       " passes; at " + std::to_string(merged.apart) + " the passes stay far apart";
    // One point in twenty is what a quiet machine shows.
    if (static_cast<std::size_t>(merged.apart) * 20 > points) {
        text += "\nthis machine is not quiet: to compare libraries, 'ps_tables pair' is the way";
    }
    return text;
}

// Each machine's passes as a table of their own, one below the other.
struct MergedTables {
    std::string text;
    std::string told; // of each table
};

MergedTables mergeMachines(Passes const& passes, std::vector<Verdict> const& verdicts = {}) {
    MergedTables tables;
    std::vector<Passes> const machines = byMachine(passes);
    for (Passes const& one : machines) {
        Merged merged = mergePasses(one);
        if (merged.pass.readings.empty()) { // of a control alone
            continue;
        }
        std::string const machine = one.list.front().machine();
        for (Verdict const& verdict : verdicts) {
            if (verdict.machine == machine) {
                setVerdict(merged, verdict);
            }
        }
        tables.text += tableText(passes.points, merged.pass, merged.words);
        tables.told += tables.told.empty() ? "" : "\n";
        tables.told += machines.size() > 1 ? machine + ": " : "";
        tables.told += mergedText(merged, one);
    }
    return tables;
}

void printOrWrite(std::string const& output, std::string const& text) {
    output.empty() ? print(text) : replaceFile(output, text);
}

// The tables; beside those that are written, all readings.
void printOrWrite(std::string const& output, Passes const& passes, MergedTables const& tables) {
    if (!output.empty()) {
        replaceFile(output + ".passes.csv", passesText(passes));
    }
    printOrWrite(output, tables.text);
}

// Of the heads and of the rows.
std::vector<std::string> differencesOf(Comparison const& comparison, std::string const& before,
                                       std::string const& after) {
    std::vector<std::string> differences = comparison.differences;
    for (auto const& [count, name] :
         {std::pair{comparison.onlyBefore, &before}, std::pair{comparison.onlyAfter, &after}}) {
        if (count > 0) {
            differences.push_back(std::to_string(count) + " rows that only " + *name + " has");
        }
    }
    return differences;
}

// What absolute numbers can't tell, and what can.
std::vector<std::string> adviceOf(Comparison const& comparison) {
    std::vector<std::string> advice;
    if (comparison.singleLimit > 0) {
        advice.push_back("of single runs, only changes beyond " +
                         std::to_string(std::lround(comparison.singleLimit * 100)) +
                         "% are called; 'ps_tables run' makes several passes");
    }
    auto const undecided = static_cast<std::size_t>(comparison.verdict.count(Call::undecided));
    bool const mostUndecided = // single runs are undecided for their own reason
        comparison.singleLimit == 0 && undecided * 2 > comparison.verdict.points.size();
    if (comparison.inflation > noisy || mostUndecided) {
        advice.push_back(
            "passes lie far apart here (in the middle of all points the second table is " +
            percent(comparison.common) + "): 'ps_tables pair' is the way");
    }
    return advice;
}

// Sorts a table's passes by machine, each of which has what was measured before, or the other.
// Where both tables have one machine only, they are compared whatever the machines are.
void addSide(std::vector<MachineFindings>& machines, std::vector<Pass> passes, bool before) {
    bool const one = std::all_of(passes.begin(), passes.end(), [&passes](Pass const& pass) {
        return pass.machine() == passes.front().machine();
    });
    if (!before && one && machines.size() == 1) {
        machines[0].passes.list = std::move(passes);
        return;
    }
    for (Pass& pass : passes) {
        std::string const name = pass.machine();
        auto place =
            std::find_if(machines.begin(), machines.end(), [&name](MachineFindings const& old) {
                return old.verdict.machine == name;
            });
        if (place == machines.end()) {
            place = machines.insert(machines.end(), MachineFindings{});
            place->verdict.machine = name;
        }
        (before ? place->before : place->passes.list).push_back(std::move(pass));
    }
}

// Tables of absolute numbers held against one that was measured before, machine by machine.
struct Compared {
    PointList points;
    std::vector<MachineFindings> machines; // that both sides have
    bool differs = false;                  // rows, machines, libraries or keys
    std::vector<std::string> notes;        // what differs, and what to do
};

Compared compareFiles(std::string const& before, std::vector<std::string> const& after,
                      VerdictSettings const& settings) {
    Compared compared;
    Passes passes = readTables({before});
    addSide(compared.machines, std::move(passes.list), true);
    passes.list.clear();
    for (std::string const& path : after) {
        readPasses(passes, readFile(path), path);
    }
    addSide(compared.machines, std::move(passes.list), false);
    bool const single = compared.machines.size() == 1;
    std::vector<std::string> advice;
    for (MachineFindings& machine : compared.machines) {
        std::string const on = single ? "" : machine.verdict.machine + ": ";
        if (machine.before.empty() || machine.passes.list.empty()) {
            std::string const* const name = machine.before.empty() ? &after.front() : &before;
            compared.notes.push_back(on + "only " + *name + " has passes of it");
            continue;
        }
        Comparison const comparison =
            compareTables(passes.points, machine.before, machine.passes.list, settings);
        for (std::string const& difference : differencesOf(comparison, before, after.front())) {
            compared.notes.push_back(on + difference);
        }
        machine.verdict = comparison.verdict;
        machine.passes.points = passes.points;
        if (!machine.verdict.points.empty()) {
            for (std::string const& line : adviceOf(comparison)) {
                advice.push_back(on + line);
            }
        }
    }
    std::erase_if(compared.machines,
                  [](MachineFindings const& machine) { return machine.verdict.points.empty(); });
    if (compared.machines.empty()) {
        throw Failure("the tables have no row in common");
    }
    compared.differs = !compared.notes.empty();
    compared.notes.insert(compared.notes.end(), advice.begin(), advice.end());
    compared.points = std::move(passes.points);
    return compared;
}

// The folder of the library under test, where the tables tell it, like the baseline's.
std::string libraryOf(Head const& head) {
    constexpr std::string_view ahead = "under test: ";
    for (auto const& [name, value] : head.entries()) {
        if (name == key::library && value.starts_with(ahead)) {
            std::string const path = value.substr(ahead.size());
            std::size_t const folder = path.rfind("/libzolvm.so");
            return folder == std::string::npos ? path : path.substr(0, folder);
        }
    }
    return pathOr(head.get(key::library), "the library");
}

// Tables that are held against none: pairs have their verdict, absolute numbers stand alone.
void addJudged(Findings& findings, std::vector<std::string> const& files) {
    Passes const passes = readTables(files);
    Head const& head = passes.list.front().head;
    std::size_t paired = 0;
    for (Passes& one : byMachine(passes)) {
        Verdict verdict = judgePairs(one, findings.settings);
        if (verdict.points.empty() && one.list.front().paired()) {
            findings.notes.push_back(noVerdict(verdict));
            continue;
        }
        paired += verdict.points.empty() ? 0 : 1;
        findings.machines.push_back({.passes = std::move(one), .verdict = std::move(verdict)});
    }
    if (paired > 0) {
        if (paired < findings.machines.size()) {
            throw Failure("some tables have pairs, some have not: they don't go together");
        }
        findings.before = pathOr(head.get(key::baseline), "the baseline");
        findings.after = libraryOf(head);
    }
}

Findings findingsOf(ReportOptions const& options) {
    std::vector<std::string> inputs = options.files;
    if (!options.against.empty()) {
        inputs.push_back(options.against);
    }
    refuseOverwriting(options.output, inputs);
    Findings findings;
    findings.settings = (options.against.empty() ? ShowOptions() : CompareOptions().show).settings;
    if (options.threshold > 0) {
        findings.settings.threshold = options.threshold;
    }
    if (options.against.empty()) {
        addJudged(findings, options.files);
    } else {
        Compared compared = compareFiles(options.against, options.files, findings.settings);
        findings.before = options.against;
        findings.after = options.files.front();
        findings.notes = std::move(compared.notes);
        findings.machines = std::move(compared.machines);
    }
    return findings;
}

// The files, and those of folders by their names.
std::vector<std::string> tablesIn(std::vector<std::string> const& paths) {
    std::vector<std::string> files;
    for (std::string const& path : paths) {
        if (!fs::is_directory(path)) {
            files.push_back(path);
            continue;
        }
        std::vector<std::string> inside;
        for (fs::directory_entry const& entry : fs::directory_iterator(path)) {
            if (entry.is_regular_file() && entry.path().extension() == ".csv") {
                inside.push_back(entry.path().string());
            }
        }
        std::sort(inside.begin(), inside.end());
        for (std::string const& file : inside) {
            // A table whose passes lie beside it would be there twice.
            if (!std::binary_search(inside.begin(), inside.end(), file + ".passes.csv")) {
                files.push_back(file);
            }
        }
    }
    return files;
}

// The dates of all tables in their order: by the labels, else by when they were measured. What
// cannot be a date is left out and noted.
History readDates(HistoryOptions const& options, std::vector<std::string> const& files) {
    bool const labelled = !options.labels.empty();
    if (labelled && options.labels.size() != files.size()) {
        throw Failure(std::to_string(options.labels.size()) + " labels for " +
                      std::to_string(files.size()) + " tables");
    }
    History history{.points = {}, .dates = {}, .chain = options.chain, .settings = {}, .notes = {}};
    history.settings.threshold = options.threshold;
    for (std::size_t i = 0; i < files.size(); ++i) {
        std::size_t const first = history.dates.size();
        try {
            Passes const passes = readTables({files[i]});
            Head const& head = passes.list.front().head;
            long const place = labelled ? static_cast<long>(i) : startOf(head);
            addDate(history, passes, labelled ? options.labels[i] : labelOf(head));
            for (std::size_t added = first; added < history.dates.size(); ++added) {
                history.dates[added].table = files[i];
                history.dates[added].place = place;
            }
        } catch (Failure const& failure) {
            std::string const what = failure.what();
            history.notes.push_back(
                "left out: " + (what.starts_with(files[i]) ? "" : files[i] + ": ") + what);
        }
    }
    if (history.dates.empty()) {
        throw Failure(history.notes.empty() ? "no tables there" : history.notes.front());
    }
    std::stable_sort(history.dates.begin(), history.dates.end(),
                     [](HistoryDate const& a, HistoryDate const& b) { return a.place < b.place; });
    return history;
}

int printArray(PassOptions const& options) {
    if (options.output.empty()) {
        throw Failure("--array needs -o: the tasks keep their passes beside the output");
    }
    print(arrayScript(options.commandLine, options.passes));
    return exitFine;
}

// Functions that were called on some machine, or with undecided are undecided there.
std::vector<std::string> unclear(Passes const& passes, VerdictSettings const& settings,
                                 bool undecided) {
    std::vector<std::string> functions;
    std::vector<std::string> unsaid;
    for (Verdict const& verdict : judgeMachines(passes, settings, unsaid)) {
        for (std::string const& name : functionsOf(passes.points, verdict, undecided)) {
            if (std::find(functions.begin(), functions.end(), name) == functions.end()) {
                functions.push_back(name);
            }
        }
    }
    return functions;
}

// What commands that make passes have in common.
class Work {
public:
    Work(PassOptions const& options, std::string const& baseline)
        : m_options(checked(options)), m_folder(options.output),
          job(jobOf(options, baseline, m_folder.path())), progress(progressOf(options.quiet)),
          campaign(job, options.resume || options.only > 0, options.silenceLimit, progress) {
        noteInterrupts();
    }

    int makeOnly(std::vector<PlannedPass> const& plan) {
        if (m_options.only > static_cast<int>(plan.size())) {
            throw Failure("--only: there are " + std::to_string(plan.size()) + " passes");
        }
        return campaign.make({plan[static_cast<std::size_t>(m_options.only - 1)]})
                   ? exitFine
                   : exitInterrupted;
    }

    // The user interrupted ahead of the first finished pass.
    bool stoppedAtOnce(bool whole) const { return !whole && campaign.passes().list.empty(); }

    // What is to be told of the passes, of which there is one at least.
    std::vector<std::string> finish(bool whole) const {
        if (campaign.passes().list.empty()) {
            throw Failure("no pass was finished");
        }
        std::vector<std::string> notes;
        for (auto const& [text, count] : campaign.troubles()) {
            notes.push_back(text + (count > 1 ? ", in " + std::to_string(count) + " passes" : ""));
        }
        if (!whole) {
            notes.push_back(m_options.output.empty()
                                ? "interrupted; with -o, --resume could go on"
                                : "interrupted; --resume goes on with " + m_folder.path());
        }
        return notes;
    }

    // Passes of an interrupted command stay for --resume.
    void printOrWrite(MergedTables const& results, bool whole) const {
        tables::printOrWrite(m_options.output, campaign.passes(), results);
        if (whole) {
            campaign.removeFolder();
        }
    }

    double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    static PassOptions const& checked(PassOptions const& options) {
        if ((options.resume || options.only > 0) && options.output.empty()) {
            throw Failure("--resume and --only need -o: passes are kept beside the output");
        }
        return options;
    }

    std::chrono::steady_clock::time_point const m_start = std::chrono::steady_clock::now();
    PassOptions const& m_options;
    PassFolder const m_folder;

public:
    Job const job;
    Progress progress;
    Campaign campaign;
};

} // namespace

int pairCommand(PairOptions const& options) {
    PassOptions const& how = options.passes;
    if (how.passes < (options.control ? 4 : 1)) {
        throw Failure("--passes: a comparison takes at least 4, or 1 with --no-control");
    }
    if (how.array) {
        return printArray(how);
    }
    Work work(how, options.baseline);
    std::vector<PlannedPass> const plan = planPairs(how.passes, options.control);
    if (how.only > 0) {
        return work.makeOnly(plan);
    }
    VerdictSettings const& settings = options.show.settings;
    Passes const& passes = work.campaign.passes();
    bool whole = work.campaign.make(plan);
    int next = how.passes + 1;
    auto const further = [&](std::string const& kind, int count, bool undecided) {
        std::vector<std::string> const functions = unclear(passes, settings, undecided);
        if (whole && count > 0 && !functions.empty()) {
            work.progress.note(std::to_string(functions.size()) + " functions again: " + kind);
            whole = work.campaign.make(planPasses(kind, count, next, functions));
        }
        next += count;
    };
    further("more", options.more, true);
    further("confirm", options.confirm ? how.passes : 0, false);

    if (work.stoppedAtOnce(whole)) {
        return exitInterrupted;
    }
    std::vector<std::string> notes = work.finish(whole);
    std::vector<Verdict> const verdicts = judgeMachines(passes, settings, notes);
    if (!how.output.empty()) {
        work.printOrWrite(mergeMachines(passes, verdicts), whole);
    }
    show({.points = passes.points,
          .verdicts = verdicts,
          .before = work.job.baseline,
          .after = pathOr(work.job.library, "the library of ps_zolvm"),
          .seconds = work.seconds(),
          .notes = notes},
         options.show);
    return whole ? exitOf(verdicts, options.show.failOn) : exitInterrupted;
}

int runCommand(RunOptions const& options) {
    PassOptions const& how = options.passes;
    if (how.array) {
        return printArray(how);
    }
    Work work(how, "");
    std::vector<PlannedPass> const plan = planPasses("plain", how.passes, 1);
    if (how.only > 0) {
        return work.makeOnly(plan);
    }
    bool const whole = work.campaign.make(plan);
    if (work.stoppedAtOnce(whole)) {
        return exitInterrupted;
    }
    std::vector<std::string> const notes = work.finish(whole);
    MergedTables const tables = mergeMachines(work.campaign.passes());
    work.printOrWrite(tables, whole);
    if (!how.quiet) {
        tell(tables.told);
    }
    for (std::string const& note : notes) {
        tell(note);
    }
    return whole ? exitFine : exitInterrupted;
}

int verdictCommand(VerdictOptions const& options) {
    Passes const passes = readTables(options.files);
    std::vector<std::string> notes;
    std::vector<Verdict> const verdicts = judgeMachines(passes, options.show.settings, notes);
    if (verdicts.front().points.empty()) {
        throw Failure("the tables of " + verdicts.front().machine +
                      " have no pairs: 'compare' is for them");
    }
    Head const& head = passes.list.front().head;
    show({.points = passes.points,
          .verdicts = verdicts,
          .before = pathOr(head.get(key::baseline), "the baseline"),
          .after = libraryOf(head),
          .notes = notes},
         options.show);
    return exitOf(verdicts, options.show.failOn);
}

int compareCommand(CompareOptions const& options) {
    Compared const compared = compareFiles(options.before, {options.after}, options.show.settings);
    std::vector<Verdict> verdicts;
    for (MachineFindings const& machine : compared.machines) {
        verdicts.push_back(machine.verdict);
    }
    show({.points = compared.points,
          .verdicts = verdicts,
          .before = options.before,
          .after = options.after,
          .notes = compared.notes},
         options.show);
    return options.strict && compared.differs ? exitFailed : exitOf(verdicts, options.show.failOn);
}

int reportCommand(ReportOptions const& options) {
    replaceFile(options.output, reportPage(findingsOf(options)));
    return exitFine;
}

int exportCommand(ExportOptions const& options) {
    Findings const findings = findingsOf(options.tables);
    Side const side = options.baseline ? Side::baseline : Side::library;
    std::string const& format = options.format;
    std::string const text = format == "gbench"    ? gbenchText(findings, side)
                             : format == "gobench" ? gobenchText(findings, side)
                             : format == "long"    ? longCsv(findings)
                             : format == "json"    ? longJson(findings)
                                                : junitText(findings, options.failOn == "changed");
    printOrWrite(options.tables.output, text);
    return exitFine;
}

int historyCommand(HistoryOptions const& options) {
    std::vector<std::string> const files = tablesIn(options.files);
    refuseOverwriting(options.output, files);
    History history = readDates(options, files);
    findSteps(history);
    if (!options.output.empty()) {
        replaceFile(options.output, historyPage(history));
    }
    print(options.format == "csv"    ? historyCsv(history)
          : options.format == "json" ? historyJson(history)
                                     : historyText(history, options.rows));
    return exitFine;
}

int importCommand(ImportOptions const& options) {
    refuseOverwriting(options.output, {options.file});
    Passes const passes = readGbench(readFile(options.file), options.file, options.mhz);
    printOrWrite(options.output, passes, mergeMachines(passes));
    return exitFine;
}

int mergeCommand(MergeOptions const& options) {
    refuseOverwriting(options.output, options.files);
    refuseOverwriting(options.output + ".passes.csv", options.files);
    Passes const passes = readTables(options.files);
    MergedTables const tables = mergeMachines(passes);
    printOrWrite(options.output, passes, tables);
    tell(tables.told);
    return exitFine;
}

int machineCommand() {
    constexpr double seconds = 2;
    print(machineText(watchMachine(seconds)));
    return exitFine;
}

} // namespace tables
