// harness_cost.cpp - what the harness itself costs: the default run over all functions and
// lengths with a library that does nothing. The estimate of the processor's frequency, which
// waits for whole seconds of the wall clock, is left out.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/resource.h>
#include <unistd.h>

#include "ps/psregister.h"
#include "ps/pssession.h"
#include "pscpu/pscputicker.h"

namespace {

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Lines of the table; 0 if it is missing.
int countLines(char const* path) {
    FILE* const file = fopen(path, "r");
    if (file == nullptr) {
        return 0;
    }
    int lines = 0;
    for (int c = fgetc(file); c != EOF; c = fgetc(file)) {
        lines += c == '\n' ? 1 : 0;
    }
    fclose(file);
    return lines;
}

} // namespace

// Further arguments are keys of the run, for example -fSin.
int main(int argc, char** argv) {
    char directory[] = "/tmp/harness_cost_XXXXXX";
    if (mkdtemp(directory) == nullptr) {
        perror("mkdtemp");
        return 1;
    }
    char key[64];
    snprintf(key, sizeof key, "-l%s", directory);
    char batch[] = "-B";
    char level[] = "-LPERF";
    char table[] = "-r";
    char text[] = "-o";
    char summary[] = "-u";
    char* words[64] = {argv[0], batch, level, key, table, text, summary};
    int count = 7;
    for (int i = 1; i < argc && count < 64; ++i) {
        words[count++] = argv[i];
    }

    psCpuTicker::m_freqMHz = 1000;
    int const console = dup(STDOUT_FILENO);
    if (console < 0 || freopen("/dev/null", "w", stdout) == nullptr) {
        perror("stdout");
        return 1;
    }
    double const start = now();
    pSession->run(count, words);
    double const seconds = now() - start;
    fflush(stdout);

    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    char path[128];
    snprintf(path, sizeof path, "%s/bench_harness_cost.csv", directory);
    FILE* const out = fdopen(console, "w");
    fprintf(out, "table lines %d, time %.3f s, resident memory %.1f MiB\n", countLines(path),
            seconds, static_cast<double>(usage.ru_maxrss) / 1024.0);
    fclose(out);

    char const* const endings[] = {".csv", ".txt", "_sum.csv"};
    for (char const* ending : endings) {
        snprintf(path, sizeof path, "%s/bench_harness_cost%s", directory, ending);
        remove(path);
    }
    rmdir(directory);
    return 0;
}
