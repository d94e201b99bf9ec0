// table.cpp - points, readings, and the texts of tables.
#include "core/table.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "core/failure.h"
#include "core/text.h"

namespace tables {

namespace {

constexpr std::array<std::string_view, 16> titles = {
    "funcBase", "funcDataType", "funcDescriptor", "Len/Size", "Parm1",       "Parm2",
    "Parm3",    "Parm4",        "Parm5",          "Parm6",    "scaleFactor", "Comment",
    "Clocks",   "per",          "Time (usec)",    "MFlops"};
constexpr std::string_view hotTitle = "Interest"; // may follow
enum Column { baseColumn, typeColumn, accuracyColumn, lengthColumn, parmColumn };
enum { commentColumn = 11, clocksColumn, unitColumn, usecColumn };

constexpr std::size_t longestLine = 1 << 16;
// Beyond these a number is nobody's reading. The ratio's least is what its four digits can show.
struct Bounds {
    double least;
    double most;
};
constexpr Bounds clocksBounds = {1e-9, 1e12};
constexpr Bounds baseBounds = {1e-16, 1e17}; // what follows from clocks and ratio
constexpr Bounds ratioBounds = {1e-4, 1e6};

// A piece of a message: what the user gave, cut where it gets long.
std::string quoted(std::string_view text) {
    constexpr std::size_t shown = 40;
    return "'" + std::string(text.substr(0, shown)) + (text.size() > shown ? "...'" : "'");
}

std::string joined(std::string_view const* first, std::string_view const* last) {
    std::string all(*first);
    while (++first != last) {
        all.append(",").append(*first);
    }
    return all;
}

template <typename Number>
bool parse(std::string_view text, Number& number) {
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

class Reader {
public:
    Reader(Passes& passes, std::string const& name)
        : m_passes(passes), m_name(name), m_firstPass(passes.list.size()), m_lastPass(m_firstPass) {
    }

    void read(std::string_view text);

private:
    enum class In { head, rows };

    [[noreturn]] void fail(std::string const& what) const {
        throw Failure(m_name + ": row " + std::to_string(m_row) + ": " + what);
    }
    void line(std::string_view text);
    void headLine(std::string_view text);
    void title(std::string_view text);
    void row(std::string_view text);
    std::uint32_t pointOfRow();
    void comment(std::string_view text, Reading& reading);
    void split(std::string_view text);
    Pass& newPass();
    std::size_t passOf(std::string_view number);
    double number(std::string_view text, std::string_view what, Bounds const& bounds) const;
    template <typename Number>
    Number whole(std::string_view text, std::string_view what, Number least) const;

    Passes& m_passes;
    std::string const& m_name;
    std::size_t m_firstPass; // of this text
    std::size_t m_lastPass;  // that a row named
    In m_in = In::head;
    bool m_long = false; // rows begin with their pass
    std::size_t m_titleColumns = 0;
    long m_row = 0;
    long m_rowsRead = 0;
    std::vector<std::string_view> m_cells;
    std::unordered_map<std::string_view, std::uint32_t> m_known; // points by their columns
    std::vector<std::vector<long>> m_rowOf;                      // by pass and point: 0 is none
};

// Whatever it separates columns with.
bool beginsTitle(std::string_view text) {
    std::size_t const end = titles[0].size();
    return text.starts_with(titles[0]) &&
           (text.size() == end || std::isalnum(static_cast<unsigned char>(text[end])) == 0);
}

void Reader::read(std::string_view text) {
    if (text.empty()) {
        throw Failure(m_name + ": the file is empty");
    }
    while (!text.empty()) {
        ++m_row;
        std::size_t const end = text.find('\n');
        std::string_view one = text.substr(0, end);
        if (one.size() > longestLine) {
            fail("the line is longer than " + std::to_string(longestLine) + " characters");
        }
        if (std::any_of(one.begin(), one.end() - (one.ends_with('\r') ? 1 : 0),
                        [](char c) { return (c >= 0 && c < ' ' && c != '\t') || c == 127; })) {
            fail("not a text");
        }
        if (end == std::string_view::npos) {
            fail("the line is cut off");
        }
        if (one.ends_with('\r')) {
            one.remove_suffix(1);
        }
        if (!one.empty()) {
            line(one);
        }
        text.remove_prefix(end + 1);
    }
    if (m_in == In::head) {
        throw Failure(m_name + ": no title line ('funcBase,...'): not a table of ps_zolvm");
    }
    if (m_rowsRead == 0) {
        throw Failure(m_name + ": the table has no rows");
    }
}

void Reader::line(std::string_view text) {
    if (beginsTitle(text.substr(text.starts_with("Pass,") ? 5 : 0))) {
        return title(text);
    }
    // Functions may be named so, too; their rows have all the columns.
    bool const beginsPass =
        (text.starts_with("Pass,") || text.starts_with("CPU,")) &&
        static_cast<std::size_t>(std::count(text.begin(), text.end(), ',')) + 1 != m_titleColumns;
    if (m_in == In::rows && !m_long && beginsPass) {
        m_in = In::head; // another run was added to the file
        m_titleColumns = 0;
        newPass();
    }
    m_in == In::head ? headLine(text) : row(text);
}

Pass& Reader::newPass() {
    m_rowOf.emplace_back();
    return m_passes.list.emplace_back();
}

void Reader::headLine(std::string_view text) {
    std::size_t const comma = text.find(',');
    if (comma == std::string_view::npos || comma == 0) {
        fail(quoted(text) + " is neither a line of the head nor the title");
    }
    std::string const key(text.substr(0, comma));
    bool const hasPass = m_passes.list.size() > m_firstPass;
    if (!hasPass || (key == key::pass && !m_passes.list.back().head.entries().empty())) {
        newPass();
    }
    Head& head = m_passes.list.back().head;
    head.add(key, std::string(text.substr(comma + 1)));
}

void Reader::split(std::string_view text) {
    m_cells.clear();
    for (std::size_t comma; (comma = text.find(',')) != std::string_view::npos;) {
        m_cells.push_back(text.substr(0, comma));
        text.remove_prefix(comma + 1);
    }
    m_cells.push_back(text);
}

void Reader::title(std::string_view text) {
    split(text);
    m_long = m_cells.front() == key::pass;
    if (m_cells.size() == 1) {
        fail("the title has other separators than commas");
    }
    std::size_t const ahead = m_long ? 1 : 0;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (i + ahead >= m_cells.size()) {
            fail("column " + quoted(titles[i]) + " is missing");
        }
        if (m_cells[i + ahead] != titles[i]) {
            fail("column " + std::to_string(i + ahead + 1) + " is " + quoted(m_cells[i + ahead]) +
                 " instead of " + quoted(titles[i]));
        }
    }
    std::size_t const columns = titles.size() + ahead;
    if (m_cells.size() > columns &&
        (m_cells.size() > columns + 1 || m_cells[columns] != hotTitle)) {
        fail("column " + quoted(m_cells[columns]) + " is none of ps_zolvm's");
    }
    if (m_in == In::rows) {
        fail("a title among the rows");
    }
    if (m_passes.list.size() == m_firstPass) {
        newPass(); // a table whose head was left out
    }
    m_titleColumns = m_cells.size();
    m_in = In::rows;
}

double Reader::number(std::string_view text, std::string_view what, Bounds const& bounds) const {
    double value;
    if (!parse(text, value) || !(value >= bounds.least && value <= bounds.most)) {
        fail(std::string(what) + " " + quoted(text) + " is no number from " +
             format("%g", bounds.least) + " to " + format("%g", bounds.most));
    }
    return value;
}

template <typename Number>
Number Reader::whole(std::string_view text, std::string_view what, Number least) const {
    Number value;
    if (!parse(text, value) || value < least) {
        fail(std::string(what) + " " + quoted(text) + " is no whole number from " +
             std::to_string(least));
    }
    return value;
}

std::size_t Reader::passOf(std::string_view number) {
    // Rows of a pass stand together, so it is the one of the row before or the next one.
    std::size_t const last = m_passes.list.size();
    for (std::size_t tried = m_firstPass; tried < last; ++tried, ++m_lastPass) {
        if (m_lastPass == last) {
            m_lastPass = m_firstPass;
        }
        if (m_passes.list[m_lastPass].head.get(key::pass) == number) {
            return m_lastPass;
        }
    }
    fail("pass " + quoted(number) + " has no head");
}

std::uint32_t Reader::pointOfRow() {
    // Points come again in each pass: the columns as they stand are found without taking them
    // apart.
    std::string_view const columns(
        m_cells[0].data(),
        static_cast<std::size_t>(m_cells[commentColumn].data() - m_cells[0].data()));
    auto const known = m_known.find(columns);
    if (known != m_known.end() && m_passes.points[known->second].unit == m_cells[unitColumn]) {
        return known->second;
    }
    if (m_cells[baseColumn].empty() || m_cells[baseColumn] == "-") {
        fail("a row without function");
    }
    if (beginsTitle(columns)) { // as which it would be read when the passes are one table
        fail("a title among the rows");
    }
    Point const point{std::string(m_cells[baseColumn]),
                      std::string(m_cells[typeColumn]),
                      std::string(m_cells[accuracyColumn]),
                      whole<std::int32_t>(m_cells[lengthColumn], "length", 1),
                      joined(&m_cells[parmColumn], &m_cells[commentColumn]),
                      std::string(m_cells[unitColumn])};
    return m_known[columns] = m_passes.points.add(point);
}

void Reader::row(std::string_view text) {
    split(text);
    if (m_cells.size() != m_titleColumns) {
        fail(std::to_string(m_cells.size()) + " columns where the title has " +
             std::to_string(m_titleColumns));
    }
    std::size_t pass = m_passes.list.size() - 1;
    if (m_long) {
        pass = passOf(m_cells.front());
        m_cells.erase(m_cells.begin());
    }
    std::string_view const words = m_cells[commentColumn];
    if (words.find("parmNames") != std::string_view::npos ||
        words.find("deprecated") != std::string_view::npos) {
        return; // names of parameters, and what another row says already
    }
    Reading reading;
    reading.point = pointOfRow();
    reading.clocks = number(m_cells[clocksColumn], "clocks", clocksBounds);
    reading.usec = number(m_cells[usecColumn], "time", clocksBounds);
    comment(words, reading);

    std::vector<long>& rowOf = m_rowOf[pass - m_firstPass];
    rowOf.resize(std::max(rowOf.size(), m_passes.points.size()));
    if (long const before = std::exchange(rowOf[reading.point], m_row); before != 0) {
        fail("measures the same as row " + std::to_string(before));
    }
    m_passes.list[pass].readings.push_back(reading);
    ++m_rowsRead;
}

void Reader::comment(std::string_view text, Reading& reading) {
    int pairWords = 0;
    bool isQuietTold = false;
    while (!text.empty()) {
        std::string_view const word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        std::size_t const sign = word.find('=');
        std::string_view const name = word.substr(0, sign);
        std::string_view value = sign == std::string_view::npos ? "" : word.substr(sign + 1);
        if (name == "nLps" || name == "nCalls") {
            reading.loops = whole<std::int32_t>(value, name, 1);
        } else if (name == "acc") {
            reading.accuracy = number(value.substr(0, value.find('%')), name, clocksBounds);
        } else if (name == "base") {
            reading.base = number(value, name, baseBounds);
        } else if (name == "ratio") {
            reading.ratio = number(value, name, ratioBounds);
        } else if (name == "lo") {
            reading.low = number(value, name, ratioBounds);
        } else if (name == "hi") {
            reading.high = number(value, name, ratioBounds);
        } else if (name == "nPrs") {
            reading.pairs = whole<std::int32_t>(value, name, 1);
        } else if (word == "quiet" || word == "shared") {
            reading.quiet = word == "quiet";
            isQuietTold = true;
        } else {
            continue; // words that say nothing to this program
        }
        pairWords += name != "nLps" && name != "nCalls" && name != "acc";
    }
    if (pairWords == 0) {
        return;
    }
    if (pairWords != 6 || reading.base == 0 || reading.ratio == 0 || reading.low == 0 ||
        reading.high == 0 || reading.pairs == 0 || !isQuietTold) {
        fail("a pair needs base, ratio, lo, hi, nPrs, and quiet or shared");
    }
    if (!(reading.low <= reading.ratio && reading.ratio <= reading.high)) {
        fail("the ratio lies outside its interval");
    }
}

std::string rowText(Point const& point, Reading const& reading, std::string const& extra) {
    std::string text = point.base + ',' + point.type + ',' + point.accuracy + ',' +
                       std::to_string(point.length) + ',' + point.parms + ',';
    std::string words = reading.loops > 0 ? "nLps=" + std::to_string(reading.loops) : "";
    auto const add = [&words](std::string const& word) {
        words += (words.empty() || word.empty() ? "" : " ") + word;
    };
    if (reading.accuracy > 0) {
        add("acc=" + format("%.3g", reading.accuracy) + "%");
    }
    if (reading.ratio > 0) {
        add("base=" + formatClocks(reading.base));
        add("ratio=" + format("%.4f", reading.ratio));
        add("lo=" + format("%.4f", reading.low));
        add("hi=" + format("%.4f", reading.high));
        add("nPrs=" + std::to_string(reading.pairs));
        add(reading.quiet ? "quiet" : "shared");
    }
    add(extra);
    return text + (words.empty() ? "-" : words) + ',' + formatClocks(reading.clocks) + ',' +
           point.unit + ',' + format("%.3g", reading.usec) + ",-\n";
}

std::string titleText() { return joined(titles.data(), titles.data() + titles.size()) + '\n'; }

std::string headText(Head const& head) {
    std::string text;
    for (auto const& [name, value] : head.entries()) {
        text.append(name).append(",").append(value).append("\n");
    }
    return text;
}

} // namespace

std::string Point::function() const {
    return base + (type == "-" ? "" : '_' + type) + (accuracy == "-" ? "" : '_' + accuracy);
}

std::uint32_t PointList::add(Point const& point) {
    std::uint32_t const next = static_cast<std::uint32_t>(m_points.size());
    auto const [place, isNew] = m_numbers.emplace(columnsOf(point), next);
    if (isNew) {
        m_points.push_back(point);
    }
    return place->second;
}

long PointList::find(Point const& point) const {
    auto const place = m_numbers.find(columnsOf(point));
    return place == m_numbers.end() ? -1 : static_cast<long>(place->second);
}

std::string PointList::columnsOf(Point const& point) {
    return point.base + ',' + point.type + ',' + point.accuracy + ',' +
           std::to_string(point.length) + ',' + point.parms + ',' + point.unit;
}

std::string const& Head::get(std::string_view name) const {
    static std::string const none;
    auto const place = std::find_if(m_entries.begin(), m_entries.end(),
                                    [name](auto const& entry) { return entry.first == name; });
    return place == m_entries.end() ? none : place->second;
}

void Head::add(std::string const& name, std::string value) {
    std::replace_if(
        value.begin(), value.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    m_entries.emplace_back(name, std::move(value));
}

void Head::set(std::string const& name, std::string value) {
    remove(name);
    add(name, std::move(value));
}

void Head::remove(std::string_view name) {
    std::erase_if(m_entries, [name](auto const& entry) { return entry.first == name; });
}

bool Pass::paired() const {
    return std::any_of(readings.begin(), readings.end(),
                       [](Reading const& reading) { return reading.ratio > 0; });
}

bool Pass::control() const { return head.get(key::kind) == "control"; }

std::string Pass::machine() const {
    // Behind the name stand the frequency, which is measured, and the cache.
    std::string const& cpu = head.get(key::cpu);
    std::size_t end = cpu.find(" GHz");
    end = end == std::string::npos ? end : cpu.rfind(", ", end);
    return head.get(key::computer) + " (" + cpu.substr(0, end) + ")";
}

void readPasses(Passes& passes, std::string_view text, std::string const& name) {
    Reader(passes, name).read(text);
}

std::string tableText(PointList const& points, Pass const& pass,
                      std::vector<std::string> const& extraWords) {
    std::string text = headText(pass.head) + titleText();
    for (std::size_t i = 0; i < pass.readings.size(); ++i) {
        Reading const& reading = pass.readings[i];
        text += rowText(points[reading.point], reading, extraWords.empty() ? "" : extraWords[i]);
    }
    return text;
}

std::string passesText(Passes const& passes) {
    std::string text;
    std::string rows;
    for (std::size_t i = 0; i < passes.list.size(); ++i) {
        std::string const number = std::to_string(i + 1); // those of several files may be alike
        text += std::string(key::pass) + ',' + number + '\n';
        for (auto const& [name, value] : passes.list[i].head.entries()) {
            if (name != key::pass) {
                text.append(name).append(",").append(value).append("\n");
            }
        }
        for (Reading const& reading : passes.list[i].readings) {
            rows.append(number).append(",");
            rows += rowText(passes.points[reading.point], reading, "");
        }
    }
    return text + key::pass + ',' + titleText() + rows;
}

std::vector<Passes> byMachine(Passes const& passes) {
    std::vector<Passes> apart;
    std::map<std::string, std::size_t> places;
    for (Pass const& pass : passes.list) {
        auto const [place, isNew] = places.emplace(pass.machine(), apart.size());
        if (isNew) {
            apart.push_back({passes.points, {}});
        }
        apart[place->second].list.push_back(pass);
    }
    return apart;
}

std::string formatClocks(double clocks) {
    if (clocks < 0.0001 || clocks > 1e7) {
        return format("%.3e", clocks);
    }
    int digits = clocks >= 100 ? 0 : 1;
    for (double limit = 10; digits > 0 && clocks < limit; limit /= 10) {
        ++digits;
    }
    return format("%.*f", digits, clocks);
}

} // namespace tables
