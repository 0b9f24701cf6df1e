// The export table of hosetup.exe: exactly the 150 members of the string family under their
// decorated names, read from the file itself.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace {

// The 150 Microsoft-decorated names the executable must export, written out here rather than
// taken from the header so that a wrong declaration there cannot hide itself.
const char* const kExpectedExports[] = {
    "?HOI_CompareA@@YAHPEBD0@Z",
    "?HOI_CompareW@@YAHPEB_W0@Z",
    "?HOI_ConvertAnsiToUTF16@@YA_NPEBDPEA_W_K@Z",
    "?HOI_ConvertUTF16ToAnsi@@YA_NPEB_WPEAD_K@Z",
    "?HOI_CopyA@@YAXPEAD_KD@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD222222@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD22222@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD2222@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD222@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD22@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD2@Z",
    "?HOI_CopyA@@YAXPEAD_KPEBD@Z",
    "?HOI_CopyPartA@@YAXPEAD_KPEBD1@Z",
    "?HOI_CopyPartW@@YAXPEA_W_KPEB_W1@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W222222@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W22222@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W2222@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W222@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W22@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W2@Z",
    "?HOI_CopyW@@YAXPEA_W_KPEB_W@Z",
    "?HOI_CopyW@@YAXPEA_W_K_W@Z",
    "?HOI_EqualA@@YA_NPEBD0@Z",
    "?HOI_EqualW@@YA_NPEB_W0@Z",
    "?HOI_InitA@@YAXPEAD@Z",
    "?HOI_InitW@@YAXPEA_W@Z",
    "?HOI_JoinA@@YA_NPEAD_KD@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD222222@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD22222@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD2222@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD222@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD22@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD2@Z",
    "?HOI_JoinA@@YA_NPEAD_KPEBD@Z",
    "?HOI_JoinPartA@@YA_NPEAD_KPEBD1@Z",
    "?HOI_JoinPartW@@YA_NPEA_W_KPEB_W1@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W222222@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W22222@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W2222@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W222@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W22@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W2@Z",
    "?HOI_JoinW@@YA_NPEA_W_KPEB_W@Z",
    "?HOI_JoinW@@YA_NPEA_W_K_W@Z",
    "?HOI_MakePathA@@YAXPEAD_KPEBD222@Z",
    "?HOI_PathA@@YAXPEAD_K@Z",
    "?HOI_PathW@@YAXPEA_W_K@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2222222222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD222222222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD22222222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2222222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD222222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD22222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD222H@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD22@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD22H@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD22HH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2H22@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2H2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2H@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2HH2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2HH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBD2HHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDD22@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDD2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDD@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDDD2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDDD@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDH222@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDH22@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDH2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHH2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHH2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHHHHHHHHH@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHHN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDHN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDN2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNN2@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNNN@Z",
    "?HOI_PrintA@@YA_KPEAD_KPEBDNNNNNNNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2222222222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W222222222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W22222222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2222222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W222222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W22222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W222H@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W22@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W22H@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W22HH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2H22@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2H2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2H@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2HH2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2HH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_W2HHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WH222@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WH22@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WH2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHH2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHH2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHHHHHHHHH@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHHN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WHN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WN2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNN2@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNNNN@Z",
    "?HOI_PrintW@@YA_KPEA_W_KPEB_WNNNNNNNNNN@Z",
    "?HOI_TerminateA@@YAXPEAD_K@Z",
    "?HOI_TerminateW@@YAXPEA_W_K@Z",
};

std::string hosetupPath()
{
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path, length);
    return folder.substr(0, folder.find_last_of("\\/") + 1) + "hosetup.exe";
}

// Reads the names of the export directory straight from the file, mapping RVAs through the
// section table, so that the loader plays no part in what is checked.
std::vector<std::string> readExportNames(const std::string& path, DWORD* functionCount)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> image((std::istreambuf_iterator<char>(file)),
        std::istreambuf_iterator<char>());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image.data());
    if (image.size() < sizeof *dos || dos->e_magic != IMAGE_DOS_SIGNATURE)
        return {};
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS64*>(image.data() + dos->e_lfanew);
    if (nt->Signature != IMAGE_NT_SIGNATURE ||
        nt->OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC)
        return {};
    const IMAGE_SECTION_HEADER* sections = IMAGE_FIRST_SECTION(nt);
    auto at = [&](DWORD rva) -> const char* {
        for (WORD i = 0; i < nt->FileHeader.NumberOfSections; ++i) {
            const IMAGE_SECTION_HEADER& s = sections[i];
            if (rva >= s.VirtualAddress && rva < s.VirtualAddress + s.SizeOfRawData)
                return image.data() + s.PointerToRawData + (rva - s.VirtualAddress);
        }
        return nullptr;
    };
    const IMAGE_DATA_DIRECTORY& entry =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* directory =
        reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(at(entry.VirtualAddress));
    if (entry.VirtualAddress == 0 || directory == nullptr)
        return {};
    *functionCount = directory->NumberOfFunctions;
    const auto* nameRvas = reinterpret_cast<const DWORD*>(at(directory->AddressOfNames));
    std::vector<std::string> names;
    for (DWORD i = 0; i < directory->NumberOfNames; ++i)
        names.emplace_back(at(nameRvas[i]));
    return names;
}

} // namespace

TEST(Exports, ExactlyTheFamilyUnderItsDecoratedNames)
{
    const std::set<std::string> expected(
        std::begin(kExpectedExports), std::end(kExpectedExports));
    ASSERT_EQ(150u, expected.size());

    DWORD functionCount = 0;
    const std::vector<std::string> names = readExportNames(hosetupPath(), &functionCount);
    const std::set<std::string> actual(names.begin(), names.end());
    EXPECT_EQ(150u, names.size());
    EXPECT_EQ(150u, functionCount);

    std::vector<std::string> missing, extra;
    std::set_difference(expected.begin(), expected.end(), actual.begin(), actual.end(),
        std::back_inserter(missing));
    std::set_difference(actual.begin(), actual.end(), expected.begin(), expected.end(),
        std::back_inserter(extra));
    EXPECT_TRUE(missing.empty()) << "missing: " << ::testing::PrintToString(missing);
    EXPECT_TRUE(extra.empty()) << "unexpected: " << ::testing::PrintToString(extra);
}
