// Calls into hosetup.exe by decorated name, the way a module loaded into the setup process
// binds to the string family: the executable is mapped with LoadLibraryA, prepared as for a
// running process, and a sample of members of every group is called through GetProcAddress.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Size = unsigned long long;

std::string hosetupPath()
{
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path, length);
    return folder.substr(0, folder.find_last_of("\\/") + 1) + "hosetup.exe";
}

// What the loader does for the main image of a process, done here for hosetup.exe mapped by
// LoadLibraryA. Wine maps an executable loaded as a module without applying its base
// relocations or binding its imports, and the exported routines need both (a pointer the C
// runtime's glue keeps in data, the system and C runtime entries). The header's ImageBase is
// the base the image is currently relocated for, so an image the loader already moved is left
// alone, and rebinding an already bound import table writes the same addresses again.
void patch(ULONGLONG* slot, ULONGLONG value)
{
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_EXECUTE_READWRITE, &protection);
    *slot = value;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
}

IMAGE_NT_HEADERS64* headers(HMODULE module)
{
    auto* base = reinterpret_cast<BYTE*>(module);
    return reinterpret_cast<IMAGE_NT_HEADERS64*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
}

void relocate(HMODULE module)
{
    auto* base = reinterpret_cast<BYTE*>(module);
    IMAGE_NT_HEADERS64* nt = headers(module);
    const ULONGLONG delta = reinterpret_cast<ULONGLONG>(base) - nt->OptionalHeader.ImageBase;
    const IMAGE_DATA_DIRECTORY& entry =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC];
    if (delta == 0 || entry.VirtualAddress == 0)
        return;
    for (DWORD offset = 0; offset < entry.Size;) {
        const auto* block =
            reinterpret_cast<const IMAGE_BASE_RELOCATION*>(base + entry.VirtualAddress + offset);
        if (block->SizeOfBlock == 0)
            break;
        const auto* items = reinterpret_cast<const WORD*>(block + 1);
        const DWORD count = (block->SizeOfBlock - sizeof *block) / sizeof(WORD);
        for (DWORD i = 0; i < count; ++i) {
            if ((items[i] >> 12) != IMAGE_REL_BASED_DIR64)
                continue;
            auto* slot = reinterpret_cast<ULONGLONG*>(
                base + block->VirtualAddress + (items[i] & 0xFFF));
            patch(slot, *slot + delta);
        }
        offset += block->SizeOfBlock;
    }
    patch(&nt->OptionalHeader.ImageBase, reinterpret_cast<ULONGLONG>(base));
}

bool bindImports(HMODULE module)
{
    auto* base = reinterpret_cast<BYTE*>(module);
    const IMAGE_DATA_DIRECTORY& entry =
        headers(module)->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (entry.VirtualAddress == 0)
        return true;
    auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + entry.VirtualAddress);
    for (; import->Name != 0; ++import) {
        const HMODULE library = LoadLibraryA(reinterpret_cast<const char*>(base + import->Name));
        if (library == nullptr)
            return false;
        auto* names =
            reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + import->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA64*>(base + import->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            const char* name = IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)
                ? MAKEINTRESOURCEA(IMAGE_ORDINAL64(names->u1.Ordinal))
                : reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData)
                      ->Name;
            const FARPROC address = GetProcAddress(library, name);
            if (address == nullptr)
                return false;
            patch(&slots->u1.Function, reinterpret_cast<ULONGLONG>(address));
        }
    }
    return true;
}

