// pskeyhandlers.cpp - echo and effect of the keys, in the order of the key table.
#include "ps/pskeyhandlers.h"

#include "ps/psregister.h"
#include "pscpu/pscpufeatures.h"
#include "psstream/pscstream.h"
#include "psstream/psistream.h"
#include "pstool/psctrl.h"
#include "pstool/pspriority.h"

namespace {

// The echo, unless an early exit of this level makes the key pointless.
psString unlessExit(int level, psString const& echo) {
    return psSession::isExit(level) ? psSession::getExitInfo() : echo;
}

// What a bit or a letter stands for.
struct Word {
    int value;
    char const* text;
};

template <int count>
psString wordsOf(Word const (&table)[count], int bits) {
    psString words;
    for (Word const& row : table) {
        if ((bits & row.value) != 0) {
            words += row.text;
        }
    }
    return words;
}

constexpr Word askWords[] = {{psSession::askTiming, ", timing method"},
                             {psSession::askParams, ", common parameters"},
                             {psSession::askMisalign, ", data misalignment"},
                             {psSession::askEachTest, ", each test parameters"}};

constexpr Word levelWords[] = {{MSG_ERR, "errors"},
                               {MSG_WARN, ",warnings"},
                               {MSG_PERF, ",performance results"},
                               {MSG_INFO, ",measurement process"},
                               {MSG_TRACE, ",tracing info"},
                               {MSG_MEMORY, ",memory info"},
                               {MSG_DATA, ",data info"}};

// By the priority less 1.
constexpr char const* priorityWords[] = {"high", "normal", "low"};

// Sum of what the letters of the text stand for; other letters count nothing.
template <int count>
int sumOfLetters(Word const (&table)[count], psString const& text) {
    int sum = 0;
    for (int i = 0; i < text.size(); ++i) {
        for (Word const& row : table) {
            if (text[i] == row.text[0]) {
                sum |= row.value;
            }
        }
    }
    return sum;
}

psString iniPath(psString const& arg) { return psSession::genInPath(arg, ".ini"); }
psString textPath(psString const& arg) { return psSession::genOutPath(arg, ".txt"); }
psString tablePath(psString const& arg) { return psSession::genOutPath(arg, ".csv"); }
psString namePath(psString const& arg) { return psSession::genOutPath(arg, "_name.csv"); }
psString summaryPath(psString const& arg) { return psSession::genOutPath(arg, "_sum.csv"); }

template <typename Stream>
void addFile(Stream& stream, psString const& path, bool append, psSession* session) {
    if (!stream.addStream(path, append)) {
        session->unopenedFile();
    }
}

bool wantsResultTable(psString const& arg) { return arg[0] == '+'; }

psString directoryInfo(char const* use, psString const& arg) {
    return arg.empty() ? psString("ignored: empty directory name")
                       : psString(use) + psSession::genDirName(arg);
}

// Echo of a selection key: by the kind of the condition the words in front of the pattern and
// behind it, and the text for a missing pattern.
struct SelectionEcho {
    char const* words[4][2];
    char const* noPattern;
};
constexpr int noPatternKind = 4;

psString selectionInfo(SelectionEcho const& echo, psString arg) {
    int const kind = getCondition(arg);
    if (kind == noPatternKind) {
        return unlessExit(2, echo.noPattern);
    }
    char const* const* const words = echo.words[kind];
    return unlessExit(2, psString(words[0]) + arg + words[1]);
}

template <typename Any, typename And, typename Not, typename Equal>
void select(psString arg, psSession* session) {
    switch (getCondition(arg)) {
    case 0:
        session->addCondition(new Any(arg));
        break;
    case 1:
        session->addCondition(new And(arg));
        break;
    case 2:
        session->addCondition(new Not(arg));
        break;
    case 3:
        session->addCondition(new Equal(arg));
        break;
    default:
        break;
    }
}

constexpr SelectionEcho functionEcho = {{{"test functions containing '", "'"},
                                         {"don't test functions without '", "' in the name"},
                                         {"don't test functions containing '", "'"},
                                         {"test function equal to '", "'"}},
                                        "ignored: empty function pattern"};
constexpr SelectionEcho testEcho = {{{"run tests containing '", "'"},
                                     {"don't run tests which doesn't contain '", "'"},
                                     {"don't run tests containing '", "'"},
                                     {"run test equal to '", "'"}},
                                    "ignored: empty test pattern"};
constexpr SelectionEcho fileEcho = {
    {{"run tests from file containing '", "' in file name"},
     {"don't run tests from file which doesn't contain '", "' in file name"},
     {"don't run tests from file containing '", "' in file name"},
     {"run test equal from file with exact name '", "'"}},
    "ignored: empty file pattern"};

constexpr char const* noLibraryText =
    "ignored: <zolcore> is not included before <zo> in test files";

int numberOf(psString arg) {
    int number = 0; // stays for a text that is no number
    number << arg;
    return number;
}

// Echo of -h and -?: the letter that asks for all keys, and the words that tell the two apart.
psString helpInfo(psString const& arg, char all, char const* which) {
    if (arg.empty()) {
        return psString("type short help") + which + " and exit";
    }
    if (arg[0] == all) {
        return psString("type extended help") + which + " and exit";
    }
    psString echo("type extended help for -");
    echo += arg[0];
    return echo += " key and exit";
}

void askHelp(psString const& arg, bool hide) {
    s_hintHide = hide;
    s_hintArg = arg.empty() ? psSession::shortHelp : arg[0];
}

} // namespace

