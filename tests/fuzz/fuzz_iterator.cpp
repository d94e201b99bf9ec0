// fuzz_iterator.cpp - definitions of lists and loops, one a line, given one after the other to the
// same iterators.
#include "fuzz_support.h"

#include <climits>
#include <cstdlib>
#include <sstream>

#include "psbase/psexception.h"

namespace {

constexpr int maxSteps = 500;

// The values, as many as a walk may show.
std::vector<int> walk(psIterator<int>& iterator) {
    std::vector<int> values;
    for (bool more = iterator.firstValue(); more && values.size() < maxSteps;
         more = iterator.nextValue()) {
        values.push_back(iterator.value());
    }
    iterator.resetIterator();
    return values;
}

// A loop as its description tells it, and the values that belong to it.
struct Loop {
    bool isLoop = false;
    long long first = 0;
    long long last = 0;
    char operation = 0;
    long long step = 0;
};

Loop loopOf(std::string const& text) {
    Loop loop;
    char sign = 0;
    loop.isLoop = std::sscanf(text.c_str(), "%lld; %lld; %c%lld", &loop.first, &loop.last, &sign,
                              &loop.step) == 4 &&
                  (sign == '+' || sign == '-' || sign == '*');
    loop.operation = sign;
    return loop;
}

std::vector<int> valuesOf(Loop const& loop) {
    std::vector<int> values;
    bool const down = loop.first > loop.last;
    for (long long value = loop.first; values.size() < maxSteps;) {
        if ((down ? value < loop.last : value > loop.last) || value > INT_MAX || value < INT_MIN) {
            break;
        }
        values.push_back(static_cast<int>(value));
        value = loop.operation == '+'   ? value + loop.step
                : loop.operation == '-' ? value - loop.step
                                        : value * loop.step;
    }
    return values;
}

// Takes the definition whole, or not at all.
bool translated(psIterator<int>& iterator, std::string const& text) {
    std::string const before = iterator.defaultString().c_str();
    std::string const title = iterator.description().c_str();
    std::vector<int> const values = walk(iterator);
    try {
        iterator.translate(text.c_str());
        return true;
    } catch (psException const& refusal) {
        FUZZ_CHECK(refusal.info()[0] != 0, text);
        FUZZ_CHECK(iterator.defaultString() == before.c_str(), text);
        FUZZ_CHECK(iterator.description() == title.c_str(), text);
        FUZZ_CHECK(walk(iterator) == values, text);
        return false;
    }
}

// What an iterator shows of itself defines another one like it.
template <typename Iterator>
void checkTextDefines(Iterator& iterator, std::string const& text) {
    std::string const shown = iterator.defaultString().c_str();
    Iterator other;
    other.psIterator<int>::init("Length");
    FUZZ_CHECK(translated(other, shown), text + "\n" + shown);
    FUZZ_CHECK(other.defaultString() == shown.c_str(), text + "\n" + shown);
    FUZZ_CHECK(walk(other) == walk(iterator), text + "\n" + shown);
}

// A value for each word between the separators, the number that it begins with.
void checkList(psIterator<int>& list, std::string const& text) {
    std::vector<int> numbers;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ';') && numbers.size() < maxSteps;) {
        if (!word.empty()) {
            std::size_t const start = word.find_first_not_of(" \t\r");
            bool const hex = word.find_first_of("xX", start) == start + 1 && word[start] == '0';
            numbers.push_back(static_cast<int>(std::strtol(word.c_str(), nullptr, hex ? 16 : 10)));
        }
    }
    FUZZ_CHECK(walk(list) == numbers, text);
    FUZZ_CHECK(walk(list) == numbers, text);
}

} // namespace

std::size_t const mostBytes = 4096;

void tryInput(std::string const& input) {
    psStepIterator<int> steps;
    steps.psIterator<int>::init("Length");
    psIterator<int> list;
    list.init("Length");
    for (std::string line : linesOf(input)) {
        line = line.c_str(); // as every text comes, up to a zero byte
        if (translated(list, line)) {
            checkList(list, line);
            checkTextDefines(list, line);
        }
        if (!translated(steps, line)) {
            continue;
        }
        Loop const loop = loopOf(steps.defaultString().c_str());
        bool const described = steps.description().find("for (", 0) == 0;
        if (described) {
            FUZZ_CHECK(loop.isLoop, line);
            FUZZ_CHECK(walk(steps) == valuesOf(loop), line);
        } else {
            checkList(steps, line);
        }
        // A list of three values whose last is negative reads like a loop.
        if (described == loop.isLoop) {
            checkTextDefines(steps, line);
        }
    }
}
