// sessionfixture.cpp - sessions over probes, and all that a run leaves, put back to its start.
#include "sessionfixture.h"

#include "support/sessionglobals.h"

std::vector<std::string> ProbeTest::ran;
psList<psParameter*> ProbeTest::parameters;

ProbeTest::ProbeTest(char const* name)
    : psTest(static_cast<psFuncOld>(nullptr), name, "probe.cpp", "probe_test") {}

bool ProbeTest::canStart() {
    m_parms = parameters;
    return true;
}

psResult ProbeTest::runTiming() {
    ran.emplace_back(m_funcName.c_str());
    setTimingResult(100.0, "");
    return psResOk;
}

SessionTest::SessionTest() {
    std::filesystem::current_path(directory.path);
    resetGlobals();
}

SessionTest::~SessionTest() {
    session.reset();
    resetGlobals();
    std::filesystem::current_path(home);
}

void SessionTest::resetGlobals() {
    resetSessionGlobals();
    answers("");
    if (pTestList != nullptr) {
        for (psTest* test : *pTestList) {
            delete test;
        }
    }
    drop(pTestList);
    drop(g_pHotList);
    drop(g_pLibInfoList);
    drop(zolVersionList);
    pSession = nullptr;
    s_parmFunc = nullptr;
    initTimingMethod = nullptr;
    zolEnvironment = nullptr;
    qKeys = 1;
    zol_Init = nullptr;
    zol_SetCpuFeatures = nullptr;
    zol_SetNumThreads = nullptr;
    zol_GetNumThreads = nullptr;
    psFillZolEntries();
    ProbeTest::ran.clear();
    ProbeTest::parameters.clear();
}

std::vector<char*> SessionTest::arguments(std::vector<std::string>& words) {
    std::vector<char*> pointers{program.data()};
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    return pointers;
}

std::string SessionTest::parse(std::vector<std::string> words) {
    std::vector<char*> pointers = arguments(words);
    if (g_ostrm.empty()) {
        g_ostrm.insert(g_ostrm.end(), &c_out);
    }
    session = std::make_unique<psSession>();
    session->initSession();
    return shown([&] {
        accepted = session->parseCommandLine(static_cast<int>(pointers.size()), pointers.data());
    });
}

std::string SessionTest::run(std::vector<std::string> words, std::unique_ptr<psSession> runner) {
    std::vector<char*> pointers = arguments(words);
    session = std::move(runner);
    return shown([&] {
        session->run(static_cast<int>(pointers.size()), pointers.data());
        session->endOutput();
    });
}

void SessionTest::answers(std::string const& text) {
    static FILE* typed = nullptr;
    if (typed != nullptr) {
        std::fclose(typed);
    }
    typed = std::tmpfile();
    std::fputs(text.c_str(), typed);
    std::rewind(typed);
    c_in.file = typed;
}

void SessionTest::linkLibrary() {
    zolEnvironment = [] {
        zol_Init = [] { return ZolStatus(0); };
        zol_SetCpuFeatures = [](Zol64u) { return ZolStatus(0); };
        zol_SetNumThreads = [](int) { return ZolStatus(0); };
        zol_GetNumThreads = [](int* threads) {
            *threads = 3;
            return ZolStatus(0);
        };
    };
    zolEnvironment();
}
