// campaign.cpp - passes made one after the other, each kept whole.
#include "run/campaign.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "core/failure.h"
#include "core/text.h"
#include "run/files.h"
#include "run/process.h"

namespace tables {

namespace {

namespace fs = std::filesystem;

constexpr int hopeless = 2; // failed passes, and none that read anything
constexpr char jobFile[] = "/job.txt";

// What of the environment can change a reading.
constexpr std::array environmentNames = {"LD_LIBRARY_PATH", "LD_PRELOAD", "GLIBC_TUNABLES",
                                         "OMP_NUM_THREADS", "PS_CPU_MHZ"};

std::string environment() {
    std::string text;
    for (char const* const name : environmentNames) {
        if (char const* const value = std::getenv(name)) {
            text += (text.empty() ? "" : " ") + std::string(name) + '=' + value;
        }
    }
    return text;
}

// What the lines of a pass tell.
struct Told {
    std::string function;              // that is being measured
    std::string side;                  // that a fault came from
    std::string error;                 // the last of the lines that complain
    std::vector<std::string> failures; // functions with their results

    void line(std::string_view text, Progress& progress);
};

void Told::line(std::string_view text, Progress& progress) {
    constexpr std::string_view title = "| Function  : ";
    constexpr std::string_view result = "| -";
    constexpr std::string_view cameFrom = "-- It came from the ";
    auto const word = [](std::string_view from) {
        return std::string(from.substr(0, from.find(' ')));
    };
    if (text.starts_with(title)) {
        function = word(text.substr(title.size()));
        progress.functionBegins(function);
    } else if (text.starts_with(result)) {
        std::string const how = word(text.substr(result.size()));
        if (how.ends_with("FAIL") || how == "UNDEFINED") {
            failures.push_back(function + ": " + how + (side.empty() ? "" : " by the " + side));
        }
        function.clear();
        side.clear();
    } else if (text.starts_with(cameFrom)) {
        side = text.substr(cameFrom.size());
    } else if (text.starts_with("FATAL") || text.find("error while loading") != text.npos ||
               text.find("not found") != text.npos || text.starts_with("-- Can't")) {
        error = text;
    } else if (text.starts_with("-- Baseline: ")) {
        error = text.substr(3);
    }
}

std::string howEnded(Ended const& ended, Told const& told) {
    std::string how;
    if (ended.silent) {
        how = "ended, since it printed nothing for too long";
    } else if (ended.signal != 0) {
        how = "died by signal " + std::to_string(ended.signal) + " (" + ::strsignal(ended.signal) +
              ")";
    } else if (ended.code != 0) {
        how = "failed with exit code " + std::to_string(ended.code);
    } else {
        return "";
    }
    how += told.function.empty() ? "" : " in " + told.function;
    how += told.side.empty() ? "" : " of the " + told.side;
    return how;
}

} // namespace

Campaign::Campaign(Job const& job, bool resume, double silenceLimit, Progress& progress)
    : m_job(job), m_silenceLimit(silenceLimit), m_progress(progress) {
    std::string const file = m_job.folder + jobFile;
    if (fs::exists(file)) {
        if (!resume) {
            throw Failure(m_job.folder + ": has passes already: --resume goes on with them, or "
                                         "remove the folder");
        }
        if (readFile(file) != m_job.identity()) {
            throw Failure(m_job.folder + ": has passes of another comparison (see its job.txt)");
        }
        return;
    }
    std::error_code error;
    fs::create_directories(m_job.folder, error);
    if (error) {
        throw Failure(m_job.folder + ": " + error.message());
    }
    replaceFile(file, m_job.identity());
}

std::string Campaign::path(PlannedPass const& planned, char const* ending) const {
    std::string const number = std::to_string(planned.number);
    return m_job.folder + '/' + std::string(3 - std::min<std::size_t>(number.size(), 3), '0') +
           number + ending;
}

void Campaign::addTrouble(std::string const& text) { ++m_troubles[text]; }

bool Campaign::make(std::vector<PlannedPass> const& plan) {
    m_progress.planBegins(static_cast<int>(plan.size()));
    for (PlannedPass const& planned : plan) {
        std::string const finished = path(planned, ".csv");
        m_progress.passBegins(planned.number, planned.kind);
        if (fs::exists(finished)) {
            readPasses(m_passes, readFile(finished), finished);
            m_progress.passEnds("made before");
            continue;
        }
        makeOne(planned);
        if (interrupted()) {
            return false;
        }
    }
    return true;
}

void Campaign::makeOne(PlannedPass const& planned) {
    auto const start = std::chrono::steady_clock::now();
    std::string const table = path(planned, ".part.csv");
    std::string const script = path(planned, ".sh");
    replaceFile(script, passScript(m_job, planned, table));
    std::vector<std::string> words = m_job.launch;
    words.insert(words.end(), {"sh", script});
    Told told;
    Ended const ended = runProcess(
        words, [&](std::string_view line) { told.line(line, m_progress); }, m_silenceLimit);
    std::error_code ignored;
    fs::remove(script, ignored);
    if (ended.interrupted) {
        fs::remove(table, ignored);
        return;
    }
    std::string how = howEnded(ended, told);
    std::string outcome = how;
    try {
        Passes one;
        readPasses(one, readFile(table), table);
        setHead(one.list[0], planned, how);
        std::string const text = tableText(one.points, one.list[0]);
        replaceFile(path(planned, ".csv"), text);
        readPasses(m_passes, text, table);
    } catch (Failure const& failure) {
        ++m_failed;
        outcome = told.error.empty() ? failure.what() : told.error;
        outcome = how.empty() ? "no readings: " + outcome : how + "; no readings: " + outcome;
        how = "without readings: " + (told.error.empty() ? failure.what() : told.error);
    }
    fs::remove(table, ignored);
    if (!how.empty()) {
        addTrouble("pass " + std::to_string(planned.number) + " (" + planned.kind + ") " + how);
    }
    for (std::string const& failed : told.failures) {
        addTrouble(failed);
    }
    if (m_passes.list.empty() && m_failed == hopeless) {
        throw Failure("the passes give no readings: " + outcome);
    }
    double const seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    m_progress.passEnds(outcome.empty() ? format("%.1f s", seconds) : outcome);
}

void Campaign::setHead(Pass& pass, PlannedPass const& planned, std::string const& ended) const {
    Head head;
    head.set(key::pass, std::to_string(planned.number)); // ahead of all: it begins a pass
    for (auto const& [name, value] : pass.head.entries()) {
        head.add(name, value);
    }
    head.set(key::kind, planned.kind);
    if (!m_job.baseline.empty()) {
        head.set(key::first, planned.baselineFirst ? "baseline" : "library");
        head.set(key::baseline, m_job.baseline);
    }
    head.set(key::keys, shellWords(m_job.keys));
    if (std::string const told = environment(); !told.empty()) {
        head.set(key::environment, told);
    }
    if (!ended.empty()) {
        head.set(key::ended, ended);
    }
    pass.head = head;
}

void Campaign::removeFolder() const {
    std::error_code ignored;
    fs::remove_all(m_job.folder, ignored);
}

} // namespace tables
