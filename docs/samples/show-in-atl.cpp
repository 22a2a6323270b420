// show-in-atl PROGID [--seconds N] : the shortest way to show the control, in the host window that the system
// has for controls, with the step of that program identifier. It closes with its window, or by itself after N
// seconds. Ends with 0 when the control was shown with the step, else with 1. Build it with the headers of
// the contract folder: x86_64-w64-mingw32-g++ -municode -I contract show-in-atl.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
// Behind windows.h
#include <ole2.h>
#include <wrl/client.h>

#include <cwchar>

#include "DravikDlgLib.h"
#include "TollanLib.h"

using Microsoft::WRL::ComPtr;

int wmain(int count, wchar_t** arguments) {
    const long seconds = count == 4 ? std::wcstol(arguments[3], nullptr, 10) : 0;
    if (count < 2 || FAILED(OleInitialize(nullptr))) return 1;
    const HMODULE atl = LoadLibraryW(L"atl100.dll");  // or atl.dll, whose window class is "AtlAxWin"
    const auto init =
        reinterpret_cast<BOOL(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxWinInit")));
    const auto controlOf = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxGetControl")));
    if (!init || !controlOf || !init()) return 1;
    // The window makes the control that its text names, and ends it when it is destroyed itself.
    const HWND window = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin100", L"DravikDlgLib.DravikDlg",
                                        WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                                        800, 900, nullptr, nullptr, nullptr, nullptr);
    bool bound = false;
    {
        CLSID identifier;
        ComPtr<IUnknown> control;
        ComPtr<StepEditor> editor;
        ComPtr<IDispatch> step, now;
        bound = SUCCEEDED(controlOf(window, control.GetAddressOf())) && SUCCEEDED(control.As(&editor)) &&
                SUCCEEDED(CLSIDFromProgID(arguments[1], &identifier)) &&
                SUCCEEDED(CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&step))) &&
                SUCCEEDED(editor->putref_RootStep(step.Get())) &&
                SUCCEEDED(editor->putref_Step(step.Get())) && SUCCEEDED(editor->get_Step(&now)) &&
                now.Get() == step.Get();
    }
    SetWindowTextW(window, L"Dravik");
    ShowWindow(window, SW_SHOW);
    if (!bound) DestroyWindow(window);
    if (seconds > 0) SetTimer(window, 1, static_cast<UINT>(seconds) * 1000, nullptr);
    for (MSG message; IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0;) {
        if (message.message == WM_TIMER && message.hwnd == window) DestroyWindow(window);
        if (IsDialogMessageW(window, &message)) continue;  // Tab, Enter and access keys, as in any dialog
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    OleUninitialize();
    return bound ? 0 : 1;
}
