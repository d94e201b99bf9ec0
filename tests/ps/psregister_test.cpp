#include "sessionfixture.h"
#include "support/storedtext.h"

class PsRegister : public SessionTest {};

TEST_F(PsRegister, LibraryStart) {
    linkLibrary();
    auto const started = [&](std::vector<std::string> words) {
        parse(std::move(words));
        return shown([] { startZolLibrary(); });
    };
    std::string text = started({"-B"});
    text += started({"-TQ7", "-N2"});
    zol_Init = [] { return ZolStatus(-1); };
    zol_SetCpuFeatures = [](Zol64u) { return ZolStatus(-8); };
    zol_SetNumThreads = [](int) { return ZolStatus(36); };
    zol_GetNumThreads = [](int*) { return ZolStatus(-9); };
    text += started({"-TQ7", "-N2"}); // an error, so that the library starts without
    for (psVersionFunction const version :
         {+[]() -> ZolLibraryVersion const* { return nullptr; },
          +[]() -> ZolLibraryVersion const* {
              static constexpr ZolLibraryVersion own{1, 2, 3, "libown", "1.2", "today"};
              return &own;
          }}) {
        psRegZolVersion(version);
    }
    text += shown([] { setZolLibInfo(); });
    EXPECT_TRUE(matchesStored("ps/library_start", text));
    ASSERT_EQ(g_pLibInfoList->size(), 1);
    EXPECT_STREQ((*g_pLibInfoList->begin()).c_str(), "libown, 1.2, today");
}

TEST_F(PsRegister, TheSessionThatIsGoneIsNoLongerRegistered) {
    session = std::make_unique<psSession>();
    EXPECT_EQ(psRegSession(session.get()), 1);
    EXPECT_EQ(pSession, session.get());
    psSession().initSession(); // another one's end changes nothing
    EXPECT_EQ(pSession, session.get());
    session.reset();
    EXPECT_EQ(pSession, nullptr);
}
