// A stand-in for the HTML Help control: it exports the two entries at the control's ordinals
// (14 narrow, 15 wide) and records the last call, so the tests can see which module the
// binding loaded and what reached it.
#include <windows.h>
#include <cstring>

#include "fake_viewer.h"

namespace {
FakeViewerCall g_lastCall;
}

extern "C" HWND WINAPI FakeHtmlHelpA(HWND owner, LPCSTR file, UINT command, DWORD_PTR data)
{
    g_lastCall.calls++;
    g_lastCall.owner = owner;
    g_lastCall.wide = false;
    lstrcpynA(g_lastCall.fileA, file ? file : "", sizeof g_lastCall.fileA);
    g_lastCall.command = command;
    g_lastCall.data = data;
    return kFakeViewerWindowA;
}

extern "C" HWND WINAPI FakeHtmlHelpW(HWND owner, LPCWSTR file, UINT command, DWORD_PTR data)
{
    g_lastCall.calls++;
    g_lastCall.owner = owner;
    g_lastCall.wide = true;
    lstrcpynW(g_lastCall.fileW, file ? file : L"", sizeof g_lastCall.fileW / sizeof(wchar_t));
    g_lastCall.command = command;
    g_lastCall.data = data;
    return kFakeViewerWindowW;
}

extern "C" FakeViewerCall* FakeViewerLastCall()
{
    return &g_lastCall;
}
