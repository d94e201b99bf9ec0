// psexception_test.cpp - the texts of an exception.
#include "psbase/psexception.h"

#include <gtest/gtest.h>
#include <string>

TEST(PsException, CarriesItsTextsWholeOrCut) {
    psException const failure(psString("no data"));
    EXPECT_STREQ(failure.msg(), "--ZOL. Exception: no data");
    EXPECT_STREQ(failure.info(), "no data");
    std::string const endless(1000, 'x');
    EXPECT_EQ(std::string(psException(psString(endless.c_str())).info()), endless.substr(0, 255));
    EXPECT_EQ(std::string(psException(endless.c_str()).msg()),
              "--ZOL. Signal: " + endless.substr(0, 258));
}
