// storedtext.h - for tests: texts that are compared as a whole with a copy in tests/golden.
#ifndef TESTS_SUPPORT_STOREDTEXT_H
#define TESTS_SUPPORT_STOREDTEXT_H

#include <gtest/gtest.h>
#include <string>

// Whether the text is, to the byte, tests/golden/<name>.txt; the answer shows the first line that
// differs. With PS_RENEW_TEXTS in the environment the text is stored instead.
testing::AssertionResult matchesStored(std::string const& name, std::string const& text);

std::string storedText(std::string const& name); // tests/golden/<name>.txt

// Without what differs from run to run and machine to machine: dates and times of day, and what
// the title of a report tells of the computer.
std::string masked(std::string const& text);

#endif
