#include "windows/control/InPlaceActiveObject.h"

namespace dravik::control {
namespace {

constexpr DWORD kShift = 1;
constexpr DWORD kControl = 2;
constexpr DWORD kAlt = 4;

// As a site's TranslateAccelerator takes them.
DWORD modifiers() {
    return (GetKeyState(VK_SHIFT) < 0 ? kShift : 0) | (GetKeyState(VK_CONTROL) < 0 ? kControl : 0) |
           (GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

}  // namespace

HRESULT InPlaceActiveObject::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = state_.activation.window();
    return *window ? S_OK : E_FAIL;
}

HRESULT InPlaceActiveObject::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

HRESULT InPlaceActiveObject::TranslateAccelerator(LPMSG message) {
    return entered([&]() -> HRESULT {
        if (!message) return E_POINTER;
        win32::FormPage* page = state_.activation.page();
        if (!page || !state_.site.userMode()) return S_FALSE;
        bool leftPage = false;
        if (page->translateKey(*message, leftPage)) return S_OK;
        const com::ComPtr<IOleControlSite> site(state_.site.control());
        return leftPage && site ? site->TranslateAccelerator(message, modifiers()) : S_FALSE;
    });
}

HRESULT InPlaceActiveObject::OnFrameWindowActivate(BOOL) {
    return S_OK;
}

HRESULT InPlaceActiveObject::OnDocWindowActivate(BOOL) {
    return S_OK;
}

HRESULT InPlaceActiveObject::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) {
    return S_OK;
}

HRESULT InPlaceActiveObject::EnableModeless(BOOL enable) {
    return entered([&] {
        state_.activation.enableModeless(enable != FALSE);
        return S_OK;
    });
}

}  // namespace dravik::control
