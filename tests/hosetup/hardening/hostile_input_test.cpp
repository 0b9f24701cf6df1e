// What a stranger can change for the elevated program: names in the data file, lines of the setup
// log and links inside a folder tree.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

#include "host_links.h"
#include "files/files.h"
#include "install/install.h"
#include "links/links.h"
#include "setuplog/setuplog.h"
#include "remove/remove.h"
#include "setup_fixture.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

namespace {

class Hostile : public SetupFixture {
protected:
    void SetUp() override
    {
        SetupFixture::SetUp();
        for (char* folder : {g_setup.installFolder, g_setup.commonDataFolder, g_setup.userDataFolder,
                             g_setup.documentsFolder, g_setup.settingFolder, g_setup.drawingFolder,
                             g_setup.libraryFolder})
            HOI_CopyA(folder, kPathCapacity, "*");
        HOI_CopyA(g_setup.installFolder, kPathCapacity, root_.c_str(), "Program\\");
        HOI_CopyA(g_setup.commonDataFolder, kPathCapacity, root_.c_str(), "Data\\");
    }
    // Reads a data file of the header (magic and date set here), files copies of file and links of link.
    bool readDataFile(SetupDataHeader header, std::int32_t files, const FileRecord& file, std::int32_t links,
                      const ShortcutRecord& link)
    {
        std::memcpy(header.magic, kSetupDataMagic, kSetupDataMagicLength);
        std::memcpy(header.compileDate, "2022-11-29", 10);
        header.fileCount = files;
        header.shortcutCount = links;
        std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
        for (std::int32_t i = 0; i < files + links; ++i)
            bytes.append(i < files ? reinterpret_cast<const char*>(&file) : reinterpret_cast<const char*>(&link),
                         i < files ? sizeof file : sizeof link);
        writeFile(root_ + "_000000_", bytes);
        return readSetupDataFile((root_ + "_000000_").c_str());
    }
};

// One text of a data file that would lead the file or link steps out of the product's folders.
struct HostileText { const char* what; char* (*field)(SetupDataHeader&, FileRecord&, ShortcutRecord&); const char* text; };

char* subFolder(SetupDataHeader&, FileRecord& f, ShortcutRecord&) { return f.subFolder; }
char* fileName(SetupDataHeader&, FileRecord& f, ShortcutRecord&) { return f.fileName; }
char* linkName(SetupDataHeader&, FileRecord&, ShortcutRecord& s) { return s.name; }
char* productName(SetupDataHeader& h, FileRecord&, ShortcutRecord&) { return h.productName; }

TEST_F(Hostile, DataFileWithAnyBadNameIsRefusedWhole)
{
    const HostileText cases[] = {
        {"valid", nullptr, nullptr},
        {"climbing sub-folder", subFolder, "..\\..\\..\\x"},
        {"drive sub-folder", subFolder, "C:\\Windows"},
        {"UNC sub-folder", subFolder, "\\\\server\\share"},
        {"slash sub-folder", subFolder, "a/b"},
        {"stream sub-folder", subFolder, "a:b"},
        {"parent file name", fileName, ".."},
        {"file name with a folder", fileName, "x\\y.dll"},
        {"device file name", fileName, "nul.txt"},
        {"superscript device", fileName, "COM\xb9"},
        {"file name ending in a dot", fileName, "a."},
        {"empty product name", productName, ""},
        {"parent product name", productName, ".."},
        {"nested product name", productName, "Vistrel\\..\\.."},
        {"link name climbing", linkName, "..\\..\\Startup\\x"},
        {"link name without terminator", linkName, "0123456789012345678901234567890123456789012345678901234567890123"},
    };
    for (const HostileText& c : cases) {
        SCOPED_TRACE(c.what);
        SetupDataHeader header = {};
        std::strcpy(header.productName, "Vistrel 2022");
        FileRecord file = {};
        std::strcpy(file.fileName, "hovistrel.exe");
        std::strcpy(file.subFolder, "Bin");
        ShortcutRecord link = {};
        std::strcpy(link.name, "Vistrel");
        if (c.field) {
            char* field = c.field(header, file, link);
            std::memset(field, 0, 64);
            std::memcpy(field, c.text, std::strlen(c.text));
        }
        EXPECT_EQ(readDataFile(header, 1, file, 1, link), c.field == nullptr);
        EXPECT_EQ(g_setup.fileCount, c.field ? 0 : 1);
        EXPECT_EQ(g_setup.shortcutCount, c.field ? 0 : 1);
    }
}

// A log a standard user could have prepared: only product files inside the product's folders go.
TEST_F(Hostile, TamperedLogDeletesNothingOutsideTheProductsFolders)
{
    // sibling: a folder whose name starts with the product folder's, "Program" here.
    const std::string outside = root_ + "Outside\\", sibling = root_ + "Programevil\\";
    ASSERT_EQ(CreateFolderChain((outside + "Empty\\").c_str(), nullptr), ChainStep::Made);
    ASSERT_EQ(CreateFolderChain(sibling.c_str(), nullptr), ChainStep::Made);
    writeFile(sibling + "keep.txt", "someone else's");
    ASSERT_EQ(CreateFolderChain(g_setup.commonDataFolder, nullptr), ChainStep::Made);
    ASSERT_EQ(CreateFolderChain((std::string(g_setup.installFolder) + "Bin\\").c_str(), nullptr), ChainStep::Made);
    writeFile(outside + "keep.txt", "someone else's");
    writeFile(std::string(g_setup.installFolder) + "Bin\\product.dll", "ours");
    const std::string lines[] = {
        outside + "keep.txt",                                   // absolute, elsewhere
        std::string(g_setup.installFolder) + "..\\Outside\\keep.txt",
        std::string(g_setup.installFolder) + "Bin\\..\\..\\Outside\\keep.txt",
        "\\\\?\\" + outside + "keep.txt",
        "\\\\127.0.0.1\\c$\\keep.txt",
        sibling + "keep.txt",
        "#" + sibling,
        "Outside\\keep.txt",                                    // relative
        std::string(g_setup.installFolder) + "Bin\\product.dll:stream",
        "#" + outside + "Empty\\",
        std::string(g_setup.installFolder) + "Bin\\product.dll",
        "#" + std::string(g_setup.installFolder) + "Bin\\",
    };
    std::string log;
    for (const std::string& line : lines)
        log += line + "\r\n";
    writeFile(std::string(g_setup.commonDataFolder) + "hosetup.log", log);
    ASSERT_TRUE(ShowProgressStage(true, kStageRemoveReadLog, 0, 0));
    EXPECT_TRUE(RemoveLoggedFiles());
    EXPECT_TRUE(fileExists(outside + "keep.txt"));
    EXPECT_TRUE(fileExists(outside + "Empty\\"));
    EXPECT_TRUE(fileExists(sibling + "keep.txt"));
    EXPECT_FALSE(fileExists(std::string(g_setup.installFolder) + "Bin\\"));
}

// A folder or a file of the product turned into a link by a standard user, before an update or a
// removal: nothing outside the product's folders is written, copied or deleted through it.
TEST_F(Hostile, NothingIsWrittenCopiedOrDeletedThroughALink)
{
    const std::string program = g_setup.installFolder;
    const std::string data = g_setup.commonDataFolder;
    const std::string outside = root_ + "Outside\\";
    const std::string secret = outside + "secret.txt";
    const std::function<void()> logAndRemove = [&] {
        ASSERT_TRUE(ShowProgressStage(true, kStageRemoveReadLog, 0, 0));
        RemoveLoggedFiles();
        ShowProgressStage(false, 0, 0, 0);
    };
    const struct {
        const char* what;
        std::string link, log;   // the link (to the outside folder, or to the secret file)
        bool toFile;
        std::function<void()> act;
    } cases[] = {
        {"logged folder is a link", program + "Samples", "#" + program + "Samples\\\r\n" + program + "Samples\\secret.txt",
         false, logAndRemove},
        {"folder made below a link", program + "Samples", "",
         false, [&] { EXPECT_EQ(CreateFolderChain((program + "Samples\\New\\").c_str(), nullptr), ChainStep::Refused); }},
        {"log appended through a link", data + "hosetup.log", "", true, [&] {
             g_setup.updateInstall = 1;
             OpenLog();
             LogText("appended");
         }},
        {"backup written through a link", data + "Backups", "", false,
         [&] { EXPECT_FALSE(copyFilePumping((program + "a.txt").c_str(), (data + "Backups\\a.txt").c_str(), false, false)); }},
        {"settings read through a link", program + "Settings", "", false,
         [&] { EXPECT_FALSE(copyFilePumping((program + "Settings\\secret.txt").c_str(), (data + "copy.txt").c_str(), false, false)); }},
        {"installed file name is a link", program + "hovistrel.exe", "", true,
         [&] { EXPECT_FALSE(copyFilePumping((program + "a.txt").c_str(), (program + "hovistrel.exe").c_str(), false, true)); }},
        {"tree is a link", program + "Group", "", false, [&] { DeleteFolderTree((program + "Group\\").c_str()); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        for (const std::string& folder : {c.link.substr(0, c.link.find_last_of('\\') + 1), data, outside})
            ASSERT_EQ(CreateFolderChain(folder.c_str(), nullptr), ChainStep::Made);
        writeFile(secret, "secret");
        writeFile(program + "a.txt", "product");
        ASSERT_TRUE(makeHostLink(c.link, c.toFile ? secret : outside));
        if (!c.log.empty())
            writeFile(data + "hosetup.log", c.log + "\r\n");
        c.act();
        CloseLog(false);
        g_setup.updateInstall = 0;
        EXPECT_TRUE(removeHostLink(c.link));
        EXPECT_EQ(readFile(secret), "secret");
        WIN32_FIND_DATAA found;
        HANDLE search = FindFirstFileA((outside + "*").c_str(), &found);
        int entries = 0;
        for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileA(search, &found))
            entries += found.cFileName[0] != '.';
        FindClose(search);
        EXPECT_EQ(entries, 1) << "something was made in the outside folder";
        for (const std::string& folder : {program, data, outside})
            removeTree(folder);
    }
}

// Paths built from fixed names are refused when they would be cut, never used cut.
TEST_F(Hostile, FixedNamePathsThatWouldBeCutAreRefused)
{
    const std::string deep = "C:\\" + std::string(240, 'd') + "\\";   // 244 characters
    char path[kPathCapacity];
    EXPECT_FALSE(SetupLogPath((deep + std::string(10, 'e') + "\\").c_str(), path, sizeof path));
    EXPECT_STREQ(path, "");
    EXPECT_TRUE(SetupLogPath(deep.c_str(), path, sizeof path));
    SYSTEMTIME time = {2024, 5, 0, 6, 7, 8, 9, 10};
    composeBackupFolder(deep.c_str(), "Backups\\", time, path, sizeof path);   // 244 + 8 + 24
    EXPECT_STREQ(path, "");
}

// Member names hold a record's index in five digits: a data file with more records is damaged.
TEST_F(Hostile, DataFileWithMoreRecordsThanMemberNamesIsRefused)
{
    for (const std::int32_t count : {100000, 100001}) {
        SCOPED_TRACE(count);
        SetupDataHeader header = {};
        std::strcpy(header.productName, "Vistrel 2022");
        FileRecord file = {};
        std::strcpy(file.fileName, "a.dat");
        EXPECT_EQ(readDataFile(header, count, file, 0, ShortcutRecord{}), count <= 100000);
        releaseDataRecords();
    }
}

// Wine 8 can make neither junctions nor symbolic links (CreateSymbolicLinkA answers success and
// makes nothing, FSCTL_SET_REPARSE_POINT is not supported), so the tree deletion's rule for what
// it lists is tested on the attributes Windows reports for each kind of entry.
TEST(TreeDeletion, LinksAreRemovedNeverEntered)
{
    const struct { DWORD attributes; TreeEntry expected; } cases[] = {
        {FILE_ATTRIBUTE_ARCHIVE, TreeEntry::File},
        {FILE_ATTRIBUTE_DIRECTORY, TreeEntry::Folder},
        {FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT, TreeEntry::FolderLink},
        {FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_HIDDEN, TreeEntry::FolderLink},
        {FILE_ATTRIBUTE_REPARSE_POINT, TreeEntry::File},
    };
    for (const auto& c : cases)
        EXPECT_EQ(classifyTreeEntry(c.attributes), c.expected) << std::hex << c.attributes;
}

TEST_F(Hostile, TreeDeletionRefusesPathsThatWouldBeCut)
{
    // A folder of 259 characters leaves no room for its listing pattern or a child: cut, either
    // would name the folder itself, and the deletion would recurse into it without end.
    const std::string tree = root_ + std::string(258 - root_.size(), 'd') + "\\";
    const std::string child = "\\\\?\\" + tree + "f";
    const std::wstring wideTree(tree.begin(), tree.end());
    const std::wstring wideChild(child.begin(), child.end());
    ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + wideTree).c_str(), nullptr));
    HANDLE made = CreateFileW(wideChild.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(made, INVALID_HANDLE_VALUE);
    CloseHandle(made);
    DeleteFolderTree(tree.c_str());
    EXPECT_NE(GetFileAttributesW(wideChild.c_str()), INVALID_FILE_ATTRIBUTES);
    DeleteFileW(wideChild.c_str());
    RemoveDirectoryW((L"\\\\?\\" + wideTree).c_str());
}

// After the start-up's restriction a DLL loaded by name comes from the system folder only: planted.dll
// beside this program (its own folder, and the current one) is found only when asked for there.
TEST(DllSearch, TheProgramsOwnFolderIsNotSearched)
{
    restrictDllSearch();
    EXPECT_EQ(LoadLibraryA("planted.dll"), nullptr);
    EXPECT_TRUE(FreeLibrary(LoadLibraryExA("planted.dll", nullptr, LOAD_LIBRARY_SEARCH_APPLICATION_DIR)));   // it is there
    DeleteFileA((testBinFolder() + "planted.dll.loaded").c_str());
}

} // namespace
