#include "windows/control/InPlaceObject.h"

namespace dravik::control {

HRESULT InPlaceObject::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = state_.activation.window();
    return *window ? S_OK : E_FAIL;
}

HRESULT InPlaceObject::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

HRESULT InPlaceObject::InPlaceDeactivate() {
    return entered([&] { return state_.activation.deactivate(); });
}

HRESULT InPlaceObject::UIDeactivate() {
    return entered([&] { return state_.activation.deactivateUserInterface(); });
}

HRESULT InPlaceObject::SetObjectRects(LPCRECT place, LPCRECT clip) {
    return entered([&] { return state_.activation.setRects(place, clip); });
}

HRESULT InPlaceObject::ReactivateAndUndo() {
    return INPLACE_E_NOTUNDOABLE;
}

}  // namespace dravik::control
