// The splash picture: a PNG resource of the program decoded by GDI+ into a bitmap the main window
// stretches over its client area.
#include "ui/ui.h"

// GDI+ needs the COM headers that WIN32_LEAN_AND_MEAN leaves out.
#include <objidl.h>
#include <propidl.h>
#include <gdiplus.h>

HBITMAP loadPngResource(HINSTANCE instance, const char* name, std::uint32_t* width, std::uint32_t* height)
{
    HRSRC resource = FindResourceA(instance, name, "PNG");
    if (!resource)
        return nullptr;
    const DWORD size = SizeofResource(instance, resource);
    HGLOBAL loaded = LoadResource(instance, resource);
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes || size == 0)
        return nullptr;

    Gdiplus::GdiplusStartupInput startup;
    ULONG_PTR token = 0;
    if (Gdiplus::GdiplusStartup(&token, &startup, nullptr) != Gdiplus::Ok)
        return nullptr;

    HBITMAP bitmap = nullptr;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    if (block) {
        void* target = GlobalLock(block);
        if (target) {
            CopyMemory(target, bytes, size);
            GlobalUnlock(block);
            IStream* stream = nullptr;
            if (CreateStreamOnHGlobal(block, FALSE, &stream) == S_OK) {
                Gdiplus::Bitmap* image = Gdiplus::Bitmap::FromStream(stream);
                stream->Release();
                if (image) {
                    if (image->GetLastStatus() == Gdiplus::Ok &&
                        image->GetHBITMAP(Gdiplus::Color(0xFF000000), &bitmap) == Gdiplus::Ok) {
                        *width = image->GetWidth();
                        *height = image->GetHeight();
                    } else {
                        bitmap = nullptr;
                    }
                    delete image;
                }
            }
        }
        GlobalFree(block);
    }
    Gdiplus::GdiplusShutdown(token);
    return bitmap;
}
