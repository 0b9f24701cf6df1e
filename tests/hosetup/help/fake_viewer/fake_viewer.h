// What the fake viewer records of its last call, read by the tests through FakeViewerLastCall.
#pragma once

#include <windows.h>

// The "window handles" the fake returns, told apart from a real one and from each other.
static HWND const kFakeViewerWindowA = reinterpret_cast<HWND>(0x1A14);
static HWND const kFakeViewerWindowW = reinterpret_cast<HWND>(0x1A15);

struct FakeViewerCall {
    int calls;
    bool wide;
    HWND owner;
    char fileA[260];
    wchar_t fileW[260];
    UINT command;
    DWORD_PTR data;
};

using FakeViewerLastCallFunction = FakeViewerCall* (*)();
