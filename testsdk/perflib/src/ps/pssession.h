// pssession.h - the spine of a run: the key table, the names of all files, and the order
// of all steps from the command line to the signal file.
#ifndef PS_PSSESSION_H
#define PS_PSSESSION_H

#include "ps/pscommandlist.h"
#include "pstest/psrunmode.h"
#include "pstest/pstestlist.h"

class psSession;

// One key: its help, its echo and its effect.
struct psOption {
    char key;
    bool hidden;    // for developers: left out of the short help
    psString quick; // line of short help, with its newline
    psString (*info)(psString arg);
    void (*apply)(psString arg, psSession* session);
    psString descr; // extended help
};

// A run: main makes one, or a test module registers one of a class of its own.
class psSession : public psRunMode {
public:
    enum AskMode { askTiming = 1, askParams = 2, askMisalign = 4, askEachTest = 8, askAll = 15 };
    static constexpr int noEnumeration = 100; // of m_enumMode
    static constexpr char shortHelp = 1;      // of s_hintArg

    psSession();
    psSession(psSession const&) = delete;
    psSession& operator=(psSession const&) = delete;
    virtual ~psSession();
    virtual void initSession();             // conditions and the table of keys
    virtual int run(int argc, char** argv); // all steps; 1 if a test failed
    // Titles of the table's columns. Where its own tests write others, a suite's session does, too.
    virtual void funcTitleToCStream();
    virtual void parmsTitleToCStream();
    virtual void resultTitleToCStream();
    virtual void putTableTitle();
    virtual void putTableTitleLine();
    virtual bool startSession() { return true; } // behind the keys; false ends the run
    // Once the library has started: what else is measured. False, told: nothing can be.
    virtual bool startComparison() { return true; }
    virtual void updateOptions();                         // what follows from all keys together
    virtual bool parseCommandLine(int argc, char** argv); // false, told, on a fatal error
    virtual void listTests(int mode);                     // a form of m_enumMode
    // Help by s_hintArg and s_hintHide: all keys in short, all with their texts, or one.
    virtual void hint(char which, bool hide);
    virtual void hint_quick(bool hide);
    virtual void hint_full(bool hide);
    virtual void hint_descr(char which);
    virtual void outputHeader();
    virtual void outputFooter();
    virtual void outputSignal();   // puts the signal file's text together, for endOutput
    virtual void readCommonData(); // the whole dialogue

    // Keys.
    void initOption(char key, psString quick, psString (*info)(psString),
                    void (*apply)(psString, psSession*), psString descr, bool hidden);
    psOption* getOption(char key); // null if there is none
    void applyOption(char key, psString arg);
    static bool isExit(int level) { return m_exitLevel >= level; }
    static psString getExitInfo();              // why a key has no effect
    void addCondition(RunCondition* condition); // takes it over
    void logicCondition(int logic);
    void addAskMode(int mode);
    void setEnumMode(int mode);
    void addLevelMode(OutputLevel level);
    void unopenedFile();
    void setIniMode(psString path, bool write);
    void setSglName(psString name);

    // Paths. A name is absolute with a leading "/" or "\\", or a drive letter.
    static bool isAbsolutePath(psString path);
    static psString getDirPath(psString path, psString dir);
    static psString getOutPath(psString path);
    static psString getInPath(psString path);
    static psString genPathName(psString dir, psString name, psString ext);
    static psString genOutPath(psString name, psString ext);
    static psString genInPath(psString name, psString ext);
    static psString genSglPath(psString name);
    static psString genDirName(psString dir);
    static void setDefName(psString name);
    static void setOutDir(psString dir);
    static void setInDir(psString dir);

    // Dialogue. Each read gives non-zero if it asked on the console.
    int readTimingMethod();
    int readTestParameters();
    int readDataOffset();
    static psString getEnterTitle(psString title);

    // Steps of the run.
    bool readCfgFile(psString& line, psString& path);
    bool enumOutput();
    bool hintOutput();
    // The last act, behind run and the last trace line: makes the signal file. Who waits for it
    // finds it whole and all others finished.
    void endOutput();
    void selectTestParameters();
    void beginCommonData();
    void endCommonData();

    psConditions* m_conditions = nullptr;
    psList<psOption*> m_options; // in the order of registration
    int m_askMode = 0;
    bool m_batchMode = false;
    OutputLevel m_levelMode = MSG_ERR; // reaches g_ostrm when the common data are read
    bool m_noSort = false;
    int m_enumMode = noEnumeration; // else -1, 0 or 1, the form of the list
    bool m_unopened = false;
    psString m_iniName;
    bool m_iniWrite = false;
    psString m_cmdEcho;
    psString m_sglName;
    psString m_sglText;

    static psString m_defName; // default file title
    static psString m_inDir;   // with a separator at the end
    static psString m_outDir;
    static psCommandList* pCmdList;
    static int m_exitLevel;

private:
    // Parts of parseCommandLine and run.
    void collectKeys(int argc, char** argv);
    void settleNames();
    void expandResponseFiles();
    void sortTests();
    int measureTests(); // with what they have in common read before; 1: some test failed
};

// What the keys set for the session's later steps.
extern unsigned long long s_cpuFeature; // -T; 0: none
extern int s_numThreads;                // -N; not above 0: none
extern bool s_version;                  // -v
extern char s_hintArg;                  // 0 no help, shortHelp, else the letter behind the key
extern bool s_hintHide;                 // leave hidden keys out of the help

// Fills the table of keys in its order.
void psInitKeyTable(psSession& session);

int getAskLevel(psString const& arg);
OutputLevel getLevel(psString const& arg);
void readAccuracy(int method);

// Calls the environment function and fills what it leaves empty.
void setZolEnvironment();
void startZolLibrary(); // with what -T and -N ask for; nothing without an environment function
void setZolLibInfo();

#endif
