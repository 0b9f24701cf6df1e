// The string family as modules loaded into the setup process see it: exactly 150 decorated
// names, each bound to the overload its name promises (a wrong binding shows in the results).
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

IMAGE_OPTIONAL_HEADER64& optionalHeader(BYTE* base)
{
    return reinterpret_cast<IMAGE_NT_HEADERS64*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew)->OptionalHeader;
}

// What the loader does for the main image of a process. Wine maps an executable loaded as a
// module without applying its base relocations or binding its imports, and the members need
// both. ImageBase is the base the image is relocated for, so an image the loader already moved
// is left alone, and rebinding a bound import table writes the same addresses again.
bool prepareAsProgram(BYTE* base)
{
    IMAGE_OPTIONAL_HEADER64& optional = optionalHeader(base);
    DWORD protection = 0; // the whole image stays writable: only this test uses it
    VirtualProtect(base, optional.SizeOfImage, PAGE_EXECUTE_READWRITE, &protection);
    const ULONGLONG delta = reinterpret_cast<ULONGLONG>(base) - optional.ImageBase;
    const IMAGE_DATA_DIRECTORY& relocations = optional.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC];
    for (DWORD offset = 0; delta != 0 && offset < relocations.Size;) {
        const auto* block = reinterpret_cast<const IMAGE_BASE_RELOCATION*>(
            base + relocations.VirtualAddress + offset);
        const auto* items = reinterpret_cast<const WORD*>(block + 1);
        for (DWORD i = 0; i < (block->SizeOfBlock - sizeof *block) / sizeof(WORD); ++i)
            if ((items[i] >> 12) == IMAGE_REL_BASED_DIR64)
                *reinterpret_cast<ULONGLONG*>(base + block->VirtualAddress + (items[i] & 0xFFF)) += delta;
        offset += block->SizeOfBlock != 0 ? block->SizeOfBlock : relocations.Size;
    }
    optional.ImageBase = reinterpret_cast<ULONGLONG>(base);

    const DWORD imports = optional.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports);
         imports != 0 && import->Name != 0; ++import) {
        const HMODULE library = LoadLibraryA(reinterpret_cast<const char*>(base + import->Name));
        auto* names = reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + import->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA64*>(base + import->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            const char* name = IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)
                ? MAKEINTRESOURCEA(IMAGE_ORDINAL64(names->u1.Ordinal))
                : reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData)->Name;
            slots->u1.Function = reinterpret_cast<ULONGLONG>(GetProcAddress(library, name));
            if (slots->u1.Function == 0)
                return false;
        }
    }
    return true;
}

// hosetup.exe mapped and prepared once for the whole program; null when that failed.
BYTE* loadedSetup()
{
    static BYTE* const base = [] {
        auto* image = reinterpret_cast<BYTE*>(LoadLibraryA((testBinFolder() + "hosetup.exe").c_str()));
        return image != nullptr && prepareAsProgram(image) ? image : nullptr;
    }();
    return base;
}

// A member by its decorated name; its code must lie inside the executable.
template <typename Function>
Function member(const char* name)
{
    BYTE* base = loadedSetup();
    const auto* code = reinterpret_cast<const BYTE*>(GetProcAddress(reinterpret_cast<HMODULE>(base), name));
    EXPECT_TRUE(code >= base && code < base + optionalHeader(base).SizeOfImage) << name;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(const_cast<BYTE*>(code)));
}

} // namespace

TEST(LoadedSetup, ExactlyTheFamilyBoundByDecoratedName)
{
    BYTE* const base = loadedSetup();
    ASSERT_NE(nullptr, base) << "hosetup.exe not loaded and prepared";
    const IMAGE_DATA_DIRECTORY& entry = optionalHeader(base).DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    ASSERT_NE(0u, entry.VirtualAddress);
    const auto* directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + entry.VirtualAddress);
    const auto* nameRvas = reinterpret_cast<const DWORD*>(base + directory->AddressOfNames);
    std::set<std::string> actual;
    for (DWORD i = 0; i < directory->NumberOfNames; ++i)
        actual.insert(reinterpret_cast<const char*>(base + nameRvas[i]));

    const std::set<std::string> expected = expectedExports();
    ASSERT_EQ(150u, expected.size());
    EXPECT_EQ(150u, directory->NumberOfFunctions);
    EXPECT_EQ(expected, actual);

    char narrow[64];
    wchar_t wide[64];
    auto copy2 = member<void (*)(char*, Size, const char*, const char*)>("?HOI_CopyA@@YAXPEAD_KPEBD2@Z");
    auto printDoubles = member<Size (*)(char*, Size, const char*, double, double, const char*)>(
        "?HOI_PrintA@@YA_KPEAD_KPEBDNN2@Z");
    auto printWide = member<Size (*)(wchar_t*, Size, const wchar_t*, const wchar_t*, const wchar_t*,
        int)>("?HOI_PrintW@@YA_KPEA_W_KPEB_W22H@Z");
    ASSERT_FALSE(HasFailure());

    copy2(narrow, 4, "ab", "cd");
    EXPECT_STREQ("abc", narrow);
    EXPECT_EQ(11u, printDoubles(narrow, 64, "%.1f+%.2f %s", 0.5, 2.25, "MB"));
    EXPECT_STREQ("0.5+2.25 MB", narrow);
    EXPECT_EQ(7u, printWide(wide, 64, L"%s%s%d", L"ab", L"cd", 123));
    EXPECT_STREQ(L"abcd123", wide);
}
