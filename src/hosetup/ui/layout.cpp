// Common layout of the setup dialogs. The templates of the language module only say which
// controls exist and what the fixed captions are; the sizes come from here, so every dialog
// follows the same grid: banner, body text, and a footer with right-aligned buttons (painted by
// skin.cpp). Every size is a design size at 96 dpi times g_setup.scale, and every text area is
// measured with the same DrawText flags that paint it, so nothing is cut at any scale.
#include "ui/ui.h"
#include "core/core.h"
#include "holang.h"

namespace {

constexpr int kBodyGap = 20;            // banner to text, text to footer
constexpr int kFooterPadding = 12;      // above and below the buttons
constexpr int kFooterSide = 16;         // footer buttons to the dialog's edge
constexpr int kButtonHeight = 26;
constexpr int kButtonMinWidth = 88;
constexpr int kButtonTextPadding = 14;  // each side of a caption
constexpr int kCheckBoxHeight = 20;
constexpr int kCheckBoxMark = 24;       // the box and its gap before the caption
constexpr int kPageWidth = 520;
constexpr int kPageMinHeight = 340;
constexpr int kProgressWidth = 480;
constexpr int kProgressBarHeight = 18;
constexpr int kAlertTextWidth = 360;
constexpr int kAlertWideTextWidth = 560;
constexpr int kAlertLinesBeforeWidening = 8;
constexpr int kQueryWidth = 520;
constexpr int kQueryIndent = 16;
constexpr int kQueryGap = 12;







BOOL CALLBACK setFontOnChild(HWND child, LPARAM font)
{
    SendMessageA(child, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
    return TRUE;
}

void useDialogFont(HWND dialog)
{
    SendMessageA(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(dialogFont()), FALSE);
    EnumChildWindows(dialog, setFontOnChild, reinterpret_cast<LPARAM>(dialogFont()));
}

void placeControl(HWND dialog, int id, int x, int y, int width, int height)
{
    HWND control = GetDlgItem(dialog, id);
    if (control)
        SetWindowPos(control, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void setClientSize(HWND dialog, int width, int height)
{
    RECT frame = {0, 0, width, height};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrA(dialog, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrA(dialog, GWL_EXSTYLE)));
    SetWindowPos(dialog, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void textExtent(HWND window, const char* text, UINT flags, RECT* area)
{
    HDC dc = GetDC(window);
    HGDIOBJ previous = SelectObject(dc, dialogFont());
    DrawTextA(dc, text, -1, area, flags | DT_CALCRECT);
    SelectObject(dc, previous);
    ReleaseDC(window, dc);
}

// True when a word of text (a path, say) is wider than width, so that wrapping has to break it.
bool hasOverlongWord(HWND window, const char* text, int width)
{
    RECT area = {0, 0, width, 0};
    textExtent(window, text ? text : "", kDialogWrapFlags & ~static_cast<UINT>(DT_EDITCONTROL), &area);
    return area.right > width;
}

int lineHeight(HWND window)
{
    RECT area = {0, 0, 1000, 0};
    textExtent(window, "Ag", DT_SINGLELINE, &area);
    return area.bottom;
}

int captionWidth(HWND control)
{
    char caption[kAlertCaptionCapacity] = {};
    GetWindowTextA(control, caption, sizeof caption);
    RECT area = {0, 0, 0, 0};
    textExtent(control, caption, DT_SINGLELINE, &area);   // "&" prefixes take no room
    return area.right;
}

bool isShown(HWND dialog, int id)
{
    HWND control = GetDlgItem(dialog, id);
    return control && (GetWindowLongPtrA(control, GWL_STYLE) & WS_VISIBLE);
}

// One width for all the buttons of a row, wide enough for the longest caption.
int commonButtonWidth(HWND dialog, const int* ids, int count)
{
    int width = scaledSize(kButtonMinWidth);
    for (int i = 0; i < count; ++i) {
        HWND button = GetDlgItem(dialog, ids[i]);
        if (button && isShown(dialog, ids[i])) {
            const int needed = captionWidth(button) + 2 * scaledSize(kButtonTextPadding);
            if (needed > width)
                width = needed;
        }
    }
    return width;
}

int visibleCount(HWND dialog, const int* ids, int count)
{
    int shown = 0;
    for (int i = 0; i < count; ++i)
        shown += isShown(dialog, ids[i]) ? 1 : 0;
    return shown;
}

int rowWidth(int buttons, int buttonWidth)
{
    return buttons > 0 ? buttons * buttonWidth + (buttons - 1) * scaledSize(kButtonDesignGap) : 0;
}

// Places the shown buttons of ids, in that order, so that the last one ends at right.
void placeButtonRow(HWND dialog, const int* ids, int count, int right, int top, int buttonWidth)
{
    int x = right - rowWidth(visibleCount(dialog, ids, count), buttonWidth);
    for (int i = 0; i < count; ++i) {
        if (!isShown(dialog, ids[i]))
            continue;
        placeControl(dialog, ids[i], x, top, buttonWidth, scaledSize(kButtonHeight));
        x += buttonWidth + scaledSize(kButtonDesignGap);
    }
}

int footerHeight()
{
    return 2 * scaledSize(kFooterPadding) + scaledSize(kButtonHeight);
}

int bannerBottom()
{
    return scaledSize(kBannerDesignHeight) + scaledSize(kAccentDesignHeight);
}




} // namespace

int scaledSize(int designSize)
{
    const double scale = g_setup.scale > 0.0 ? g_setup.scale : 1.0;
    return static_cast<int>(roundHalfAwayFromZero(designSize * scale));
}



void centreOverMainWindow(HWND dialog)
{
    RECT owner;
    if (!g_setup.mainWindow || !GetWindowRect(g_setup.mainWindow, &owner))
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &owner, 0);
    RECT own;
    GetWindowRect(dialog, &own);
    const long width = own.right - own.left;
    const long height = own.bottom - own.top;
    long left = (owner.left + owner.right - width) / 2;
    long top = (owner.top + owner.bottom - height) / 2;
    if (left < 0)
        left = 0;
    if (top < 0)
        top = 0;
    SetWindowPos(dialog, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}


int measureWrappedText(HWND window, const char* text, int width, int* usedWidth)
{
    RECT area = {0, 0, width, 0};
    textExtent(window, text ? text : "", kDialogWrapFlags, &area);
    if (usedWidth)
        *usedWidth = area.right;
    return area.bottom;
}

void layoutWizardPage(HWND dialog, bool withCheckBox)
{
    useDialogFont(dialog);
    const int width = scaledSize(kPageWidth);
    const int margin = scaledSize(kDialogMargin);
    const int textWidth = width - 2 * margin;
    const int bodyTop = bannerBottom() + scaledSize(kBodyGap);

    char text[kMessageCapacity] = {};
    GetDlgItemTextA(dialog, IDC_MAIN_TEXT, text, sizeof text);
    const int textHeight = measureWrappedText(dialog, text, textWidth, nullptr);

    int checkHeight = 0;
    if (withCheckBox)
        checkHeight = scaledSize(kBodyGap) + scaledSize(kCheckBoxHeight);

    int height = bodyTop + textHeight + checkHeight + scaledSize(kBodyGap) + footerHeight();
    if (height < scaledSize(kPageMinHeight))
        height = scaledSize(kPageMinHeight);
    const int footerTop = height - footerHeight();

    placeControl(dialog, IDC_MAIN_TEXT, margin, bodyTop, textWidth, textHeight);
    if (withCheckBox) {
        HWND box = GetDlgItem(dialog, IDC_PAGE_OPTION);
        int boxWidth = box ? captionWidth(box) + scaledSize(kCheckBoxMark) : textWidth;
        if (boxWidth > textWidth)
            boxWidth = textWidth;
        placeControl(dialog, IDC_PAGE_OPTION, margin, footerTop - scaledSize(kBodyGap) - scaledSize(kCheckBoxHeight),
                     boxWidth, scaledSize(kCheckBoxHeight));
    }

    const int row[] = {IDC_CONTINUE, IDCANCEL};
    const int help[] = {IDC_PAGE_HELP};
    const int all[] = {IDC_CONTINUE, IDCANCEL, IDC_PAGE_HELP};
    const int buttonWidth = commonButtonWidth(dialog, all, 3);
    const int buttonTop = footerTop + scaledSize(kFooterPadding);
    placeButtonRow(dialog, row, 2, width - scaledSize(kFooterSide), buttonTop, buttonWidth);
    placeButtonRow(dialog, help, 1, scaledSize(kFooterSide) + buttonWidth, buttonTop, buttonWidth);

    setClientSize(dialog, width, height);
    rememberDialogSkin(dialog, DialogSkin::Banner, bannerBottom(), footerTop);
    centreOverMainWindow(dialog);
}

void layoutProgressWindow(HWND dialog)
{
    useDialogFont(dialog);
    const int width = scaledSize(kProgressWidth);
    const int margin = scaledSize(kDialogMargin);
    const int bodyTop = bannerBottom() + scaledSize(kBodyGap);
    // Room for two lines, so that every stage's text fits without the window changing size.
    const int textHeight = 2 * lineHeight(dialog);
    const int barTop = bodyTop + textHeight + scaledSize(kButtonDesignGap);
    const int footerTop = barTop + scaledSize(kProgressBarHeight) + scaledSize(kBodyGap);
    const int height = footerTop + footerHeight();

    placeControl(dialog, IDC_MAIN_TEXT, margin, bodyTop, width - 2 * margin, textHeight);
    placeControl(dialog, IDC_PROGRESS_BAR, margin, barTop, width - 2 * margin, scaledSize(kProgressBarHeight));
    const int row[] = {IDCANCEL};
    placeButtonRow(dialog, row, 1, width - scaledSize(kFooterSide), footerTop + scaledSize(kFooterPadding),
                   commonButtonWidth(dialog, row, 1));

    setClientSize(dialog, width, height);
    rememberDialogSkin(dialog, DialogSkin::Banner, bannerBottom(), footerTop);
    centreOverMainWindow(dialog);
}

void layoutAlertBox(HWND dialog, const AlertBoxState& state)
{
    useDialogFont(dialog);
    const int margin = scaledSize(kDialogMargin);
    ShowWindow(GetDlgItem(dialog, IDC_ALERT_BUTTON2), state.caption2[0] ? SW_SHOWNA : SW_HIDE);
    ShowWindow(GetDlgItem(dialog, IDC_ALERT_BUTTON3), state.caption3[0] ? SW_SHOWNA : SW_HIDE);

    // A long message first gets a wider box, then a taller one; a word too long for the line
    // (a path) is broken by DrawText, never cut. The wrapped measure never comes out wider than
    // the line, so a text with such a word is found by measuring it once unbroken: it gets the
    // wide box at once, and its path takes fewer, fuller lines.
    int textWidth = scaledSize(kAlertTextWidth);
    int usedWidth = 0;
    int textHeight = measureWrappedText(dialog, state.text, textWidth, &usedWidth);
    if (textHeight > kAlertLinesBeforeWidening * lineHeight(dialog) || usedWidth > textWidth ||
        hasOverlongWord(dialog, state.text, textWidth)) {
        textWidth = scaledSize(kAlertWideTextWidth);
        textHeight = measureWrappedText(dialog, state.text, textWidth, &usedWidth);
    }
    if (usedWidth > textWidth)
        textWidth = usedWidth;
    if (textHeight < 2 * lineHeight(dialog))
        textHeight = 2 * lineHeight(dialog);

    const int buttons[] = {IDC_ALERT_BUTTON1, IDC_ALERT_BUTTON2, IDC_ALERT_BUTTON3};
    const int buttonWidth = commonButtonWidth(dialog, buttons, 3);
    int width = textWidth + 2 * margin;
    const int row = rowWidth(visibleCount(dialog, buttons, 3), buttonWidth) + 2 * scaledSize(kFooterSide);
    if (row > width)
        width = row;
    const int footerTop = margin + textHeight + margin;

    placeControl(dialog, IDC_ALERT_TEXT, margin, margin, width - 2 * margin, textHeight);
    placeButtonRow(dialog, buttons, 3, width - scaledSize(kFooterSide), footerTop + scaledSize(kFooterPadding),
                   buttonWidth);
    setClientSize(dialog, width, footerTop + footerHeight());
    rememberDialogSkin(dialog, DialogSkin::Footer, 0, footerTop);
}

void layoutReplaceQuery(HWND dialog)
{
    useDialogFont(dialog);
    const int margin = scaledSize(kDialogMargin);
    const int buttons[] = {IDC_REPLACE_FILE, IDC_REPLACE_ALL, IDC_REPLACE_KEEP, IDC_REPLACE_CANCEL};
    const int buttonWidth = commonButtonWidth(dialog, buttons, 4);
    int width = scaledSize(kQueryWidth);
    const int row = rowWidth(4, buttonWidth) + 2 * scaledSize(kFooterSide);
    if (row > width)
        width = row;

    // The question, then each file's label with its description indented below it.
    struct Line {
        int id;
        bool indented;
        bool gapAfter;
    };
    const Line lines[] = {{IDC_MAIN_TEXT, false, true},     {IDC_EXISTING_LABEL, false, false},
                          {IDC_EXISTING_TEXT, true, true},  {IDC_NEW_LABEL, false, false},
                          {IDC_NEW_TEXT, true, false}};
    int y = margin;
    for (const Line& line : lines) {
        const int indent = line.indented ? scaledSize(kQueryIndent) : 0;
        const int textWidth = width - 2 * margin - indent;
        char text[kMessageCapacity] = {};
        GetDlgItemTextA(dialog, line.id, text, sizeof text);
        const int height = measureWrappedText(dialog, text, textWidth, nullptr);
        placeControl(dialog, line.id, margin + indent, y, textWidth, height);
        y += height + (line.gapAfter ? scaledSize(kQueryGap) : 0);
    }
    const int footerTop = y + margin;
    placeButtonRow(dialog, buttons, 4, width - scaledSize(kFooterSide), footerTop + scaledSize(kFooterPadding),
                   buttonWidth);
    setClientSize(dialog, width, footerTop + footerHeight());
    rememberDialogSkin(dialog, DialogSkin::Footer, 0, footerTop);
}





