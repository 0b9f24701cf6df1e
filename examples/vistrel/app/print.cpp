// Printing a drawing on the default printer, without a dialog: the shell's "print" and "printto"
// verbs start the viewer with "/p", and a print from the menu behaves the same way. The drawing is
// fitted onto one page, with its title (or file name) as the document name in the print queue.
#include "hovistrel.h"

#include <commdlg.h>

namespace {

// A device context of the default printer, or nullptr when there is none.
HDC DefaultPrinterDc()
{
    PRINTDLGA pd = {};
    pd.lStructSize = sizeof(pd);
    pd.Flags = PD_RETURNDEFAULT | PD_RETURNDC;
    if (!PrintDlgA(&pd)) return nullptr;
    // The device settings are not needed once the context exists.
    if (pd.hDevMode) GlobalFree(pd.hDevMode);
    if (pd.hDevNames) GlobalFree(pd.hDevNames);
    return pd.hDC;
}

} // namespace

bool PrintDrawing(HWND owner, const char* path, const HodDrawing& drawing)
{
    HDC dc = DefaultPrinterDc();
    if (!dc) {
        MessageBoxA(owner, "No default printer is set up, so the drawing was not printed.",
                    kMainWindowTitle, MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    const std::string name = drawing.title.empty() ? std::string(path) : drawing.title;
    DOCINFOA doc = {};
    doc.cbSize = sizeof(doc);
    doc.lpszDocName = name.c_str();
    bool ok = StartDocA(dc, &doc) > 0;
    if (ok) {
        ok = StartPage(dc) > 0;
        if (ok) {
            const RECT page = {0, 0, GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES)};
            PaintDrawing(dc, page, drawing);
            ok = EndPage(dc) > 0;
        }
        if (ok) ok = EndDoc(dc) > 0;
        else AbortDoc(dc);
    }
    DeleteDC(dc);
    if (!ok)
        MessageBoxA(owner, "The printer did not accept the drawing.", kMainWindowTitle,
                    MB_OK | MB_ICONEXCLAMATION);
    return ok;
}
