// commands_test.cpp - runs ps_tables with a ps_zolvm whose readings and faults are known.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <regex>
#include <sched.h>
#include <thread>
#include <x86intrin.h>

#include "cli/program.h"
#include "run/machine.h"
#include "run/plan.h"
#include "run/process.h"
#include "run/progress.h"
#include "support/storedtext.h"

using namespace tables;

namespace {

// A folder with the fake program and two libraries, in which commands run.
class Bench {
public:
    Bench() {
        runShell("cp '" FAKE_ZOLVM "' " + at("ps_zolvm") + " && chmod +x " + at("ps_zolvm") +
                 " && mkdir " + at("old") + ' ' + at("new"));
    }
    Outcome run(std::string const& words) {
        return runShell("cd " + dir.path + " && PS_CPU_MHZ=2600 '" PS_TABLES "' " + words);
    }
    // A shell command, in which ps_tables is $T, with its answer but for what the clock tells.
    std::string answer(std::string const& command) const {
        Outcome const outcome = runShell("cd " + dir.path +
                                         "; unset LD_LIBRARY_PATH LD_PRELOAD GLIBC_TUNABLES "
                                         "OMP_NUM_THREADS NO_COLOR; export PS_CPU_MHZ=2600 "
                                         "TMPDIR=. T='" PS_TABLES "'; " +
                                         command);
        std::string text = "$ " + command + '\n' + outcome.out + "-- and\n" + outcome.err +
                           "exit code " + std::to_string(outcome.status) + "\n\n";
        text = std::regex_replace(text, std::regex(dir.path), "/bench/");
        text = std::regex_replace(text, std::regex(R"(\n(?!Sin)\w+,32f,[^\n]*)"), "");
        text = std::regex_replace(text, std::regex(R"(ps_tables\.\w{6}/)"), "TEMP/");
        return std::regex_replace(text, std::regex(R"(\b[\d.]+ s\b)"), "S s");
    }
    std::string at(std::string const& name) const { return dir.path + name; }

private:
    TempDirectory const dir;
};

// The commands are those of the stored text, behind "$ "; "====" begins a folder of its own.
void expectSessions(std::string const& name) {
    std::string text;
    std::unique_ptr<Bench> bench;
    for (std::string const& line : lines(storedText(name))) {
        if (line == "====") {
            bench = std::make_unique<Bench>();
            text += line + '\n';
        } else if (line.rfind("$ ", 0) == 0) {
            text += bench->answer(line.substr(2));
        }
    }
    EXPECT_TRUE(matchesStored(name, text));
}

} // namespace

TEST(Pair, SessionsAreToldWhole) { expectSessions("tables/passes"); }

TEST(Pair, ATerminalHasColoursAndProgress) {
    if (runShell("script -qec true /dev/null").status != 0) {
        GTEST_SKIP() << "this machine has no pseudo-terminals";
    }
    expectSessions("tables/terminal");
}

TEST(Plan, IsStoredWhole) {
    std::string text;
    auto const tell = [&text](std::vector<PlannedPass> const& plan) {
        for (PlannedPass const& one : plan) {
            text +=
                std::to_string(one.number) + ' ' + one.kind + (one.baselineFirst ? "*, " : ", ");
        }
        text += '\n';
    };
    for (int const passes : {4, 5, 9, 20}) {
        tell(planPairs(passes, true));
    }
    tell(planPairs(3, false));
    tell(planPasses("more", 3, 21, {"Sin_32f_A24"}));
    Job const jobs[] = {
        {"ps_zolvm", "", "", {}, {}, 0, ""},
        {"/a b/ps", "/new", "", {"-l32", "it's", ""}, {}, 2600, ""},
        {"ps", "/new", "/old/libzolvm.so", {"-Ta", "-l8"}, {}, 0, ""},
        {"ps",
         "",
         "/tmp",
         {"-Ta", "-dBaselineFeatures=b", "-l8", "-dBaselineFeatures=c"},
         {},
         0,
         ""},
    };
    for (Job const& job : jobs) {
        text += job.identity();
        for (char const* const kind : {"pair", "control"}) {
            if (kind == std::string("pair") || !job.baseline.empty()) {
                text += passScript(job, {7, kind, *kind == 'p', {"Sin_32f_A24", "Cos_64f_A53"}},
                                   "/out/007.csv");
            }
        }
    }
    text += arrayScript({"ps_tables", "run", "--array", "-o", "a b.csv"}, 12);
    for (std::string const& key :
         cells("-r,/R1,-u,-U,-o,-O,-q,-Q,-g,-e,-v,-h,-I,-A,-?,-dBaseline=x,"
               "-dBaselineIn=process,-l32,-,r,-T")) {
        try {
            refuseOwnKeys({"-l8", key});
            text += key + " is fine\n";
        } catch (std::exception const& failure) {
            text += failure.what() + std::string("\n");
        }
    }
    EXPECT_TRUE(matchesStored("tables/plans", text));
}

