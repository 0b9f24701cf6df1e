// The English texts of the language module: every text the setup program shows, by table and
// index. The program addresses the entries by the names of text_ids.h, each of which stands for
// one fixed index, so an entry never moves; indices that the program does not use hold the empty
// text, never a null pointer, and every table ends with one extra empty entry as a guard.
//
// Formats: an entry that the program formats must take exactly the arguments that its caller
// passes, in the same order and of the same type (a "%s" for a text, a "%d" or "%lu" for a
// number). A missing or extra conversion is a crash in the program, not a cosmetic fault.
// Entries that the program shows as they stand, or passes as an argument into another text,
// contain no "%" at all.
//
// Texts are 8-bit ANSI (Windows-1252). "\n\n" separates paragraphs; painted texts wrap by
// themselves, so there are no line breaks inside a paragraph except around inserted paths.
#include "holang.h"
#include "texts.h"

// ---- language identity ----------------------------------------------------------------------
const char kLanguageName[] = "English";
const unsigned short kLanguageId = 0x0409;  // English (United States)
const unsigned short kLanguageCodePage = 1252;

// ---- eMessageText ---------------------------------------------------------------------------
// Messages, questions, page texts and progress captions.
//
// Decisions on arguments:
// - 10, 29 and 35 receive the product name and then a fixed empty text; the empty text is
//   consumed by a "%s" that prints nothing.
// - 28 receives the per-user insert (eUniTexts 31 or empty), the update insert (eUniTexts 29 or
//   empty), the product name and a fixed empty text: four "%s". A caller that passed a fifth
//   text would be harmless, one that passed only three would not.
// - 33 and 34 receive the update insert (eUniTexts 30 or empty) and the product label of the
//   setup data file. The inserts begin with "\n\n", so an empty insert leaves no gap.
// - 8 is followed directly by eAlertErrorText 17, which begins with its own paragraph break.
// - Buttons named in the texts are those the user sees: on alerts the captions of eButtonText
//   (code 6 "Continue" for the product-running, log and existing-files questions, 7 "Retry",
//   8 "Skip", 2 "Cancel"); on the pages the captions in the dialog templates ("Next",
//   "Install", "Remove", "Finish", "Cancel").
const char* const eMessageText[] = {
    // 0: Windows older than Windows 7; shown before anything else, as it stands.
    "Vistrel requires Windows 7 or a later version of Windows.\n\n"
    "Setup cannot continue on this computer and will now close.",
    // 1: out of memory, or a Setup window could not be created; the text of an error report.
    "There is not enough memory available, or a Setup window could not be opened.\n\n"
    "Close other programs and start Setup again.",
    // 2: question when the user cancels during the installation's progress (Yes / No).
    "Do you want to cancel the installation?\n\n"
    "Files that have already been installed stay on the computer, and Vistrel may not work "
    "until Setup has been run to the end.",
    // 3: question when the user cancels an installation welcome or start page (Yes / No).
    "Do you want to exit Setup?\n\n"
    "Vistrel has not been installed. You can run Setup again at any time.",
    // 4: progress caption, installation stage 0.
    "Preparing the installation...",
    // 5: a target folder is not a valid folder path; %s = the path.
    "Setup cannot create the folder\n%s\nbecause this is not a valid folder path.\n\n"
    "The path may come from an earlier installation. Remove that installation and run Setup "
    "again.",
    // 6: unused.
    "",
    // 7: replace query, question above the two file descriptions; %s = the existing file's path.
    "The following file already exists and is newer than the file that Setup is about to "
    "install:\n%s\n\nDo you want to replace it?",
    // 8: shortcuts could not be created; %d = the failure code. eAlertErrorText 17 follows.
    "Setup could not create the Vistrel shortcuts on the desktop and in the Start menu "
    "(error %d).\n\n"
    "Vistrel itself has been installed; you can start it from its installation folder.",
    // 9: removal started, but no installation is registered (OK).
    "Setup could not find an installation of Vistrel on this computer, so there is nothing to "
    "remove.",
    // 10: removal finish page; %s = product name, %s = fixed empty text.
    "%s has been removed from your computer.%s\n\n"
    "Folders that still contain files of your own have been kept. The remaining Setup files "
    "and the program folder are deleted the next time you restart Windows.",
    // 11: progress caption, installation stage 1.
    "Copying files...",
    // 12: progress caption, removal stage 5.
    "Removing files and folders...",
    // 13: a composed path is too long; %s = the path as far as it was composed.
    "Setup cannot use the path\n%s\nbecause it is longer than the 259 characters that Windows "
    "allows.\n\n"
    "Use folders with shorter paths and run Setup again.",
    // 14: the setup data file lists no file to install (OK).
    "The setup package contains no files that can be installed on this computer.\n\n"
    "The package may be incomplete. Obtain a complete copy and run Setup again.",
    // 15: question when the user cancels a removal welcome or start page (Yes / No).
    "Do you want to exit Setup?\n\n"
    "Vistrel has not been removed. You can run the removal again at any time.",
    // 16: not enough free disk space; %s = the drive, e.g. "C:".
    "There is not enough free space on drive %s to install Vistrel.\n\n"
    "Free some disk space on this drive and run Setup again.",
    // 17: question when the user cancels during the removal's progress (Yes / No).
    "Do you want to cancel the removal?\n\n"
    "Files that have already been removed cannot be restored, and Vistrel may no longer work.",
    // 18: a plain file copy failed; %s = source path, %s = target path.
    "Setup could not copy the file\n%s\nto\n%s\n\n"
    "The disk may be full, or the target file may be in use or write-protected.",
    // 19: the installed version is newer than this package; the installation stops.
    "A newer version of Vistrel is already installed on this computer. Setup does not replace "
    "it with an older version.\n\n"
    "To install this version anyway, remove the installed version first.",
    // 20: unused.
    "",
    // 21: progress caption, installation stage 2.
    "Registering Vistrel with Windows...",
    // 22: progress caption, removal stage 4.
    "Reading the setup log...",
    // 23: progress caption, removal stage 6.
    "Removing settings and registry entries...",
    // 24: the installed version is too old to be updated; the installation stops.
    "The Vistrel installation on this computer is too old to be updated by this Setup.\n\n"
    "Remove the installed version first, then run Setup again.",
    // 25: progress caption, removal stage 7.
    "Removing shortcuts...",
    // 26: progress caption, installation stage 3.
    "Creating shortcuts...",
    // 27: unused.
    "",
    // 28: installation welcome page; %s = per-user insert or empty, %s = update insert or
    //     empty, %s = product name, %s = fixed empty text.
    "Welcome. This wizard installs the Vistrel CAD software on your computer.%s%s\n\n"
    "Before you continue, save your work and close all other programs, in particular %s.%s\n\n"
    "Click Next to continue, or Cancel to exit Setup without changing anything.",
    // 29: removal welcome page; %s = product name, %s = fixed empty text.
    "This wizard removes %s from your computer: its program files, shortcuts and registry "
    "entries.%s\n\n"
    "Drawings, libraries and other files that you created yourself are not removed. Before "
    "you continue, close all other programs.\n\n"
    "Click Next to continue, or Cancel to exit Setup without removing anything.",
    // 30: the product is running, asked from an installation page (Continue / Cancel).
    "Setup cannot continue while Vistrel is running.\n\n"
    "Save your work, close Vistrel and click Continue.",
    // 31: the product is running, asked from a removal page (Continue / Cancel).
    "Setup cannot remove Vistrel while it is running.\n\n"
    "Save your work, close Vistrel and click Continue, or click Cancel to exit Setup.",
    // 32: program files found in the installation folder of a first installation
    //     (Continue / Cancel).
    "Vistrel program files were found in the installation folder, but no installation of "
    "Vistrel is registered on this computer.\n\n"
    "Click Continue to install over these files, or Cancel to exit Setup.",
    // 33: installation start page; %s = update insert or empty, %s = product label.
    "Setup is ready to install.%s\n\n"
    "Setup will install %s. This takes a few minutes; a progress window shows how far it has "
    "come.\n\n"
    "Click Install to begin.",
    // 34: installation finish page; %s = update insert or empty, %s = product label.
    "Setup has finished.%s\n\n"
    "%s is now installed on your computer. You can start it from its shortcut on the desktop "
    "or in the Start menu.\n\n"
    "Click Finish to close Setup.",
    // 35: removal start page; %s = product name, %s = fixed empty text.
    "Setup is ready to remove %s.%s\n\n"
    "All files installed by Setup, the shortcuts and the registry entries will be removed, "
    "together with folders that are left empty. This takes about a minute.\n\n"
    "Click Remove to begin.",
    // 36: check box of the installation finish page: start the product when Setup closes.
    "&Start Vistrel when Setup closes",
    // 37: guard.
    "",
};

