// psconditions.cpp - the twelve conditions and how they combine.
#include "pstest/psconditions.h"

namespace {

psString const& nameOf(psTest const* test, int key) {
    switch (key) {
    case RunCondition::Function:
        return test->m_funcName;
    case RunCondition::Test:
        return test->m_info.m_name;
    default:
        return test->m_fileName;
    }
}

} // namespace

#define PS_RUN_CONDITION(Class, kind, key, holds)                                                  \
    Class::Class(psString pattern) : RunCondition(kind, key, pattern) {}                           \
    bool Class::tobeRun(psTest const* test) const {                                                \
        psString const& name = nameOf(test, key);                                                  \
        return holds;                                                                              \
    }
PS_RUN_CONDITION(RunCondition_f, Any, Function, name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_fAnd, Must, Function, name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_fNot, Must, Function, !name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_fEqual, Exact, Function, name == m_pattern)
PS_RUN_CONDITION(RunCondition_t, Any, Test, name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_tAnd, Must, Test, name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_tNot, Must, Test, !name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_tEqual, Exact, Test, name == m_pattern)
PS_RUN_CONDITION(RunCondition_s, Any, Source, name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_sAnd, Must, Source, name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_sNot, Must, Source, !name.contains(m_pattern))
PS_RUN_CONDITION(RunCondition_sEqual, Exact, Source, name == m_pattern)
#undef PS_RUN_CONDITION

psConditions::~psConditions() {
    for (RunCondition* condition : *this) {
        delete condition;
    }
}

int psConditions::count(int key) const {
    int found = 0;
    for (RunCondition const* condition : *this) {
        found += condition->m_key == key ? 1 : 0;
    }
    return found;
}

int psConditions::count(int key, int kind) const {
    int found = 0;
    for (RunCondition const* condition : *this) {
        found += condition->m_key == key && condition->m_kind == kind ? 1 : 0;
    }
    return found;
}

bool psConditions::tobeRun_or(psTest const* test, int key, int kind) const {
    for (RunCondition const* condition : *this) {
        if (condition->m_key == key && condition->m_kind == kind && condition->tobeRun(test)) {
            return true;
        }
    }
    return false;
}

bool psConditions::tobeRun_and(psTest const* test, int key) const {
    for (RunCondition const* condition : *this) {
        if (condition->m_key == key && condition->m_kind == RunCondition::Must &&
            !condition->tobeRun(test)) {
            return false;
        }
    }
    return true;
}

bool psConditions::tobeRun(psTest const* test, int key) const {
    if (tobeRun_or(test, key, RunCondition::Exact)) { // overrules even a Not
        return true;
    }
    if (count(key) == count(key, RunCondition::Exact)) {
        return false;
    }
    if (count(key, RunCondition::Any) > 0 && !tobeRun_or(test, key, RunCondition::Any)) {
        return false;
    }
    return tobeRun_and(test, key);
}

bool psConditions::tobeRun(psTest const* test) const {
    if (empty()) {
        return true;
    }
    for (int key : {RunCondition::Function, RunCondition::Test, RunCondition::Source}) {
        if (count(key) == 0) {
            continue;
        }
        bool const holds = tobeRun(test, key);
        if (m_logic == And && !holds) {
            return false;
        }
        if (m_logic == Or && holds) {
            return true;
        }
    }
    return m_logic == And;
}

int getCondition(psString& arg) {
    int kind = 0;
    switch (arg[0]) {
    case '+':
        kind = 1;
        break;
    case '-':
        kind = 2;
        break;
    case '=':
        kind = 3;
        break;
    default:
        break;
    }
    if (kind != 0) {
        arg = arg.substr(1);
    }
    return arg.empty() ? 4 : kind;
}
