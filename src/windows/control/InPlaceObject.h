// IOleInPlaceObject: the control's window as the host moves and deactivates it.
#pragma once

#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"

namespace dravik::control {

class InPlaceObject : public Facet<IOleInPlaceObject> {
  public:
    InPlaceObject(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}

    // Fails while the control is not active in place.
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override;

  private:
    ControlState& state_;
};

}  // namespace dravik::control
