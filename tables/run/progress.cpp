// progress.cpp - how far the passes are, on standard error.
#include "run/progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/text.h"

namespace tables {

namespace {

using Clock = std::chrono::steady_clock;

double seconds(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

void Progress::planBegins(int passes) {
    m_passes = passes;
    m_done = 0;
    m_functions = 0;
    m_start = Clock::now();
}

void Progress::passBegins(int number, std::string const& kind) {
    m_functionsDone = 0;
    m_function.clear();
    m_pass = "pass " + std::to_string(number) + " (" + kind + ")";
    show();
}

void Progress::functionBegins(std::string_view name) {
    m_function = name;
    ++m_functionsDone;
    if (seconds(m_shown, Clock::now()) > 0.1) {
        show();
    }
}

void Progress::passEnds(std::string const& howItWent) {
    ++m_done;
    m_functions = std::max(m_functions, m_functionsDone);
    m_functionsDone = 0;
    if (m_way == Way::lines) {
        note(m_pass + ", " + std::to_string(m_done) + " of " + std::to_string(m_passes) + ": " +
             howItWent);
    }
    if (m_done == m_passes) {
        wipe();
    }
}

void Progress::note(std::string const& text) {
    if (m_way != Way::none) {
        wipe();
        (void)std::fprintf(stderr, "%s\n", text.c_str());
    }
}

double Progress::share() const {
    double const ofPass = m_functions > 0 ? std::min(1.0, 1.0 * m_functionsDone / m_functions) : 0;
    return (m_done + ofPass) / std::max(m_passes, 1);
}

void Progress::show() {
    if (m_way != Way::terminal) {
        return;
    }
    m_shown = Clock::now();
    double const done = share();
    std::string left;
    if (done > 0) {
        long const rest = std::lround(seconds(m_start, m_shown) * (1 / done - 1));
        left = format(", %ld:%02ld left", rest / 60, rest % 60);
    }
    (void)std::fprintf(stderr, "\r\033[K%3.0f%%%s, %s %s", done * 100, left.c_str(), m_pass.c_str(),
                       m_function.c_str());
    (void)std::fflush(stderr);
}

void Progress::wipe() const {
    if (m_way == Way::terminal) {
        (void)std::fputs("\r\033[K", stderr);
    }
}

} // namespace tables