// ---- eUniTexts ------------------------------------------------------------------------------
// General texts: product lines, file descriptions of the replace query, page inserts.
//
// Decisions: 29, 30 and 31 are inserted into page texts as arguments; each begins with its own
// paragraph break so that the page reads the same with or without it. 19 is not a printf format
// but a date pattern: "#Y" year, "#y" two-digit year, "#o" month number, "#O" month name, "#d"
// day, "#h" hour, "#m" minute, "#s" second.
const char* const eUniTexts[] = {
    "", "", "", "", "", "", "", "", "", "", // 0-9: unused.
    "", "", "", "", "", "", "",             // 10-16: unused.
    // 17: product line of an installation run; %s = product label of the setup data file.
    "Installation of %s",
    // 18: description of a file in the replace query; %lu = size in bytes, %s = the date text
    //     made with pattern 19.
    "%lu bytes, modified %s",
    // 19: date pattern of the file descriptions, e.g. "May 3, 2022, 14:05".
    "#O #d, #Y, #h:#m",
    // 20: description of a file whose size and date cannot be read.
    "No information available",
    "", "", "", "", "", // 21-25: unused.
    // 26: product line of a removal run; %s = product label of the setup data file.
    "Removal of %s",
    "", "", // 27-28: unused.
    // 29: insert of the installation welcome page for an update.
    "\n\nVistrel is already installed on this computer. Setup updates it and first saves the "
    "files that it replaces to a backup folder.",
    // 30: insert of the installation start and finish pages for an update.
    "\n\nThis is an update of the earlier installation on this computer. Settings files and "
    "files replaced by the update are kept in a dated backup folder.",
    // 31: insert of the installation welcome page for a per-user installation.
    "\n\nVistrel will be installed for your user account only.",
    // 32: guard.
    "",
};

