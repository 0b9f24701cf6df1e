// The German texts of the language module (holang.dll of the German distribution): the same
// tables, indices and formats as the English texts.cpp, which documents what each entry is for;
// the comments here only name the entries. Texts are translated in the Sie form, with the
// button captions of German Windows; names that the program or another language module relies
// on stay as in English (eRelativePaths, eProfileTitle 2 and 7, eDefaultNames 1).
//
// Formats: every entry takes exactly the conversions of its English twin, in the same order and
// of the same kind, since the callers pass the same arguments whatever the language. German word
// order never moves an argument: where it would, the sentence is built around the argument.
//
// Texts are 8-bit ANSI (Windows-1252), written with octal escapes, which never run on into a
// following letter or digit (a hex escape would): \344 \366 \374 the small a, o, u umlauts,
// \304 \326 \334 the capital ones, \337 the sharp s, \204 and \223 the German opening and
// closing quotation marks. The file itself stays plain ASCII.
#include "holang.h"
#include "texts.h"

// ---- language identity ----------------------------------------------------------------------
const char kLanguageName[] = "Deutsch";
const unsigned short kLanguageId = 0x0407;  // German (Germany)
const unsigned short kLanguageCodePage = 1252;

// ---- eMessageText ---------------------------------------------------------------------------
// Buttons named in the texts are the captions the user sees: eButtonText on alerts ("Weiter",
// "Wiederholen", "\334berspringen", "Abbrechen"), the dialog templates on the pages ("Weiter",
// "Installieren", "Entfernen", "Fertig stellen", "Abbrechen").
const char* const eMessageText[] = {
    // 0: Windows older than Windows 7.
    "Vistrel erfordert Windows 7 oder eine neuere Version von Windows.\n\n"
    "Setup kann auf diesem Computer nicht fortgesetzt werden und wird jetzt beendet.",
    // 1: out of memory, or a Setup window could not be created.
    "Es ist nicht gen\374gend Arbeitsspeicher verf\374gbar, oder ein Setup-Fenster konnte nicht "
    "ge\366ffnet werden.\n\n"
    "Schlie\337en Sie andere Programme, und starten Sie Setup erneut.",
    // 2: cancel question during the installation's progress (Yes / No).
    "M\366chten Sie die Installation abbrechen?\n\n"
    "Bereits installierte Dateien verbleiben auf dem Computer, und Vistrel funktioniert "
    "m\366glicherweise erst, wenn Setup vollst\344ndig ausgef\374hrt wurde.",
    // 3: cancel question on an installation welcome or start page (Yes / No).
    "M\366chten Sie Setup beenden?\n\n"
    "Vistrel wurde nicht installiert. Sie k\366nnen Setup jederzeit erneut ausf\374hren.",
    // 4: progress caption, installation stage 0.
    "Die Installation wird vorbereitet...",
    // 5: invalid folder path; %s = the path.
    "Setup kann den Ordner\n%s\nnicht erstellen, da dies kein g\374ltiger Ordnerpfad ist.\n\n"
    "Der Pfad stammt m\366glicherweise von einer fr\374heren Installation. Entfernen Sie diese "
    "Installation, und f\374hren Sie Setup erneut aus.",
    // 6: unused.
    "",
    // 7: replace query; %s = the existing file's path.
    "Die folgende Datei ist bereits vorhanden und neuer als die Datei, die Setup installieren "
    "m\366chte:\n%s\n\nM\366chten Sie die Datei ersetzen?",
    // 8: shortcuts not created; %d = the failure code. eAlertErrorText 17 follows.
    "Setup konnte die Verkn\374pfungen f\374r Vistrel auf dem Desktop und im Startmen\374 nicht "
    "erstellen (Fehler %d).\n\n"
    "Vistrel selbst wurde installiert; Sie k\366nnen das Programm aus seinem Installationsordner "
    "starten.",
    // 9: nothing to remove (OK).
    "Setup hat auf diesem Computer keine Installation von Vistrel gefunden. Es gibt nichts zu "
    "entfernen.",
    // 10: removal finish page; %s = product name, %s = fixed empty text.
    "%s wurde von Ihrem Computer entfernt.%s\n\n"
    "Ordner, die noch von Ihnen erstellte Dateien enthalten, wurden beibehalten. Die \374brigen "
    "Setup-Dateien und der Programmordner werden beim n\344chsten Neustart von Windows gel\366scht.",
    // 11: progress caption, installation stage 1.
    "Dateien werden kopiert...",
    // 12: progress caption, removal stage 5.
    "Dateien und Ordner werden entfernt...",
    // 13: path too long; %s = the path as far as it was composed.
    "Setup kann den Pfad\n%s\nnicht verwenden, da er l\344nger als die 259 Zeichen ist, die "
    "Windows zul\344sst.\n\n"
    "Verwenden Sie Ordner mit k\374rzeren Pfaden, und f\374hren Sie Setup erneut aus.",
    // 14: no file to install (OK).
    "Das Setup-Paket enth\344lt keine Dateien, die auf diesem Computer installiert werden "
    "k\366nnen.\n\n"
    "Das Paket ist m\366glicherweise unvollst\344ndig. Besorgen Sie sich eine vollst\344ndige Kopie, und "
    "f\374hren Sie Setup erneut aus.",
    // 15: cancel question on a removal welcome or start page (Yes / No).
    "M\366chten Sie Setup beenden?\n\n"
    "Vistrel wurde nicht entfernt. Sie k\366nnen die Deinstallation jederzeit erneut ausf\374hren.",
    // 16: not enough disk space; %s = the drive, e.g. "C:".
    "Auf Laufwerk %s ist nicht gen\374gend Speicherplatz frei, um Vistrel zu installieren.\n\n"
    "Geben Sie auf diesem Laufwerk Speicherplatz frei, und f\374hren Sie Setup erneut aus.",
    // 17: cancel question during the removal's progress (Yes / No).
    "M\366chten Sie die Deinstallation abbrechen?\n\n"
    "Bereits entfernte Dateien k\366nnen nicht wiederhergestellt werden, und Vistrel funktioniert "
    "m\366glicherweise nicht mehr.",
    // 18: copy failed; %s = source path, %s = target path.
    "Setup konnte die Datei\n%s\nnicht nach\n%s\nkopieren.\n\n"
    "Der Datentr\344ger ist m\366glicherweise voll, oder die Zieldatei wird verwendet oder ist "
    "schreibgesch\374tzt.",
    // 19: newer version installed.
    "Auf diesem Computer ist bereits eine neuere Version von Vistrel installiert. Setup ersetzt "
    "sie nicht durch eine \344ltere Version.\n\n"
    "Wenn Sie diese Version trotzdem installieren m\366chten, entfernen Sie zuerst die installierte "
    "Version.",
    // 20: unused.
    "",
    // 21: progress caption, installation stage 2.
    "Vistrel wird bei Windows registriert...",
    // 22: progress caption, removal stage 4.
    "Das Setup-Protokoll wird gelesen...",
    // 23: progress caption, removal stage 6.
    "Einstellungen und Registrierungseintr\344ge werden entfernt...",
    // 24: installed version too old to be updated.
    "Die Installation von Vistrel auf diesem Computer ist zu alt, um mit diesem Setup "
    "aktualisiert zu werden.\n\n"
    "Entfernen Sie zuerst die installierte Version, und f\374hren Sie Setup dann erneut aus.",
    // 25: progress caption, removal stage 7.
    "Verkn\374pfungen werden entfernt...",
    // 26: progress caption, installation stage 3.
    "Verkn\374pfungen werden erstellt...",
    // 27: unused.
    "",
    // 28: installation welcome page; %s = per-user insert or empty, %s = update insert or
    //     empty, %s = product name, %s = fixed empty text.
    "Willkommen. Dieser Assistent installiert die CAD-Software Vistrel auf Ihrem Computer.%s%s\n\n"
    "Speichern Sie Ihre Arbeit, bevor Sie fortfahren, und schlie\337en Sie alle anderen Programme, "
    "insbesondere %s.%s\n\n"
    "Klicken Sie auf \204Weiter\223, um fortzufahren, oder auf \204Abbrechen\223, um Setup ohne \304nderungen "
    "zu beenden.",
    // 29: removal welcome page; %s = product name, %s = fixed empty text.
    "Dieser Assistent entfernt %s von Ihrem Computer: die Programmdateien, die Verkn\374pfungen "
    "und die Registrierungseintr\344ge.%s\n\n"
    "Zeichnungen, Bibliotheken und andere Dateien, die Sie selbst erstellt haben, werden nicht "
    "entfernt. Schlie\337en Sie alle anderen Programme, bevor Sie fortfahren.\n\n"
    "Klicken Sie auf \204Weiter\223, um fortzufahren, oder auf \204Abbrechen\223, um Setup zu beenden, "
    "ohne etwas zu entfernen.",
    // 30: product running, asked from an installation page (Continue / Cancel).
    "Setup kann nicht fortgesetzt werden, solange Vistrel ausgef\374hrt wird.\n\n"
    "Speichern Sie Ihre Arbeit, schlie\337en Sie Vistrel, und klicken Sie auf \204Weiter\223.",
    // 31: product running, asked from a removal page (Continue / Cancel).
    "Setup kann Vistrel nicht entfernen, solange das Programm ausgef\374hrt wird.\n\n"
    "Speichern Sie Ihre Arbeit, schlie\337en Sie Vistrel, und klicken Sie auf \204Weiter\223, oder "
    "klicken Sie auf \204Abbrechen\223, um Setup zu beenden.",
    // 32: program files in the installation folder of a first installation (Continue / Cancel).
    "Im Installationsordner wurden Programmdateien von Vistrel gefunden, auf diesem Computer ist "
    "jedoch keine Installation von Vistrel registriert.\n\n"
    "Klicken Sie auf \204Weiter\223, um diese Dateien bei der Installation zu \374berschreiben, oder auf "
    "\204Abbrechen\223, um Setup zu beenden.",
    // 33: installation start page; %s = update insert or empty, %s = product label.
    "Setup ist zur Installation bereit.%s\n\n"
    "Setup installiert %s. Dies dauert einige Minuten; ein Statusfenster zeigt den Fortschritt "
    "an.\n\n"
    "Klicken Sie auf \204Installieren\223, um zu beginnen.",
    // 34: installation finish page; %s = update insert or empty, %s = product label.
    "Setup ist abgeschlossen.%s\n\n"
    "%s ist jetzt auf Ihrem Computer installiert. Sie k\366nnen das Programm \374ber seine "
    "Verkn\374pfung auf dem Desktop oder im Startmen\374 starten.\n\n"
    "Klicken Sie auf \204Fertig stellen\223, um Setup zu schlie\337en.",
    // 35: removal start page; %s = product name, %s = fixed empty text.
    "Setup ist bereit, %s zu entfernen.%s\n\n"
    "Alle von Setup installierten Dateien, die Verkn\374pfungen und die Registrierungseintr\344ge "
    "werden entfernt, ebenso Ordner, die danach leer sind. Dies dauert etwa eine Minute.\n\n"
    "Klicken Sie auf \204Entfernen\223, um zu beginnen.",
    // 36: check box of the installation finish page.
    "Vistrel nach dem Beenden von Setup &starten",
    // 37: guard.
    "",
};

