// Values the product depends on beyond their wording: folder names that paths are built from,
// registry names, the dialog font, the month names and the alert button captions.
#include "holang.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

// The caption of alert button code k.
std::string Caption(int code)
{
    return eButtonText[code - 1];
}

std::string WithoutMnemonic(std::string caption)
{
    const size_t amp = caption.find('&');
    if (amp != std::string::npos)
        caption.erase(amp, 1);
    return caption;
}

} // namespace

TEST(FixedValues, RelativeFoldersAreRelativeAndEndInOneBackslash)
{
    const char* const expected[] = {"", "Settings\\", "Libraries\\", "Drawings\\", "Fonts\\", "Plug-Ins\\",
                                    "Templates\\", "AllUsers\\", "Help\\", "Backups\\", "User\\"};
    for (int i = 1; i <= 10; ++i) {
        const std::string folder = eRelativePaths[i];
        SCOPED_TRACE("eRelativePaths[" + std::to_string(i) + "] = " + folder);
        EXPECT_EQ(folder, expected[i]);
        ASSERT_GE(folder.size(), 2u);
        EXPECT_EQ(folder.back(), '\\');
        EXPECT_NE(folder[folder.size() - 2], '\\') << "two backslashes at the end";
        EXPECT_NE(folder.front(), '\\');
        EXPECT_NE(folder.front(), '/');
        EXPECT_EQ(folder.find(':'), std::string::npos);
        EXPECT_EQ(folder.find('/'), std::string::npos);
    }
    EXPECT_STREQ(eRelativePaths[0], "");
}

TEST(FixedValues, ProductNamesAndRegistryNames)
{
    EXPECT_STREQ(eApplicationName, "Vistrel Setup");
    EXPECT_STREQ(eCaptionTexts[0], "Vistrel Setup");
    EXPECT_STREQ(eProfileTitle[2], "Vistrel Professional 2022");
    EXPECT_STREQ(eProfileTitle[4], "Drawing");
    EXPECT_STREQ(eProfileTitle[7], "");
    EXPECT_STREQ(eProfileTitle[9], "Library");
    // The uninstall entry is one key below the Uninstall key: a backslash would nest it, and an
    // empty name would make the removal delete the Uninstall key itself.
    EXPECT_EQ(std::strpbrk(eProfileTitle[2], "\\/"), nullptr);
}

TEST(FixedValues, DialogFontFitsTheFaceNameField)
{
    EXPECT_STREQ(eDefaultNames[1], "Segoe UI");
    EXPECT_LE(std::strlen(eDefaultNames[1]), 31u);
}

TEST(FixedValues, TwelveMonthNamesJanuaryFirst)
{
    const char* const months[] = {"January", "February", "March",     "April",   "May",      "June",
                                  "July",    "August",   "September", "October", "November", "December"};
    for (int i = 0; i < 12; ++i)
        EXPECT_STREQ(eMonthNames[i], months[i]) << "month " << i;
    EXPECT_STREQ(eMonthNames[12], "");
}

TEST(FixedValues, ButtonCaptionsByCode)
{
    EXPECT_EQ(WithoutMnemonic(Caption(1)), "OK");
    EXPECT_EQ(WithoutMnemonic(Caption(2)), "Cancel");
    EXPECT_EQ(WithoutMnemonic(Caption(3)), "Yes");
    EXPECT_EQ(WithoutMnemonic(Caption(4)), "No");
    EXPECT_EQ(WithoutMnemonic(Caption(6)), "Continue");
    EXPECT_EQ(WithoutMnemonic(Caption(7)), "Retry");
    EXPECT_EQ(WithoutMnemonic(Caption(8)), "Skip");
    for (int code = 1; code <= 8; ++code) {
        const std::string caption = Caption(code);
        EXPECT_FALSE(WithoutMnemonic(caption).empty()) << "code " << code;
        const size_t amp = caption.find('&');
        if (amp != std::string::npos) {
            EXPECT_EQ(caption.find('&', amp + 1), std::string::npos) << "two mnemonics: " << caption;
            ASSERT_LT(amp + 1, caption.size()) << caption;
            EXPECT_TRUE(std::isalnum(static_cast<unsigned char>(caption[amp + 1]))) << caption;
        }
    }
}

// The buttons that one alert shows together must not share a keyboard mnemonic.
TEST(FixedValues, ButtonsShownTogetherHaveDistinctMnemonics)
{
    const std::vector<std::vector<int>> groups = {{6, 2}, {3, 4}, {7, 2}, {7, 8, 2}};
    for (const std::vector<int>& group : groups) {
        std::set<char> keys;
        for (int code : group) {
            const std::string caption = Caption(code);
            const size_t amp = caption.find('&');
            if (amp == std::string::npos || amp + 1 >= caption.size())
                continue;
            const char key = static_cast<char>(std::tolower(static_cast<unsigned char>(caption[amp + 1])));
            EXPECT_TRUE(keys.insert(key).second) << "mnemonic '" << key << "' twice, code " << code;
        }
    }
}