int getAskLevel(psString const& arg) {
    static constexpr Word letters[] = {
        {psSession::askTiming, "T"}, {psSession::askParams, "P"}, {psSession::askMisalign, "M"}};
    int const asked = sumOfLetters(letters, arg);
    return asked != 0 ? asked : psSession::askAll;
}

OutputLevel getLevel(psString const& arg) {
    constexpr int results = MSG_ERR | MSG_WARN | MSG_PERF;
    static constexpr Word letters[] = {{MSG_ERR, "E"},
                                       {MSG_ERR | MSG_WARN, "W"},
                                       {results, "P"},
                                       {results | MSG_INFO, "I"},
                                       {results | MSG_TRACE, "T"},
                                       {results | MSG_MEMORY, "M"},
                                       {results | MSG_DATA, "D"}};
    return sumOfLetters(letters, arg);
}

psString B_info(psString /*arg*/) { return unlessExit(1, "batch mode"); }
void B_apply(psString /*arg*/, psSession* session) { session->m_batchMode = true; }

psString A_info(psString arg) {
    psString const words = wordsOf(askWords, getAskLevel(arg));
    return unlessExit(1, psString("ask") + words.substr(1) + " from console");
}
void A_apply(psString arg, psSession* session) { session->addAskMode(getAskLevel(arg)); }

psString d_info(psString arg) {
    if (arg.empty()) {
        return unlessExit(1, "ignored: empty data argument");
    }
    return unlessExit(1, arg.find("=", 0) > 0 ? psString("set PS parameter ") + arg
                                              : psString("ignored: incorrect data format"));
}
void d_apply(psString arg, psSession* /*session*/) { g_istrm.setData(arg); }

psString i_info(psString arg) { return unlessExit(1, psString("read from ") + iniPath(arg)); }
void i_apply(psString arg, psSession* session) { session->setIniMode(iniPath(arg), false); }

psString I_info(psString arg) {
    return unlessExit(1, psString("write PS parameters to ") + iniPath(arg) + " and exit");
}
void I_apply(psString arg, psSession* session) { session->setIniMode(iniPath(arg), true); }

psString P_info(psString /*arg*/) {
    return unlessExit(1, "read tested function names from ini-file if any");
}
void P_apply(psString /*arg*/, psSession* /*session*/) { psTest::m_pressing = true; }

psString o_info(psString arg) { return psString("write console output to ") + textPath(arg); }
void o_apply(psString arg, psSession* session) { addFile(g_ostrm, textPath(arg), false, session); }

psString O_info(psString arg) { return psString("add console output to ") + textPath(arg); }
void O_apply(psString arg, psSession* session) { addFile(g_ostrm, textPath(arg), true, session); }

