// The entries of the language module's text tables (holang.h) by name. The setup program and
// every language's texts file index the tables with these names, so a text is found by what it
// says, never by its place; an entry never moves, since a module of one build must give the same
// text at the same place as every other language's module. Entries the program does not use
// are named ...UnusedN; each table closes with an empty guard entry, and the ...Count member is
// the table's length, guard included, checked against each texts file at compile time.
//
// Plain enumerations with a prefix per table, so that eMessageText[kMsgPathTooLong] reads as the
// array it is. Plain C++ without Windows headers: the directory identifiers (src/format), built
// for the package builder too, name their relative folders with it.
#pragma once

// ---- types ----------------------------------------------------------------------------------

// eMessageText: messages, questions, page texts and progress captions.
enum MessageTextId : int {
    kMsgWindowsTooOld = 0,           // the system is older than Windows 7
    kMsgOutOfMemory = 1,             // no memory or no window: the text of an error report
    kMsgCancelInstallQuestion = 2,   // cancel during the installation's progress?
    kMsgExitInstallQuestion = 3,     // cancel on an installation welcome or start page?
    kMsgProgressPreparing = 4,       // progress caption of installation stage 0
    kMsgInvalidFolderPath = 5,       // %s: a target folder that is no valid folder path
    kMsgUnused6 = 6,
    kMsgReplaceQuestion = 7,         // %s: the existing newer file, above the two descriptions
    kMsgShortcutsFailed = 8,         // %d: failure code; kAlertTextSupportNote follows
    kMsgNoInstallation = 9,          // a removal found no registered installation
    kMsgRemoveFinishPage = 10,       // %s product name, %s fixed empty text
    kMsgProgressCopying = 11,        // progress caption of installation stage 1
    kMsgProgressRemovingFiles = 12,  // progress caption of removal stage 5
    kMsgPathTooLong = 13,            // %s: the path as far as it was composed
    kMsgNoFilesToInstall = 14,       // the data file lists no file to install
    kMsgExitRemoveQuestion = 15,     // cancel on a removal welcome or start page?
    kMsgNotEnoughSpace = 16,         // %s: the drive
    kMsgCancelRemoveQuestion = 17,   // cancel during the removal's progress?
    kMsgCopyFailed = 18,             // %s source, %s target of a plain copy
    kMsgNewerVersionInstalled = 19,  // the installed version is newer than the package
    kMsgUnused20 = 20,
    kMsgProgressRegistering = 21,    // progress caption of installation stage 2
    kMsgProgressReadingLog = 22,     // progress caption of removal stage 4
    kMsgProgressRemovingSettings = 23,   // progress caption of removal stage 6
    kMsgInstalledTooOld = 24,        // the installed version is too old to be updated
    kMsgProgressRemovingShortcuts = 25,  // progress caption of removal stage 7
    kMsgProgressCreatingShortcuts = 26,  // progress caption of installation stage 3
    kMsgUnused27 = 27,
    kMsgInstallWelcomePage = 28,     // %s per-user insert, %s update insert, %s product name, %s empty
    kMsgRemoveWelcomePage = 29,      // %s product name, %s fixed empty text
    kMsgProductRunningInstall = 30,  // the product runs, asked from an installation page
    kMsgProductRunningRemove = 31,   // the product runs, asked from a removal page
    kMsgProgramFilesFound = 32,      // program files but no registered installation
    kMsgInstallStartPage = 33,       // %s update insert, %s product label
    kMsgInstallFinishPage = 34,      // %s update insert, %s product label
    kMsgRemoveStartPage = 35,        // %s product name, %s fixed empty text
    kMsgLaunchCheckBox = 36,         // check box of the installation finish page
    kMsgGuard = 37,
    kMsgCount = 38
};

// eUniTexts: product lines, file descriptions of the replace query, page inserts.
enum UniTextId : int {
    kUniUnused0 = 0, kUniUnused1, kUniUnused2, kUniUnused3, kUniUnused4, kUniUnused5, kUniUnused6,
    kUniUnused7, kUniUnused8, kUniUnused9, kUniUnused10, kUniUnused11, kUniUnused12, kUniUnused13,
    kUniUnused14, kUniUnused15, kUniUnused16,
    kUniInstallProductLine = 17,     // %s: product label
    kUniFileDescription = 18,        // %lu size, %s date text made with kUniDatePattern
    kUniDatePattern = 19,            // "#" codes of the file dates, no printf format
    kUniNoFileInformation = 20,      // a file whose size and date cannot be read
    kUniUnused21 = 21, kUniUnused22, kUniUnused23, kUniUnused24, kUniUnused25,
    kUniRemoveProductLine = 26,      // %s: product label
    kUniUnused27 = 27, kUniUnused28,
    kUniUpdateWelcomeInsert = 29,    // installation welcome page of an update
    kUniUpdatePagesInsert = 30,      // installation start and finish pages of an update
    kUniPerUserInsert = 31,          // installation welcome page of a per-user installation
    kUniGuard = 32,
    kUniCount = 33
};

