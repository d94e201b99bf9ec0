// plan.cpp - which passes a command makes, and how each is started.
#include "run/plan.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "core/failure.h"

namespace tables {

namespace {

constexpr int controlPasses = 2;

// The folder that holds the library of a path, which may be the library itself.
std::string folderOf(std::string const& path) {
    namespace fs = std::filesystem;
    return fs::is_directory(path) ? path : fs::path(path).parent_path().string();
}

// The keys for the baseline against itself: features that it alone has are those of both.
std::vector<std::string> bothAsBaseline(std::vector<std::string> keys) {
    constexpr std::string_view own = "-dBaselineFeatures=";
    auto const place = std::find_if(keys.begin(), keys.end(),
                                    [own](std::string const& key) { return key.starts_with(own); });
    if (place != keys.end()) {
        std::string const features = "-T" + place->substr(own.size());
        std::erase_if(keys, [own](std::string const& key) {
            return key.starts_with(own) || key.starts_with("-T");
        });
        keys.push_back(features);
    }
    return keys;
}

} // namespace

std::string Job::identity() const {
    return "program " + program + "\nlibrary " + library + "\nbaseline " + baseline + "\nkeys " +
           shellWords(keys) + "\n";
}

std::vector<PlannedPass> planPasses(std::string const& kind, int passes, int first,
                                    std::vector<std::string> const& functions) {
    std::vector<PlannedPass> plan;
    plan.reserve(static_cast<std::size_t>(passes));
    for (int i = 0; i < passes; ++i) {
        plan.push_back({first + i, kind, i % 2 != 0, functions});
    }
    return plan;
}

std::vector<PlannedPass> planPairs(int passes, bool control) {
    std::vector<PlannedPass> plan;
    int controls = 0;
    int pairs = 0;
    for (int number = 1; number <= passes; ++number) {
        // Spread over the time, so that they see what the others see.
        bool const due = control && controls < controlPasses &&
                         number * (controlPasses + 1) > (controls + 1) * passes;
        int& count = due ? controls : pairs;
        plan.push_back({number, due ? "control" : "pair", count++ % 2 != 0, {}});
    }
    return plan;
}

void refuseOwnKeys(std::vector<std::string> const& keys) {
    for (std::string const& key : keys) {
        std::string_view const word = key;
        bool const isKey = word.size() > 1 && (word[0] == '-' || word[0] == '/');
        if (isKey && (std::string_view("rRuUoOqQgevhIA?").find(word[1]) != std::string_view::npos ||
                      word.substr(1).starts_with("dBaseline="))) {
            throw Failure("the key " + key + " is not for passes, which have tables of their own");
        }
    }
}

std::string shellWords(std::vector<std::string> const& words) {
    std::string all;
    for (std::string const& word : words) {
        bool const plain =
            !word.empty() &&
            word.find_first_not_of(
                "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-+_=./,:@%") ==
                std::string::npos;
        all += all.empty() ? "" : " ";
        if (plain) {
            all += word;
            continue;
        }
        all += '\'';
        for (char const c : word) {
            all += c == '\'' ? "'\\''" : std::string(1, c);
        }
        all += '\'';
    }
    return all;
}

std::string passScript(Job const& job, PlannedPass const& pass, std::string const& table) {
    std::string text = "#!/bin/sh\n# Pass " + std::to_string(pass.number) + ": " + pass.kind +
                       (pass.baselineFirst ? ", baseline first\n" : "\n");
    std::string const library = pass.kind == "control" ? folderOf(job.baseline) : job.library;
    if (!library.empty()) {
        text += "LD_LIBRARY_PATH=" + shellWords({library}) +
                "${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}\nexport LD_LIBRARY_PATH\n";
    }
    if (job.frequency > 0) {
        text += "PS_CPU_MHZ=" + std::to_string(job.frequency) + "\nexport PS_CPU_MHZ\n";
    }
    std::vector<std::string> words{job.program, "-B"};
    if (!job.baseline.empty()) {
        words.push_back("-dBaselineIn=process"); // unless the user's keys say otherwise
    }
    std::vector<std::string> const keys =
        pass.kind == "control" ? bothAsBaseline(job.keys) : job.keys;
    words.insert(words.end(), keys.begin(), keys.end());
    for (std::string const& function : pass.functions) {
        words.push_back("-f=zols" + function);
    }
    if (!job.baseline.empty()) {
        words.push_back("-dBaseline=" + job.baseline);
        words.push_back(std::string("-dBaselineFirst=") + (pass.baselineFirst ? "1" : "0"));
    }
    words.push_back("-r" + table);
    return text + "exec " + shellWords(words) + "\n";
}

std::string arrayScript(std::vector<std::string> const& commandLine, int passes) {
    std::vector<std::string> ahead(commandLine.begin(), commandLine.begin() + 2);
    std::vector<std::string> behind(commandLine.begin() + 2, commandLine.end());
    behind.erase(std::find(behind.begin(), behind.end(), "--array"));
    return "#!/bin/sh\n#SBATCH --array=1-" + std::to_string(passes) +
           "\n#SBATCH --ntasks=1\n#SBATCH --exclusive\n# When all tasks have ended: " +
           shellWords(ahead) + " --resume " + shellWords(behind) + "\nexec " + shellWords(ahead) +
           " --only \"$SLURM_ARRAY_TASK_ID\" " + shellWords(behind) + "\n";
}

} // namespace tables
