// junit.cpp - the verdict as test cases, for systems that show tests.
#include <nlohmann/json.hpp>

#include "core/failure.h"
#include "core/show.h"
#include "core/text.h"
#include "export/formats.h"

namespace tables {

namespace {

// A text as XML takes it: bytes that are not UTF-8 would make the file no XML at all.
std::string quoted(std::string const& text) {
    using Json = nlohmann::json;
    std::string const clean =
        Json::parse(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
    return '"' + escaped(clean) + '"';
}

std::string testCase(Point const& point, Judgement const& one, bool fasterFails) {
    std::string const text = quoted(percent(one.ratio) + " [" + percent(one.low) + ", " +
                                    percent(one.high) + "] " + callName(one.call) + ": " +
                                    point.function() + ", length " + std::to_string(point.length));
    bool const fails = one.call == Call::slower || (fasterFails && one.called());
    return "<testcase classname=" + quoted(point.base) +
           " name=" + quoted(point.function() + " length " + std::to_string(point.length)) +
           (fails ? "><failure type=\"" + std::string(callName(one.call)) + "\" message=" + text +
                        "/></testcase>\n"
            : one.call == Call::undecided ? "><skipped message=" + text + "/></testcase>\n"
                                          : "/>\n");
}

} // namespace

std::string junitText(Findings const& findings, bool fasterFails) {
    std::string suites;
    int allTests = 0;
    int allFailures = 0;
    for (MachineFindings const& machine : findings.machines) {
        Verdict const& verdict = machine.verdict;
        if (verdict.points.empty()) {
            throw Failure("a table of one library has no verdict: pairs or --against are for that");
        }
        int const failures =
            verdict.count(Call::slower) + (fasterFails ? verdict.count(Call::faster) : 0);
        bool const strayed = !verdict.control.asExpected();
        int const tests = static_cast<int>(verdict.points.size()) + (strayed ? 1 : 0);
        suites += "<testsuite name=" + quoted(machine.passes.list.front().machine()) + " tests=\"" +
                  std::to_string(tests) + "\" failures=\"" + std::to_string(failures) +
                  "\" errors=\"" + (strayed ? "1" : "0") + "\" skipped=\"" +
                  std::to_string(verdict.count(Call::undecided)) + "\">\n";
        for (Judgement const& one : verdict.points) {
            suites += testCase(machine.passes.points[one.point], one, fasterFails);
        }
        if (strayed) {
            suites += "<testcase classname=\"control\" name=\"control\"><error type=\"control\" "
                      "message=\"the control strayed: this machine cannot be trusted today\"/>"
                      "</testcase>\n";
        }
        suites += "</testsuite>\n";
        allTests += tests;
        allFailures += failures;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=" +
           quoted(findings.after + " against " + findings.before) + " tests=\"" +
           std::to_string(allTests) + "\" failures=\"" + std::to_string(allFailures) + "\">\n" +
           suites + "</testsuites>\n";
}

} // namespace tables
