// pskeytable.cpp - the table of keys with their help texts, and the session's copy of it.
#include "ps/pskeyhandlers.h"

#include "ps/psregister.h"
#include "pscpu/pszolentry.h"

namespace {

// Where a row is left out: without the keys of the name tables, without the library.
enum When { always, withNames, withLibrary };

struct Row {
    char key;
    bool hidden;
    When when;
    char const* quick;
    psString (*info)(psString arg);
    void (*apply)(psString arg, psSession* session);
    char const* descr;
};

#define PS_DEFAULT_FILE(extension, directoryKey)                                                   \
    "If file-name is empty then default file path will be used:\n"                                 \
    "    <default-dir>/<default-name>" extension "\n"                                              \
    "    <default-dir> : <exe-file-dir> or -" directoryKey " key argument if any\n"                \
    "    <default-name>: <exe-file-name-without-extention> or -n key argument if any\n"

// Key, hidden, when, line of short help, echo, effect, extended help. The tab in the text of -T
// stands for the list of code paths.
// clang-format off
constexpr Row rows[] = {
    {'B', false, always,
     "-B               = batch mode (no console input)\n",
     B_info, B_apply,
     "If both -B and -A key present in command line then -B key is performed\n"},
    {'A', false, always,
     "-A<Timing|Params|Misalign|All> = set detail level of the console input\n",
     A_info, A_apply,
     "Timing  : adjust timing method at the very beginning\n"
     "Params  : adjust common parameters for all tests at the very beginning\n"
     "Misalign: adjust memory misalignment at the very beginning\n"
     "All     : adjust all above-listed and adjust test parameters\n"
     "          before each test running\n"
     "Certain parameter may be adjusted from console only if it is not defined\n"
     "    by -d key or in ini-file\n"
     "If -A has no mode then -AAll mode is implemented\n"
     "If several -A keys present in command line then all modes are combined\n"
     "If both -A and -B key present in command line then -B key is performed\n"
     "If neither of -A and -B key present in command line then\n"
     "    -ATimingParams is performed\n"},
    {'d', false, always,
     "-d<name>=<value> = set PS parameter value\n",
     d_info, d_apply,
     "Any parameter asked from console or written in ini-file may be set by -d key\n"
     "Data set by -d option has the highest priority\n"
     "-d key may be used several times in command line\n"},
    {'i', false, always,
     "-i[<file-name>]  = read PS parameters from ini-file\n",
     i_info, i_apply,
     "Ini-file section [Perf System] contains common parameters for all tests\n"
     "Ini-file section [<func-name>] contains parameters for measurement of this function\n"
     "A parameter is read from ini-file only if it is not defined by -d key\n"
     "At the same time this parameter will not be asked from console\n"
     PS_DEFAULT_FILE(".ini", "p")
     "If several -i or -I keys present in command line then only the last key is valid\n"},
    {'I', false, always,
     "-I[<file-name>]  = write PS parameters to ini-file and exit\n",
     I_info, I_apply,
     "This key opens ini-file and put test parameters with default values\n"
     "If the parameter is already present in ini-file then PS doesn't overwrite it\n"
     "Ini-file section [Perf System] will contain common parameters for all tests\n"
     "Ini-file section [<func-name>] will contain parameters for measurement of this function\n"
     PS_DEFAULT_FILE(".ini", "p")
     "If several -i or -I keys present in command line then only the last key is valid\n"},
    {'P', false, always,
     "-P               = read tested function names from ini-file\n",
     P_info, P_apply,
     "This key affects only if -i key is present in command line\n"
     "All functions present in ini-file as section names will be measured\n"
     "Other functions will not be measured\n"},
    {'o', false, always,
     "-o[<file-name>]  = create txt-file and write console output\n",
     o_info, o_apply,
     PS_DEFAULT_FILE(".txt", "l")
     "If several -o keys present in command line then all these files will be created\n"
     "    and filled\n"},
    {'O', false, always,
     "-O[<file-name>]  = add console output to txt-file\n",
     O_info, O_apply,
     PS_DEFAULT_FILE(".txt", "l")
     "If several -O keys present in command line then all these files will be opened\n"
     "    and filled\n"},
    {'L', false, always,
     "-L<ERR|WARN|PERF|INFO|TRACE|DATA> = set detail level of the console output\n",
     L_info, L_apply,
     "ERR  : output errors\n"
     "WARN : output errors & warnings\n"
     "PERF : output errors & warnings & performance for each parameter set\n"
     "INFO : output errors & warnings & performance for each parameter set &\n"
     "       detailed course of performance measurement\n"
     "TRACE: output errors & warnings & performance for each parameter set &\n"
     "       PS function call tracing\n"
     "DATA : output errors & warnings & performance for each parameter set &\n"
     "       vectors data before and after zol function call\n"
     "If several -L keys present in command line then all modes are combined\n"},
    {'r', false, always,
     "-r[<file-name>]  = create csv-file and write PS results\n",
     r_info, r_apply,
     "This key creates table file for performance results\n"
     PS_DEFAULT_FILE(".csv", "l")
     "If several -r keys present in command line then all these files will be created\n"
     "    and filled\n"},
    {'R', false, always,
     "-R[<file-name>]  = add PS results to csv-file\n",
     R_info, R_apply,
     "This key adds for performance results to table file\n"
     PS_DEFAULT_FILE(".csv", "l")
     "If several -R keys present in command line then all these files will be opened\n"
     "    and filled\n"},
    {'q', false, withNames,
     "-q[<file-name>]  = create csv-file (*_name.csv is default) and write "
     "function parameter name lines\n"
     "-q+              = add function parameter name lines to PS results table file\n",
     q_info, q_apply,
     PS_DEFAULT_FILE("_name.csv", "l")
     "If several -q[<file-name>] keys present in command line then all these files\n"
     "    will be created and filled\n"
     "-q+ key affects only if -r or -R keys are present in command line\n"},
    {'Q', false, withNames,
     "-Q               = exit after function parameter name table creation\n",
     Q_info, Q_apply,
     "This key affects only if -q or -q+ keys are present in command line\n"},
    {'u', false, always,
     "-u[<file-name>]  = create csv-file and write summary table "
     "('_sum' is added to default title name)\n",
     u_info, u_apply,
     PS_DEFAULT_FILE("_sum.csv", "l")
     "If several -u keys present in command line then all these files will be created\n"
     "    and filled\n"},
    {'U', false, always,
     "-U[<file-name>]  = add summary table to csv-file "
     "('_sum' is added to default title name)\n",
     U_info, U_apply,
     PS_DEFAULT_FILE("_sum.csv", "l")
     "If several -U keys present in command line then all these files will be opened\n"
     "    and filled\n"},
    {'g', false, always,
     "-g[<file-name>]  = create signal file at the end of the whole testing\n",
     g_info, g_apply,
     PS_DEFAULT_FILE(".end", "l")
     "If several -g keys present in command line then only the last key is valid\n"},
    {'n', false, always,
     "-n<title-name>   = default title name for ini-file and output files\n",
     n_info, n_apply,
     "This key sets default file name for input and output files defined by \n"
     "    -i, -I, -o, -O, -r, -R, -u, -U, -g, -q keys\n"
     "If several -n keys present in command line then only the last key is valid\n"},
    {'p', false, always,
     "-p<dir-name>     = default directory for input files i.e. ini & test data files\n",
     p_info, p_apply,
     "This key sets default file directory for input files defined by -i, -I keys\n"
     "    and also for data files opened in a test by i_stream class\n"
     "If several -p keys present in command line then only the last key is valid\n"},
    {'l', false, always,
     "-l<dir-name>     = default directory for output files (listings)\n",
     l_info, l_apply,
     "This key sets default file directory for output files defined by \n"
     "    -o, -O, -r, -R, -u, -U, -g, -q keys\n"
     "If several -l keys present in command line then only the last key is valid\n"},
    {'f', false, always,
     "-f < or-pattern> = run tests for functions with pattern in name\n"
     "-f-<not-pattern> = don't run tests for functions with pattern in name\n"
     "-f+<and-pattern> = run only tests for functions with pattern in name\n"
     "-f=< eq-pattern> = run tests for function with this full name\n",
     f_info, f_apply,
     "Several -f keys may present in command line.\n"
     "The test will be run if function name meets following conditions:\n"
     "       it is equal to one of -f= arguments\n"
     "    OR\n"
     "       it contains one of -f arguments\n"
     "       AND\n"
     "       it contains all of -f+ arguments if any\n"
     "       AND\n"
     "       it doesn't contain any of -f- arguments\n"},
    {'t', false, always,
     "-t[-|+|=]<patrn> = run (don't run) tests with pattern in test name\n",
     t_info, t_apply,
     "Several -t keys may present in command line.\n"
     "The test will be run if its name meets following conditions:\n"
     "       it equals to one of -t= arguments\n"
     "    OR\n"
     "       it contains one of -t arguments\n"
     "       AND\n"
     "       it contains all of -t+ arguments if any\n"
     "       AND\n"
     "       it doesn't contain any of -t- arguments\n"},
    {'m', false, always,
     "-m[-|+|=]<patrn> = run (don't run) tests registered in file with pattern in file name\n",
     m_info, m_apply,
     "Several -m keys may present in command line.\n"
     "In order to run the test source file name has to meet following conditions:\n"
     "    It must be equal to one of -m= arguments\n"
     "    OR\n"
     "       It must contain one of -m arguments\n"
     "       AND\n"
     "       it must contain all of -m+ arguments if any\n"
     "       AND\n"
     "       it mustn't contain one of -m- arguments if any\n"},
    {'k', false, always,
     "-k<and|or>       = compose different keys (-f,-t,-m) by logical operation\n",
     k_info, k_apply,
     "This key sets composition operation for -f, -t, -m conditions\n"
     "-kand key runs the test if\n"
     "                    function name meets -f conditions\n"
     "                AND test name meets -t conditions\n"
     "                AND source file name meets -m conditions\n"
     "-kor key runs the test if\n"
     "                    function name meets -f conditions\n"
     "                 OR test name meets -t conditions\n"
     "                 OR source file name meets -m conditions\n"
     "If no -k keys present in command line then -kand key is realized\n"
     "If several -k keys present in command line then only the last key is valid\n"},
    {'F', false, always,
     "-F<func-name>    = start testing from function with func-name full name\n",
     F_info, F_apply,
     "If several -F keys present in command line then only the last key is valid\n"},
    {'Y', false, always,
     "-Y<HIGH|NORMAL>  = set high or normal process prioritY (normal is default)\n",
     Y_info, Y_apply,
     "If several -Y keys present in command line then only the last key is valid\n"},
    {'H', false, always,
     "-H[ONLY]         = add 'Interest' column to table file [and run only hot tests]\n",
     H_info, H_apply,
     "If both -H & -HO keys present in command line then only the last key is valid\n"},
    {'W', false, always,
     "-W= unmask floating-point exceptions\n",
     W_info, W_apply,
     "This key is used for unmasking floating-point exceptions\n"},
    {'T', false, withLibrary,
     "-T[<cpu-features>]   = call zolSetCpuFeatures( cpuFeatures )\n",
     T_info, T_apply,
     "This key works only if you link zol*merged libraries\n"
     "    and include <zolcore> before <zo> in your test file.\n"
     "To run ZOL code optimized for specific processor enter following {cpu-features}:\n"
     "\tIf several -T keys present in command line then only the last key is valid\n"},
    {'N', false, withLibrary,
     "-N[<num-threads>]= call zolSetNumThreads( <num-threads> )\n",
     N_info, N_apply,
     "This key works only if you link zol* libraries\n"
     "    and include <zolcore> before <zo> in your test file.\n"
     "If several -N keys present in command line then only the last key is valid\n"},
    {'S', true, always,
     "-SU              = measure functions with data set & use\n",
     S_info, S_apply,
     "This option should be used to prove parallelize function advantage\n"
     "Test does not show clear function performance\n"},
    {'C', true, always,
     "-C               = run tests with data in cache and out of cache "
     "(if that is supported by test)\n",
     C_info, C_apply,
     "This option should be used to clarify performance difference between "
     "in-cache and out-of-cache data\n"
     "Not all tests support this option\n"},
    {'s', false, always,
     "-s[-]            = sort or don't sort functions (sort mode is default)\n",
     s_info, s_apply,
     "If both -s & -s- keys present in command line then only the last key is valid\n"},
    {'e', false, always,
     "-e               = enumerate tests and exit\n",
     e_info, e_apply,
     ""},
    {'v', false, always,
     "-v               = type the version number of the Performance System and exit\n",
     v_info, v_apply,
     ""},
    {'@', false, always,
     "-@<file-name>    = read command line options from specified file\n",
     nullptr, nullptr,
     "This key works as if command line is extended by the file content\n"
     "    where <new line> symbol is converted to <space symbol>.\n"
     "Several -@ keys may present in command line.\n"},
    {'h', false, always,
     "-h               = type short help and exit\n"
     "-hh              = type extended help and exit\n"
     "-h<key>          = type extended help for the key and exit\n",
     h_info, h_apply,
     "If several -h present in command line then only the last key is valid\n"},
    {'?', false, always,
     "",
     question_info, question_apply,
     "-?               = type short help with hidden keys and exit\n"
     "-??              = type extended help with hidden keys and exit\n"
     "-?<key>          = type extended help for the key and exit\n"
     "If several -? keys present in command line then only the last key is valid\n"},
};
// clang-format on
#undef PS_DEFAULT_FILE

} // namespace

void psInitKeyTable(psSession& session) {
    bool const hasLibrary = zol_Init() != zolStsNotSupported;
    for (Row const& row : rows) {
        if ((row.when == withNames && qKeys == 0) || (row.when == withLibrary && !hasLibrary)) {
            continue;
        }
        session.initOption(row.key, row.quick, row.info, row.apply, row.descr, row.hidden);
    }
}
