// What each language's texts file (texts.cpp English, texts_de.cpp German) defines beside the
// exported tables of holang.h. Every language module is built from the shared entry points of
// holang.cpp and one texts file, so the tables of all languages have the same entries and the
// setup program finds the same text at the same index whichever module lies beside it.
#pragma once

// ---- constants ------------------------------------------------------------------------------

// Entries of each exported table, the closing empty guard included. The program addresses the
// entries by number, so every language has exactly these counts (checked in each texts file).
constexpr int kMessageTextEntries = 38;     // 0-36 and the guard
constexpr int kUniTextEntries = 33;         // 0-31 and the guard
constexpr int kAlertErrorTextEntries = 19;  // 0-17 and the guard
constexpr int kRelativePathEntries = 12;    // 0-10 and the guard
constexpr int kButtonTextEntries = 9;       // button codes 1-8 and the guard
constexpr int kCaptionTextEntries = 2;      // 0 and the guard
constexpr int kDefaultNameEntries = 3;      // 0-1 and the guard
constexpr int kProfileTitleEntries = 11;    // 0-9 and the guard
constexpr int kMonthNameEntries = 13;       // twelve months and the guard

// ---- data: the language's identity, which HOI_LanguageInit hands to the program --------------

extern const char kLanguageName[];            // the language's own name, at most 31 characters
extern const unsigned short kLanguageId;      // Windows language identifier, e.g. 0x0409
extern const unsigned short kLanguageCodePage;  // code page of the texts: 1252 for both
