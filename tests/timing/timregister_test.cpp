// timregister_test.cpp - the 392 tests that the families' modules register.
#include <dlfcn.h>

#include <map>
#include <set>
#include <string>
#include <typeindex>

#include "ps/psregister.h"
#include "pscpu/pszolentry.h"
#include "timing/timfixture.h"
#include "vts/vtspowx.h"
#include "zo/zoenvironment.h"

using TimRegister = TimFixture;

TEST_F(TimRegister, EachTestFindsTheRowOfItsFunction) {
    std::set<std::string> names;
    std::map<std::type_index, int> types;
    std::string sines; // a family: real first, by accuracy
    for (psTest* const test : *pTestList) {
        std::string const name = test->m_funcName.c_str();
        SCOPED_TRACE(name);
        auto const* const timing = dynamic_cast<TimZolVM*>(test);
        ASSERT_NE(timing, nullptr);
        int const row = vtsFindFunc(timing->m_inc.c_str());
        ASSERT_GE(row, 0);
        EXPECT_EQ(reinterpret_cast<void*>(*vtsGetLibraryFunc(row)),
                  dlsym(RTLD_DEFAULT, name.c_str()));
        EXPECT_EQ(test->m_info.m_name.c_str(), name + "_timing_test");
        EXPECT_STREQ(test->m_fileName.c_str(), "timing");
        EXPECT_NE(test->m_funcOld, nullptr);
        EXPECT_TRUE(names.insert(name).second);
        ++types[typeid(*test)];
        sines += name.find("zolsSin_") == 0 ? name.substr(8) + " " : "";
    }
    EXPECT_EQ(names.size(), 392U);
    EXPECT_EQ(types, (std::map<std::type_index, int>{{typeid(TimReal32), 121},
                                                     {typeid(TimReal64), 121},
                                                     {typeid(TimRealToComplex32), 3},
                                                     {typeid(TimRealToComplex64), 3},
                                                     {typeid(TimComplexToReal32), 6},
                                                     {typeid(TimComplexToReal64), 6},
                                                     {typeid(TimComplex32), 66},
                                                     {typeid(TimComplex64), 66}}));
    EXPECT_EQ(sines, "32f_A11 32f_A21 32f_A24 64f_A26 64f_A50 64f_A53 "
                     "32fc_A11 32fc_A21 32fc_A24 64fc_A26 64fc_A50 64fc_A53 ");
    EXPECT_EQ(zolEnvironment, zoSetZolEnvironment);
    zoSetZolEnvironment();
    EXPECT_EQ(zol_Init, zolInit);
    EXPECT_EQ(zol_GetCpuFeatures, zolGetCpuFeatures);
    EXPECT_EQ(zol_GetEnabledCpuFeatures, zolGetEnabledCpuFeatures);
    EXPECT_EQ(zol_SetCpuFeatures, zolSetCpuFeatures);
    EXPECT_EQ(zol_GetMaxCacheSizeB, zolGetMaxCacheSizeB);
    EXPECT_EQ(zol_GetStatusString, zolGetStatusString);
    EXPECT_EQ(zol_SetNumThreads, zolSetNumThreads);
    EXPECT_EQ(zol_GetNumThreads, zolGetNumThreads);
    ASSERT_NE(zolVersionList, nullptr);
    EXPECT_EQ(*zolVersionList->begin(), zoGetZolVersion_zolvm);
}
