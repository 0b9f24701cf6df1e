// The run-time binding of the help viewer, driven through a class key of the test's own below
// HKLM\Software\Classes and copies of a stand-in viewer (fake_viewer.dll), so the real
// registration of the HTML Help control is never touched.
#include <gtest/gtest.h>

#include <string>

#include "ui/ui.h"
#include "process.h"

namespace {

constexpr char kTestClass[] = "Software\\Classes\\CLSID\\{7D1E5A10-4C2B-4F7E-9A61-0B5E7C3D2F48}";
const std::string kTestClassKey = std::string(kTestClass) + "\\InprocServer32";

void setDefaultValue(DWORD type, const std::string& value)
{
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, kTestClassKey.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
        nullptr);
    RegSetValueExA(key, nullptr, 0, type, reinterpret_cast<const BYTE*>(value.c_str()),
        DWORD(value.size() + 1));
    RegCloseKey(key);
}

} // namespace

// Each row registers a value (REG_NONE: no key at all) and binds the narrow entry of a fresh
// viewer whose fallback is the system's hhctrl.ocx: the registered copy or the system folder's
// control must be the module bound, and the path lookup must answer as the row says.
TEST(ViewerBinding, RegisteredPathOrSystemFolder)
{
    const std::string folder = makeTempFolder("hohelp");
    const std::string copy = folder + "registered.dll";
    ASSERT_TRUE(copyFileTo(testBinFolder() + "fake_viewer.dll", copy));
    char system[MAX_PATH];
    const std::string systemViewer =
        std::string(system, GetSystemDirectoryA(system, MAX_PATH)) + "\\hhctrl.ocx";
    SetEnvironmentVariableA("HO_TEST_VIEWER_DIR", folder.substr(0, folder.size() - 1).c_str());
    SetEnvironmentVariableA("HO_TEST_LONG", std::string(253, 'f').c_str());
    const std::string long259 = "C:\\" + std::string(256, 'p');
    const struct { DWORD type; std::string value; bool readable; std::string loaded; } rows[] = {
        {REG_NONE, "", false, systemViewer},
        {REG_SZ, copy, true, copy},
        {REG_EXPAND_SZ, "%HO_TEST_VIEWER_DIR%\\registered.dll", true, copy},
        {REG_SZ, folder + "gone.dll", true, systemViewer},
        {REG_SZ, "fake_viewer.dll", true, systemViewer}, // not a whole drive path
        {REG_SZ, long259, true, systemViewer},            // 259 characters fit
        {REG_SZ, long259 + "q", false, systemViewer},     // 260 do not
        {REG_EXPAND_SZ, "%HO_TEST_LONG%\\v.dll", true, systemViewer},  // expands to 259
        {REG_EXPAND_SZ, "%HO_TEST_LONG%\\vw.dll", false, systemViewer}, // to 260
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value.substr(0, 40));
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kTestClass);
        if (row.type != REG_NONE)
            setDefaultValue(row.type, row.value);
        char path[kHelpPathCapacity];
        EXPECT_EQ(row.readable, readViewerModulePath(kTestClassKey.c_str(), path, sizeof path));
        HelpViewer viewer = {kTestClassKey.c_str(), kHelpViewerModuleName, nullptr};
        HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
        const auto htmlHelpA = reinterpret_cast<HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR)>(
            bindHelpEntry(&viewer, &narrow));
        ASSERT_NE(nullptr, htmlHelpA);
        char loaded[MAX_PATH] = {};
        GetModuleFileNameA(viewer.module, loaded, MAX_PATH - 1);
        EXPECT_EQ(0, lstrcmpiA(row.loaded.c_str(), loaded)) << loaded;
        // The narrow entry is the viewer's ordinal 14.
        EXPECT_TRUE(row.loaded != copy || htmlHelpA(nullptr, "x.chm", 0, 0) == reinterpret_cast<HWND>(14));
        FreeLibrary(viewer.module);
    }

    // A failed binding is remembered: once both ways lead to a viewer the narrow entry still
    // does not look again, while the wide entry has its own first attempt.
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kTestClass);
    HelpViewer viewer = {kTestClassKey.c_str(), "ho-no-such-viewer.ocx", nullptr};
    HelpEntry narrow = {kHtmlHelpAOrdinal, nullptr, false};
    HelpEntry wide = {15, nullptr, false};   // the stand-in viewer's wide entry, an entry of its own
    EXPECT_EQ(nullptr, bindHelpEntry(&viewer, &narrow));
    setDefaultValue(REG_SZ, copy);
    viewer.moduleName = kHelpViewerModuleName;
    EXPECT_EQ(nullptr, bindHelpEntry(&viewer, &narrow));
    EXPECT_EQ(nullptr, GetModuleHandleA(copy.c_str()));
    const auto htmlHelpW = reinterpret_cast<HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR)>(
        bindHelpEntry(&viewer, &wide));
    ASSERT_NE(nullptr, htmlHelpW);
    EXPECT_EQ(reinterpret_cast<HWND>(15), htmlHelpW(nullptr, L"x.chm", kHelpDisplayTopic, 0));
    EXPECT_EQ(nullptr, bindHelpEntry(&viewer, &narrow));
    FreeLibrary(viewer.module);
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kTestClass);
    removeTree(folder);
}
