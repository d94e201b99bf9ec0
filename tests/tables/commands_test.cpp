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
    Outcome run(std::string const& words, std::string const& environment = "") {
        return runShell("cd " + dir.path + " && PS_CPU_MHZ=2600 " + environment +
                        " '" PS_TABLES "' " + words);
    }
    Outcome pair(std::string const& words, std::string const& environment = "") {
        return run("pair --program ./ps_zolvm --baseline old --library new " + words, environment);
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
    std::vector<std::string> log() const { return lines(readFile(at("log"))); }
    bool exists(std::string const& name) const {
        return runShell("test -e " + at(name)).status == 0;
    }

private:
    TempDirectory const dir;
};

int count(std::vector<std::string> const& all, std::string const& part) {
    return static_cast<int>(std::count_if(
        all.begin(), all.end(), [&part](std::string const& one) { return contains(one, part); }));
}

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

TEST(Pair, PassesOfSeveralMachinesStayApart) {
    Bench bench;
    std::string const words = "--passes 8 -q -o cmp.csv ";
    EXPECT_EQ(2, bench.pair("--array").status) << "no place for the passes";
    for (int task = 1; task <= 8; ++task) {
        bench.pair(words + "--only " + std::to_string(task),
                   task <= 4 ? "FAKE_SLOW=3" : "FAKE_SLOW=-5");
    }
    runShell("sed -i s/Computer,vm/Computer,lab2/ " + bench.at("cmp.csv.passes/00[578].csv") +
             "; sed -i s/Computer,vm/Computer,lab3/ " +
             bench.at("cmp.csv.passes/006.csv")); // a control
    Outcome const outcome = bench.pair(words + "--resume", "FAKE_SLOW=3");
    EXPECT_EQ(1, outcome.status) << outcome.err;
    for (char const* const part :
         {"\non vm (A chip)\n", "\non lab2 (A chip)\n",
          "\nSin_32f_A24             +3.0%    -5.0%\n", "\n12 passes, ", "\n3 passes, ",
          "\nno verdict for lab3 (A chip): no pairs in 1 pass\n"}) {
        EXPECT_TRUE(contains(outcome.out, part)) << part << outcome.out;
    }
    std::string const tables = readFile(bench.at("cmp.csv"));
    std::size_t const second = tables.find("Computer,lab2");
    EXPECT_EQ(2, count(lines(tables), "Computer,"));
    EXPECT_EQ(3, count(lines(tables.substr(0, second)), " slower"));
    EXPECT_EQ(3, count(lines(tables.substr(second)), " faster"));

    // The machine that measured again is another one.
    std::string const elsewhere = bench.at("elsewhere.csv");
    runShell(
        "awk '/^Pass,9$/ { again = 1 } again { sub(\"^Computer,vm\", \"Computer,login\") } 1' " +
        bench.at("cmp.csv.passes.csv") + " >" + elsewhere);
    Outcome const verdict = bench.run("verdict elsewhere.csv");
    EXPECT_EQ(1, verdict.status) << verdict.err;
    EXPECT_TRUE(contains(verdict.out, "\nno verdict for login (A chip): no pairs in 8 passes\n"))
        << verdict.out;

    // Absolute numbers are compared machine by machine, those of a single one with any other.
    EXPECT_EQ(0, bench.run("merge cmp.csv.passes.csv -o both.csv").status);
    EXPECT_EQ(2, count(lines(readFile(bench.at("both.csv"))), "Computer,"));
    runShell("sed '/^Computer,lab2/,$d' " + bench.at("both.csv") + " | sed '$d' >" +
             bench.at("vm.csv") + "; sed s/Computer,vm/Computer,lab3/ " + bench.at("vm.csv") +
             " >" + bench.at("lab3.csv"));
    struct {
        char const* files;
        int verdicts;
        char const* told;
    } const cases[] = {
        {"both.csv both.csv", 2, "lab2 (A chip): of single runs"},
        {"vm.csv both.csv", 1, "lab2 (A chip): only both.csv has passes of it\n"},
        {"both.csv vm.csv", 1, "lab2 (A chip): only both.csv has passes of it\n"},
        {"vm.csv lab3.csv", 1, "other machine: vm (A chip), then lab3 (A chip)\n"},
    };
    for (auto const& [files, verdicts, told] : cases) {
        Outcome const compared = bench.run(std::string("compare --strict ") + files);
        EXPECT_EQ(verdicts == 2 ? 0 : 2, compared.status) << files << compared.err;
        EXPECT_EQ(verdicts, count(lines(compared.out), "on ")) << compared.out;
        EXPECT_TRUE(contains(compared.out, told)) << compared.out;
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

TEST(Run, PassesBecomeATableThatComparesWithAnother) {
    Bench bench;
    std::string const run = "run -q --program ./ps_zolvm --passes 4 ";
    EXPECT_EQ(0, bench.run(run + "-o before.csv").status);
    EXPECT_EQ(0, bench.run(run + "-o after.csv", "FAKE_SLOW=8").status);
    Outcome const outcome = bench.run("compare before.csv.passes.csv after.csv.passes.csv");
    EXPECT_EQ(1, outcome.status) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "Sin_32f_A24                64..256    +8."));
    EXPECT_TRUE(contains(outcome.out, "48 points: 3 slower, 0 faster, 0 undecided, 45 same"));
    Outcome const merged = bench.run("compare before.csv after.csv");
    EXPECT_EQ(0, merged.status);
    EXPECT_TRUE(contains(merged.out, "of single runs, only changes beyond 30% are called"));

    // What only one has is told, and --strict takes it for a failure.
    runShell("grep -v '^Abs' " + bench.at("after.csv") + " | sed s/ZOL/ZOL2/ >" +
             bench.at("less.csv"));
    Outcome const less = bench.run("compare before.csv less.csv --strict");
    EXPECT_EQ(2, less.status);
    EXPECT_TRUE(contains(less.out, "other Library: 'ZOL', then 'ZOL2'\n"
                                   "4 rows that only before.csv has\n"));
    EXPECT_EQ(0, bench.run("compare before.csv less.csv").status);

    // A table that was merged is merged again; a job array makes the same passes one by one.
    EXPECT_EQ(0, bench.run("merge before.csv after.csv -o both.csv").status);
    EXPECT_TRUE(contains(readFile(bench.at("both.csv")), "Passes,2\n"));
    std::string const script =
        bench.run("run --array --program ./ps_zolvm --passes 2 -o array.csv -- -fSin").out;
    EXPECT_TRUE(contains(script, "#SBATCH --array=1-2\n")) << script;
    for (char const* const task : {"2", "1"}) {
        EXPECT_EQ(0,
                  runShell("cd " + bench.at("") + " && SLURM_ARRAY_TASK_ID=" + task + " sh", script)
                      .status);
    }
    EXPECT_FALSE(bench.exists("array.csv"));
    std::size_t const made = bench.log().size();
    EXPECT_EQ(
        0,
        bench.run("run --resume -q --program ./ps_zolvm --passes 2 -o array.csv -- -fSin").status);
    EXPECT_TRUE(bench.exists("array.csv"));
    EXPECT_EQ(made, bench.log().size());
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
