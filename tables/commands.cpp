// commands.cpp - what each subcommand does.
#include "commands.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

#include "core/failure.h"
#include "core/merge.h"
#include "core/show.h"
#include "run/campaign.h"
#include "run/files.h"
#include "run/machine.h"
#include "run/process.h"

namespace tables {

namespace {

namespace fs = std::filesystem;

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

std::vector<std::string> notesOf(std::map<std::string, int> const& troubles) {
    std::vector<std::string> notes;
    for (auto const& [text, count] : troubles) {
        notes.push_back(text + (count > 1 ? ", in " + std::to_string(count) + " passes" : ""));
    }
    return notes;
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

std::vector<Verdict> judgeMachines(Passes const& passes, VerdictSettings const& settings) {
    std::vector<Verdict> verdicts;
    for (Passes const& one : byMachine(passes)) {
        verdicts.push_back(judgePairs(one, settings));
    }
    return verdicts;
}

void writeResults(std::string const& output, Passes const& passes, Verdict const* verdict) {
    Merged merged = mergePasses(passes);
    if (verdict != nullptr) {
        setVerdict(merged, *verdict);
    }
    replaceFile(output + ".passes.csv", passesText(passes));
    replaceFile(output, tableText(passes.points, merged.pass, merged.words));
}

} // namespace

int pairCommand(PairOptions const& options, std::vector<std::string> const& commandLine) {
    PassOptions const& how = options.passes;
    if (how.array) {
        print(arrayScript(commandLine, how.passes));
        return exitFine;
    }
    if (how.passes < (options.control ? 4 : 1)) {
        throw Failure("--passes: a comparison takes at least 4, or 1 with --no-control");
    }
    if ((how.resume || how.only > 0) && how.output.empty()) {
        throw Failure("--resume and --only need -o: passes are kept beside the output");
    }
    auto const start = std::chrono::steady_clock::now();
    PassFolder const folder(how.output);
    Job const job = jobOf(how, options.baseline, folder.path());
    Progress progress = progressOf(how.quiet);
    noteInterrupts();
    Campaign campaign(job, how.resume || how.only > 0, how.silenceLimit, progress);
    std::vector<PlannedPass> plan = planPairs(how.passes, options.control);
    if (how.only > 0) {
        if (how.only > how.passes) {
            throw Failure("--only: there is no such pass");
        }
        return campaign.make({plan[static_cast<std::size_t>(how.only - 1)]}) ? exitFine
                                                                             : exitInterrupted;
    }
    VerdictSettings const& settings = options.show.settings;
    bool whole = campaign.make(plan);
    int next = how.passes + 1;
    // Further passes of what is not clear yet.
    auto const further = [&](std::string const& kind, int passes, bool undecided) {
        std::vector<std::string> const functions = functionsOf(
            campaign.passes().points, judgePairs(campaign.passes(), settings), undecided);
        if (whole && passes > 0 && !functions.empty()) {
            progress.note(std::to_string(functions.size()) + " functions again: " + kind);
            whole = campaign.make(planPasses(kind, passes, next, functions));
        }
        next += passes;
    };
    further("more", options.more, true);
    further("confirm", options.confirm ? how.passes : 0, false);

    Passes const& passes = campaign.passes();
    if (passes.list.empty()) {
        throw Failure("interrupted before a pass was finished");
    }
    std::vector<Verdict> const verdicts = judgeMachines(passes, settings);
    std::vector<std::string> notes = notesOf(campaign.troubles());
    if (!whole) {
        notes.push_back("interrupted: " + (how.output.empty()
                                               ? std::string("with -o, --resume could go on")
                                               : "--resume goes on with " + folder.path()));
    }
    if (!how.output.empty()) {
        writeResults(how.output, passes, verdicts.size() == 1 ? &verdicts[0] : nullptr);
        if (whole) {
            campaign.removeFolder();
        }
    }
    std::chrono::duration<double> const took = std::chrono::steady_clock::now() - start;
    show({.points = passes.points,
          .verdicts = verdicts,
          .before = job.baseline,
          .after = pathOr(job.library, "the library of ps_zolvm"),
          .seconds = took.count(),
          .notes = notes},
         options.show);
    return whole ? exitOf(verdicts, options.show.failOn) : static_cast<int>(exitInterrupted);
}

int verdictCommand(VerdictOptions const& options) {
    Passes const passes = readTables(options.files);
    std::vector<Verdict> const verdicts = judgeMachines(passes, options.show.settings);
    for (Verdict const& verdict : verdicts) {
        if (verdict.points.empty()) {
            throw Failure("the tables of " + verdict.machine +
                          " have no pairs: 'compare' is for them");
        }
    }
    Head const& head = passes.list.front().head;
    show({.points = passes.points,
          .verdicts = verdicts,
          .before = pathOr(head.get(key::baseline), "the baseline"),
          .after = pathOr(head.get(key::library), "the library")},
         options.show);
    return exitOf(verdicts, options.show.failOn);
}

int mergeCommand(MergeOptions const& options) {
    refuseOverwriting(options.output, options.files);
    refuseOverwriting(options.output + ".passes.csv", options.files);
    Passes const passes = readTables(options.files);
    if (std::size_t const machines = byMachine(passes).size(); machines > 1) {
        throw Failure("the tables come from " + std::to_string(machines) +
                      " machines: merge those of each by themselves");
    }
    Merged const merged = mergePasses(passes);
    if (options.output.empty()) {
        print(tableText(passes.points, merged.pass, merged.words));
    } else {
        writeResults(options.output, passes, nullptr);
    }
    (void)std::fprintf(stderr, "%zu points of %zu passes, %d of them far apart\n",
                       merged.pass.readings.size(), passes.list.size(), merged.apart);
    return exitFine;
}

} // namespace tables
