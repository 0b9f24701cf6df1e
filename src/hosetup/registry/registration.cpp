// What an installation writes into the registry: the settings key the product and later setup
// runs read, the application path, the uninstall entry and the two document types. Each key is
// created, written and closed before the next; the first key that cannot be created ends the
// step with its own report number.
#include "registry/registry.h"
#include "format/program_files.h"
#include "core/core.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "strings/paths.h"

#include <shlobj.h>

namespace {

// One release's constants; they change together with each release.
constexpr char kReleaseYear[] = "2022";
constexpr char kVersionText[] = "2022.2.11.29";
constexpr int kBuildYear = 2022;
constexpr int kBuildMonth = 11;
constexpr int kBuildDay = 29;
constexpr std::int32_t kBuildNumber = 1129;

constexpr char kPublisher[] = "Harwick-Orbel GmbH";
constexpr char kIconModule[] = "hovistrellib.dll";
constexpr char kKeyError[] = "Error creating key in registry.";

constexpr std::uint32_t kReportSettingsStandard = 720;
constexpr std::uint32_t kReportAppPath = 764;
constexpr std::uint32_t kReportUninstallStandard = 810;
constexpr std::uint32_t kReportSettingsUpdate = 990;
constexpr std::uint32_t kReportUninstallUpdate = 1059;
constexpr std::uint32_t kReportCompileDate = 670;

HKEY createKey(HKEY root, const char* path, std::uint32_t reportNumber)
{
    HKEY key = nullptr;
    if (RegCreateKeyExA(root, path, 0, const_cast<char*>(""), 0, KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
        reportError("Init", reportNumber, kKeyError);
        return nullptr;
    }
    return key;
}

const char* folderOrDefault(bool isDefault, const char* folder)
{
    return isDefault ? "*" : folder;
}

bool writeSettingsKey(std::uint32_t reportNumber)
{
    HKEY key = createKey(HKEY_LOCAL_MACHINE, g_setup.registryKey, reportNumber);
    if (!key)
        return false;
    SetRegistryNumber(key, "UserMode", g_setup.perUser);
    SetRegistryString(key, "PathLocal", folderOrDefault(g_setup.installFolderDefault, g_setup.installFolder));
    SetRegistryString(key, "PathLibrary", folderOrDefault(g_setup.libraryFolderDefault, g_setup.libraryFolder));
    SetRegistryString(key, "PathDrawing", folderOrDefault(g_setup.drawingFolderDefault, g_setup.drawingFolder));
    SetRegistryString(key, "PathSetting", folderOrDefault(g_setup.settingFolderDefault, g_setup.settingFolder));
    RegCloseKey(key);
    return true;
}

bool writeAppPath()
{
    char path[kPathCapacity];
    HOI_PrintA(path, sizeof path, "%s\\%s", kAppPathsKey, kMainProgram);
    HKEY key = createKey(HKEY_LOCAL_MACHINE, path, kReportAppPath);
    if (!key)
        return false;
    char value[kMessageCapacity];
    HOI_CopyA(value, sizeof value, g_setup.installFolder, kMainProgram);
    SetRegistryString(key, "", value);
    HOI_CopyA(value, sizeof value, g_setup.installFolder);
    StripTrailingSeparator(value);
    SetRegistryString(key, "Path", value);
    RegCloseKey(key);
    return true;
}

bool writeUninstallEntry(std::uint32_t reportNumber)
{
    char path[kPathCapacity];
    HOI_PrintA(path, sizeof path, "%s\\", kUninstallKey);
    HOI_JoinA(path, sizeof path, eProfileTitle[kProfileUninstallKey]);
    HKEY key = createKey(HKEY_LOCAL_MACHINE, path, reportNumber);
    if (!key)
        return false;

    const SetupDataHeader* header = g_setup.headerBuffer;
    char value[kMessageCapacity];
    HOI_PrintA(value, sizeof value, "\"%s%s\"", g_setup.installFolder, kMainProgram);
    SetRegistryString(key, "DisplayIcon", value);
    HOI_PrintA(value, sizeof value, "%s Release %s", header ? header->productName : "", kReleaseYear);
    SetRegistryString(key, "DisplayName", value);
    HOI_PrintA(value, sizeof value, "\"%s%s\" -x", g_setup.installFolder, kSetupProgramName);
    SetRegistryString(key, "UninstallString", value);
    // What deployment tools and the system's settings read beside the entry's written values:
    // the silent removal, the size in KiB, and that there is neither a Modify nor a Repair.
    HOI_JoinA(value, sizeof value, " -S");
    SetRegistryString(key, "QuietUninstallString", value);
    const std::uint64_t kib = (g_setup.bytesTotalInstalled + 1023) / 1024;
    SetRegistryNumber(key, "EstimatedSize", kib > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<std::uint32_t>(kib));
    SetRegistryNumber(key, "NoModify", 1);
    SetRegistryNumber(key, "NoRepair", 1);
    SetRegistryString(key, "InstallLocation", g_setup.installFolder);
    // The local date of this run, as the system's settings and inventory tools read it.
    SYSTEMTIME now;
    GetLocalTime(&now);
    HOI_PrintA(value, sizeof value, "%04u%02u%02u", now.wYear, now.wMonth, now.wDay);
    SetRegistryString(key, "InstallDate", value);
    SetRegistryString(key, "Publisher", kPublisher);
    char buildDate[kDecimalTextCapacity];
    HOI_PrintA(buildDate, sizeof buildDate, "%04d-%02d-%02d", kBuildYear, kBuildMonth, kBuildDay);
    HOI_PrintA(value, sizeof value, "%s, %s, %s", kVersionText, kVersionText, buildDate);
    SetRegistryString(key, "DisplayVersion", value);

    // The version fields are computed as they always were, 8-bit truncation included: the minor
    // number comes out as 142 on purpose.
    const std::int32_t major = (ParseDecimal(kReleaseYear) + 48) & 0xFF;
    const std::int32_t minor = (ParseDecimal(kVersionText) - 88) & 0xFF;
    char majorText[kDecimalTextCapacity];
    char minorText[kDecimalTextCapacity];
    char buildText[kDecimalTextCapacity];
    FormatDecimal(majorText, major);
    FormatDecimal(minorText, minor);
    FormatDecimal(buildText, kBuildNumber);
    HOI_PrintA(value, sizeof value, "%s.%s.%s", majorText, minorText, buildText);
    SetRegistryString(key, "Version", value);
    SetRegistryString(key, "VersionMajor", majorText);
    SetRegistryString(key, "VersionMinor", minorText);
    RegCloseKey(key);
    return true;
}

struct FileTypeRow {
    const char* key;
    const char* format;       // null: the fixed text in `text`
    const char* text;
    int argument;             // 0 none, 1 the icon module's path, 2 the main program's path, 3/4 eProfileTitle 4/9
    std::uint32_t reportNumber;
};

constexpr FileTypeRow kFileTypes[] = {
    {".HOD", nullptr, "HOVISTREL", 0, 853},
    {"HOVISTREL", "Harwick-Orbel Vistrel %s", nullptr, 3, 864},
    {"HOVISTREL\\DefaultIcon", "%s,1", nullptr, 1, 876},
    {"HOVISTREL\\shell\\open\\command", "\"%s\" \"%%1\"", nullptr, 2, 893},
    {"HOVISTREL\\shell\\print\\command", "\"%s\" /p \"%%1\"", nullptr, 2, 905},
    {"HOVISTREL\\shell\\printto\\command", "\"%s\" /p \"%%1\"", nullptr, 2, 917},
    {".HOL", nullptr, "HOVISTRELLIB", 0, 928},
    {"HOVISTRELLIB", "Harwick-Orbel Vistrel %s", nullptr, 4, 939},
    {"HOVISTRELLIB\\DefaultIcon", "%s,2", nullptr, 1, 951},
};

bool writeFileTypes()
{
    char iconModule[kPathCapacity];
    char mainProgram[kPathCapacity];
    HOI_CopyA(iconModule, sizeof iconModule, g_setup.installFolder, kIconModule);
    HOI_CopyA(mainProgram, sizeof mainProgram, g_setup.installFolder, kMainProgram);
    for (const FileTypeRow& row : kFileTypes) {
        HKEY key = createKey(HKEY_CLASSES_ROOT, row.key, row.reportNumber);
        if (!key)
            return false;
        const char* argument = row.argument == 1 ? iconModule
                             : row.argument == 2 ? mainProgram
                             : row.argument == 3 ? eProfileTitle[kProfileDrawingType]
                             : row.argument == 4 ? eProfileTitle[kProfileLibraryType] : "";
        char value[kMessageCapacity];
        if (row.format)
            HOI_PrintA(value, sizeof value, row.format, argument);
        else
            HOI_CopyA(value, sizeof value, row.text);
        SetRegistryString(key, "", value);
        RegCloseKey(key);
    }
    // Explorer caches icons and verbs per extension: without this the new types show only after
    // the next logon.
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    return true;
}

} // namespace

bool RegisterStandardInstallation()
{
    return writeSettingsKey(kReportSettingsStandard) && writeAppPath() &&
           writeUninstallEntry(kReportUninstallStandard) && writeFileTypes();
}

bool RegisterUpdateInstallation()
{
    return writeSettingsKey(kReportSettingsUpdate) && writeUninstallEntry(kReportUninstallUpdate);
}

bool RecordCompileDate()
{
    HKEY key = createKey(HKEY_LOCAL_MACHINE, g_setup.registryKey, kReportCompileDate);
    if (!key)
        return false;
    SetRegistryString(key, "CompileDate", g_setup.packageCompileDate);
    RegCloseKey(key);
    return true;
}
