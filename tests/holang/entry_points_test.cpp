// The two entry points the setup program binds by name: the init refuses any interface version
// but the one the program was built for, and must not write beyond the 68 bytes it is given.
#include "holang.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr size_t kLanguageInfoSize = 68;

HMODULE LanguageModule()
{
    // The tables are imported, so the module is loaded with the test program.
    return GetModuleHandleA("holang.dll");
}

// An entry point by name, cast through the generic function type as the program binds it.
template <typename Proc>
Proc Entry(HMODULE module, const char* name)
{
    return reinterpret_cast<Proc>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

} // namespace

TEST(EntryPoints, InitRefusesAnyOtherInterfaceVersion)
{
    HMODULE module = LanguageModule();
    ASSERT_NE(module, nullptr);
    auto init = Entry<HoiLanguageInitProc>(module, "HOI_LanguageInit");
    ASSERT_NE(init, nullptr);

    for (unsigned long version : {0ul, 6221ul, 6223ul, 0x1000186Eul /* 6222 in the low bits */}) {
        unsigned char info[kLanguageInfoSize];
        std::memset(info, 0xA5, sizeof info);
        EXPECT_EQ(init(GetModuleHandleA(nullptr), nullptr, version, info) & 0xFF, 0) << version;
        for (unsigned char byte : info)
            ASSERT_EQ(byte, 0xA5) << "a refused init wrote its info block, version " << version;
    }
}

TEST(EntryPoints, InitAcceptsItsVersionAndStaysInsideTheInfoBlock)
{
    HMODULE module = LanguageModule();
    ASSERT_NE(module, nullptr);
    auto init = Entry<HoiLanguageInitProc>(module, "HOI_LanguageInit");
    auto exitProc = Entry<HoiLanguageExitProc>(module, "HOI_LanguageExit");
    ASSERT_NE(init, nullptr);
    ASSERT_NE(exitProc, nullptr);

    unsigned char info[kLanguageInfoSize + 16];
    std::memset(info, 0xA5, sizeof info);
    EXPECT_NE(init(GetModuleHandleA(nullptr), nullptr, kLanguageInterfaceVersion, info) & 0xFF, 0);
    for (size_t i = kLanguageInfoSize; i < sizeof info; ++i)
        EXPECT_EQ(info[i], 0xA5) << "byte " << i << " behind the info block was written";
    EXPECT_NE(exitProc() & 0xFF, 0);

    // The program always passes its info block, but a caller without one is no fault either.
    EXPECT_NE(init(GetModuleHandleA(nullptr), nullptr, 6222, nullptr) & 0xFF, 0);
    EXPECT_NE(exitProc() & 0xFF, 0);
}
