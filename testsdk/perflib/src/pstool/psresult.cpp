// psresult.cpp - the words of the result codes.
#include "pstool/psresult.h"

namespace {

struct ResultName {
    char const* word;
    char const* text;
};

// A row per code.
constexpr ResultName resultNames[] = {
    {"UNDEFINED", "was not run"},
    {"OK", "successfully"},
    {"ACCURWRN", "wrong measure accuracy"},
    {"BADSTSWRN", "modified control status"},
    {"DATAWRN", "test data warning"},
    {"FUNCWRN", "lib function warning"},
    {"WARNING", "warning"},
    {"ACCURFAIL", "accuracy error"},
    {"DATAFAIL", "test data error"},
    {"FUNCFAIL", "lib function error"},
    {"EXCPTFAIL", "exception"},
    {"FAIL", "error"},
};
static_assert(sizeof resultNames / sizeof resultNames[0] == psNumResults);

constexpr ResultName unknownResult = {"UNKNOWN", "unknown result"};

ResultName const& nameOf(psResult result) {
    return result >= 0 && result < psNumResults ? resultNames[result] : unknownResult;
}

} // namespace

char const* resultText(psResult result) { return nameOf(result).text; }

char const* resultWord(psResult result) { return nameOf(result).word; }