psString L_info(psString arg) {
    int const level = getLevel(arg);
    if (level == 0) {
        return unlessExit(1, "ignored: incorrect level of console output");
    }
    return unlessExit(1, psString("write ") + wordsOf(levelWords, level) + " to console");
}
void L_apply(psString arg, psSession* session) { session->addLevelMode(getLevel(arg)); }

psString r_info(psString arg) {
    return psString("write performance result table to ") + tablePath(arg);
}
void r_apply(psString arg, psSession* session) { addFile(g_cstrm, tablePath(arg), false, session); }

psString R_info(psString arg) {
    return psString("add performance result table to ") + tablePath(arg);
}
void R_apply(psString arg, psSession* session) { addFile(g_cstrm, tablePath(arg), true, session); }

psString q_info(psString arg) {
    if (!wantsResultTable(arg)) {
        return unlessExit(1, psString("write function parameter name lines to ") + namePath(arg));
    }
    psCommandList const& keys = *psSession::pCmdList;
    if (!keys.isKey('r') && !keys.isKey('R')) {
        return unlessExit(1, "ignored because -r or -R options are not present in command line");
    }
    return unlessExit(1, "add function parameter name lines to csv files defined by -r & -R keys");
}
void q_apply(psString arg, psSession* session) {
    if (wantsResultTable(arg)) {
        psRunMode::m_nameMode |= psRunMode::namesIntoResults;
        return;
    }
    psRunMode::m_nameMode |= psRunMode::namesIntoOwnTable;
    addFile(g_qstrm, namePath(arg), false, session);
}

psString Q_info(psString /*arg*/) {
    return unlessExit(1,
                      psSession::pCmdList->isKey('q')
                          ? "exit after function parameter name table creation and don't run tests"
                          : "ignored because -q option is not present in command line");
}
void Q_apply(psString /*arg*/, psSession* /*session*/) {
    if (psSession::pCmdList->isKey('q')) {
        psRunMode::m_nameExit = true;
    }
}

psString u_info(psString arg) {
    return unlessExit(1, psString("write summary table to ") + summaryPath(arg));
}
void u_apply(psString arg, psSession* session) {
    addFile(g_ustrm, summaryPath(arg), false, session);
}

psString U_info(psString arg) {
    return unlessExit(1, psString("add summary table to ") + summaryPath(arg));
}
void U_apply(psString arg, psSession* session) {
    addFile(g_ustrm, summaryPath(arg), true, session);
}

psString g_info(psString arg) {
    return psString("create file ") + psSession::genSglPath(arg) + " at the end of PS work";
}
void g_apply(psString arg, psSession* session) { session->setSglName(arg); }

psString n_info(psString arg) {
    return arg.empty() ? psString("ignored: empty default name")
                       : psString("name ini-file and output files as ") + arg + ".<proper-ext>";
}
// The names are settled before any key is applied, whatever the place of -n, -p and -l.
void n_apply(psString /*arg*/, psSession* /*session*/) {}

psString p_info(psString arg) { return directoryInfo("open test data files & ini-file in ", arg); }
void p_apply(psString /*arg*/, psSession* /*session*/) {}

psString l_info(psString arg) { return directoryInfo("open output files in ", arg); }
void l_apply(psString /*arg*/, psSession* /*session*/) {}

psString f_info(psString arg) { return selectionInfo(functionEcho, arg); }
void f_apply(psString arg, psSession* session) {
    select<RunCondition_f, RunCondition_fAnd, RunCondition_fNot, RunCondition_fEqual>(arg, session);
}

psString t_info(psString arg) { return selectionInfo(testEcho, arg); }
void t_apply(psString arg, psSession* session) {
    select<RunCondition_t, RunCondition_tAnd, RunCondition_tNot, RunCondition_tEqual>(arg, session);
}

psString m_info(psString arg) { return selectionInfo(fileEcho, arg); }
void m_apply(psString arg, psSession* session) {
    select<RunCondition_s, RunCondition_sAnd, RunCondition_sNot, RunCondition_sEqual>(arg, session);
}

