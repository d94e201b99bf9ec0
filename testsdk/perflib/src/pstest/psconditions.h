// psconditions.h - which tests run: patterns on function name, test name and source file.
#ifndef PSTEST_PSCONDITIONS_H
#define PSTEST_PSCONDITIONS_H

#include "pstest/pstest.h"

// A pattern for one of a test's three names. Must has to hold beside all others of its key, of Any
// one has to, and Exact overrules them.
class RunCondition {
public:
    enum Kind { Must = 0, Any = 1, Exact = 2 };
    enum Key { Function = 0, Test = 1, Source = 2 };

    RunCondition(int kind, int key, psString pattern)
        : m_kind(kind), m_key(key), m_pattern(pattern) {}
    virtual ~RunCondition() = default;
    virtual bool tobeRun(psTest const* test) const = 0;

    int m_kind;
    int m_key;
    psString m_pattern;
};

// The twelve conditions: which name, and how the pattern has to stand in it.
#define PS_RUN_CONDITION(Class)                                                                    \
    class Class : public RunCondition {                                                            \
    public:                                                                                        \
        explicit Class(psString pattern);                                                          \
        bool tobeRun(psTest const* test) const override;                                           \
    }
PS_RUN_CONDITION(RunCondition_f);
PS_RUN_CONDITION(RunCondition_fAnd);
PS_RUN_CONDITION(RunCondition_fNot);
PS_RUN_CONDITION(RunCondition_fEqual);
PS_RUN_CONDITION(RunCondition_t);
PS_RUN_CONDITION(RunCondition_tAnd);
PS_RUN_CONDITION(RunCondition_tNot);
PS_RUN_CONDITION(RunCondition_tEqual);
PS_RUN_CONDITION(RunCondition_s);
PS_RUN_CONDITION(RunCondition_sAnd);
PS_RUN_CONDITION(RunCondition_sNot);
PS_RUN_CONDITION(RunCondition_sEqual);
#undef PS_RUN_CONDITION

// Owns its conditions.
class psConditions : public psList<RunCondition*> {
public:
    enum Logic { And = 0, Or = 1 };

    psConditions() = default;
    psConditions(psConditions const&) = delete;
    psConditions& operator=(psConditions const&) = delete;
    ~psConditions() override;

    int count(int key) const; // conditions of the key, or of one kind of them
    int count(int key, int kind) const;
    bool tobeRun_or(psTest const* test, int key, int kind) const;
    bool tobeRun_and(psTest const* test, int key) const;
    bool tobeRun(psTest const* test, int key) const; // by the conditions of one key
    bool tobeRun(psTest const* test) const;          // by all keys, as m_logic joins them

    int m_logic = And;
};

// Kind of a selection key: 1 for "+", 2 for "-", 3 for "=" in front, which is taken off; else 0.
// 4 when no pattern is left.
int getCondition(psString& arg);

#endif
