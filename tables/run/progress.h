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

    void expect(int passes, int functions); // so many further passes of so many functions
    void passBegins(int number, std::string const& kind);
    void functionBegins(std::string_view name);
    void passEnds(std::string const& howItWent);

private:
    void show();
    double share() const;

    Way m_way;
    int m_passes = 0;
    int m_passesDone = 0;
    int m_functions = 0;
    int m_functionsDone = 0; // of the running pass
    int m_number = 0;
    std::string m_kind;
    std::string m_function;
    std::chrono::steady_clock::time_point m_start;
};

} // namespace tables

#endif