TEST(Progress, ATerminalHasOneLineThatChanges) {
    auto const later = [] { std::this_thread::sleep_for(std::chrono::milliseconds(120)); };
    std::string const at = "\r\033[K";
    std::string const wanted = at + "  0%, pass 1 (pair) " + at + "  0%, pass 1 (pair) zolsSin" +
                               at + "  0%, T, pass 2 (control) " + at + "again\n" + at +
                               "  0%, T, pass 2 (control) zolsSin" + at + "  0%, pass 3 (more) " +
                               at;
    std::regex const time(R"((\d+):(\d\d) left)");
    std::string text;
    std::string shown;
    std::chrono::duration<double> took = {};
    for (int tries = 0; tries < 5 && shown != wanted; ++tries) { // a busy machine makes pauses
        testing::internal::CaptureStderr();
        auto const start = std::chrono::steady_clock::now();
        Progress progress(Progress::Way::terminal);
        progress.planBegins(1000);
        progress.passBegins(1, "pair");
        later();
        progress.functionBegins("zolsSin");
        progress.functionBegins("zolsCos"); // too soon
        progress.passEnds("fine");
        progress.passBegins(2, "control");
        progress.note("again");
        later();
        progress.functionBegins("zolsSin");
        took = std::chrono::steady_clock::now() - start;
        progress.planBegins(1);
        progress.passBegins(3, "more");
        progress.passEnds("fine");
        text = testing::internal::GetCapturedStderr();
        shown = std::regex_replace(text, time, "T");
    }
    EXPECT_EQ(wanted, shown);
    // One and a half of a thousand passes have taken 0.24 s.
    std::smatch last;
    std::string const tail = text.substr(std::min(text.find("again"), text.size()));
    ASSERT_TRUE(std::regex_search(tail, last, time));
    int const left = std::stoi(last[1]) * 60 + std::stoi(last[2]);
    EXPECT_GE(left, 158);
    EXPECT_LE(left, took.count() * 666 + 1);
    EXPECT_LT(std::stoi(last[2]), 60);
}

TEST(Process, IsKilledWithWhatItLeftBehind) {
    std::pair<std::string, bool> const cases[] = {
        {"trap '' TERM; sleep 50 & echo $!; wait", true},
        {"trap '' TERM; sleep 50 & for i in 1 2 3 4; do sleep 0.2; echo $!; done; exit 3", false},
    };
    for (auto const& [script, silent] : cases) {
        std::string left;
        Ended const ended = runProcess(
            {"sh", "-c", script}, [&left](std::string_view line) { left = line; }, 0.6, 0.2);
        EXPECT_EQ(silent, ended.silent);
        EXPECT_EQ(silent ? 9 : 0, ended.signal);
        EXPECT_EQ(silent ? 0 : 3, ended.code);
        EXPECT_NE(0, runShell("grep -q 'State:.S' /proc/" + left + "/status").status) << script;
    }
}

TEST(Pair, RealLibrariesAreComparedFromEndToEnd) {
    Bench bench;
    Outcome const outcome =
        bench.run("pair --baseline '" ZOL_LIBRARIES "' --passes 4 --fail-on never "
                  "--no-control -o cmp.csv -- -fSqr_");
    EXPECT_EQ(0, outcome.status) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "22 points: ")) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(readFile(bench.at("cmp.csv.passes.csv")), "\n4,Sqr,64f,A53,32768,"));
}

TEST(Machine, ItsTextSaysWhatItIsFitFor) {
    MachineState const states[] = {
        {1, 1, 0, 0, 2, 2, "performance", "0-1"},
        {0.98, 0.95, 0.03, 1, 1, 2, "", ""},
        {0.97, 1, 0, 0, 2, 2, "", ""},
        {1, 0.94, 0, 0, 2, 2, "", ""},
        {1, 1, 0.04, 0, 2, 2, "", ""},
        {0.5, 0.044, 0.3149, 3, 4, 8, "powersave", "3,7"},
    };
    std::string text;
    for (MachineState const& state : states) {
        text += machineText(state);
    }
    EXPECT_TRUE(matchesStored("tables/machines", text));

    MachineState here;
    bool quiet = false; // for a moment
    for (int tries = 0; tries < 40 && !quiet; ++tries) {
        here = watchMachine(0.05);
        EXPECT_GT(here.ours, 0.0);
        EXPECT_LE(here.ours, 1.0);
        EXPECT_LE(here.quiet, 1.0);
        EXPECT_GE(here.clockSpread, 0.0);
        quiet = here.quiet > 0.5 && here.clockSpread < 0.001;
    }
    EXPECT_TRUE(quiet) << machineText(here);
    cpu_set_t before;
    cpu_set_t one;
    ASSERT_EQ(0, sched_getaffinity(0, sizeof before, &before));
    CPU_ZERO(&one);
    CPU_SET(here.processor, &one);
    ASSERT_EQ(0, sched_setaffinity(0, sizeof one, &one));
    MachineState const pinned = watchMachine(0.01);
    ASSERT_EQ(0, sched_setaffinity(0, sizeof before, &before));
    EXPECT_EQ(CPU_COUNT(&before), here.processors);
    EXPECT_EQ(1, pinned.processors);
    EXPECT_EQ(here.processor, pinned.processor);
    EXPECT_EQ(here.siblings, pinned.siblings);
    EXPECT_EQ(runShell("getconf _NPROCESSORS_ONLN").out, std::to_string(here.online) + "\n");
    EXPECT_EQ(runShell("cat /sys/devices/system/cpu/cpu" + std::to_string(here.processor) +
                       "/topology/thread_siblings_list")
                  .out,
              here.siblings + (here.siblings.empty() ? "" : "\n"));

    auto const start = std::chrono::steady_clock::now();
    unsigned long long const first = __rdtsc();
    int const mhz = counterMHz();
    auto const clocks = static_cast<double>(__rdtsc() - first);
    std::chrono::duration<double, std::micro> const took = std::chrono::steady_clock::now() - start;
    EXPECT_NEAR(clocks / took.count(), mhz, 0.05 * mhz);
}
