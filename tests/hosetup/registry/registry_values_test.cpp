// Registry value helpers on the real registry of the test's prefix: value types, byte counts,
// the empty-text deletion, and the decimal text helpers.
#include "registry/registry.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

namespace {

constexpr char kProductKey[] = "Software\\Harwick-Orbel\\Vistrel Professional";

// Checks a value as RegQueryValueExA sees it; a failure names the test line that asked.
void expectValue(int line, HKEY key, const char* name, DWORD expectedType, const void* expected, DWORD expectedSize)
{
    BYTE data[64] = {};
    DWORD type = 0;
    DWORD size = sizeof data;
    const LONG result = RegQueryValueExA(key, name, nullptr, &type, data, &size);
    if (result != ERROR_SUCCESS) {
        ADD_FAILURE_AT(__FILE__, line) << "value \"" << name << "\" not readable: " << result;
        return;
    }
    if (type != expectedType)
        ADD_FAILURE_AT(__FILE__, line) << "value \"" << name << "\" type " << type << ", expected " << expectedType;
    if (size != expectedSize)
        ADD_FAILURE_AT(__FILE__, line) << "value \"" << name << "\" size " << size << ", expected " << expectedSize;
    else if (std::memcmp(data, expected, size) != 0)
        ADD_FAILURE_AT(__FILE__, line) << "value \"" << name << "\" data differ";
}

void expectString(int line, HKEY key, const char* name, const char* text)
{
    expectValue(line, key, name, REG_SZ, text, static_cast<DWORD>(std::strlen(text) + 1));
}

void expectNoValue(int line, HKEY key, const char* name)
{
    const LONG result = RegQueryValueExA(key, name, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_FILE_NOT_FOUND)
        ADD_FAILURE_AT(__FILE__, line) << "value \"" << name << "\" still there (" << result << ")";
}

#define EXPECT_REG_STRING(key, name, text) expectString(__LINE__, key, name, text)
#define EXPECT_REG_VALUE(key, name, type, data, size) expectValue(__LINE__, key, name, type, data, size)
#define EXPECT_NO_REG_VALUE(key, name) expectNoValue(__LINE__, key, name)

class RegistryValuesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kProductKey);
        ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, kProductKey, 0, const_cast<char*>(""), 0,
                                  KEY_WRITE | KEY_READ, nullptr, &key_, nullptr), ERROR_SUCCESS);
    }

    void TearDown() override
    {
        RegCloseKey(key_);
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kProductKey);
    }

    HKEY key_ = nullptr;
};

TEST_F(RegistryValuesTest, StringsAreStoredWithTheirTerminatingZero)
{
    SetRegistryString(key_, "PathLocal", "C:\\Program Files\\Harwick-Orbel\\Vistrel (64-bit)\\");
    EXPECT_REG_STRING(key_, "PathLocal", "C:\\Program Files\\Harwick-Orbel\\Vistrel (64-bit)\\");
    SetRegistryString(key_, "One", "x");
    EXPECT_REG_VALUE(key_, "One", REG_SZ, "x", 2);
    // The default value of a key is addressed by the empty name.
    SetRegistryString(key_, "", "Vistrel.Drawing");
    EXPECT_REG_STRING(key_, "", "Vistrel.Drawing");
    // A second write replaces the text, including a shorter one.
    SetRegistryString(key_, "PathLocal", "D:\\V\\");
    EXPECT_REG_STRING(key_, "PathLocal", "D:\\V\\");
}

TEST_F(RegistryValuesTest, EmptyTextDeletesTheValueAndKeepsTheKey)
{
    SetRegistryString(key_, "PathLibrary", "E:\\Lib\\");
    SetRegistryString(key_, "Other", "stays");
    SetRegistryString(key_, "PathLibrary", "");
    EXPECT_NO_REG_VALUE(key_, "PathLibrary");
    EXPECT_REG_STRING(key_, "Other", "stays");
    // Deleting a value that is not there is no error and changes nothing.
    SetRegistryString(key_, "NeverWritten", "");
    EXPECT_NO_REG_VALUE(key_, "NeverWritten");
    SetRegistryString(key_, "Other", nullptr);
    EXPECT_NO_REG_VALUE(key_, "Other");

    HKEY again = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kProductKey, 0, KEY_READ, &again), ERROR_SUCCESS);
    if (again)
        RegCloseKey(again);
}

TEST_F(RegistryValuesTest, NumbersAreFourByteLittleEndianDwords)
{
    SetRegistryNumber(key_, "UserMode", 1);
    const BYTE one[] = {1, 0, 0, 0};
    EXPECT_REG_VALUE(key_, "UserMode", REG_DWORD, one, 4);
    SetRegistryNumber(key_, "Big", 0xDEADBEEF);
    const BYTE big[] = {0xEF, 0xBE, 0xAD, 0xDE};
    EXPECT_REG_VALUE(key_, "Big", REG_DWORD, big, 4);
    // A text value of the same name becomes a number.
    SetRegistryString(key_, "Mixed", "7");
    SetRegistryNumber(key_, "Mixed", 7);
    const BYTE seven[] = {7, 0, 0, 0};
    EXPECT_REG_VALUE(key_, "Mixed", REG_DWORD, seven, 4);
}

TEST(DecimalTextTest, FormatKeepsSignAndExtremes)
{
    char buffer[kDecimalTextCapacity];
    const struct {
        std::int32_t value;
        const char* text;
    } cases[] = {{0, "0"}, {-5, "-5"}, {2022, "2022"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"}};
    for (const auto& c : cases) {
        std::memset(buffer, 'x', sizeof buffer);
        FormatDecimal(buffer, c.value);
        EXPECT_STREQ(buffer, c.text);
    }
}

TEST(DecimalTextTest, ParseReadsTheLeadingNumberOrGivesTheMark)
{
    EXPECT_EQ(kNoDecimalNumber, static_cast<std::int32_t>(0x80000001));
    EXPECT_EQ(ParseDecimal(""), kNoDecimalNumber);
    EXPECT_EQ(ParseDecimal("abc"), kNoDecimalNumber);
    EXPECT_EQ(ParseDecimal("-"), kNoDecimalNumber);
    EXPECT_EQ(ParseDecimal("   "), kNoDecimalNumber);
    EXPECT_EQ(ParseDecimal("2022.2.11.29"), 2022);
    EXPECT_EQ(ParseDecimal("2022"), 2022);
    EXPECT_EQ(ParseDecimal("  \t-17x"), -17);
    EXPECT_EQ(ParseDecimal("+8"), 8);
    EXPECT_EQ(ParseDecimal("007"), 7);
    EXPECT_EQ(ParseDecimal("-2147483648"), INT_MIN);
    EXPECT_EQ(ParseDecimal("2147483647"), INT_MAX);
    // The formatted text of every value reads back as the value.
    char buffer[kDecimalTextCapacity];
    for (std::int32_t value : {0, 1, -1, 99999, -2147483647, INT_MIN, INT_MAX}) {
        FormatDecimal(buffer, value);
        EXPECT_EQ(ParseDecimal(buffer), value) << buffer;
    }
}

} // namespace
