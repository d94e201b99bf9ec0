// table.h - tables of ps_zolvm in memory: points that were measured, readings of one pass, and the
// strict reader and the writers of their texts. Knows no file: names are for messages only.
#ifndef CORE_TABLE_H
#define CORE_TABLE_H

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tables {

// What a row measures: a function at a length.
struct Point {
    std::string base;     // Sin
    std::string type;     // 32f
    std::string accuracy; // A24, or "-" where the function has none
    long length;
    std::string
        parms;        // Parm1 to scaleFactor as they stand in the row, "-,-,-,-,-,-,-" if all empty
    std::string unit; // what clocks are counted per: "e", an element

    // Sin_32f_A24; without accuracy Rint_32f. What comes from other tools has no type, either.
    std::string function() const;
    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the zero of a rewritten "<" for a pointer
    std::strong_ordering operator<=>(Point const&) const = default;
};

// All points of some passes, each once, numbered in the order of their first appearance.
class PointList {
public:
    // The point's number; a new point gets the next one.
    std::uint32_t add(Point const& point);
    // The point's number, or -1.
    long find(Point const& point) const;

    Point const& operator[](std::uint32_t number) const { return m_points[number]; }
    std::size_t size() const { return m_points.size(); }

private:
    static std::string columnsOf(Point const& point);

    std::vector<Point> m_points;
    std::unordered_map<std::string, std::uint32_t> m_numbers; // by the columns of the row
};

// One row. Pairs have a ratio: clocks of the library under test divided by the baseline's.
struct Reading {
    std::uint32_t point = 0;
    std::int32_t loops = 0; // nLps= or nCalls=
    double clocks = 0;      // per unit, of the library under test
    double usec = 0;        // per call
    double base = 0;        // clocks of the baseline
    double ratio = 0;       // 0: no pairs
    double low = 0;         // the ratio's interval
    double high = 0;
    std::int32_t pairs = 0; // that decided
    bool quiet = false;     // only pairs without a neighbour on the core decided
    double accuracy = 0;    // acc=: in percent, where the wanted one was not reached
};

// What the lines ahead of the rows say, in their order.
class Head {
public:
    // The first value of a key, "" where it is missing; the harness gives some keys several.
    std::string const& get(std::string_view key) const;
    void add(std::string const& key, std::string value); // control characters become blanks
    void set(std::string const& key, std::string value); // in place of all of this key
    void remove(std::string_view key);
    std::vector<std::pair<std::string, std::string>> const& entries() const { return m_entries; }
    bool operator==(Head const&) const = default;

private:
    std::vector<std::pair<std::string, std::string>> m_entries;
};

// Keys of heads. The harness writes the first five, passes have the others.
namespace key {
inline constexpr char cpu[] = "CPU";
inline constexpr char os[] = "OS";
inline constexpr char computer[] = "Computer";
inline constexpr char library[] = "Library";
inline constexpr char start[] = "Start";
inline constexpr char baseline[] = "Baseline";       // path of the other side
inline constexpr char program[] = "Program";         // ps_zolvm and its version
inline constexpr char keys[] = "Keys";               // that selected and set
inline constexpr char environment[] = "Environment"; // what of it matters
inline constexpr char kind[] = "Kind";               // plain, pair, control, more or confirm
inline constexpr char first[] = "First";             // library or baseline: loaded and read first
inline constexpr char ended[] = "Ended";             // why a pass has not all readings
inline constexpr char passes[] = "Passes";           // how many a merged table has
inline constexpr char pass[] = "Pass";               // number; begins a pass in a file of several
} // namespace key

// The readings of one process, in the order of its table.
struct Pass {
    Head head;
    std::vector<Reading> readings;

    bool paired() const;  // its readings have ratios
    bool control() const; // of the baseline against itself: says nothing of the library
    // Processor and computer: what readings must share to be compared.
    std::string machine() const;
};

struct Passes {
    PointList points;
    std::vector<Pass> list;
};

// Adds the passes of one text: a table of ps_zolvm (also one that several runs were added to) or a
// file of passes. Throws Failure with the name and the row of what cannot be right; the passes are
// then to be thrown away.
void readPasses(Passes& passes, std::string_view text, std::string const& name);

// The table of one pass, in the columns of ps_zolvm; the comment of a row is followed by the
// extra words that belong to its reading, if any are given.
std::string tableText(PointList const& points, Pass const& pass,
                      std::vector<std::string> const& extraWords = {});

// All readings in long form: the heads of the passes, then rows with the pass ahead.
std::string passesText(Passes const& passes);

// The same passes, apart by machine, in the order of their first appearance.
std::vector<Passes> byMachine(Passes const& passes);

// Clocks as ps_zolvm writes them into its tables: about three significant digits, none behind the
// point from 100 on. Ratios and shares are far from these ranges, and have formats of their own.
std::string formatClocks(double clocks);

} // namespace tables

#endif
