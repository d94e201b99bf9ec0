// fuzz_words.cpp - the words of a command line, one a line; behind a line "%%" the answers that are
// typed at the console. What the keys ask for is carried out up to the measuring.
#include "fuzz_support.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "psmemory/psmemory.h"
#include "psstream/psistream.h"
#include "pstest/psreport.h"

namespace {

constexpr std::size_t maxWords = 200; // each may open a file that all the text goes to

// What lies in the working directory.
std::map<std::string, std::string> const presentFiles = {
    {"r.rsp", "-LTRACE -d\"Accuracy=10\" -f+zol\n"},
    {"d/r.rsp", "-@r.rsp -x"},
    {"perf.cfg", "-L ERR -o\n-v"},
    {"perf.ini", "[Perf System]\nMethod=Manual\nNumLoops=7\nLength=1; 3; 9\n[zolsSin_64fc_A53]\n"},
};

// The keys when each -@ of the words has given way to those of its file.
std::vector<Key> expanded(std::vector<Key> const& keys) {
    std::vector<Key> all;
    for (Key const& key : keys) {
        if (key.letter != '@') {
            all.push_back(key);
            continue;
        }
        std::string const path = psSession::getInPath(key.arg.c_str()).c_str();
        auto const file = presentFiles.find(std::filesystem::path(path).lexically_normal());
        if (file != presentFiles.end() && !key.arg.empty()) {
            std::vector<Key> const inside = keysOfWords(wordsOfText(file->second));
            all.insert(all.end(), inside.begin(), inside.end());
        }
    }
    return all;
}

// What the parsed keys have made of the session.
void checkSession(psSession const& session, std::vector<Key> const& keys, std::string const& text) {
    FUZZ_CHECK(session.m_batchMode == (countKeys(keys, "B") > 0), text);
    FUZZ_CHECK((session.m_askMode == 0) == session.m_batchMode, text);
    FUZZ_CHECK(session.m_askMode >= 0 && session.m_askMode <= psSession::askAll, text);
    FUZZ_CHECK(session.m_levelMode > 0 && session.m_levelMode < 2 * MSG_DATA, text);
    FUZZ_CHECK((session.m_enumMode <= 1) == (countKeys(keys, "e") > 0), text);
    FUZZ_CHECK(session.m_iniName.empty() != (countKeys(keys, "iI") > 0), text);
    FUZZ_CHECK(g_istrm.hasIniFile() == (countKeys(keys, "iI") > 0), text);
    FUZZ_CHECK(g_ostrm.size() == 1 + countKeys(keys, "oO"), text);
    long const conditions = std::count_if(keys.begin(), keys.end(), [](Key const& key) {
        bool const sign =
            !key.arg.empty() && std::string_view("+-=").find(key.arg[0]) != std::string_view::npos;
        return std::string_view("ftm").find(key.letter) != std::string_view::npos &&
               key.arg.size() > (sign ? 1U : 0U);
    });
    FUZZ_CHECK(session.m_conditions->size() == conditions, text);
}

// Some texts do not come back from a line of the file as they went in: an empty one, those with
// blanks around them, a comment, a section's header.
bool survivesFile() {
    psValues const* const values = g_istrm.getIniFile()->getSectionValues("Perf System");
    FUZZ_CHECK(values != nullptr, "");
    for (psValueItem const* item : *values) {
        std::string const value = item->value.c_str();
        psString trimmed = item->value;
        trimmed.trim();
        if (value.empty() || !(trimmed == item->value) || value.find("//") != std::string::npos ||
            value.find('[') != std::string::npos) {
            return false;
        }
    }
    return true;
}

// The ini file that -I has written gives the same settings again.
void checkIniGivesSame(std::string const& path, std::string const& settings,
                       std::string const& text) {
    FuzzSession again;
    FUZZ_CHECK(again.parse({"-B", "-i" + path}), text + "\n" + again.takeShown());
    again.session.readCommonData();
    FUZZ_CHECK(again.settings() == settings,
               text + "\n" + settings + "\n" + again.settings() + "\n" + readFile(path));
}

} // namespace

std::size_t const mostBytes = 1 << 16;

void tryInput(std::string const& input) {
    std::vector<std::string> words;
    std::string typed;
    bool typing = false;
    for (std::string const& whole : linesOf(input)) {
        std::string const line = whole.c_str(); // up to a zero byte, as a process gets it
        if (typing) {
            typed += line + "\n";
        } else if (line == "%%") {
            typing = true;
        } else {
            words.push_back(harmlessWord(line));
        }
    }
    if (words.empty() || words.size() > maxWords) {
        return;
    }
    std::string text;
    for (std::string const& word : words) {
        text += word + "\n";
    }

    for (auto const& [path, content] : presentFiles) {
        writeFile(path, content);
    }
    std::string settings;
    std::string iniPath;
    bool iniWritten = false;
    {
        FuzzSession fuzz(typed);
        bool const accepted = fuzz.parse(words);
        std::vector<Key> const keys = expanded(keysOfWords(words));
        FUZZ_CHECK(keysOf(*psSession::pCmdList) == keys,
                   text + shownKeys(keys) + "--\n" + shownKeys(keysOf(*psSession::pCmdList)));
        checkEcho(fuzz.takeShown(), "Command line options: ", keys, accepted);
        if (countKeys(keys, "oOrRquUgI") == 0) { // nothing asks for writing
            for (auto const& [path, content] : presentFiles) {
                FUZZ_CHECK(readFile(path) == content, text + path);
            }
        }
        if (!accepted) {
            return;
        }
        checkSession(fuzz.session, keys, text);
        bool const helped = fuzz.session.hintOutput();
        FUZZ_CHECK(helped == (countKeys(keys, "hv?") > 0), text);
        std::string const help = fuzz.takeShown();
        FUZZ_CHECK(helped == !help.empty() && (help.empty() || help.back() == '\n'), help);
        g_ostrm << psReportList(*pTestList, *fuzz.session.m_conditions, fuzz.session.m_enumMode);
        std::string const list = fuzz.takeShown();
        FUZZ_CHECK(!list.empty() && list.back() == '\n', text + list);

        fuzz.session.beginCommonData();
        fuzz.session.readCommonData();
        fuzz.session.endCommonData();
        fuzz.session.putTableTitle();
        FUZZ_CHECK(g_tool.m_method >= psTool::Auto && g_tool.m_method <= psTool::Best, text);
        FUZZ_CHECK(g_tool.m_accuracy > 0.0, text);
        FUZZ_CHECK(psGetVectorAlign() > -PS_ALIGN_DEF && psGetVectorAlign() < PS_ALIGN_DEF, text);
        if (g_istrm.savesToIni()) {
            g_istrm.getIniFile()->updateFile();
            // No other file may have taken its name.
            iniWritten = countKeys(keys, "oOrRquUg") == 0 && survivesFile();
            iniPath = psSession::getInPath(fuzz.session.m_iniName).c_str();
        }
        settings = fuzz.settings();
        fuzz.session.outputSignal();
        fuzz.session.endOutput();
    }
    if (iniWritten) {
        checkIniGivesSame(iniPath, settings, text + "%%\n" + typed);
    }
}
