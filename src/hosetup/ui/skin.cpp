// The skin of the setup dialogs: a dark banner with the product title on the wizard pages and the
// progress window, a white body with the text, and a light footer behind the buttons. The layout
// records where banner and footer end on each dialog; one painter serves every dialog from that.
#include "ui/ui.h"
#include "core/core.h"
#include "holang.h"

namespace {

constexpr int kBodyPoints = 12;         // 9 pt at 96 dpi
constexpr int kTitlePoints = 20;
constexpr int kIconSize = 32;

constexpr COLORREF kBannerColour = RGB(28, 43, 58);
constexpr COLORREF kAccentColour = RGB(232, 119, 34);
constexpr COLORREF kBodyColour = RGB(255, 255, 255);
constexpr COLORREF kFooterColour = RGB(243, 243, 243);
constexpr COLORREF kFooterRuleColour = RGB(218, 218, 218);
constexpr COLORREF kTextColour = RGB(30, 30, 30);
constexpr COLORREF kTitleColour = RGB(255, 255, 255);

// Where a dialog's skin keeps its geometry: window properties, so that one painter serves
// every dialog without a table of windows.
constexpr char kSkinProperty[] = "HOSetup.Skin";
constexpr char kBannerProperty[] = "HOSetup.Banner";
constexpr char kFooterProperty[] = "HOSetup.Footer";

HFONT makeFont(int designHeight, int weight)
{
    return CreateFontA(-scaledSize(designHeight), 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, VARIABLE_PITCH | FF_SWISS,
                       eDefaultNames[kDefaultNameDialogFont]);
}

// The fonts follow the scale; a test that changes the scale gets new ones. The old ones are
// kept, since dialogs still open may be using them.
void refreshFonts()
{
    if (g_setup.skinBodyFont && g_setup.skinFontScale == g_setup.scale)
        return;
    g_setup.skinFontScale = g_setup.scale;
    g_setup.skinBodyFont = makeFont(kBodyPoints, FW_NORMAL);
    g_setup.skinTitleFont = makeFont(kTitlePoints, FW_SEMIBOLD);
}

// Three colours for the run, each brush made on its first use.
HBRUSH brushOf(HBRUSH* brush, COLORREF colour)
{
    if (!*brush)
        *brush = CreateSolidBrush(colour);
    return *brush;
}

HBRUSH solidBrush(COLORREF colour)
{
    if (colour == kFooterColour)
        return brushOf(&g_setup.skinFooterBrush, kFooterColour);
    if (colour == kBannerColour)
        return brushOf(&g_setup.skinBannerBrush, kBannerColour);
    return brushOf(&g_setup.skinBodyBrush, kBodyColour);
}

// Deletes one of the skin's GDI objects and leaves its field null, so a later use makes it anew.
template <typename Handle>
void deleteSkinObject(Handle& object)
{
    if (object)
        DeleteObject(object);
    object = nullptr;
}

void fillRect(HDC dc, int left, int top, int right, int bottom, COLORREF colour)
{
    RECT area = {left, top, right, bottom};
    SetBkColor(dc, colour);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

int skinValue(HWND dialog, const char* name)
{
    return static_cast<int>(reinterpret_cast<INT_PTR>(GetPropA(dialog, name)));
}

void paintBanner(HWND dialog, HDC dc, int width)
{
    const int banner = scaledSize(kBannerDesignHeight);
    fillRect(dc, 0, 0, width, banner, kBannerColour);
    fillRect(dc, 0, banner, width, banner + scaledSize(kAccentDesignHeight), kAccentColour);

    int textRight = width - scaledSize(kDialogMargin);
    const int iconSize = scaledSize(kIconSize);
    HICON logo = static_cast<HICON>(LoadImageA(g_setup.instance, "ID_ICO_LOGO", IMAGE_ICON, iconSize, iconSize, 0));
    if (logo) {
        DrawIconEx(dc, textRight - iconSize, (banner - iconSize) / 2, logo, iconSize, iconSize, 0, nullptr, DI_NORMAL);
        DestroyIcon(logo);
        textRight -= iconSize + scaledSize(kButtonDesignGap);
    }

    RECT title = {scaledSize(kDialogMargin), 0, textRight, banner};
    HGDIOBJ previous = SelectObject(dc, dialogTitleFont());
    SetTextColor(dc, kTitleColour);
    SetBkMode(dc, TRANSPARENT);
    DrawTextA(dc, eApplicationName, -1, &title, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(dc, previous);
}

} // namespace

void rememberDialogSkin(HWND dialog, DialogSkin skin, int banner, int footerTop)
{
    SetPropA(dialog, kSkinProperty, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(skin) + 1));
    SetPropA(dialog, kBannerProperty, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(banner)));
    SetPropA(dialog, kFooterProperty, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(footerTop)));
}

