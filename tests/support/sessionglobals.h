// sessionglobals.h - for tests: what keys and common data have set, as at process start.
#ifndef TESTS_SUPPORT_SESSIONGLOBALS_H
#define TESTS_SUPPORT_SESSIONGLOBALS_H

#include <memory>

template <typename T>
void renew(T& object) {
    std::destroy_at(&object);
    std::construct_at(&object);
}

template <typename T>
void drop(T*& object) {
    delete object;
    object = nullptr;
}

// The streams, too, have no target and no source then. c_in and c_out keep their files.
void resetSessionGlobals();

#endif
