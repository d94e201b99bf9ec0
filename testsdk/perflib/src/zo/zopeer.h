// zopeer.h - the second process of paired readings: the same program with the baseline's folder
// ahead in its search for libraries. Both run on one processor, share the vectors at one address,
// and hand the turn over by futexes in shared memory.
#ifndef ZO_ZOPEER_H
#define ZO_ZOPEER_H

#include "zo/zolibrary.h"
#include <sys/types.h>

struct zoChannel; // the shared memory

// This process's end: starts the other, and asks it for readings. What asks first starts a new
// process where the last one has ended.
class zoPeer {
public:
    static constexpr int vectors = 4;                      // two sources and two destinations
    static constexpr size_t vectorBytes = size_t{8} << 20; // the largest

    zoPeer() = default;
    zoPeer(zoPeer const&) = delete;
    zoPeer& operator=(zoPeer const&) = delete;
    ~zoPeer(); // ends the other process

    // Starts it with the baseline's files, and waits until its library has started. False:
    // lastWords says why, also where the process has not loaded these very files. From now on this
    // process stays on the processor that it is on.
    bool open(zoLibraryFiles const& baseline, zoStart const& start);

    psString version() const; // "name, version, date" of its library
    ZolStatus status() const; // of its library's start

    // The function is in its library, or, as beginPoint will tell, the process is gone.
    bool has(char const* name);

    // A test's vector, zeroed and untouched as fresh memory is, at the same address in both
    // processes. They are asked for from 0 on; 0 gives up all that there were. Null if it is
    // larger than vectorBytes.
    void* vector(int index, size_t bytes);

    // A point of the named function, in the vectors; then its readings. False: the process is
    // gone, and lastWords says how.
    bool beginPoint(char const* name, int length);
    bool read(int warmUpCalls, int loops, long long* clocks);

    // Ahead of each reading of this process: the processor is the other's for once, as it is this
    // one's ahead of each reading of the other. What else wants the processor comes in then, and
    // leaves it cold for both alike.
    void giveWay();

    psString const& lastWords() const { return m_lastWords; }

private:
    bool share();  // makes the shared memory
    bool launch(); // starts the process
    bool spawn(int words);
    bool isTheBaseline();
    void end();            // asks the process to; one that stays goes with this one
    bool isThere();        // or is there again
    bool ask(int command); // and waits for the answer; false: the process is gone
    bool awaitAnswer();

    zoChannel* m_channel = nullptr;
    int m_memory = -1; // descriptor of the shared memory
    pid_t m_process = 0;
    char* m_vectorsEnd = nullptr; // the next one ends here
    zoLibraryFiles m_files;
    zoStart m_start = {};
    psString m_lastWords;
    bool m_gaveWay = false; // since the last reading of this process
};

// The other end: what the second process does instead of a run, until the zoPeer that started it is
// done with it. False: no zoPeer started this process.
bool zoServePeer();

// The timing tests' part in the second process: makes the vectors and the length those of a point,
// before its timing function is called.
extern void (*zoPeerPoint)(void* const vectors[zoPeer::vectors], int length);

#endif
