// vtsconfig_test.cpp - the settings in force without a source, and what a source's keys do.
#include <map>

#include <gmock/gmock.h>

#include "vtsfixture.h"

namespace {

std::string source; // ";key=value" for each key, and ";"

class VtsConfig : public VtsFixture {
protected:
    static void configure(std::string const& values) {
        source = ";" + values + ";";
        vtsGetStringFromFile = [](void*, char const* key, int size, char* text) {
            size_t const found = source.find(std::string(";") + key + "=");
            size_t const begin = source.find('=', found) + 1;
            std::string const value = found == std::string::npos
                                          ? ""
                                          : source.substr(begin, source.find(';', begin) - begin);
            strcpy(text, value.substr(0, static_cast<size_t>(size)).c_str());
            return value.empty() ? -1 : 0;
        };
        vtsConfigure();
    }
};

} // namespace

TEST_F(VtsConfig, WithoutASourceTheDefaultsAreInForce) {
    defParam.details = 3.0F;
    defParam.numFuncs = 17; // the catalogue's size is no setting
    strcpy(defParam.typesInclude, "Special");
    iBrngMCG31m1();
    vtsConfigure();
    EXPECT_STREQ(defParam.valuesExclude, " _ep");
    EXPECT_STREQ(defParam.typesInclude, "");
    EXPECT_STREQ(defParam.specialMode, "XES");
    EXPECT_STREQ(defParam.setInclude, "MAIN");
    EXPECT_EQ(defParam.details, 1.0F);
    EXPECT_EQ(defParam.console, 8);
    EXPECT_EQ(defParam.numFuncs, 17);
    EXPECT_EQ(iBrngMCG31m1(), 1U);
    char text[8] = "old";
    EXPECT_EQ(vtsGetStringFromFileStub(nullptr, "Seed", 8, text), -1);
    EXPECT_STREQ(text, "");
}

TEST_F(VtsConfig, TextsAndNumbers) {
    configure("FunctionInclude=Sin Cos;ValuesExclude=Int;SpecialMode=E;"
              "CompareMeterings=first second;CompareCpu=averylongname b;Seed=5;Details=2.5;"
              "PerfGraph=10 30 100;Console=ERR_TXT;A26_FAIL=2;LA_WARNING=1.5");
    EXPECT_STREQ(defParam.functionInclude, "Sin Cos");
    EXPECT_STREQ(defParam.valuesExclude, "Int _ep");
    EXPECT_STREQ(defParam.specialMode, "XES");
    EXPECT_STREQ(defParam.compareMetering2, "second");
    EXPECT_STREQ(defParam.compareCpu1, "averylo"); // to its field's size
    EXPECT_STREQ(defParam.compareCpu2, "b");
    EXPECT_EQ(iBrngMCG31m1(), 5U);
    EXPECT_EQ(defData.n, 2502);
    EXPECT_EQ(defParam.perfFrom, 10);
    EXPECT_EQ(defParam.perfStep, 20); // cut to the span
    EXPECT_EQ(defParam.console, 32);
    EXPECT_EQ(flavData[2].failBound, 2.0F);
    EXPECT_EQ(printed, "8:for A26 flavour we have 2.000000 fail bound\n"
                       "8:for LA flavour we have 1.500000 warn bound\n");
    configure(""); // nothing of it survives
    EXPECT_EQ(flavData[2].failBound, 67000000.0F);
    EXPECT_EQ(flavData[1].warnBound, 3.9F);
}

TEST_F(VtsConfig, NumbersKeepTheirDefaultsWhenOutOfRange) {
    configure("Details=10000;Verbose=-1;TimingLengths=0 20 10000000 7;PerfGraph=50 20 3;"
              "Console=NONE;HA_FAIL=1e16");
    EXPECT_EQ(defParam.details, 1.0F);
    EXPECT_EQ(defData.n, 1001);
    EXPECT_EQ(defParam.verbose, 0.1F);
    EXPECT_THAT(defParam.timingLengths, testing::ElementsAre(1, 20, 100, 7));
    EXPECT_EQ(defParam.perfTo, 10000);
    EXPECT_EQ(defParam.console, 8);
    EXPECT_EQ(printed, "");
}

TEST_F(VtsConfig, PrecisionTakesTheLastWordThatFits) {
    std::map<std::string, int> const cases = {{"s", 1},   {"double", 2}, {"c2s", 9}, {"Z2D", 10},
                                              {"f2c", 5}, {"d2z", 6},    {"sz", 14}, {"x", 0}};
    for (auto const& [value, precision] : cases) {
        configure("Precision=" + value);
        EXPECT_EQ(defParam.precision, precision) << value;
    }
}

TEST_F(VtsConfig, Switches) {
    configure("Accuracy=la a26;CreateFolder=No;TestingLevel=Quick;CheckSNAN=yes;BWR_LOG=yd;"
              "FTZDAZ_VTS=FTZ-STRICT ON;EP_Exclude=0");
    EXPECT_THAT(defParam.flavourOn, testing::ElementsAre(0, 1, 1, 0));
    EXPECT_EQ(defParam.createFolder, 0);
    EXPECT_EQ(defParam.checkSNAN, 1);
    EXPECT_STREQ(defParam.testExclude, " Threads");
    EXPECT_EQ(defParam.details, 0.25F);
    EXPECT_EQ(defParam.bwrLog, 3);
    EXPECT_EQ(defParam.ftzDazMode, 0x10001 | 0x20000 | 4 | 0x40000);
    EXPECT_EQ(defParam.ftzDazVts, 1);
    EXPECT_STREQ(defParam.valuesExclude, " _fd"); // denormals out, enhanced performance in
    configure("FTZDAZ_VTS=daz-strict;FTZDAZ_ALL=1;FD_Exclude=n;TestingLevel=Detail");
    EXPECT_EQ(defParam.ftzDazHro, 1);
    EXPECT_EQ(defParam.ftzDazMode, 0x10001 | 2 | 0x40000 | 4);
    EXPECT_STREQ(defParam.valuesExclude, " _ep");
    EXPECT_EQ(defParam.details, 5.0F);
}
