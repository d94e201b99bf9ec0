// export_test.cpp - what other tools get, read by those that are here, and what comes back.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

#include "cli/program.h"
#include "run/files.h"

using namespace tables;
using nlohmann::json;

namespace {

constexpr char titles[] = "funcBase,funcDataType,funcDescriptor,Len/Size,Parm1,Parm2,Parm3,Parm4,"
                          "Parm5,Parm6,scaleFactor,Comment,Clocks,per,Time (usec),MFlops\n";

// Ten passes of two functions: Sin is a tenth slower than the baseline, <Cos&> is as it was.
class Exports : public testing::Test {
protected:
    Exports() {
        for (int i = 0; i < 10; ++i) {
            std::string const digit(1, static_cast<char>('0' + i));
            replaceFile(dir.path + "p" + digit + ".csv",
                        "CPU,Some, 2x2.6 GHz\nComputer,here\nStart,today\nLibrary,new\n"
                        "Baseline,/old\n" +
                            std::string(titles) +
                            "Sin,32f,A24,64,-,-,-,-,-,-,-,nLps=8 base=2.00 ratio=1.100" + digit +
                            " lo=1.09 hi=1.11 nPrs=9 quiet,2.20,e,0.11,-\n"
                            "<Cos&>,64f,-,128,1,-,-,-,-,-,-,nLps=4 base=3.00 ratio=1.000" +
                            digit + " lo=0.99 hi=1.01 nPrs=9 quiet,3.00,e,0.3,-\n");
        }
    }
    Outcome run(std::string const& words) const {
        return runShell("cd " + dir.path + " && '" PS_TABLES "' " + words);
    }
    // What it printed, written to a file of that name.
    std::string exported(std::string const& words, std::string const& name = "out") const {
        Outcome const outcome = run("export p?.csv --to " + words + " -o " + name);
        EXPECT_EQ(0, outcome.status) << outcome.err;
        return tables::readFile(dir.path + name);
    }
    TempDirectory const dir;
};

bool there(char const* command) { return runShell(command).status == 0; }

} // namespace

TEST_F(Exports, LongFormIsAsItsSchemaSays) {
    json const all = json::parse(exported("json"));
    ASSERT_EQ(40U, all["rows"].size());
    json const schema = json::parse(tables::readFile(DOCS "/long.schema.json")).at("properties");
    EXPECT_EQ(schema["format"]["const"], all["format"]);
    json const& columns = schema["rows"]["items"]["prefixItems"];
    ASSERT_EQ(columns.size(), all["fields"].size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i]["title"], all["fields"][i]["name"]);
        for (json const& row : all["rows"]) {
            std::string const type = row[i].is_null()             ? "null"
                                     : row[i].is_string()         ? "string"
                                     : row[i].is_number_integer() ? "integer"
                                                                  : "number";
            json const& allowed = columns[i]["type"];
            EXPECT_TRUE(allowed.is_array()
                            ? std::count(allowed.begin(), allowed.end(), type) == 1
                            : allowed == type || (allowed == "number" && type == "integer"))
                << columns[i] << row[i];
            json const words = columns[i].value("enum", json());
            EXPECT_TRUE(words.is_null() || std::count(words.begin(), words.end(), row[i]) == 1);
        }
    }
}

TEST_F(Exports, GoogleBenchmarksJsonIsComparedAndComesBack) {
    exported("gbench", "new.json");
    exported("gbench --baseline", "old.json");
    Outcome const import = run("import new.json -o back.csv");
    EXPECT_EQ(0, import.status) << import.err;
    run("import old.json -o before.csv");
    EXPECT_TRUE(
        contains(run("compare --fail-on never before.csv.passes.csv back.csv.passes.csv").out,
                 "Sin_32f_A24                     64   +10.1%"));

    if (!there("/usr/bin/python3 /usr/share/benchmark/compare.py --help")) {
        GTEST_SKIP() << "without libbenchmark-tools and python3-scipy its compare.py was not tried";
    }
    Outcome const compared = runShell("cd " + dir.path +
                                      " && /usr/bin/python3 /usr/share/benchmark/compare.py "
                                      "--no-color benchmarks old.json new.json");
    EXPECT_EQ(0, compared.status) << compared.err;
    EXPECT_TRUE(contains(compared.out, "Sin_32f_A24/64_pvalue           0.0001")) << compared.out;
}

TEST_F(Exports, ImportTellsWhatIsNoReading) {
    char const* const context = "{\"context\": {\"mhz_per_cpu\": 1000}, \"benchmarks\": [";
    std::pair<std::string, char const*> const cases[] = {
        {R"({"context": {}, "benchmarks": []})", "in.json: no 'mhz_per_cpu': --mhz "},
        {std::string(context) + R"({"name": "a", "run_type": "aggregate"}]})", "no benchmark ran"},
        {std::string(context) + R"({"name": "a", "cpu_time": 0}]})", "no time above 0"},
        {std::string(context) + R"({"name": "a", "cpu_time": 1, "time_unit": "h"}]})",
         "unknown unit of time"},
        {std::string(context) + R"({"name": 1, "cpu_time": 1}]})", "not the JSON of"},
        {"{", "not the JSON of"},
    };
    for (auto const& [text, told] : cases) {
        replaceFile(dir.path + "in.json", text);
        Outcome const outcome = run("import in.json");
        EXPECT_EQ(2, outcome.status) << text;
        EXPECT_TRUE(contains(outcome.err, told)) << outcome.err;
    }
}

TEST_F(Exports, JUnitIsReadByAnother) {
    EXPECT_TRUE(
        contains(exported("junit", "verdict.xml"), "name=\"&lt;Cos&amp;&gt;_64f length 128\"/>"));
    if (!there("/usr/bin/python3 -c 'import junitparser'")) {
        GTEST_SKIP() << "without python3-junitparser the XML was not tried in a reader";
    }
    EXPECT_EQ("2 1 0\nslower\n", runShell("cd " + dir.path +
                                          " && /usr/bin/python3 -c \"import junitparser as j; "
                                          "x = j.JUnitXml.fromfile('verdict.xml'); s = list(x)[0]; "
                                          "print(s.tests, s.failures, s.errors); "
                                          "print([r.type for c in s for r in c.result][0])\"")
                                     .out);
}

TEST_F(Exports, WhatIsNotThereIsTold) {
    std::string plain = tables::readFile(dir.path + "p0.csv");
    for (std::size_t at; (at = plain.find(" base=")) != std::string::npos;) {
        plain.erase(at, plain.find(",", at) - at);
    }
    replaceFile(dir.path + "plain.csv", plain);
    std::pair<char const*, char const*> const cases[] = {
        {"plain.csv --to junit", "a table of one library has no verdict"},
        {"plain.csv --to gbench --baseline", "the tables have no baseline"},
        {"plain.csv --to parquet", "--to: parquet not in"},
        {"plain.csv --to long -o plain.csv", "plain.csv: is one of the inputs"},
    };
    for (auto const& [words, told] : cases) {
        Outcome const outcome = run(std::string("export ") + words);
        EXPECT_EQ(2, outcome.status) << words;
        EXPECT_TRUE(contains(outcome.err, told)) << outcome.err;
    }
    EXPECT_EQ(3U, lines(run("export plain.csv --to long").out).size());
}