// ---- eAlertErrorText ------------------------------------------------------------------------
// Texts of the file alerts; each %s is a path unless said otherwise.
//
// Decisions: 17 is never formatted; it is appended to 3, to 12 and to eMessageText 8, so it
// begins with its own paragraph break and those three end without one. 14 is shown as it
// stands, after the failure itself has been reported with the file's name, so it names no file.
const char* const eAlertErrorText[] = {
    // 0: a file cannot be opened (setup data file, source file of the replace check).
    "Setup cannot open the file\n%s\n\n"
    "Make sure that the file exists and that you are allowed to read it.",
    // 1: a file is in use (Continue / Cancel).
    "The file\n%s\nis in use by another program.\n\n"
    "Close that program and click Continue, or click Cancel.",
    // 2: the setup data file is damaged or too short.
    "The setup data file\n%s\nis damaged or incomplete.\n\n"
    "Obtain a complete copy of the setup package and run Setup again.",
    // 3: a file cannot be read; 17 follows.
    "Setup could not read the file\n%s",
    // 4: a file cannot be written (Retry / Cancel).
    "Setup cannot write the file\n%s\n\n"
    "The file may be in use or write-protected. Click Retry to try again, or Cancel to stop.",
    // 5: a folder cannot be created.
    "Setup could not create the folder\n%s\n\n"
    "Make sure that you are allowed to write to the folder above it.",
    // 6-7: unused.
    "",
    "",
    // 8: an incomplete file, deleted before this alert is shown.
    "The file\n%s\nwas incomplete and has been deleted.",
    // 9: the backup copy of a file failed (Retry / Skip / Cancel).
    "Setup could not back up the file\n%s\n\n"
    "Click Retry to try again, Skip to go on without a backup of this file, or Cancel to stop "
    "the installation.",
    // 10: a file cannot be deleted.
    "Setup could not delete the file\n%s\n\n"
    "The file may be in use. You can delete it yourself after Setup has finished.",
    // 11: writing to a file failed.
    "Setup could not write to the file\n%s\n\n"
    "The disk may be full or write-protected.",
    // 12: the unpacker failed; %s = its error text, e.g. "HOUNZIP (3)", %s = the archive.
    //     17 follows.
    "Error %s occurred while Setup was unpacking the file\n%s",
    // 13: the unpacker could not be started; %s = the archive.
    "Setup could not start the unpacking program for the file\n%s\n\n"
    "Make sure that hounzip.exe is in the same folder as Setup.",
    // 14: question after a failed file transfer (Retry / Skip / Cancel); no argument.
    "The file could not be installed.\n\n"
    "Click Retry to try again, Skip to go on without this file, or Cancel to stop the "
    "installation.",
    // 15: the setup log cannot be read during a removal.
    "Setup cannot read the setup log\n%s\n\n"
    "The log lists the installed files, so Vistrel cannot be removed without it. Install "
    "Vistrel again to create a new log, then remove it.",
    // 16: the setup log cannot be created during an installation (Continue / Cancel).
    "Setup cannot create the setup log\n%s\n\n"
    "Without the log, Vistrel cannot be removed completely later. Click Continue to install "
    "without a log, or Cancel to stop the installation.",
    // 17: appended to the alerts of internal failures; never formatted.
    "\n\nIf the problem persists, note this message and contact Harwick-Orbel support.",
    // 18: guard.
    "",
};

