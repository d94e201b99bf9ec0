// progress.h - how far the passes are: one line that changes on a terminal, a line a pass
// elsewhere.
#ifndef RUN_PROGRESS_H
#define RUN_PROGRESS_H

#include <chrono>
#include <string>
#include <string_view>

namespace tables {

class Progress {
public:
    enum class Way { none, lines, terminal };
    explicit Progress(Way way) : m_way(way) {}

    void planBegins(int passes);
    void passBegins(int number, std::string const& kind);
    void functionBegins(std::string_view name);
    void passEnds(std::string const& howItWent);
    void note(std::string const& text); // a line of its own

private:
    double share() const; // of the plan that is done
    void show();
    void wipe() const; // the line that changes

    Way m_way;
    int m_passes = 0; // of the plan
    int m_done = 0;
    int m_functions = 0;     // of a pass; 0: none has ended yet
    int m_functionsDone = 0; // of the running one
    std::string m_pass;
    std::string m_function;
    std::chrono::steady_clock::time_point m_start;
    std::chrono::steady_clock::time_point m_shown;
};

} // namespace tables

#endif
