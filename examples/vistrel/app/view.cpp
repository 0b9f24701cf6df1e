// Painting of a drawing with GDI, the same for the window and for a printed page: the drawing is
// fitted into the given area, keeping its proportions.
#include "hovistrel.h"

#include <algorithm>
#include <cmath>

namespace {

int Px(double v) { return static_cast<int>(std::lround(v)); }

// Pen width in device pixels: thin on screen, still visible on a 600-dpi printer.
int PenWidth(HDC dc)
{
    const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
    return std::max(1, dpi / 96);
}

void PaintShape(HDC dc, const HodShape& s, const HodTransform& t)
{
    const auto X = [&](double x) { return Px(t.offsetX + x * t.scale); };
    const auto Y = [&](double y) { return Px(t.offsetY - y * t.scale); };
    switch (s.kind) {
    case HodShapeKind::Line:
        MoveToEx(dc, X(s.v[0]), Y(s.v[1]), nullptr);
        LineTo(dc, X(s.v[2]), Y(s.v[3]));
        break;
    case HodShapeKind::Rect:
        Rectangle(dc, std::min(X(s.v[0]), X(s.v[2])), std::min(Y(s.v[1]), Y(s.v[3])),
                  std::max(X(s.v[0]), X(s.v[2])) + 1, std::max(Y(s.v[1]), Y(s.v[3])) + 1);
        break;
    case HodShapeKind::Circle:
        Ellipse(dc, X(s.v[0] - s.v[2]), Y(s.v[1] + s.v[2]), X(s.v[0] + s.v[2]) + 1,
                Y(s.v[1] - s.v[2]) + 1);
        break;
    case HodShapeKind::Text: {
        const int height = std::max(1, Px(s.v[2] * t.scale));
        HFONT font = CreateFontA(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                 OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                 DEFAULT_PITCH | FF_SWISS, "Arial");
        HGDIOBJ old = SelectObject(dc, font);
        SetTextColor(dc, s.color);
        SetTextAlign(dc, TA_LEFT | TA_BASELINE);
        TextOutA(dc, X(s.v[0]), Y(s.v[1]), s.text.c_str(), static_cast<int>(s.text.size()));
        SelectObject(dc, old);
        DeleteObject(font);
        break;
    }
    }
}

} // namespace

void PaintDrawing(HDC dc, const RECT& area, const HodDrawing& drawing)
{
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const int margin = std::max(8, std::min(width, height) / 20);
    HodTransform t = FitTransform(BoundsOfDrawing(drawing), width, height, margin);
    t.offsetX += area.left;
    t.offsetY += area.top;

    const int saved = SaveDC(dc);
    IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    SetBkMode(dc, TRANSPARENT);
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    const int penWidth = PenWidth(dc);
    HPEN pen = nullptr;
    unsigned long penColor = 0;
    for (const HodShape& s : drawing.shapes) {
        // Consecutive shapes mostly share a colour; a new pen only when it changes.
        if (!pen || s.color != penColor) {
            HPEN next = CreatePen(PS_SOLID, penWidth, s.color);
            SelectObject(dc, next);
            if (pen) DeleteObject(pen);
            pen = next;
            penColor = s.color;
        }
        PaintShape(dc, s, t);
    }
    RestoreDC(dc, saved);
    if (pen) DeleteObject(pen);
}

void PaintStatus(HDC dc, const RECT& area, const char* path, const HodDrawing& drawing)
{
    std::string text;
    if (!path || !*path) {
        text = "No drawing open. Choose File > Open, or start hovistrel.exe with a .HOD drawing.";
    } else if (!drawing.errors.empty()) {
        const HodError& e = drawing.errors.front();
        text = std::string(path) + ": " + (e.line ? "line " + std::to_string(e.line) + ": " : "") +
               e.text + " (" + std::to_string(drawing.errors.size()) +
               (drawing.errors.size() == 1 ? " problem, " : " problems, ") +
               std::to_string(drawing.shapes.size()) + " shapes drawn)";
    } else {
        text = (drawing.title.empty() ? "" : drawing.title + " - ") + path + " - " +
               std::to_string(drawing.shapes.size()) + " shapes";
    }
    RECT r = area;
    FillRect(dc, &r, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, drawing.errors.empty() ? GetSysColor(COLOR_BTNTEXT) : RGB(176, 0, 0));
    HGDIOBJ old = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    r.left += 6;
    DrawTextA(dc, text.c_str(), -1, &r, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    SelectObject(dc, old);
}