// hosetup.exe mapped into this process and prepared as in the running setup; the test binds
// by decorated name only and checks that each address lies inside the executable.
class LoadedSetup : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        module_ = LoadLibraryA(hosetupPath().c_str());
        if (module_ != nullptr)
            relocate(module_);
        bound_ = module_ != nullptr && bindImports(module_);
    }
    static void TearDownTestSuite()
    {
        if (module_ != nullptr)
            FreeLibrary(module_);
    }

    void SetUp() override
    {
        ASSERT_NE(nullptr, module_) << "LoadLibraryA: " << GetLastError();
        ASSERT_TRUE(bound_);
    }

    template <typename Function>
    Function bind(const char* name)
    {
        const FARPROC address = GetProcAddress(module_, name);
        const auto* base = reinterpret_cast<const BYTE*>(module_);
        const auto* code = reinterpret_cast<const BYTE*>(address);
        EXPECT_TRUE(code >= base && code < base + headers(module_)->OptionalHeader.SizeOfImage)
            << name;
        return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
    }

    static HMODULE module_;
    static bool bound_;
};

HMODULE LoadedSetup::module_ = nullptr;
bool LoadedSetup::bound_ = false;

} // namespace

TEST_F(LoadedSetup, NarrowMembers)
{
    char buffer[16];
    auto copy2 = bind<void (*)(char*, Size, const char*, const char*)>(
        "?HOI_CopyA@@YAXPEAD_KPEBD2@Z");
    auto join1 = bind<bool (*)(char*, Size, const char*)>("?HOI_JoinA@@YA_NPEAD_KPEBD@Z");
    auto joinChar = bind<bool (*)(char*, Size, char)>("?HOI_JoinA@@YA_NPEAD_KD@Z");
    auto equal = bind<bool (*)(const char*, const char*)>("?HOI_EqualA@@YA_NPEBD0@Z");
    auto compare = bind<int (*)(const char*, const char*)>("?HOI_CompareA@@YAHPEBD0@Z");
    auto copyPart = bind<void (*)(char*, Size, const char*, Size)>(
        "?HOI_CopyPartA@@YAXPEAD_KPEBD1@Z");
    auto makePath = bind<void (*)(char*, Size, const char*, const char*, const char*,
        const char*)>("?HOI_MakePathA@@YAXPEAD_KPEBD222@Z");
    auto path = bind<void (*)(char*, Size)>("?HOI_PathA@@YAXPEAD_K@Z");
    ASSERT_FALSE(HasFailure());

    copy2(buffer, 4, "ab", "cd");
    EXPECT_STREQ("abc", buffer);
    EXPECT_FALSE(join1(buffer, 5, "de"));
    EXPECT_STREQ("abcd", buffer);
    EXPECT_FALSE(joinChar(buffer, 5, 'x'));
    EXPECT_TRUE(joinChar(buffer, 6, 'x'));
    EXPECT_STREQ("abcdx", buffer);
    EXPECT_TRUE(equal("ABCDX", buffer));
    EXPECT_LT(compare("abc", "ABD"), 0);
    copyPart(buffer, 16, "abcdef", 2);
    EXPECT_STREQ("ab", buffer);
    makePath(buffer, 16, "C", "d", "f", "e");
    EXPECT_STREQ("C:d\\f.e", buffer);
    copy2(buffer, 16, "dir", nullptr);
    path(buffer, 16);
    EXPECT_STREQ("dir\\", buffer);
}

