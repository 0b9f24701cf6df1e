// The run's life of the setup state: filled once the main window exists, reset for a run, and
// released at exit. It sits on the top floor because it calls down into every floor that holds
// a piece of the run: the splash picture, the detection, the log.
#include "shell/shell.h"
#include "setuplog/setuplog.h"
#include "strings/hoi_strings.h"
#include "holang.h"
#include "install/install.h"
#include "setupdata/setupdata.h"
#include "ui/ui.h"

namespace {

constexpr std::uint32_t kLineAboutFont = 101;
constexpr std::size_t kModuleNameCapacity = 490;
constexpr char kNoEarlierCompileDate[] = "2003-04-01";

} // namespace

bool initialiseSetup()
{
    char moduleFile[kModuleNameCapacity] = {};
    GetModuleFileNameA(g_setup.instance, moduleFile, sizeof moduleFile - 1);
    FolderOfPath(moduleFile, g_setup.programFolder, kPathCapacity);

    HOI_CopyA(g_setup.registryKey, kRegistryKeyCapacity, "Software\\", "Harwick-Orbel\\", "Vistrel Professional");
    HOI_CopyA(g_setup.productFolderWord, kPathCapacity, "Harwick-Orbel\\", "Vistrel", " (64-bit)\\");

    HDC dc = GetDC(g_setup.mainWindow);
    g_setup.screenWidth = GetDeviceCaps(dc, HORZRES);
    g_setup.screenHeight = GetDeviceCaps(dc, VERTRES);
    g_setup.colourDepth = GetDeviceCaps(dc, PLANES) * GetDeviceCaps(dc, BITSPIXEL);
    g_setup.dpiX = GetDeviceCaps(dc, LOGPIXELSX);
    g_setup.dpiY = GetDeviceCaps(dc, LOGPIXELSY);
    ReleaseDC(g_setup.mainWindow, dc);
    g_setup.scale = (g_setup.dpiX + g_setup.dpiY) / 192.0;

    g_setup.splashBitmap = loadPngResource(g_setup.instance, "ID_PNG_SPLASH", &g_setup.splashWidth,
                                           &g_setup.splashHeight);
    g_setup.arrowCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    g_setup.waitCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT));

    LOGFONTA font = {};
    font.lfHeight = roundHalfAwayFromZero(-9.0 * g_setup.scale);
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = ANSI_CHARSET;
    font.lfOutPrecision = OUT_DEFAULT_PRECIS;
    font.lfClipPrecision = CLIP_DEFAULT_PRECIS;
    font.lfQuality = DEFAULT_QUALITY;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    HOI_CopyA(font.lfFaceName, sizeof font.lfFaceName, eDefaultNames[kDefaultNameDialogFont]);
    g_setup.aboutFont = CreateFontIndirectA(&font);
    if (!g_setup.aboutFont) {
        reportError("Init", kLineAboutFont, "Error creating \"AboutFont\".");
        return false;
    }

    g_setup.logFile = nullptr;
    g_setup.journalFile = nullptr;
    g_setup.headerBuffer = nullptr;
    g_setup.fileRecords = nullptr;
    g_setup.shortcutRecords = nullptr;
    g_setup.fileFlags = nullptr;
    resetSetupState();
    return true;
}

void resetSetupState()
{
    g_setup.perUser = g_setup.optionPerUser;
    HOI_CopyA(g_setup.previousCompileDate, kTextCapacity, kNoEarlierCompileDate);

    // Working from the temporary folder keeps the source and target folders free to delete.
    if (GetTempPathA(kPathCapacity, g_setup.tempFolder) >= kPathCapacity)
        HOI_InitA(g_setup.tempFolder);
    HOI_PathA(g_setup.tempFolder, kPathCapacity);
    SetCurrentDirectoryA(g_setup.tempFolder);

    g_setup.bytesTotalInstalled = 0;
    g_setup.bytesTotalPacked = 0;
    g_setup.bytesDonePacked = 0;
    g_setup.progressStage = 0;
    g_setup.progressValue = 0;
    g_setup.progressTotal = 0;
    g_setup.progressDialog = nullptr;
    g_setup.fileCount = 0;
    g_setup.shortcutCount = 0;
    g_setup.filesToTransfer = 0;
    g_setup.filesDone = 0;
    g_setup.launchAfterFinish = 0;
    g_setup.replaceAll = 0;
    g_setup.startOption = 1;
    g_setup.cancelRequested = 0;

    // Both detections run before any page shows, so the welcome page can already tell of an
    // update. The sequences detect the earlier installation again once the data file has given
    // the package's compile date.
    DetectFolders();
    DetectEarlierInstallation();
}

void exitSetup()
{
    releaseDataRecords();

    if (g_setup.progressDialog) {
        DestroyWindow(g_setup.progressDialog);
        g_setup.progressDialog = nullptr;
    }
    if (g_setup.splashBitmap)
        DeleteObject(g_setup.splashBitmap);
    if (g_setup.aboutFont)
        DeleteObject(g_setup.aboutFont);
    g_setup.splashBitmap = nullptr;
    g_setup.aboutFont = nullptr;
    releaseSkin();

    CloseLog(true);
    releaseUnpacker();
}
