// Included at the end of each texts file, after its tables: each name of text_ids.h stands for a
// fixed index, so a table that lost or gained an entry would move every later text to the wrong
// place. Every language is checked against the same counts.
#pragma once

#include "text_ids.h"

static_assert(sizeof eMessageText / sizeof eMessageText[0] == kMsgCount, "eMessageText");
static_assert(sizeof eUniTexts / sizeof eUniTexts[0] == kUniCount, "eUniTexts");
static_assert(sizeof eAlertErrorText / sizeof eAlertErrorText[0] == kAlertTextCount, "eAlertErrorText");
static_assert(sizeof eRelativePaths / sizeof eRelativePaths[0] == kRelativeCount, "eRelativePaths");
static_assert(sizeof eButtonText / sizeof eButtonText[0] == kButtonTextCount, "eButtonText");
static_assert(sizeof eCaptionTexts / sizeof eCaptionTexts[0] == kCaptionCount, "eCaptionTexts");
static_assert(sizeof eDefaultNames / sizeof eDefaultNames[0] == kDefaultNameCount, "eDefaultNames");
static_assert(sizeof eProfileTitle / sizeof eProfileTitle[0] == kProfileCount, "eProfileTitle");
static_assert(sizeof eMonthNames / sizeof eMonthNames[0] == kMonthCount, "eMonthNames");