TEST_F(LoadedSetup, WideMembersAndConverters)
{
    wchar_t wide[16];
    char narrow[16];
    auto init = bind<void (*)(wchar_t*)>("?HOI_InitW@@YAXPEA_W@Z");
    auto copy3 = bind<void (*)(wchar_t*, Size, const wchar_t*, const wchar_t*, const wchar_t*)>(
        "?HOI_CopyW@@YAXPEA_W_KPEB_W22@Z");
    auto joinPart = bind<bool (*)(wchar_t*, Size, const wchar_t*, Size)>(
        "?HOI_JoinPartW@@YA_NPEA_W_KPEB_W1@Z");
    auto copyChar = bind<void (*)(wchar_t*, Size, wchar_t)>("?HOI_CopyW@@YAXPEA_W_K_W@Z");
    auto toWide = bind<bool (*)(const char*, wchar_t*, Size)>(
        "?HOI_ConvertAnsiToUTF16@@YA_NPEBDPEA_W_K@Z");
    auto toAnsi = bind<bool (*)(const wchar_t*, char*, Size)>(
        "?HOI_ConvertUTF16ToAnsi@@YA_NPEB_WPEAD_K@Z");
    ASSERT_FALSE(HasFailure());

    copy3(wide, 16, L"a", L"b", L"c");
    EXPECT_STREQ(L"abc", wide);
    EXPECT_FALSE(joinPart(wide, 16, L"defg", 2));
    EXPECT_STREQ(L"abcde", wide);
    init(wide);
    EXPECT_EQ(0, wide[1]);
    copyChar(wide, 16, L'q');
    EXPECT_STREQ(L"q", wide);
    EXPECT_FALSE(toWide("abc", wide, 4));
    EXPECT_TRUE(toWide("abc", wide, 5));
    EXPECT_STREQ(L"abc", wide);
    EXPECT_FALSE(toAnsi(L"abc", narrow, 4));
    EXPECT_TRUE(toAnsi(L"abc", narrow, 5));
    EXPECT_STREQ("abc", narrow);
}

TEST_F(LoadedSetup, PrintOverloads)
{
    char narrow[64];
    wchar_t wide[64];
    auto printInt =
        bind<Size (*)(char*, Size, const char*, int)>("?HOI_PrintA@@YA_KPEAD_KPEBDH@Z");
    auto printDoubles = bind<Size (*)(char*, Size, const char*, double, double, const char*)>(
        "?HOI_PrintA@@YA_KPEAD_KPEBDNN2@Z");
    auto printTen = bind<Size (*)(char*, Size, const char*, double, double, double, double, double,
        double, double, double, double, double)>("?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNNNN@Z");
    auto printChars = bind<Size (*)(char*, Size, const char*, char, char, const char*)>(
        "?HOI_PrintA@@YA_KPEAD_KPEBDDD2@Z");
    auto printMixed = bind<Size (*)(char*, Size, const char*, const char*, int, int, const char*)>(
        "?HOI_PrintA@@YA_KPEAD_KPEBD2HH2@Z");
    auto printWide = bind<Size (*)(wchar_t*, Size, const wchar_t*, const wchar_t*,
        const wchar_t*, int)>("?HOI_PrintW@@YA_KPEA_W_KPEB_W22H@Z");
    auto printWideNumber = bind<Size (*)(wchar_t*, Size, const wchar_t*, int, double)>(
        "?HOI_PrintW@@YA_KPEA_W_KPEB_WHN@Z");
    ASSERT_FALSE(HasFailure());

    EXPECT_EQ(3u, printInt(narrow, 4, "%d", 12345));
    EXPECT_STREQ("123", narrow);
    EXPECT_EQ(11u, printDoubles(narrow, 64, "%.1f+%.2f %s", 0.5, 2.25, "MB"));
    EXPECT_STREQ("0.5+2.25 MB", narrow);
    printTen(narrow, 64, "%g,%g,%g,%g,%g,%g,%g,%g,%g,%g", 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0,
        9.0, 10.5);
    EXPECT_STREQ("1,2,3,4,5,6,7,8,9,10.5", narrow);
    printChars(narrow, 64, "%c%c%s", 'C', ':', "\\tmp");
    EXPECT_STREQ("C:\\tmp", narrow);
    printMixed(narrow, 64, "%s %d-%d %s", "a", 1, 2, "z");
    EXPECT_STREQ("a 1-2 z", narrow);
    EXPECT_EQ(7u, printWide(wide, 64, L"%s%s%d", L"ab", L"cd", 123));
    EXPECT_STREQ(L"abcd123", wide);
    printWideNumber(wide, 64, L"%d %.3f", -4, 0.5);
    EXPECT_STREQ(L"-4 0.500", wide);
}
