// Reading the printf conversions out of a language text, so that a test can compare them with
// the arguments the setup program passes.
#pragma once

#include <string>

// ---- constants ------------------------------------------------------------------------------

// One letter per conversion, in order:
//   's' a narrow text ("%s", with optional flags, width and precision),
//   'i' a 32-bit integer ("%d", "%i", "%u", "%x", "%X", "%o", also with "l", which is 32 bits on
//       Windows),
//   '?' anything the program never passes (wide texts, 64-bit sizes, "*" widths, floating point,
//       characters, "%n", an unfinished conversion at the end of the text).
// "%%" is a literal percent sign and yields nothing.
constexpr char kConversionText = 's';
constexpr char kConversionInt32 = 'i';
constexpr char kConversionOther = '?';

// ---- functions (conversions.cpp) ------------------------------------------------------------

// The conversions of a printf format, one letter each as above; "" for a text without any.
std::string ConversionsOf(const char* format);

// The date-pattern codes of a text ("#Y" gives 'Y'), in order; "#" at the very end gives '#'.
std::string DateCodesOf(const char* pattern);
