// The run-time binding of the help viewer, driven through its own registry key and module name:
// the tests register copies of a stand-in viewer (fake_viewer.dll, ordinals 14 and 15) under a
// class key of their own, so the real registration of the HTML Help control is never touched.
#include <gtest/gtest.h>

#include <string>

#include "fake_viewer.h"
#include "help/help.h"
#include "process.h"

namespace {

constexpr char kTestClass[] = "CLSID\\{7D1E5A10-4C2B-4F7E-9A61-0B5E7C3D2F48}";
constexpr char kTestClassKey[] = "CLSID\\{7D1E5A10-4C2B-4F7E-9A61-0B5E7C3D2F48}\\InprocServer32";
constexpr char kMissingModule[] = "ho-no-such-viewer.ocx";
constexpr char kFolderVariable[] = "HO_TEST_VIEWER_DIR";

using HtmlHelpAFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);
using HtmlHelpWFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

std::string moduleFile(HMODULE module)
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, sizeof path - 1);
    return path;
}

bool samePath(const std::string& a, const std::string& b)
{
    return lstrcmpiA(a.c_str(), b.c_str()) == 0;
}

class ViewerBindingTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder_ = makeTempFolder("hohelp");
        ASSERT_FALSE(folder_.empty());
        registered_ = folder_ + "registered.dll";
        ASSERT_TRUE(copyFileTo(testBinFolder() + "fake_viewer.dll", registered_));
        RegDeleteTreeA(HKEY_CLASSES_ROOT, kTestClass);
    }

    void TearDown() override
    {
        RegDeleteTreeA(HKEY_CLASSES_ROOT, kTestClass);
        SetEnvironmentVariableA(kFolderVariable, nullptr);
        // The binding keeps its module for the run; the test lets go of its copy so the folder
        // can be removed.
        HMODULE copy = GetModuleHandleA(registered_.c_str());
        while (copy && FreeLibrary(copy) && GetModuleHandleA(registered_.c_str()))
            ;
        removeTree(folder_);
    }

    // The class key's default value, written with exactly `size` bytes (the terminator is part
    // of the value unless a test leaves it out).
    void setDefaultValue(DWORD type, const std::string& value, DWORD size)
    {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExA(HKEY_CLASSES_ROOT, kTestClassKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                                  nullptr), ERROR_SUCCESS);
        EXPECT_EQ(RegSetValueExA(key, nullptr, 0, type, reinterpret_cast<const BYTE*>(value.c_str()), size),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    }
    void setDefaultValue(DWORD type, const std::string& value)
    {
        setDefaultValue(type, value, static_cast<DWORD>(value.size() + 1));
    }

    std::string folder_;
    std::string registered_;
};

TEST_F(ViewerBindingTest, RegisteredModuleIsLoadedAndBothEntriesShareIt)
{
    setDefaultValue(REG_SZ, registered_);
    HelpViewer viewer = {kTestClassKey, kMissingModule, nullptr};
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
    HelpEntry wide = {kHtmlHelpWOrdinal, nullptr, false};

    const auto htmlHelpA = reinterpret_cast<HtmlHelpAFunction>(bindHelpEntry(&viewer, &narrow));
    ASSERT_NE(htmlHelpA, nullptr);
    EXPECT_TRUE(samePath(moduleFile(viewer.module), registered_)) << moduleFile(viewer.module);
    EXPECT_EQ(htmlHelpA(reinterpret_cast<HWND>(0x55), "C:\\x\\hosetup.chm", 0, 7), kFakeViewerWindowA);

    const auto lastCall = reinterpret_cast<FakeViewerLastCallFunction>(GetProcAddress(viewer.module,
                                                                                      "FakeViewerLastCall"));
    ASSERT_NE(lastCall, nullptr);
    EXPECT_FALSE(lastCall()->wide);
    EXPECT_EQ(lastCall()->owner, reinterpret_cast<HWND>(0x55));
    EXPECT_STREQ(lastCall()->fileA, "C:\\x\\hosetup.chm");
    EXPECT_EQ(lastCall()->data, 7u);

    // The wide entry binds to the module already loaded, even with the registration gone.
    RegDeleteTreeA(HKEY_CLASSES_ROOT, kTestClass);
    const HMODULE loaded = viewer.module;
    const auto htmlHelpW = reinterpret_cast<HtmlHelpWFunction>(bindHelpEntry(&viewer, &wide));
    ASSERT_NE(htmlHelpW, nullptr);
    EXPECT_EQ(viewer.module, loaded);
    EXPECT_EQ(htmlHelpW(nullptr, L"C:\\x\\hosetup.chm", 0, 0), kFakeViewerWindowW);
    EXPECT_TRUE(lastCall()->wide);
    EXPECT_EQ(lastCall()->calls, 2);

    // A bound entry is kept.
    EXPECT_EQ(bindHelpEntry(&viewer, &narrow), reinterpret_cast<FARPROC>(htmlHelpA));
}