// ---- eUniTexts ------------------------------------------------------------------------------
// 19 is a date pattern, not a printf format: it gives e.g. "3. Mai 2022, 14:05".
const char* const eUniTexts[] = {
    "", "", "", "", "", "", "", "", "", "", // 0-9: unused.
    "", "", "", "", "", "", "",             // 10-16: unused.
    // 17: product line of an installation run; %s = product label.
    "Installation von %s",
    // 18: file description in the replace query; %lu = size in bytes, %s = the date text.
    "%lu Bytes, ge\344ndert am %s",
    // 19: date pattern of the file descriptions.
    "#d. #O #Y, #h:#m",
    // 20: description of a file whose size and date cannot be read.
    "Keine Informationen verf\374gbar",
    "", "", "", "", "", // 21-25: unused.
    // 26: product line of a removal run; %s = product label.
    "Deinstallation von %s",
    "", "", // 27-28: unused.
    // 29: insert of the installation welcome page for an update.
    "\n\nVistrel ist bereits auf diesem Computer installiert. Setup aktualisiert das Programm "
    "und speichert die Dateien, die dabei ersetzt werden, zuvor in einem Sicherungsordner.",
    // 30: insert of the installation start and finish pages for an update.
    "\n\nDies ist eine Aktualisierung der fr\374heren Installation auf diesem Computer. "
    "Einstellungsdateien und ersetzte Dateien werden in einem datierten Sicherungsordner "
    "aufbewahrt.",
    // 31: insert of the installation welcome page for a per-user installation.
    "\n\nVistrel wird nur f\374r Ihr Benutzerkonto installiert.",
    // 32: guard.
    "",
};