// ---- eRelativePaths -------------------------------------------------------------------------
// Folder names below the target and backup folders. Each is relative (no leading backslash) and
// ends in exactly one backslash, because sub-folders and file names are appended directly. They
// are names, not texts: every language module carries these same names, so that an installation
// and a removal in different languages find the same folders.
const char* const eRelativePaths[] = {
    "",             // 0: unused.
    "Settings\\",   // 1: settings folder below the documents folder; its backup place.
    "Libraries\\",  // 2: library folder below the documents folder; its backup place.
    "Drawings\\",   // 3: drawing folder below the documents folder; its backup place.
    "Fonts\\",      // 4: fonts below the program folder.
    "Plug-Ins\\",   // 5: plug-ins below the program folder.
    "Templates\\",  // 6: templates below the program folder.
    "AllUsers\\",   // 7: backup place of the all-users data and settings files.
    "Help\\",       // 8: help files below the program folder.
    "Backups\\",    // 9: root of the dated backup folders below the common data folder.
    "User\\",       // 10: backup place of the per-user data and settings files.
    "",             // 11: guard.
};

// ---- eButtonText ----------------------------------------------------------------------------
// Alert button captions: the caption of button code k is entry k - 1. Buttons shown together
// ({6, 2}, {3, 4}, {7, 2}, {7, 8, 2}) have distinct mnemonics; OK and Cancel go without one, as
// Enter and Escape serve them.
const char* const eButtonText[] = {
    "OK",         // code 1: acknowledge a notice.
    "Cancel",     // code 2: the negative answer; also Escape and the close box.
    "&Yes",       // code 3: confirm a question.
    "&No",        // code 4: decline a question.
    "&Ignore",    // code 5: go on past a problem (lone button).
    "&Continue",  // code 6: go on once the condition is dealt with (product closed, no log).
    "&Retry",     // code 7: try a failed operation again.
    "&Skip",      // code 8: leave out the failed file and go on.
    "",           // guard.
};

// ---- eCaptionTexts --------------------------------------------------------------------------
const char* const eCaptionTexts[] = {
    "Vistrel Setup",  // 0: caption of every message box, alert and error report.
    "",               // 1: guard.
};

// ---- eDefaultNames --------------------------------------------------------------------------
// A font's face name is a name, the same in every language.
const char* const eDefaultNames[] = {
    "",          // 0: unused.
    "Segoe UI",  // 1: face name of the dialog font (at most 31 characters); present on Windows 7
                 //    and later.
    "",          // 2: guard.
};

// ---- eProfileTitle --------------------------------------------------------------------------
// Registry names and document type descriptions. Entries 2 and 7 name the uninstall entry and
// are the same in every language, so that a removal in another language finds the entry; 4 and 9
// are the descriptions that Explorer shows, and are translated.
const char* const eProfileTitle[] = {
    "", "",                       // 0-1: unused.
    "Vistrel Professional 2022",  // 2: key name of the uninstall entry; one key, no backslash.
    "",                           // 3: unused.
    "Drawing",                    // 4: type of ".HOD" files, in "Harwick-Orbel Vistrel %s".
    "", "",                       // 5-6: unused.
    "",                           // 7: suffix of the uninstall entry removed on removal; empty,
                                  //    so the removal deletes exactly the entry written (key 2).
    "",                           // 8: unused.
    "Library",                    // 9: type of ".HOL" files, in "Harwick-Orbel Vistrel %s".
    "",                           // 10: guard.
};

// ---- eMonthNames ----------------------------------------------------------------------------
// Month names of the date pattern code "#O", January first.
const char* const eMonthNames[] = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December",
    "",  // 12: guard.
};

// ---- eApplicationName -----------------------------------------------------------------------
// Title of the main window and caption of the wizard pages and the progress window.
const char eApplicationName[] = "Vistrel Setup";

#include "table_lengths.h"
