// Control identifiers of the dialog templates in dialogs.rc. The setup program finds every
// control by these numbers, so they are part of the language module's interface: a translated
// module must keep them. Plain #defines, because the resource compiler reads this file too.
#ifndef HOLANG_DIALOG_IDS_H
#define HOLANG_DIALOG_IDS_H

// ---- constants ------------------------------------------------------------------------------

// Shared by the wizard pages, the progress window and the replace query.
#define IDC_MAIN_TEXT       370   // the page's, stage's or question's text
#define IDC_CONTINUE        570   // continue button of a page; first answer of the replace query
#define IDC_PAGE_HELP       22    // help button of a page
#define IDC_PAGE_OPTION     270   // check box of the install start and finish pages

// Replace query: the two file descriptions and the four answers.
#define IDC_EXISTING_TEXT   371
#define IDC_NEW_TEXT        372
#define IDC_EXISTING_LABEL  373   // "Existing file:" above the existing file's description
#define IDC_NEW_LABEL       374   // "New file:" above the new file's description
#define IDC_REPLACE_FILE    570
#define IDC_REPLACE_ALL     571
#define IDC_REPLACE_KEEP    572
#define IDC_REPLACE_CANCEL  573

// Alert box: three buttons and the area the message text is painted in.
#define IDC_ALERT_BUTTON1   571
#define IDC_ALERT_BUTTON2   572
#define IDC_ALERT_BUTTON3   573
#define IDC_ALERT_TEXT      720

// Progress window: the bar.
#define IDC_PROGRESS_BAR    720

#endif