// ---- eAlertErrorText ------------------------------------------------------------------------
// Each %s is a path unless said otherwise. 17 is appended to 3, 12 and eMessageText 8.
const char* const eAlertErrorText[] = {
    // 0: a file cannot be opened.
    "Setup kann die Datei\n%s\nnicht \366ffnen.\n\n"
    "Stellen Sie sicher, dass die Datei vorhanden ist und dass Sie sie lesen d\374rfen.",
    // 1: a file is in use (Continue / Cancel).
    "Die Datei\n%s\nwird von einem anderen Programm verwendet.\n\n"
    "Schlie\337en Sie dieses Programm, und klicken Sie auf \204Weiter\223, oder klicken Sie auf "
    "\204Abbrechen\223.",
    // 2: the setup data file is damaged or too short.
    "Die Setup-Datendatei\n%s\nist besch\344digt oder unvollst\344ndig.\n\n"
    "Besorgen Sie sich eine vollst\344ndige Kopie des Setup-Pakets, und f\374hren Sie Setup erneut "
    "aus.",
    // 3: a file cannot be read; 17 follows.
    "Setup konnte die Datei\n%s\nnicht lesen.",
    // 4: a file cannot be written (Retry / Cancel).
    "Setup kann die Datei\n%s\nnicht schreiben.\n\n"
    "Die Datei wird m\366glicherweise verwendet oder ist schreibgesch\374tzt. Klicken Sie auf "
    "\204Wiederholen\223, um es erneut zu versuchen, oder auf \204Abbrechen\223, um den Vorgang zu beenden.",
    // 5: a folder cannot be created.
    "Setup konnte den Ordner\n%s\nnicht erstellen.\n\n"
    "Stellen Sie sicher, dass Sie Schreibrechte f\374r den \374bergeordneten Ordner haben.",
    // 6-7: unused.
    "",
    "",
    // 8: an incomplete file, deleted before this alert is shown.
    "Die Datei\n%s\nwar unvollst\344ndig und wurde gel\366scht.",
    // 9: the backup copy of a file failed (Retry / Skip / Cancel).
    "Setup konnte keine Sicherungskopie der Datei\n%s\nerstellen.\n\n"
    "Klicken Sie auf \204Wiederholen\223, um es erneut zu versuchen, auf \204\334berspringen\223, um ohne "
    "Sicherung dieser Datei fortzufahren, oder auf \204Abbrechen\223, um die Installation zu beenden.",
    // 10: a file cannot be deleted.
    "Setup konnte die Datei\n%s\nnicht l\366schen.\n\n"
    "Die Datei wird m\366glicherweise verwendet. Sie k\366nnen sie nach Abschluss von Setup selbst "
    "l\366schen.",
    // 11: writing to a file failed.
    "Setup konnte nicht in die Datei\n%s\nschreiben.\n\n"
    "Der Datentr\344ger ist m\366glicherweise voll oder schreibgesch\374tzt.",
    // 12: the unpacker failed; %s = its error text, e.g. "HOUNZIP (3)", %s = the archive.
    //     17 follows.
    "Fehler %s ist aufgetreten, w\344hrend Setup die folgende Datei entpackt hat:\n%s",
    // 13: the unpacker could not be started; %s = the archive.
    "Setup konnte das Entpackprogramm f\374r die Datei\n%s\nnicht starten.\n\n"
    "Stellen Sie sicher, dass sich hounzip.exe im selben Ordner wie Setup befindet.",
    // 14: question after a failed file transfer (Retry / Skip / Cancel); no argument.
    "Die Datei konnte nicht installiert werden.\n\n"
    "Klicken Sie auf \204Wiederholen\223, um es erneut zu versuchen, auf \204\334berspringen\223, um ohne "
    "diese Datei fortzufahren, oder auf \204Abbrechen\223, um die Installation zu beenden.",
    // 15: the setup log cannot be read during a removal.
    "Setup kann das Setup-Protokoll\n%s\nnicht lesen.\n\n"
    "Das Protokoll verzeichnet die installierten Dateien; ohne das Protokoll kann Vistrel nicht "
    "entfernt werden. Installieren Sie Vistrel erneut, damit ein neues Protokoll angelegt wird, "
    "und entfernen Sie das Programm anschlie\337end.",
    // 16: the setup log cannot be created during an installation (Continue / Cancel).
    "Setup kann das Setup-Protokoll\n%s\nnicht erstellen.\n\n"
    "Ohne das Protokoll kann Vistrel sp\344ter nicht vollst\344ndig entfernt werden. Klicken Sie auf "
    "\204Weiter\223, um ohne Protokoll zu installieren, oder auf \204Abbrechen\223, um die Installation zu "
    "beenden.",
    // 17: appended to the alerts of internal failures; never formatted.
    "\n\nWenn das Problem weiterhin besteht, notieren Sie diese Meldung, und wenden Sie sich an "
    "den Support von Harwick-Orbel.",
    // 18: guard.
    "",
};

