// The string family as modules loaded into the setup process see it: exactly 150 decorated
// names, each bound to the overload its name promises.
#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "process.h"

namespace {

using Size = unsigned long long;

// The expected names, built from the argument lists the interface promises rather than taken
// from the header, so that a wrong declaration there cannot hide itself.
std::set<std::string> expectedExports()
{
    std::set<std::string> names = {"?HOI_CompareA@@YAHPEBD0@Z", "?HOI_CompareW@@YAHPEB_W0@Z",
        "?HOI_ConvertAnsiToUTF16@@YA_NPEBDPEA_W_K@Z", "?HOI_ConvertUTF16ToAnsi@@YA_NPEB_WPEAD_K@Z",
        "?HOI_CopyA@@YAXPEAD_KD@Z", "?HOI_CopyW@@YAXPEA_W_K_W@Z", "?HOI_CopyPartA@@YAXPEAD_KPEBD1@Z",
        "?HOI_CopyPartW@@YAXPEA_W_KPEB_W1@Z", "?HOI_EqualA@@YA_NPEBD0@Z", "?HOI_EqualW@@YA_NPEB_W0@Z",
        "?HOI_InitA@@YAXPEAD@Z", "?HOI_InitW@@YAXPEA_W@Z", "?HOI_JoinA@@YA_NPEAD_KD@Z",
        "?HOI_JoinW@@YA_NPEA_W_K_W@Z", "?HOI_JoinPartA@@YA_NPEAD_KPEBD1@Z",
        "?HOI_JoinPartW@@YA_NPEA_W_KPEB_W1@Z", "?HOI_MakePathA@@YAXPEAD_KPEBD222@Z",
        "?HOI_PathA@@YAXPEAD_K@Z", "?HOI_PathW@@YAXPEA_W_K@Z", "?HOI_TerminateA@@YAXPEAD_K@Z",
        "?HOI_TerminateW@@YAXPEA_W_K@Z"};
    for (int sources = 1; sources <= 7; ++sources) {
        const std::string more(sources - 1, '2');
        for (const char* stem : {"?HOI_CopyA@@YAXPEAD_KPEBD", "?HOI_CopyW@@YAXPEA_W_KPEB_W",
                 "?HOI_JoinA@@YA_NPEAD_KPEBD", "?HOI_JoinW@@YA_NPEA_W_KPEB_W"})
            names.insert(stem + more + "@Z");
    }
    // Print: one overload per list of values ('2' a string, 'H' int, 'N' double, 'D' char).
    std::set<std::string> lists = {"N2", "NN2", "2H", "22H", "22HH", "222H", "2HH", "2HH2", "2HHH",
        "2H2", "2H22", "H2", "H22", "H222", "HH2", "HHH2", "HN", "HHN"};
    for (int n = 1; n <= 10; ++n)
        for (char value : {'2', 'H', 'N'})
            lists.insert(std::string(n, value));
    for (const std::string& list : lists) {
        names.insert("?HOI_PrintA@@YA_KPEAD_KPEBD" + list + "@Z");
        names.insert("?HOI_PrintW@@YA_KPEA_W_KPEB_W" + list + "@Z");
    }
    for (const char* list : {"D", "DD", "D2", "D22", "DD2"}) // char lists: narrow only
        names.insert(std::string("?HOI_PrintA@@YA_KPEAD_KPEBD") + list + "@Z");
    return names;
}

} // namespace

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
    const std::set<std::string> expected = expectedExports();
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
