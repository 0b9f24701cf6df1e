// Interface of the wizard user interface: alert box, replace query, progress window, the six
// wizard pages, the question after a failed copy, and the help viewer the help button opens.
// Every dialog comes from a template of the language module and is owned by the main window; a
// silent run shows none of them but the progress window.
#pragma once

#include <windows.h>
#include <cstddef>
#include <cstdint>

#include "core/setup_state.h"   // HelpViewer, HelpEntry
#include "dialog_ids.h"

// ---- constants ------------------------------------------------------------------------------

// Button codes of the alert box; the captions of eButtonText follow the codes in order, from
// kButtonTextOk for kButtonOk on (ui/alert_box.cpp).
constexpr int kButtonOk = 1;
constexpr int kButtonCancel = 2;   // the negative answer; Escape and the close box give it
constexpr int kButtonYes = 3;
constexpr int kButtonNo = 4;
constexpr int kButtonContinue = 5;
constexpr int kButtonRetry = 6;
constexpr int kButtonRetryFile = 7;
constexpr int kButtonSkip = 8;

// Replies of the replace query.
constexpr int kReplaceFile = 30;
constexpr int kReplaceAll = 31;
constexpr int kReplaceKeep = 32;
constexpr int kReplaceCancel = 33;

// Progress bar range.
constexpr int kProgressRange = 10000;

// Wizard page results.
constexpr std::int32_t kPageGoOn = 1;
constexpr std::int32_t kPageStop = 2;

// Fixed line numbers of the "DialogAll" error reports when a dialog cannot be created.
constexpr std::uint32_t kLineInstallWelcomePage = 1019;
constexpr std::uint32_t kLineInstallStartPage = 1150;
constexpr std::uint32_t kLineInstallFinishPage = 1298;
constexpr std::uint32_t kLineRemoveWelcomePage = 1416;
constexpr std::uint32_t kLineRemoveStartPage = 1539;
constexpr std::uint32_t kLineRemoveFinishPage = 1658;
constexpr std::uint32_t kLineProgressWindow = 1858;
constexpr std::uint32_t kLineReplaceQuery = 1957;

// Design sizes at 96 dpi that the layout and the skin share.
constexpr int kDialogMargin = 24;         // left and right edge of the body text
constexpr int kBannerDesignHeight = 60;
constexpr int kAccentDesignHeight = 3;    // coloured rule under the banner
constexpr int kButtonDesignGap = 8;
// Texts are measured with the flags that paint them, so nothing is cut.
constexpr UINT kDialogWrapFlags = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS;

constexpr std::size_t kAlertCaptionCapacity = 760;
constexpr std::size_t kFileAlertCapacity = 2048;

// The help viewer: the HTML Help control, found and bound on first use, so a system without it
// still runs the setup; help then silently does nothing.
// Where the HTML Help control registers its module, below HKEY_LOCAL_MACHINE; the key's default
// value is the module's path. Only the machine's classes are read: HKEY_CLASSES_ROOT merges in
// the user's own class registrations, which a standard user may write and this program, running
// elevated, must not follow.
constexpr char kHelpViewerClassKey[] =
    "Software\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
// Loaded from the system folder when the registry does not lead to a loadable module.
constexpr char kHelpViewerModuleName[] = "hhctrl.ocx";
// The control exports its entries by ordinal; the program calls the narrow one.
constexpr WORD kHtmlHelpAOrdinal = 14;
constexpr std::size_t kHelpPathCapacity = 260;
constexpr UINT kHelpDisplayTopic = 0;          // HH_DISPLAY_TOPIC: the file's default topic

// ---- types ----------------------------------------------------------------------------------

