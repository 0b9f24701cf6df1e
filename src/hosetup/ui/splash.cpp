// The splash picture: a PNG resource of the program decoded by GDI+ into a bitmap the main window
// stretches over its client area. gdiplus.dll is no KnownDLL, so it is loaded from the system
// folder at run time (never from beside the program) and used through its flat entries.
#include "ui/ui.h"
#include "core/core.h"

#include <objidl.h>

namespace {

// GdiplusStartupInput of version 1.
struct GdiplusStartupInput {
    UINT32 version;
    void* debugEventCallback;
    BOOL suppressBackgroundThread;
    BOOL suppressExternalCodecs;
};

constexpr int kGdiplusOk = 0;
constexpr DWORD kOpaqueBlack = 0xFF000000;

struct Gdiplus {
    int(WINAPI* startup)(ULONG_PTR*, const GdiplusStartupInput*, void*);
    void(WINAPI* shutdown)(ULONG_PTR);
    int(WINAPI* bitmapFromStream)(IStream*, void**);
    int(WINAPI* bitmapToHandle)(void*, HBITMAP*, DWORD);
    int(WINAPI* width)(void*, UINT*);
    int(WINAPI* height)(void*, UINT*);
    int(WINAPI* dispose)(void*);
};

template <typename F>
bool bind(HMODULE module, const char* name, F* function)
{
    *function = reinterpret_cast<F>(GetProcAddress(module, name));
    return *function != nullptr;
}

bool bindGdiplus(Gdiplus* gdiplus)
{
    HMODULE module = loadSystemLibrary("gdiplus.dll");
    return module && bind(module, "GdiplusStartup", &gdiplus->startup) &&
           bind(module, "GdiplusShutdown", &gdiplus->shutdown) &&
           bind(module, "GdipCreateBitmapFromStream", &gdiplus->bitmapFromStream) &&
           bind(module, "GdipCreateHBITMAPFromBitmap", &gdiplus->bitmapToHandle) &&
           bind(module, "GdipGetImageWidth", &gdiplus->width) &&
           bind(module, "GdipGetImageHeight", &gdiplus->height) &&
           bind(module, "GdipDisposeImage", &gdiplus->dispose);
}

// Decodes the PNG in stream; null when it is none.
HBITMAP decodeStream(const Gdiplus& gdiplus, IStream* stream, std::uint32_t* width, std::uint32_t* height)
{
    void* image = nullptr;
    if (gdiplus.bitmapFromStream(stream, &image) != kGdiplusOk || !image)
        return nullptr;
    HBITMAP bitmap = nullptr;
    UINT w = 0;
    UINT h = 0;
    if (gdiplus.bitmapToHandle(image, &bitmap, kOpaqueBlack) != kGdiplusOk || gdiplus.width(image, &w) != kGdiplusOk ||
        gdiplus.height(image, &h) != kGdiplusOk) {
        if (bitmap)
            DeleteObject(bitmap);
        bitmap = nullptr;
    } else {
        *width = w;
        *height = h;
    }
    gdiplus.dispose(image);
    return bitmap;
}

} // namespace

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

    Gdiplus gdiplus = {};
    if (!bindGdiplus(&gdiplus))
        return nullptr;
    GdiplusStartupInput startup = {1, nullptr, FALSE, FALSE};
    ULONG_PTR token = 0;
    if (gdiplus.startup(&token, &startup, nullptr) != kGdiplusOk)
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
                bitmap = decodeStream(gdiplus, stream, width, height);
                stream->Release();
            }
        }
        GlobalFree(block);
    }
    gdiplus.shutdown(token);
    return bitmap;
}
