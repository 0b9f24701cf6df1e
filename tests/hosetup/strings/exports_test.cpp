// The string family as modules loaded into the setup process see it: exactly 150 decorated
// names, each bound to the overload its name promises.
#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "process.h"

using Size = unsigned long long;

// The members that take a capacity, named as the family test decorates them (bounded_test.cpp).
std::set<std::string> capacityMemberSymbols();

// hosetup.exe loaded as a module, as a module loaded into the setup process binds to it: every
// expected name resolves into the image, there are no others, and members that need neither
// relocations nor imports (which Wine does not apply to an executable loaded so) run.
TEST(LoadedSetup, ExactlyTheFamilyBoundByDecoratedName)
{
    const HMODULE setup = LoadLibraryA((testBinFolder() + "hosetup.exe").c_str());
    ASSERT_NE(nullptr, setup);
    const auto* base = reinterpret_cast<const BYTE*>(setup);
    const auto& optional = reinterpret_cast<const IMAGE_NT_HEADERS64*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew)->OptionalHeader;
    const auto* directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + optional.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    std::set<std::string> expected = capacityMemberSymbols();
    expected.insert({"?HOI_CompareA@@YAHPEBD0@Z", "?HOI_CompareW@@YAHPEB_W0@Z", "?HOI_EqualA@@YA_NPEBD0@Z",
                     "?HOI_EqualW@@YA_NPEB_W0@Z", "?HOI_InitA@@YAXPEAD@Z", "?HOI_InitW@@YAXPEA_W@Z"});
    ASSERT_EQ(150u, expected.size());
    EXPECT_EQ(150u, directory->NumberOfNames);
    EXPECT_EQ(150u, directory->NumberOfFunctions);
    for (const std::string& name : expected) {
        const auto* code = reinterpret_cast<const BYTE*>(GetProcAddress(setup, name.c_str()));
        EXPECT_TRUE(code >= base && code < base + optional.SizeOfImage) << name;
    }

    char narrow[8];
    wchar_t wide[8] = L"ab";
    auto copy2 = reinterpret_cast<void (*)(char*, Size, const char*, const char*)>(
        GetProcAddress(setup, "?HOI_CopyA@@YAXPEAD_KPEBD2@Z"));
    auto join3 = reinterpret_cast<bool (*)(wchar_t*, Size, const wchar_t*, const wchar_t*, const wchar_t*)>(
        GetProcAddress(setup, "?HOI_JoinW@@YA_NPEA_W_KPEB_W22@Z"));
    ASSERT_TRUE(copy2 && join3);
    copy2(narrow, 4, "ab", "cd");
    EXPECT_STREQ("abc", narrow);
    EXPECT_FALSE(join3(wide, 6, L"c", L"de", L"f"));
    EXPECT_STREQ(L"abcde", wide);
}