// ---- eRelativePaths -------------------------------------------------------------------------
// Folder names, not texts: exactly the English names, never translated. A removal finds the
// folders by these names whichever language module installed them, and an update of an English
// installation by the German distribution (or the other way round) backs up and replaces the
// same folders instead of creating a second set.
const char* const eRelativePaths[] = {
    "",             // 0: unused.
    "Settings\\",   // 1: settings folder below the documents folder.
    "Libraries\\",  // 2: library folder below the documents folder.
    "Drawings\\",   // 3: drawing folder below the documents folder.
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
// Caption of button code k is entry k - 1. Buttons shown together ({6, 2}, {3, 4}, {7, 2},
// {7, 8, 2}) have distinct mnemonics; "Weiter" and "Wiederholen" share theirs but never meet.
// "Skip" takes its mnemonic on its second letter, which every keyboard layout has.
const char* const eButtonText[] = {
    "OK",             // code 1
    "Abbrechen",      // code 2
    "&Ja",            // code 3
    "&Nein",          // code 4
    "&Ignorieren",    // code 5
    "&Weiter",        // code 6
    "&Wiederholen",   // code 7
    "\334&berspringen",  // code 8
    "",               // guard.
};

// ---- eCaptionTexts --------------------------------------------------------------------------
const char* const eCaptionTexts[] = {
    "Vistrel-Setup",  // 0: caption of every message box, alert and error report.
    "",               // 1: guard.
};

// ---- eDefaultNames --------------------------------------------------------------------------
// A font's face name is a name: the same as in English.
const char* const eDefaultNames[] = {
    "",          // 0: unused.
    "Segoe UI",  // 1: face name of the dialog font.
    "",          // 2: guard.
};

// ---- eProfileTitle --------------------------------------------------------------------------
// 2 and 7 name the uninstall entry and stay as in English, so that a removal in either language
// finds the entry; 4 and 9 are the document type descriptions that Explorer shows.
const char* const eProfileTitle[] = {
    "", "",                       // 0-1: unused.
    "Vistrel Professional 2022",  // 2: key name of the uninstall entry (a name).
    "",                           // 3: unused.
    "Zeichnung",                  // 4: type of ".HOD" files, in "Harwick-Orbel Vistrel %s".
    "", "",                       // 5-6: unused.
    "",                           // 7: suffix of the uninstall entry removed on removal.
    "",                           // 8: unused.
    "Bibliothek",                 // 9: type of ".HOL" files, in "Harwick-Orbel Vistrel %s".
    "",                           // 10: guard.
};

// ---- eMonthNames ----------------------------------------------------------------------------
const char* const eMonthNames[] = {
    "Januar", "Februar", "M\344rz",      "April",   "Mai",      "Juni",
    "Juli",   "August",  "September", "Oktober", "November", "Dezember",
    "",  // 12: guard.
};

// ---- eApplicationName -----------------------------------------------------------------------
const char eApplicationName[] = "Vistrel-Setup";

#include "table_lengths.h"
