// fuzz_response.cpp - the text of a response file: as a list of keys, through -@, and as the
// configuration file of the program.
#include "fuzz_support.h"

#include <algorithm>

#include "psstream/psistream.h"

namespace {

constexpr std::size_t maxKeys = 200; // each may open a file that all the text goes to
constexpr char responseName[] = "r.rsp";

// One word for each key, in quotes.
std::string quoted(std::vector<Key> const& keys) {
    std::string text;
    for (Key const& key : keys) {
        text += "\"-";
        for (char const letter : key.letter + key.arg) {
            text += letter == '"' ? std::string("\"\"") : std::string(1, letter);
        }
        text += "\" ";
    }
    return text;
}

void checkList(psCommandList const& list, std::vector<Key> const& keys) {
    std::vector<Key> const found = keysOf(list);
    FUZZ_CHECK(found == keys, shownKeys(keys) + "--\n" + shownKeys(found));
    for (Key const& key : keys) {
        FUZZ_CHECK(list.isKey(key.letter), shownKeys(keys));
    }
    psString last;
    FUZZ_CHECK(keys.empty() ||
                   (list.getArg(keys.back().letter, last) && last == keys.back().arg.c_str()),
               shownKeys(keys));
}

void tryAsResponseFile(std::vector<Key> const& keys) {
    FuzzSession fuzz;
    {
        psCommandList list;
        FUZZ_CHECK(list.setArg('B', "") && list.setArg('v', "x"), "");
        auto const last = ++list.begin();
        FUZZ_CHECK(list.insertFromFile(responseName, last), "");
        std::vector<Key> around = keys;
        around.insert(around.begin(), {'B', ""});
        around.push_back({'v', "x"});
        checkList(list, around);
    }
    if (keys.size() > maxKeys) {
        return;
    }
    bool const accepted = fuzz.parse({"-@", responseName});
    checkList(*psSession::pCmdList, keys);
    checkEcho(fuzz.takeShown(), "Command line options: ", keys, accepted);
}

// The first line alone with its end, as much of it as the program takes.
void tryAsConfiguration(std::string const& text) {
    writeFile("perf.cfg", text);
    std::size_t const lineEnd = std::min(text.find('\n'), text.size() - 1);
    std::string const line = text.substr(0, lineEnd + 1).substr(0, 1023).c_str();
    std::vector<Key> const keys = keysOfWords(wordsOfText(line));
    if (countKeys(keys, "@") > 0 || keys.size() > maxKeys) {
        return;
    }
    FuzzSession fuzz;
    bool const accepted = fuzz.parse({});
    checkList(*psSession::pCmdList, keys);
    std::string const shown = fuzz.takeShown();
    auto const hasLineEnd = [](Key const& key) {
        return (key.letter + key.arg).find('\n') != std::string::npos;
    };
    if (std::none_of(keys.begin(), keys.end(), hasLineEnd)) { // the echo is read line by line
        checkEcho(shown, "Command line options: read from perf.cfg file", keys, accepted);
    }
}

} // namespace

std::size_t const mostBytes = 1 << 14;

void tryInput(std::string const& input) {
    std::string const text = harmless(input);
    // So many zero bytes end the reading, wherever they begin to fill a piece of a line.
    if (text.find(std::string(511, '\0')) != std::string::npos) {
        return;
    }
    std::string readable = text;
    std::erase(readable, '\0');
    psCommandList list;
    list.setArgs(readable.c_str());
    checkList(list, keysOfWords(wordsOfText(readable)));

    // A file has a blank behind each of its lines.
    readable += readable.empty() || readable.back() == '\n' ? "" : "\n";
    std::replace(readable.begin(), readable.end(), '\n', ' ');
    std::vector<Key> const keys = keysOfWords(wordsOfText(readable));
    psCommandList again;
    again.setArgs(quoted(keys).c_str());
    checkList(again, keys);

    writeFile(responseName, text);
    tryAsResponseFile(keys);
    tryAsConfiguration(text);
}