TEST_F(ViewerBindingTest, ExpandableValueIsExpandedBeforeLoading)
{
    // A variable of the test's own, so that only an expanded value can lead to the copy.
    std::string folder = folder_.substr(0, folder_.size() - 1);
    ASSERT_TRUE(SetEnvironmentVariableA(kFolderVariable, folder.c_str()));
    setDefaultValue(REG_EXPAND_SZ, std::string("%") + kFolderVariable + "%\\registered.dll");
    HelpViewer viewer = {kTestClassKey, kMissingModule, nullptr};
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
    ASSERT_NE(bindHelpEntry(&viewer, &narrow), nullptr);
    EXPECT_TRUE(samePath(moduleFile(viewer.module), registered_)) << moduleFile(viewer.module);
}

TEST_F(ViewerBindingTest, SystemRootValueReachesTheSystemViewer)
{
    setDefaultValue(REG_EXPAND_SZ, "%SystemRoot%\\system32\\hhctrl.ocx");
    char expected[MAX_PATH] = {};
    ExpandEnvironmentStringsA("%SystemRoot%\\system32\\hhctrl.ocx", expected, sizeof expected);
    char path[kHelpPathCapacity];
    ASSERT_TRUE(readViewerModulePath(kTestClassKey, path, sizeof path));
    EXPECT_STREQ(path, expected);

    HelpViewer viewer = {kTestClassKey, kMissingModule, nullptr};
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
    HelpEntry wide = {kHtmlHelpWOrdinal, nullptr, false};
    EXPECT_NE(bindHelpEntry(&viewer, &narrow), nullptr);
    EXPECT_NE(bindHelpEntry(&viewer, &wide), nullptr);
    EXPECT_TRUE(samePath(moduleFile(viewer.module), expected)) << moduleFile(viewer.module);
}

TEST_F(ViewerBindingTest, WithoutUsableRegistrationTheModuleIsLoadedByName)
{
    const std::string byName = testBinFolder() + "fake_viewer.dll";
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};

    // No key at all.
    HelpViewer noKey = {kTestClassKey, "fake_viewer.dll", nullptr};
    ASSERT_NE(bindHelpEntry(&noKey, &narrow), nullptr);
    EXPECT_TRUE(samePath(moduleFile(noKey.module), byName)) << moduleFile(noKey.module);

    // A registration that names a file that is not there.
    setDefaultValue(REG_SZ, folder_ + "gone.dll");
    HelpViewer missingFile = {kTestClassKey, "fake_viewer.dll", nullptr};
    narrow = {kHtmlHelpAOrdinal, nullptr, false};
    ASSERT_NE(bindHelpEntry(&missingFile, &narrow), nullptr);
    EXPECT_TRUE(samePath(moduleFile(missingFile.module), byName)) << moduleFile(missingFile.module);

    // The system's own control by its bare name.
    HelpViewer system = {kTestClassKey, kHelpViewerModuleName, nullptr};
    narrow = {kHtmlHelpAOrdinal, nullptr, false};
    HelpEntry wide = {kHtmlHelpWOrdinal, nullptr, false};
    EXPECT_NE(bindHelpEntry(&system, &narrow), nullptr);
    EXPECT_NE(bindHelpEntry(&system, &wide), nullptr);
}

