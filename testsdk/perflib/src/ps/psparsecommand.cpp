// psparsecommand.cpp - from the words of all sources to keys that have been echoed and
// carried out.
#include "ps/pssession.h"

#include <cstdio>

#include "ps/psregister.h"
#include "pscpu/pscpufeatures.h"
#include "psstream/psistream.h"

constinit psCommandList* psSession::pCmdList = nullptr;
constinit int psSession::m_exitLevel = 0;
constinit unsigned long long s_cpuFeature = 0;
constinit int s_numThreads = 0;
constinit bool s_version = false;
constinit char s_hintArg = 0;
constinit bool s_hintHide = true;

namespace {

// What ends the run early, the first that is present. The order is part of its meaning.
constexpr struct {
    char letter;
    int level;
    char const* info;
} earlyExits[] = {{'?', 2, "ignored because of -h option"},
                  {'h', 2, "ignored because of -h option"},
                  {'e', 1, "ignored because of -e option"},
                  {'v', 3, "ignored because of -v option"}};

int exitLevelOf(psCommandList const& keys) {
    for (auto const& exit : earlyExits) {
        if (keys.isKey(exit.letter)) {
            return exit.level;
        }
    }
    return 0;
}

// The last argument of a key, empty without the key.
psString lastArg(psCommandList const& keys, char letter) {
    psString arg;
    keys.getArg(letter, arg);
    return arg;
}

// Up to 1023 characters of the first line with its newline, none of an empty file. False if there
// is no file.
bool readFirstLine(psString const& path, psString& line) {
    i_stream in(path, io_stream::Read | io_stream::Raw, false);
    if (!in.isOpen()) {
        return false;
    }
    char text[1024] = {};
    line = std::fgets(text, sizeof text, in.file) != nullptr ? text : "";
    return true;
}

} // namespace

psString psSession::getExitInfo() {
    for (auto const& exit : earlyExits) {
        if (exit.level == m_exitLevel) {
            return exit.info;
        }
    }
    return "ignored";
}

bool psSession::parseCommandLine(int argc, char** argv) {
    m_exePath = argc > 0 ? argv[0] : "";
    m_askMode = 0;
    m_batchMode = false;
    m_noSort = false;
    m_unopened = false;
    m_nameMode = 0;
    m_nameExit = false;
    m_enumMode = noEnumeration;
    m_iniName = "";
    m_cmdEcho = "Command line options: ";
    delete pCmdList;
    pCmdList = new psCommandList;

    collectKeys(argc, argv);
    m_exitLevel = exitLevelOf(*pCmdList);
    settleNames();
    g_ostrm.setOutLevel(dialogueLevel);
    expandResponseFiles();
    for (psCommandKey const& item : *pCmdList) {
        applyOption(item.key, item.arg);
    }
    g_ostrm << m_cmdEcho;
    m_cmdEcho = "";
    if (m_unopened) {
        g_ostrm << "FATAL ERROR: can't open output file for writing\n";
        return false;
    }
    if (!m_iniName.empty() && !g_istrm.setIniFile(m_iniName, m_iniWrite) && m_iniWrite) {
        g_ostrm << "FATAL ERROR: can't open ini-file for writing\n";
        return false;
    }
    updateOptions();
    return true;
}

// The first source that has keys.
void psSession::collectKeys(int argc, char** argv) {
    psString line;
    psString path;
    if (argc > 1) {
        pCmdList->setArgs(argc - 1, argv + 1);
        m_cmdEcho += "\n";
    } else if (readCfgFile(line, path)) {
        pCmdList->setArgs(line.c_str());
        m_cmdEcho += "read from ";
        m_cmdEcho += path;
        m_cmdEcho += " file\n";
    } else if (pCmdLine != nullptr) {
        pCmdList->setArgs(pCmdLine->c_str());
        m_cmdEcho += "set by _FORCE_CMDLINE preprocessor definition\n";
    } else {
        m_cmdEcho = "";
    }
}

// Before any key is applied, so that their place in the list does not matter.
void psSession::settleNames() {
    setInDir(lastArg(*pCmdList, 'p'));
    setOutDir(lastArg(*pCmdList, 'l'));
    setDefName(lastArg(*pCmdList, 'n'));
}

// Each -@ gives way to the keys of its file. The walk goes on behind them: a -@ inside a response
// file stays.
void psSession::expandResponseFiles() {
    auto place = pCmdList->begin();
    while (place != pCmdList->end()) {
        if (place->key != '@') {
            ++place;
            continue;
        }
        psString const name = place->arg;
        place = pCmdList->erase(place);
        if (!pCmdList->insertFromFile(name, place)) {
            unopenedFile();
        }
    }
}

bool psSession::readCfgFile(psString& line, psString& path) {
    path = m_exePath.getFileTitle() + ".cfg";
    if (readFirstLine(path, line)) {
        return true;
    }
    path = m_exePath.getFileDir() + path;
    return readFirstLine(path, line);
}

void psSession::applyOption(char key, psString arg) {
    m_cmdEcho += "-";
    m_cmdEcho += key;
    m_cmdEcho += arg;
    m_cmdEcho += ": ";
    psOption const* const option = getOption(key);
    if (option == nullptr) {
        m_cmdEcho += "ignored: incorrect option key\n";
        return;
    }
    // Only a response file of a response file has come as far as this.
    if (option->apply == nullptr) {
        m_cmdEcho += "ignored: response file inside a response file\n";
        return;
    }
    m_cmdEcho += option->info(arg);
    m_cmdEcho += "\n";
    option->apply(arg, this);
}

void psSession::updateOptions() {
    psOption* const features = getOption('T');
    if (features != nullptr) {
        int const tab = features->descr.find("\t", 0);
        if (tab >= 0) {
            features->descr = features->descr.substr(0, tab) + psCpuFeatures::optimizedList() +
                              features->descr.substr(tab + 1);
        }
    }
    if (m_batchMode) {
        m_askMode = 0;
    } else if (m_askMode == 0) {
        m_askMode = askTiming | askParams;
    }
}

void psSession::initOption(char key, psString quick, psString (*echo)(psString),
                           void (*apply)(psString, psSession*), psString descr, bool hidden) {
    m_options.insert(m_options.end(), new psOption{key, hidden, quick, echo, apply, descr});
}

psOption* psSession::getOption(char key) {
    for (psOption* option : m_options) {
        if (option->key == key) {
            return option;
        }
    }
    return nullptr;
}

void psSession::addCondition(RunCondition* condition) {
    m_conditions->insert(m_conditions->end(), condition);
}

void psSession::logicCondition(int logic) { m_conditions->m_logic = logic; }

void psSession::addAskMode(int mode) { m_askMode |= mode; }

void psSession::setEnumMode(int mode) { m_enumMode = mode; }

void psSession::addLevelMode(OutputLevel level) { m_levelMode |= level; }

void psSession::unopenedFile() { m_unopened = true; }

void psSession::setIniMode(psString path, bool write) {
    m_iniName = path;
    m_iniWrite = write;
}

void psSession::setSglName(psString name) { m_sglName = genSglPath(name); }