// The last word of the first text is spelled so on purpose: scripts know it.
psString k_info(psString arg) {
    return arg[0] == 'o' ? "keys composition: -f<conditions> OR -t<conditions> OR -m<conditiosn>"
                         : "keys composition: -f<conditions> AND -t<conditions> AND -m<conditions>";
}
void k_apply(psString arg, psSession* session) {
    session->logicCondition(arg[0] == 'o' ? psConditions::Or : psConditions::And);
}

psString F_info(psString arg) {
    return unlessExit(1, psString("start testing from ") + arg + " function");
}
void F_apply(psString arg, psSession* /*session*/) { psTestList::m_startFunc = arg; }

psString Y_info(psString arg) {
    int const priority = getPriority(arg);
    if (priority == 0) {
        return unlessExit(1, "ignored: incorrect process priority value");
    }
    return unlessExit(1, psString("set ") + priorityWords[priority - 1] + " process priority");
}
void Y_apply(psString arg, psSession* /*session*/) {
    int const priority = getPriority(arg);
    if (priority != 0) {
        psTool::m_priority = priority;
    }
}

psString H_info(psString arg) {
    return unlessExit(2, arg[0] == 'O' ? "run tests for hot functions only"
                                       : "add 'Interest' column to table file");
}
void H_apply(psString arg, psSession* /*session*/) { psTest::m_hot = arg[0] == 'O' ? 2 : 1; }

psString W_info(psString /*arg*/) { return "unmask floating-point exceptions"; }
void W_apply(psString /*arg*/, psSession* /*session*/) {
    is_W_flagUsed = true;
    // Masks inexact alone.
    g_ctrl87.setExceptionValue(32);
    g_ssx.setExceptionValue(4096);
}

psString T_info(psString arg) {
    if (zolEnvironment == nullptr) {
        return noLibraryText;
    }
    return psCpuFeatures::cpuFeatures(arg) == 0
               ? psString("ignored: incorrect CPU features")
               : psString("call zolSetCpuFeatures ( Zol64u ") + arg + " )";
}
void T_apply(psString arg, psSession* /*session*/) {
    s_cpuFeature = psCpuFeatures::cpuFeatures(arg);
}

psString N_info(psString arg) {
    if (zolEnvironment == nullptr) {
        return noLibraryText;
    }
    return numberOf(arg) < 1 ? psString("ignored: incorrect number of threads")
                             : psString("call zolSetNumThreads(") + arg + ")";
}
void N_apply(psString arg, psSession* /*session*/) { s_numThreads = numberOf(arg); }

psString S_info(psString /*arg*/) {
    return unlessExit(1, "include to measurement data set & use time");
}
void S_apply(psString /*arg*/, psSession* /*session*/) { g_tool.m_setAndUse = true; }

psString C_info(psString /*arg*/) {
    return unlessExit(
        1, "test data size will be in cache and out of cache if that is supported by test");
}
void C_apply(psString /*arg*/, psSession* /*session*/) { psTest::m_cache = true; }

psString s_info(psString arg) {
    return unlessExit(2, arg[0] == '-' ? "don't sort functions" : "sort functions");
}
void s_apply(psString arg, psSession* session) {
    if (arg[0] == '-') {
        session->m_noSort = true;
    }
}

psString e_info(psString arg) {
    if (psSession::m_exitLevel == 2) {
        return psSession::getExitInfo();
    }
    switch (arg[0]) {
    case '+':
        return "enumerate applied and not applied library functions and exit";
    case '-':
        return "enumerate not applied library functions and exit";
    default:
        return "enumerate tested functions and exit";
    }
}
void e_apply(psString arg, psSession* session) {
    session->setEnumMode(arg[0] == '+' ? 1 : arg[0] == '-' ? -1 : 0);
}

psString v_info(psString /*arg*/) {
    return "type the version number of the Performance System and exit";
}
void v_apply(psString /*arg*/, psSession* /*session*/) { s_version = true; }

psString h_info(psString arg) { return helpInfo(arg, 'h', ""); }
void h_apply(psString arg, psSession* /*session*/) { askHelp(arg, true); }

psString question_info(psString arg) { return helpInfo(arg, '?', " with hidden keys"); }
void question_apply(psString arg, psSession* /*session*/) { askHelp(arg, false); }
