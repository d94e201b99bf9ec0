#include "sessionfixture.h"

class PsRegister : public SessionTest {};

TEST_F(PsRegister, LibraryStart) {
    linkLibrary();
    auto const started = [&](std::vector<std::string> words) {
        parse(std::move(words));
        return shown([] { startZolLibrary(); });
    };
    std::string const bound = "\nZOL Core library functions have been integrated into PS\n";
    std::string const threads = "\n--calling zolGetNumThreads: numThreads = 3\n";
    std::string const features = "\n--calling zolSetCpuFeatures( zolCpuFeaturesAVX=479 )\n";
    EXPECT_EQ(started({"-B"}), threads + bound);
    EXPECT_EQ(started({"-TQ7", "-N2"}),
              features + "--status = zolStsNoErr\n" + threads +
                  "--calling zolSetNumThreads( 2 )\n--status = zolStsNoErr\n" + bound);
    zol_Init = [] { return ZolStatus(-1); };
    zol_SetCpuFeatures = [](Zol64u) { return ZolStatus(-8); };
    zol_SetNumThreads = [](int) { return ZolStatus(36); };
    EXPECT_EQ(started({"-TQ7", "-N2"}),
              features +
                  "--ZOL ERROR. status = -8: Error\n"
                  "--calling zolInit()\n"
                  "--ZOL ERROR. status = -1: Error\n" +
                  threads +
                  "--calling zolSetNumThreads( 2 )\n--ZOL WARNING. status = 36: Warning\n" + bound);
}