HFONT dialogFont()
{
    refreshFonts();
    return g_setup.skinBodyFont;
}

HFONT dialogTitleFont()
{
    refreshFonts();
    return g_setup.skinTitleFont;
}

void releaseSkin()
{
    deleteSkinObject(g_setup.skinBodyFont);
    deleteSkinObject(g_setup.skinTitleFont);
    deleteSkinObject(g_setup.skinBodyBrush);
    deleteSkinObject(g_setup.skinFooterBrush);
    deleteSkinObject(g_setup.skinBannerBrush);
    g_setup.skinFontScale = 0.0;
}

void setDialogIcon(HWND dialog)
{
    HICON icon = LoadIconA(g_setup.instance, "ID_ICO_LOGO");
    if (icon)
        SendMessageA(dialog, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
}

bool handleSkinMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, INT_PTR* result)
{
    switch (message) {
    case WM_ERASEBKGND:
        if (!eraseDialogBackground(dialog, reinterpret_cast<HDC>(wParam)))
            return false;
        SetWindowLongPtrA(dialog, DWLP_MSGRESULT, TRUE);
        *result = TRUE;
        return true;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG: {
        HBRUSH brush = dialogControlColour(dialog, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        if (!brush)
            return false;
        *result = reinterpret_cast<INT_PTR>(brush);
        return true;
    }
    case WM_DESTROY:
        forgetDialogSkin(dialog);
        return false;   // the dialog may have its own clean-up too
    }
    return false;
}

bool eraseDialogBackground(HWND dialog, HDC dc)
{
    const int skin = skinValue(dialog, kSkinProperty) - 1;
    if (skin != static_cast<int>(DialogSkin::Banner) && skin != static_cast<int>(DialogSkin::Footer))
        return false;
    RECT client;
    GetClientRect(dialog, &client);
    const int footerTop = skinValue(dialog, kFooterProperty);
    fillRect(dc, 0, 0, client.right, footerTop, kBodyColour);
    fillRect(dc, 0, footerTop, client.right, client.bottom, kFooterColour);
    fillRect(dc, 0, footerTop, client.right, footerTop + 1, kFooterRuleColour);
    if (skin == static_cast<int>(DialogSkin::Banner))
        paintBanner(dialog, dc, client.right);
    return true;
}

HBRUSH dialogControlColour(HWND dialog, HDC dc, HWND control)
{
    const int skin = skinValue(dialog, kSkinProperty) - 1;
    if (skin != static_cast<int>(DialogSkin::Banner) && skin != static_cast<int>(DialogSkin::Footer))
        return nullptr;
    RECT area;
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    const COLORREF colour = area.top >= skinValue(dialog, kFooterProperty) ? kFooterColour : kBodyColour;
    SetTextColor(dc, kTextColour);
    SetBkColor(dc, colour);
    return solidBrush(colour);
}

void paintAlertText(const DRAWITEMSTRUCT* item, const char* text)
{
    RECT area = item->rcItem;
    fillRect(item->hDC, area.left, area.top, area.right, area.bottom, kBodyColour);
    HGDIOBJ previous = SelectObject(item->hDC, dialogFont());
    SetTextColor(item->hDC, kTextColour);
    SetBkMode(item->hDC, TRANSPARENT);
    DrawTextA(item->hDC, text ? text : "", -1, &area, kDialogWrapFlags);
    SelectObject(item->hDC, previous);
}

void forgetDialogSkin(HWND dialog)
{
    RemovePropA(dialog, kSkinProperty);
    RemovePropA(dialog, kBannerProperty);
    RemovePropA(dialog, kFooterProperty);
}
