// history_test.cpp - steps of invented histories, and what the command makes of real files.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <random>

#include "cli/program.h"
#include "core/history.h"
#include "core/table.h"
#include "run/files.h"

using namespace tables;

namespace {

// 400 functions at 3 lengths with heavy tails; from a date on, the first tenth is slower.
struct Simulated {
    int wrong = 0; // points that are called though nothing changed there, or at another date
    int found = 0; // of 120, within a date of the truth
};

Simulated simulate(unsigned seed, int dates, double step) {
    std::mt19937 random(seed);
    std::student_t_distribution<double> noise(4);
    History history;
    history.settings.threshold = 0.01;
    for (int i = 0; i < 1200; ++i) {
        history.points.add({.base = "F" + std::to_string(i / 3),
                            .type = "64f",
                            .accuracy = "-",
                            .length = 64L << i % 3,
                            .parms = "-,-,-,-,-,-,-",
                            .unit = "e"});
    }
    for (int date = 0; date < dates; ++date) {
        HistoryDate one{.label = "", .machine = "m", .logs = {}, .changes = {}};
        for (int i = 0; i < 1200; ++i) {
            double const sigma = 0.004 * (1 + i % 7) / 4;
            one.logs.push_back(noise(random) * sigma +
                               (i < 120 && date >= dates / 2 ? std::log1p(step) : 0) + 1);
        }
        history.dates.push_back(one);
    }
    findSteps(history);
    Simulated result;
    for (int date = 0; date < dates; ++date) {
        for (Judgement const& one : history.dates[static_cast<std::size_t>(date)].changes.points) {
            if (one.called()) {
                bool const right =
                    step > 0 && one.point < 120 && std::abs(date - dates / 2) <= 1 && one.ratio > 1;
                ++(right ? result.found : result.wrong);
            }
        }
    }
    return result;
}

constexpr char titles[] = "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,"
                          "Parm5,Parm6,scaleFactor,Comment,Clocks,per,Time (usec),MFlops\n";

std::string tableOf(int day, std::string const& computer, std::string const& comment,
                    std::string const& sin, std::string const& cos) {
    std::string text = "Computer," + computer + "\nStart,Thu Jan " + (day < 10 ? " " : "") +
                       std::to_string(day) + " 10:00:00 2026\nLibrary,v" + std::to_string(day) +
                       "\n" + titles;
    for (char const* const length : {"64", "128"}) {
        text += std::string("Sin,32f,A24,") + length + ",-,-,-,-,-,-,-," + comment + ',' + sin +
                ",e,0.1,-\nCos,32f,A24," + length + ",-,-,-,-,-,-,-,nLps=1," + cos + ",e,0.1,-\n";
    }
    return text;
}

} // namespace

TEST(History, FindsStepsAndFewThatAreNone) {
    for (int const dates : {8, 30, 100}) {
        for (unsigned const seed : {1U, 2U, 3U}) {
            EXPECT_EQ(0, simulate(seed, dates, 0).wrong) << dates;
        }
        std::pair<double, int> const steps[] = {{0.02, 65}, {0.05, 118}, {0.10, 120}};
        for (auto const& [step, least] : steps) {
            Simulated const one = simulate(4, dates, step);
            EXPECT_GE(one.found, least) << dates << " dates, " << step;
            EXPECT_LE(one.wrong, 3) << dates << " dates, " << step; // two or more dates off
        }
    }
}

TEST(History, PutsTablesInOrderAndLeavesOutBrokenOnes) {
    TempDirectory const dir;
    auto const history = [&dir](std::string const& words) {
        return runShell("cd " + dir.path + " && '" PS_TABLES "' history " + words);
    };
    ASSERT_EQ(0, runShell("mkdir " + dir.path + "all").status);
    for (int day = 1; day <= 12; ++day) { // the last date comes first by name
        std::string const name = dir.path + "all/" + std::string(1, static_cast<char>('z' - day));
        replaceFile(name + ".csv",
                    tableOf(day, "here", "nLps=1", day < 8 ? "2.00" : "2.20", "3.00"));
    }
    replaceFile(dir.path + "all/y.csv.passes.csv", tables::readFile(dir.path + "all/y.csv"));
    replaceFile(dir.path + "all/broken.csv", "Computer,here\nfuncBase,\n");
    replaceFile(dir.path + "all/there.csv", tableOf(3, "there", "nLps=1", "9.00", "9.00"));
    Outcome const text = history("all");
    EXPECT_EQ("13 dates, 2026-01-01 10:00 v1 to 2026-01-12 10:00 v12\n"
              "1 step in 1 of 2 functions\n",
              text.out.substr(0, text.out.find("note")))
        << text.err;
    EXPECT_TRUE(contains(text.out, "note: left out: all/broken.csv: row 2: "));
    EXPECT_TRUE(contains(text.out, "note: there (): 1 date, steps take 8\n+10.0% ["));
    EXPECT_TRUE(contains(text.out, "]  Sin_32f_A24 at 64..128  from 2026-01-08 10:00 v8 on here"));
    EXPECT_EQ(2, history("all -o all/n.csv").status);

    for (int day = 1; day <= 3; ++day) {
        std::string const pair = "nLps=1 base=2.00 ratio=1.1000 lo=1.09 hi=1.11 nPrs=9 quiet";
        replaceFile(dir.path + std::to_string(day) + ".csv",
                    tableOf(day, "m" + std::to_string(day), pair, "2.20", "3.00"));
    }
    Outcome const chain =
        history("--baseline-chain --format json --label x --label y --label z 3.csv 1.csv 2.csv");
    nlohmann::json const json = nlohmann::json::parse(chain.out);
    EXPECT_EQ("z", json["dates"][2]["label"]);
    ASSERT_EQ(1U, json["functions"].size()); // Cos has no pairs
    EXPECT_NEAR(1.331, json["functions"]["Sin_32f_A24"][2], 1e-9);
    EXPECT_TRUE(contains(history("1.csv --label a --label b").err, "2 labels for 1 tables"));
    EXPECT_EQ(2, history("all/broken.csv").status);
}