// Kinds of file alert (ShowFileAlert): each shows one text of eAlertErrorText with its path and
// offers its own buttons. A plain enumeration, so that a kind still given as its number works.
enum FileAlertKind : int {
    kFileAlertCannotOpen = 0,        // the file cannot be opened; Cancel
    kFileAlertCannotOpenGoOn = 1,    // the same text, one kButtonRetry button (captioned Continue)
    kFileAlertInUse = 2,             // the file is in use; Continue (kButtonRetry) / Cancel
    kFileAlertDamagedDataFile = 3,   // the setup data file is damaged; Cancel
    kFileAlertCannotRead = 4,        // the file cannot be read, the support note appended; Cancel
    kFileAlertCannotWriteRetry = 5,  // the file cannot be written; Retry / Cancel, Cancel default
    kFileAlertFolderNotCreated = 6,  // Cancel
    kFileAlertCannotDelete = 7,      // Cancel
    kFileAlertIncompleteDeleted = 8, // deletes the incomplete file first; Cancel
    kFileAlertWriteFailed = 9,       // writing to the file failed; Cancel
    kFileAlertUnused10 = 10,         // shows nothing, as an unknown kind does
    kFileAlertUnpackerNotStarted = 11,   // Cancel
    kFileAlertLogUnreadable = 12,    // the removal cannot read the setup log; Cancel
    kFileAlertLogNotCreated = 13,    // go on without a log? Continue / Cancel, Cancel default
    kFileAlertBackupFailed = 14,     // Retry / Skip / Cancel
};

// Stages of the progress window: each has its caption and its band of the bar. The first four
// belong to an installation, the others to a removal.
enum ProgressStage : std::uint32_t {
    kStageInstallPrepare = 0,
    kStageInstallCopy = 1,
    kStageInstallRegister = 2,
    kStageInstallShortcuts = 3,
    kStageRemoveReadLog = 4,
    kStageRemoveFiles = 5,
    kStageRemoveSettings = 6,
    kStageRemoveShortcuts = 7,
};

// One per page call, handed to the page's dialog as its creation parameter.
struct WizardPageState {
    HWND previousFocus;      // focus goes back here when the page closes
    unsigned char option;    // the page's check box, in and out
    std::int32_t result;     // kPageGoOn or kPageStop; anything else counts as stop
};

// One per replace query; the texts are copies, cut at 759 characters.
struct ReplaceQueryState {
    HWND previousFocus;
    std::int32_t result;
    char path[760];
    char existingText[760];
    char newText[760];
};

// One per alert. The message text is not copied: the caller keeps it alive.
struct AlertBoxState {
    HWND previousFocus;
    int button1;             // never 0 once filled: a lone cancel button takes code 2
    int button2;             // 0 = no such button
    int button3;
    int defaultButton;       // 1, 2 or 3
    int result;              // code of the button that closed the box
    const char* text;
    char caption1[kAlertCaptionCapacity];
    char caption2[kAlertCaptionCapacity];
    char caption3[kAlertCaptionCapacity];
};

// The look of a dialog, chosen by its layout and used by the background painter.
enum class DialogSkin { Plain, Banner, Footer };

// ---- functions ------------------------------------------------------------------------------

// ui/layout.cpp: sizes and placement shared by every dialog. Every size is a 96-dpi design size
// times g_setup.scale.
int scaledSize(int designSize);
void centreOverMainWindow(HWND dialog);
// Measures text in the body font as DrawText wraps it within width pixels; returns the height.
int measureWrappedText(HWND window, const char* text, int width, int* usedWidth);
void layoutWizardPage(HWND dialog, bool withCheckBox);
void layoutProgressWindow(HWND dialog);
void layoutAlertBox(HWND dialog, const AlertBoxState& state);
void layoutReplaceQuery(HWND dialog);

