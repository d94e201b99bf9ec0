// psresult.h - outcome of a measurement, a test or a run. Larger is worse: results merge
// by maximum. 2 to 6 are warnings, 7 to 11 failures.
#ifndef PSTOOL_PSRESULT_H
#define PSTOOL_PSRESULT_H

using psResult = int;

enum : psResult {
    psResUndefined = 0,
    psResOk = 1,
    psResAccurWrn = 2,
    psResBadStsWrn = 3,
    psResDataWrn = 4,
    psResFuncWrn = 5,
    psResWarning = 6,
    psResAccurFail = 7,
    psResDataFail = 8,
    psResFuncFail = 9,
    psResExcptFail = 10,
    psResFail = 11,
    psNumResults = 12
};

inline bool isFailure(psResult result) { return result > psResWarning; }

char const* resultText(psResult result); // for console lines, "unknown result" outside the codes
char const* resultWord(psResult result); // for reports, "UNKNOWN" outside the codes

#endif
