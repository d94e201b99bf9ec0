// failure.h - what ends a command of ps_tables: one clear line for the user.
#ifndef CORE_FAILURE_H
#define CORE_FAILURE_H

#include <stdexcept>
#include <string>

namespace tables {

// The text says what was wrong and where. The program ends with exit code 2.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace tables

#endif