// ui/skin.cpp: fonts, background and colours of the skinned dialogs. Each painter returns
// false/null when it does not handle the request, so the dialog procedure leaves it to the
// dialog manager.
HFONT dialogFont();        // the body font: eDefaultNames[kDefaultNameDialogFont], 9 pt at the screen's scale
HFONT dialogTitleFont();   // the banner title
// Frees the fonts and brushes of the skin once no dialog is left; the next dialog makes new ones.
void releaseSkin();
void setDialogIcon(HWND dialog);
// Records where the banner and the footer of a laid-out dialog end, for the painter.
void rememberDialogSkin(HWND dialog, DialogSkin skin, int bannerBottom, int footerTop);
bool eraseDialogBackground(HWND dialog, HDC dc);
HBRUSH dialogControlColour(HWND dialog, HDC dc, HWND control);
void paintAlertText(const DRAWITEMSTRUCT* item, const char* text);
void forgetDialogSkin(HWND dialog);
// Background, control colours and the skin's clean-up for any skinned dialog: true with the
// dialog procedure's result in *result when the message was handled here.
bool handleSkinMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, INT_PTR* result);

// ui/splash.cpp
// The PNG resource name of instance decoded into a bitmap; null when it is missing or no PNG.
HBITMAP loadPngResource(HINSTANCE instance, const char* name, std::uint32_t* width, std::uint32_t* height);

// ui/alert_box.cpp
int ShowAlert(HWND owner, const char* text, int button1, int button2, int button3, int defaultButton);
void AlertNotice(HWND owner, const char* text);
int AlertError(HWND owner, const char* text);
int AlertRetryCancel(HWND owner, const char* text);
int AlertRetryCancelDefaultCancel(HWND owner, const char* text);
int AlertQuestion(HWND owner, const char* text);
int AlertQuestionDefaultNo(HWND owner, const char* text);
int AlertThreeWay(HWND owner, const char* text);
// kind: a FileAlertKind; an unknown kind shows nothing and answers kButtonCancel.
int ShowFileAlert(HWND owner, const char* path, int kind);

// ui/replace_query.cpp
int AskReplaceFile(HWND owner, const char* path, const char* existingText, const char* newText);

// ui/progress_window.cpp
// stage: a ProgressStage; show false closes the window whatever the stage.
bool ShowProgressStage(bool show, std::uint32_t stage, std::int64_t value, std::int64_t total);
bool SetProgress(std::int64_t value, std::int64_t total);
// A pacing loop: reports from, from + step, ... up to `to` of 100 and sleeps after each report.
// It does no work; it gives the bar a visible run and the user a chance to cancel between
// stages. False as soon as a report says stop.
bool paceProgress(int from, int to, int step, DWORD sleepMs);   // what is queued, the progress window's messages through it first
// Bar position for (value, total) within the band of `stage`: the arithmetic alone.
int progressBarPosition(std::uint32_t stage, std::int64_t value, std::int64_t total);

// ui/wizard_pages.cpp
bool ShowInstallWelcomePage(HWND owner);
bool ShowInstallStartPage(HWND owner);
bool ShowInstallFinishPage(HWND owner);
bool ShowRemoveWelcomePage(HWND owner);
bool ShowRemoveStartPage(HWND owner);
bool ShowRemoveFinishPage(HWND owner);

// ui/help_viewer.cpp
void ShowSetupHelp();
HWND HtmlHelpA(HWND owner, const char* file, UINT command, DWORD_PTR data);

// ui/viewer_binding.cpp
// The module path from the default value of classKey: REG_EXPAND_SZ is expanded, other types
// are taken as they stand. False when the key or value is missing or the path does not fit in
// kHelpPathCapacity characters, terminator included.
bool readViewerModulePath(const char* classKey, char* path, std::size_t capacity);
// The entry's function, binding it (and loading the viewer) on the first call; null when the
// viewer or the entry cannot be had, now or on an earlier call.
FARPROC bindHelpEntry(HelpViewer* viewer, HelpEntry* entry);

// ui/failed_copy.cpp
// Retry (7), skip (8) or cancel (2) after the attempt-th failed copy of a file.
int askAfterFailedCopy(const char* message, int attempt);
// Retry (7) or cancel (2) after the attempt-th failed write of a record the removal needs (the
// log, its journal): skipping it would leave something no removal finds.
int askAfterFailedWrite(const char* path, int attempt);