TEST_F(ViewerBindingTest, FailureIsRememberedForEachEntryAndNeverRetried)
{
    setDefaultValue(REG_SZ, folder_ + "gone.dll");
    HelpViewer viewer = {kTestClassKey, kMissingModule, nullptr};
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
    EXPECT_EQ(bindHelpEntry(&viewer, &narrow), nullptr);
    EXPECT_TRUE(narrow.failed);
    EXPECT_EQ(viewer.module, nullptr);

    // Both ways now lead to a viewer, but the failed entry does not look again.
    setDefaultValue(REG_SZ, registered_);
    viewer.moduleName = "fake_viewer.dll";
    EXPECT_EQ(bindHelpEntry(&viewer, &narrow), nullptr);
    EXPECT_EQ(viewer.module, nullptr);
    EXPECT_EQ(GetModuleHandleA(registered_.c_str()), nullptr);

    // The other entry has its own first attempt.
    HelpEntry wide = {kHtmlHelpWOrdinal, nullptr, false};
    EXPECT_NE(bindHelpEntry(&viewer, &wide), nullptr);
    EXPECT_TRUE(samePath(moduleFile(viewer.module), registered_));
    EXPECT_EQ(bindHelpEntry(&viewer, &narrow), nullptr);
}

TEST_F(ViewerBindingTest, MissingOrdinalFailsOnlyThatEntry)
{
    setDefaultValue(REG_SZ, registered_);
    HelpViewer viewer = {kTestClassKey, kMissingModule, nullptr};
    HelpEntry absent = {16, nullptr, false};
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
    EXPECT_EQ(bindHelpEntry(&viewer, &absent), nullptr);
    EXPECT_TRUE(absent.failed);
    EXPECT_NE(viewer.module, nullptr);
    EXPECT_NE(bindHelpEntry(&viewer, &narrow), nullptr);
}

TEST_F(ViewerBindingTest, RegisteredPathMustFitInto260Characters)
{
    char path[kHelpPathCapacity];
    std::string longest = "C:\\" + std::string(kHelpPathCapacity - 1 - 3, 'p');   // 259 characters
    setDefaultValue(REG_SZ, longest);
    ASSERT_TRUE(readViewerModulePath(kTestClassKey, path, sizeof path));
    EXPECT_EQ(std::string(path), longest);

    setDefaultValue(REG_SZ, longest + "q");
    EXPECT_FALSE(readViewerModulePath(kTestClassKey, path, sizeof path));
    EXPECT_STREQ(path, "");
    // Stored without a terminator, 259 characters still fit and 260 do not.
    setDefaultValue(REG_SZ, longest, 259);
    EXPECT_TRUE(readViewerModulePath(kTestClassKey, path, sizeof path));
    setDefaultValue(REG_SZ, longest + "q", 260);
    EXPECT_FALSE(readViewerModulePath(kTestClassKey, path, sizeof path));

    // The same limit applies to the expanded text of an expandable value.
    const std::string suffix = "\\v.dll";
    const std::string folder(kHelpPathCapacity - 1 - suffix.size(), 'f');
    SetEnvironmentVariableA(kFolderVariable, folder.c_str());
    setDefaultValue(REG_EXPAND_SZ, std::string("%") + kFolderVariable + "%" + suffix);
    ASSERT_TRUE(readViewerModulePath(kTestClassKey, path, sizeof path));
    EXPECT_EQ(std::string(path), folder + suffix);

    SetEnvironmentVariableA(kFolderVariable, (folder + "g").c_str());
    EXPECT_FALSE(readViewerModulePath(kTestClassKey, path, sizeof path));
}

TEST_F(ViewerBindingTest, ValueWithoutTerminatorOrKeyIsHandled)
{
    char path[kHelpPathCapacity];
    // Registry strings may be stored without their terminator.
    setDefaultValue(REG_SZ, "C:\\viewer.ocx", 13);
    ASSERT_TRUE(readViewerModulePath(kTestClassKey, path, sizeof path));
    EXPECT_STREQ(path, "C:\\viewer.ocx");

    RegDeleteTreeA(HKEY_CLASSES_ROOT, kTestClass);
    EXPECT_FALSE(readViewerModulePath(kTestClassKey, path, sizeof path));
}

} // namespace
