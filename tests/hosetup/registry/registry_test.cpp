// The registry helpers whole runs cannot reach: the recursive key deletion's refusals, the
// removal's clean-up next to other products and programs, and the decimal text helpers.
#include <climits>
#include <cstring>

#include "registry_checks.h"
#include "registry/registry.h"
#include "setup_fixture.h"
#include "ui/ui.h"

namespace {

constexpr char kMakerKey[] = "Software\\Harwick-Orbel";
constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";
constexpr char kOtherProduct[] = "Software\\Harwick-Orbel\\Tarrow";
constexpr char kTestTree[] = "Software\\HoCleanupTest";
const std::string kEntryKey = std::string(kUninstallKey) + "\\Vistrel Professional 2022";
const std::string kNeighbourEntry = std::string(kUninstallKey) + "\\HoNeighbour";

void makeKey(HKEY root, const std::string& path, const char* value = "x")
{
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS,
        RegCreateKeyExA(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr));
    RegSetValueExA(key, "Value", 0, REG_SZ, reinterpret_cast<const BYTE*>(value), DWORD(strlen(value) + 1));
    RegCloseKey(key);
}

void clean()
{
    for (const auto& [root, key] : {std::pair{HKEY_CURRENT_USER, kTestTree}, {HKEY_CURRENT_USER, kMakerKey},
                                    {HKEY_LOCAL_MACHINE, kMakerKey}, {HKEY_LOCAL_MACHINE, kEntryKey.c_str()},
                                    {HKEY_LOCAL_MACHINE, kNeighbourEntry.c_str()}})
        deleteRegTree(root, key);
}

} // namespace

// No path, an empty one or one that ends in a separator is refused (1010): on a registry that
// accepts a closing separator it would name the key above, with the Uninstall path every
// program's entry. A missing key counts as deleted; a tree goes leaves first.
TEST(RegistryTree, RefusalsAndWholeTrees)
{
    clean();
    const std::string tree = kTestTree;
    for (const char* key : {"\\A\\A1\\A11", "\\A\\A2", "\\B"})
        makeKey(HKEY_CURRENT_USER, tree + key);
    const struct { const char* path; LONG status; } rows[] = {{nullptr, ERROR_BADKEY}, {"", ERROR_BADKEY},
        {"Software\\HoCleanupTest\\A\\", ERROR_BADKEY}, {"Software\\HoCleanupTest\\A/", ERROR_BADKEY},
        {"Software\\HoNoSuchKey", ERROR_SUCCESS}};
    for (const auto& row : rows)
        EXPECT_EQ(row.status, DeleteRegistryTree(HKEY_CURRENT_USER, row.path))
            << (row.path ? row.path : "null");
    EXPECT_REG_KEY(HKEY_CURRENT_USER, (tree + "\\A\\A1\\A11").c_str());

    EXPECT_EQ(ERROR_SUCCESS, DeleteRegistryTree(HKEY_CURRENT_USER, (tree + "\\A").c_str()));
    EXPECT_NO_REG_KEY(HKEY_CURRENT_USER, (tree + "\\A").c_str());
    EXPECT_REG_KEY(HKEY_CURRENT_USER, (tree + "\\B").c_str());
    clean();
}

// The maker's key stays while another product of the maker lives in it, and another program's
// uninstall entry stays beside the product's own, which goes.
using RegistryCleanup = SetupFixture;

TEST_F(RegistryCleanup, KeepsWhatOthersOwn)
{
    clean();
    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        makeKey(root, std::string(kProductKey) + "\\Display\\Colours");
        makeKey(root, "Software\\Harwick-Orbel\\Products\\Vistrel");
        makeKey(root, kOtherProduct, "other product");
    }
    makeKey(HKEY_LOCAL_MACHINE, kEntryKey);
    makeKey(HKEY_LOCAL_MACHINE, kNeighbourEntry, "another program");
    ASSERT_TRUE(ShowProgressStage(true, kStageRemoveSettings, 0, 0));
    EXPECT_TRUE(RemoveRegistryEntries());
    EXPECT_REG_KEY(HKEY_LOCAL_MACHINE, kEntryKey.c_str());   // the record goes last, apart
    RemoveInstallationRecord();

    for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        EXPECT_REG_SZ(root, kOtherProduct, "Value", "other product");
        EXPECT_NO_REG_KEY(root, kProductKey);
        EXPECT_NO_REG_KEY(root, "Software\\Harwick-Orbel\\Products");
    }
    EXPECT_NO_REG_KEY(HKEY_LOCAL_MACHINE, kEntryKey.c_str());
    EXPECT_REG_SZ(HKEY_LOCAL_MACHINE, kNeighbourEntry.c_str(), "Value", "another program");
    clean();
}

TEST(DecimalText, FormatAndParse)
{
    const struct { std::int32_t value; const char* text; } formatted[] = {
        {0, "0"}, {-5, "-5"}, {2022, "2022"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"}};
    for (const auto& row : formatted) {
        char buffer[kDecimalTextCapacity];
        std::memset(buffer, 'x', sizeof buffer);
        FormatDecimal(buffer, row.value);
        EXPECT_STREQ(row.text, buffer);
        EXPECT_EQ(row.value, ParseDecimal(buffer)) << buffer; // the text reads back as the value
    }
    // The leading number, or the mark for a text that does not begin with one.
    const struct { const char* text; std::int32_t value; } parsed[] = {{"", kNoDecimalNumber},
        {"abc", kNoDecimalNumber}, {"-", kNoDecimalNumber}, {"   ", kNoDecimalNumber},
        {"2022.2.11.29", 2022}, {"  \t-17x", -17}, {"+8", 8}, {"007", 7}};
    for (const auto& row : parsed)
        EXPECT_EQ(row.value, ParseDecimal(row.text)) << '"' << row.text << '"';
}
