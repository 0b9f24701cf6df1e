// The main window's geometry at different scales and screens, and the program's own splash and
// icon resources as the window loads them.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "process.h"
#include "shell/shell.h"
#include "ui/ui.h"

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_BORDER;   // the main window's style

// The client size of a real window of the given outer size and the main window's style.
SIZE clientSizeOf(int width, int height)
{
    HWND window = CreateWindowExA(0, "STATIC", "", kStyle, 0, 0, width, height, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    RECT client = {};
    GetClientRect(window, &client);
    DestroyWindow(window);
    return SIZE{client.right, client.bottom};
}

TEST(MainWindow, ClientAreaIs580By400TimesScaleAndCentred)
{
    struct Case {
        double scale;
        LONG clientWidth, clientHeight;
    };
    for (const Case& c : {Case{1.0, 580, 400}, Case{1.25, 725, 500}, Case{1.5, 870, 600}, Case{2.0, 1160, 800}}) {
        int x, y, width, height;
        mainWindowSize(c.scale, 2560, 1440, kStyle, &x, &y, &width, &height);
        const SIZE client = clientSizeOf(width, height);
        EXPECT_EQ(client.cx, c.clientWidth) << "scale " << c.scale;
        EXPECT_EQ(client.cy, c.clientHeight) << "scale " << c.scale;
        EXPECT_EQ(x, (2560 - width) / 2);
        EXPECT_EQ(y, (1440 - height) / 2);
    }
}

TEST(MainWindow, ScreenSmallerThanTheWindowIsFilled)
{
    int x, y, width, height;
    mainWindowSize(1.5, 800, 600, kStyle, &x, &y, &width, &height);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 0);
    EXPECT_EQ(width, 800);
    EXPECT_EQ(height, 600);

    // Only the dimension that does not fit is clipped; the other stays centred.
    mainWindowSize(1.5, 1024, 580, kStyle, &x, &y, &width, &height);
    EXPECT_EQ(height, 580);
    EXPECT_EQ(y, 0);
    EXPECT_EQ(x, (1024 - width) / 2);
    EXPECT_GT(x, 0);
}

// hosetup.exe beside the test, mapped for its resources only.
class ProgramResources : public ::testing::Test {
protected:
    void SetUp() override
    {
        program_ = LoadLibraryExA((testBinFolder() + "hosetup.exe").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_NE(program_, nullptr);
    }
    void TearDown() override { FreeLibrary(program_); }

    // The raw bytes of a resource.
    std::vector<unsigned char> resourceBytes(const char* name, const char* type)
    {
        HRSRC resource = FindResourceA(program_, name, type);
        if (!resource)
            return {};
        const auto* bytes = static_cast<const unsigned char*>(LockResource(LoadResource(program_, resource)));
        return std::vector<unsigned char>(bytes, bytes + SizeofResource(program_, resource));
    }

    HMODULE program_ = nullptr;
};

// The colour of one pixel, read back from the bitmap as top-down 32-bit pixels.
COLORREF pixelAt(HBITMAP bitmap, int width, int height, int x, int y)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height);
    HDC screen = GetDC(nullptr);
    const int lines = GetDIBits(screen, bitmap, 0, height, pixels.data(), &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    if (lines != height)
        return CLR_INVALID;
    const std::uint32_t bgrx = pixels[static_cast<std::size_t>(y) * width + x];
    return RGB((bgrx >> 16) & 0xFF, (bgrx >> 8) & 0xFF, bgrx & 0xFF);
}

TEST_F(ProgramResources, SplashDecodesToAPictureOfThePngsSize)
{
    // The size the PNG itself declares in its header chunk (big-endian at bytes 16 and 20).
    const std::vector<unsigned char> png = resourceBytes("ID_PNG_SPLASH", "PNG");
    ASSERT_GT(png.size(), 24u);
    const auto bigEndian = [&png](std::size_t at) {
        return (std::uint32_t{png[at]} << 24) | (png[at + 1] << 16) | (png[at + 2] << 8) | png[at + 3];
    };

    std::uint32_t width = 0, height = 0;
    HBITMAP bitmap = loadPngResource(program_, "ID_PNG_SPLASH", &width, &height);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(width, bigEndian(16));
    EXPECT_EQ(height, bigEndian(20));
    // Twice the 96-dpi client area, so that it stays sharp at 150 %.
    EXPECT_GE(width, 1160u);
    EXPECT_GE(height, 800u);
    BITMAP info = {};
    ASSERT_TRUE(GetObjectA(bitmap, sizeof info, &info));
    EXPECT_EQ(static_cast<std::uint32_t>(info.bmWidth), width);
    EXPECT_EQ(static_cast<std::uint32_t>(info.bmHeight), height);

    // The picture the right way up: a dark sheet in the top-left corner, and the orange rule
    // under the product name near the top (it would sit near the bottom if rows were flipped).
    const COLORREF corner = pixelAt(bitmap, width, height, 2, 2);
    EXPECT_LT(GetRValue(corner), 48);
    EXPECT_LT(GetGValue(corner), 60);
    EXPECT_GT(GetBValue(corner), GetRValue(corner));
    const COLORREF rule = pixelAt(bitmap, width, height, width * 95 / 580, height * 160 / 800);
    EXPECT_GT(GetRValue(rule), 200);
    EXPECT_GT(GetRValue(rule), GetBValue(rule) + 100);
    DeleteObject(bitmap);
}

TEST_F(ProgramResources, MissingPictureGivesNoBitmap)
{
    std::uint32_t width = 7, height = 9;
    EXPECT_EQ(loadPngResource(program_, "ID_PNG_NOT_THERE", &width, &height), nullptr);
    EXPECT_EQ(width, 7u);
    EXPECT_EQ(height, 9u);
    // The icon exists, but not as a picture of type "PNG".
    EXPECT_EQ(loadPngResource(program_, "ID_ICO_LOGO", &width, &height), nullptr);
}

TEST_F(ProgramResources, LogoIconHoldsEverySizeFrom16To256)
{
    // Group icon directory: reserved, type and count (three 16-bit words), then one 14-byte
    // entry per image whose first byte is the width (0 meaning 256).
    const std::vector<unsigned char> group = resourceBytes("ID_ICO_LOGO", MAKEINTRESOURCEA(14));
    ASSERT_GE(group.size(), 6u);
    const unsigned count = group[4] | (group[5] << 8);
    ASSERT_EQ(group.size(), 6u + 14u * count);
    std::vector<int> widths;
    for (unsigned i = 0; i < count; ++i)
        widths.push_back(group[6 + 14 * i] ? group[6 + 14 * i] : 256);
    EXPECT_EQ(widths, (std::vector<int>{16, 24, 32, 48, 64, 128, 256}));

    HICON large = static_cast<HICON>(LoadImageA(program_, "ID_ICO_LOGO", IMAGE_ICON, 256, 256, 0));
    EXPECT_NE(large, nullptr);
    DestroyIcon(large);
}

} // namespace
