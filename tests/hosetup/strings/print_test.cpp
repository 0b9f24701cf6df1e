// Print: the legacy bounded rule and its result, a range of overloads by argument list, wide
// conversions, and the decimal separator of the overloads with doubles.
#include <windows.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <string>

#include "strings/hoi_strings.h"

TEST(Print, LegacyRuleAtCapacitiesAroundTheLength)
{
    char buffer[8] = "#######";
    EXPECT_EQ(3u, HOI_PrintA(buffer, 4, "%d", 12345)); // needs more: cut
    EXPECT_EQ(std::string("123\0###", 7), std::string(buffer, 7));
    EXPECT_EQ(4u, HOI_PrintA(buffer, 5, "%d", 12345)); // needs exactly 5: last one cut
    EXPECT_EQ(std::string("1234\0##", 7), std::string(buffer, 7));
    EXPECT_EQ(5u, HOI_PrintA(buffer, 6, "%d", 12345)); // fits with terminator
    EXPECT_EQ(std::string("12345\0#", 7), std::string(buffer, 7));
    EXPECT_EQ(0u, HOI_PrintA(buffer, 1, "%d", 7));
    EXPECT_EQ(0, buffer[0]);

    wchar_t wide[8] = L"#######";
    EXPECT_EQ(3u, HOI_PrintW(wide, 4, L"%d", 12345));
    EXPECT_STREQ(L"123", wide);
    EXPECT_EQ(4u, HOI_PrintW(wide, 5, L"%d", 12345));
    EXPECT_STREQ(L"1234", wide);
    EXPECT_EQ(5u, HOI_PrintW(wide, 6, L"%d", 12345));
    EXPECT_STREQ(L"12345", wide);
    EXPECT_EQ(L'#', wide[6]);
}