// eAlertErrorText: the texts of the file alerts; each %s is a path unless said otherwise.
enum AlertErrorTextId : int {
    kAlertTextCannotOpen = 0,
    kAlertTextFileInUse = 1,
    kAlertTextDamagedDataFile = 2,
    kAlertTextCannotRead = 3,            // kAlertTextSupportNote follows
    kAlertTextCannotWriteRetry = 4,
    kAlertTextFolderNotCreated = 5,
    kAlertTextUnused6 = 6,
    kAlertTextUnused7 = 7,
    kAlertTextIncompleteDeleted = 8,
    kAlertTextBackupFailed = 9,
    kAlertTextCannotDelete = 10,
    kAlertTextWriteFailed = 11,
    kAlertTextUnpackerFailed = 12,       // %s unpacker's error text, %s archive; the note follows
    kAlertTextUnpackerNotStarted = 13,
    kAlertTextTransferFailedQuestion = 14,   // no argument
    kAlertTextLogUnreadable = 15,
    kAlertTextLogNotCreated = 16,
    kAlertTextSupportNote = 17,          // appended to internal failures, never formatted
    kAlertTextGuard = 18,
    kAlertTextCount = 19
};

// eRelativePaths: folder names below the target and backup folders, each ending in a backslash.
// kRelativeNone is the empty entry of a place without a relative folder.
enum RelativePathId : int {
    kRelativeNone = 0,
    kRelativeSettings = 1,           // below the documents folder; its backup place
    kRelativeLibraries = 2,          // below the documents folder; its backup place
    kRelativeDrawings = 3,           // below the documents folder; its backup place
    kRelativeFonts = 4,              // below the program folder
    kRelativePlugIns = 5,            // below the program folder
    kRelativeTemplates = 6,          // below the program folder
    kRelativeAllUsersBackup = 7,     // backup place of the all-users data and settings files
    kRelativeHelp = 8,               // below the program folder
    kRelativeBackupsRoot = 9,        // root of the dated backup folders
    kRelativeUserBackup = 10,        // backup place of the per-user data and settings files
    kRelativeGuard = 11,
    kRelativeCount = 12
};

// eButtonText: alert button captions, in the order of the alert box's button codes (ui/ui.h):
// the first caption is that of the first code.
enum ButtonTextId : int {
    kButtonTextOk = 0,
    kButtonTextCancel = 1,
    kButtonTextYes = 2,
    kButtonTextNo = 3,
    kButtonTextIgnore = 4,
    kButtonTextContinue = 5,
    kButtonTextRetry = 6,
    kButtonTextSkip = 7,
    kButtonTextGuard = 8,
    kButtonTextCount = 9
};

// eCaptionTexts.
enum CaptionTextId : int {
    kCaptionSetup = 0,               // every message box, alert and error report
    kCaptionGuard = 1,
    kCaptionCount = 2
};

// eDefaultNames.
enum DefaultNameId : int {
    kDefaultNameUnused0 = 0,
    kDefaultNameDialogFont = 1,      // face name of the dialog font
    kDefaultNameGuard = 2,
    kDefaultNameCount = 3
};

// eProfileTitle: registry names and document type descriptions.
enum ProfileTitleId : int {
    kProfileUnused0 = 0,
    kProfileUnused1 = 1,
    kProfileUninstallKey = 2,        // key name of the uninstall entry
    kProfileUnused3 = 3,
    kProfileDrawingType = 4,         // ".HOD" files, in "Harwick-Orbel Vistrel %s"
    kProfileUnused5 = 5,
    kProfileUnused6 = 6,
    kProfileUninstallSuffix = 7,     // appended to the uninstall key that a removal deletes
    kProfileUnused8 = 8,
    kProfileLibraryType = 9,         // ".HOL" files, in "Harwick-Orbel Vistrel %s"
    kProfileGuard = 10,
    kProfileCount = 11
};

// eMonthNames: the month names of the date pattern code "#O".
enum MonthNameId : int {
    kMonthJanuary = 0, kMonthFebruary, kMonthMarch, kMonthApril, kMonthMay, kMonthJune,
    kMonthJuly, kMonthAugust, kMonthSeptember, kMonthOctober, kMonthNovember, kMonthDecember,
    kMonthGuard = 12,
    kMonthCount = 13
};
