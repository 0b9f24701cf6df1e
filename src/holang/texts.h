// What each language's texts file (texts.cpp English, texts_de.cpp German) defines beside the
// exported tables of holang.h. Every language module is built from the shared entry points of
// holang.cpp and one texts file, so the tables of all languages have the same entries and the
// setup program finds the same text at the same index whichever module lies beside it.
#pragma once

// ---- data: the language's identity, which HOI_LanguageInit hands to the program --------------

extern const char kLanguageName[];            // the language's own name, at most 31 characters
extern const unsigned short kLanguageId;      // Windows language identifier, e.g. 0x0409
extern const unsigned short kLanguageCodePage;  // code page of the texts: 1252 for both
