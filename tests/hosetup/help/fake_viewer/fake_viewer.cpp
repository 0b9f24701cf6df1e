// A stand-in for the HTML Help control: its two entries at the control's ordinals (14 narrow,
// 15 wide, see fake_viewer.def), each answering a "window" that tells which entry was called.
#include <windows.h>

extern "C" HWND WINAPI FakeHtmlHelpA(HWND, LPCSTR, UINT, DWORD_PTR) { return reinterpret_cast<HWND>(14); }
extern "C" HWND WINAPI FakeHtmlHelpW(HWND, LPCWSTR, UINT, DWORD_PTR) { return reinterpret_cast<HWND>(15); }