TEST(Print, NarrowOverloadsPassEveryValue)
{
    char buffer[128];
    EXPECT_EQ(10u, HOI_PrintA(buffer, sizeof buffer, "%s%s%s%s%s%s%s%s%s%s", "0", "1", "2", "3",
                       "4", "5", "6", "7", "8", "9"));
    EXPECT_STREQ("0123456789", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%d %d %d %d %d %d %d %d %d %d", 1, -2, 3, 4, 5, 6, 7, 8, 9,
        10);
    EXPECT_STREQ("1 -2 3 4 5 6 7 8 9 10", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%g %g %g %g %g %g %g %g %g %g", 0.5, 1.5, 2.5, 3.5, 4.5,
        5.5, 6.5, 7.5, 8.5, 9.5);
    EXPECT_STREQ("0.5 1.5 2.5 3.5 4.5 5.5 6.5 7.5 8.5 9.5", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%s\\%d\n\n%s", "Init", 412, "text");
    EXPECT_STREQ("Init\\412\n\ntext", buffer);
    HOI_PrintA(buffer, sizeof buffer, "_%05d%d_", 12, 3);
    EXPECT_STREQ("_000123_", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%s %d %d %s", "a", 1, 2, "b");
    EXPECT_STREQ("a 1 2 b", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%d %d %d %s", 1, 2, 3, "x");
    EXPECT_STREQ("1 2 3 x", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%d/%d=%.3f", 1, 4, 0.25);
    EXPECT_STREQ("1/4=0.250", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%.1f%%%s", 99.5, "!");
    EXPECT_STREQ("99.5%!", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%c%c%s", 'A', ':', "\\x");
    EXPECT_STREQ("A:\\x", buffer);
    HOI_PrintA(buffer, sizeof buffer, "[%c]", 'z');
    EXPECT_STREQ("[z]", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%c%s%s", '#', "ab", "cd");
    EXPECT_STREQ("#abcd", buffer);
}

TEST(Print, WideStringsAndCutResult)
{
    wchar_t buffer[64];
    // %s takes a wide string in the wide family.
    EXPECT_EQ(9u, HOI_PrintW(buffer, 64, L"%s-%s=%d", L"abc", L"de", 42));
    EXPECT_STREQ(L"abc-de=42", buffer);
    HOI_PrintW(buffer, 64, L"%s%s%s%s%s%s%s%s%s%s", L"a", L"b", L"c", L"d", L"e", L"f", L"g",
        L"h", L"i", L"j");
    EXPECT_STREQ(L"abcdefghij", buffer);
    HOI_PrintW(buffer, 64, L"%d:%.2f", 3, 2.75);
    EXPECT_STREQ(L"3:2.75", buffer);
    EXPECT_EQ(5u, HOI_PrintW(buffer, 6, L"%s", L"\u00e9t\u00e9s longs"));
    EXPECT_STREQ(L"\u00e9t\u00e9s ", buffer);

    char narrow[6];
    EXPECT_EQ(5u, HOI_PrintA(narrow, sizeof narrow, "%s%s", "abc", "defgh"));
    EXPECT_STREQ("abcde", narrow);
}

namespace {

// Switches the user's regional settings and the process's C runtime locale to German
// conventions (decimal comma, full stop grouping) for one test and restores both afterwards.
class DecimalCommaLocale : public ::testing::Test {
protected:
    struct SavedValue {
        const char* name;
        bool existed;
        char value[85];
    };

    void SetUp() override
    {
        ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, "Control Panel\\International",
                                     0, KEY_QUERY_VALUE | KEY_SET_VALUE, &key_));
        const char* const newValues[] = {",", ".", "de-DE"};
        for (int i = 0; i < 3; ++i) {
            DWORD size = sizeof saved_[i].value - 1;
            saved_[i].existed = RegQueryValueExA(key_, saved_[i].name, nullptr, nullptr,
                                    reinterpret_cast<BYTE*>(saved_[i].value), &size) ==
                ERROR_SUCCESS;
            saved_[i].value[saved_[i].existed ? size : 0] = 0;
            ASSERT_EQ(ERROR_SUCCESS,
                RegSetValueExA(key_, saved_[i].name, 0, REG_SZ,
                    reinterpret_cast<const BYTE*>(newValues[i]),
                    static_cast<DWORD>(std::strlen(newValues[i]) + 1)));
        }
        const char* current = std::setlocale(LC_NUMERIC, nullptr);
        savedCrtLocale_ = current != nullptr ? current : "C";
        ASSERT_NE(nullptr, std::setlocale(LC_NUMERIC, "German"));
    }

    void TearDown() override
    {
        std::setlocale(LC_NUMERIC, savedCrtLocale_.c_str());
        for (const SavedValue& saved : saved_) {
            if (saved.existed)
                RegSetValueExA(key_, saved.name, 0, REG_SZ,
                    reinterpret_cast<const BYTE*>(saved.value),
                    static_cast<DWORD>(std::strlen(saved.value) + 1));
            else
                RegDeleteValueA(key_, saved.name);
        }
        RegCloseKey(key_);
    }

    HKEY key_ = nullptr;
    SavedValue saved_[3] = {{"sDecimal", false, {}}, {"sThousand", false, {}},
        {"LocaleName", false, {}}};
    std::string savedCrtLocale_;
};

} // namespace

TEST_F(DecimalCommaLocale, DoublesAlwaysUseAFullStop)
{
    char text[32];
    // The setting took: both the user's settings and the C runtime's formatter, which the
    // overloads without doubles use as it is, write a comma.
    ASSERT_GT(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, sizeof text), 0);
    ASSERT_STREQ(",", text);
    _snprintf(text, sizeof text, "%.2f", 1.5);
    ASSERT_STREQ("1,50", text);

    char buffer[64];
    HOI_PrintA(buffer, sizeof buffer, "%.2f", 1.5);
    EXPECT_STREQ("1.50", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%.2f %.2f %s", 1.5, 1234567.25, "MB");
    EXPECT_STREQ("1.50 1234567.25 MB", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%d %d %.1f", 1, 2, 0.5);
    EXPECT_STREQ("1 2 0.5", buffer);
    HOI_PrintA(buffer, sizeof buffer, "%.1f|%.1f|%.1f|%.1f", 0.5, 1.5, 2.5, 3.5);
    EXPECT_STREQ("0.5|1.5|2.5|3.5", buffer);

    wchar_t wide[32];
    HOI_PrintW(wide, 32, L"%.2f %s", 1.5, L"s");
    EXPECT_STREQ(L"1.50 s", wide);
    HOI_PrintW(wide, 32, L"%d:%.2f", 7, 2.25);
    EXPECT_STREQ(L"7:2.25", wide);

    // The per-call locale leaves the process's own locale alone.
    _snprintf(text, sizeof text, "%.2f", 1.5);
    EXPECT_STREQ("1,50", text);
}
