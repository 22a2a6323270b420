// IOleInPlaceActiveObject: keys, before the host's own use of them, and the modes of its frame.
#pragma once

#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"

namespace dravik::control {

class InPlaceActiveObject : public Facet<IOleInPlaceActiveObject> {
  public:
    InPlaceActiveObject(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
    // S_OK when the screen used the key; Tab at the end of the screen is offered to the site.
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL active) override;
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL active) override;
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;

  private:
    ControlState& state_;
};

}  // namespace dravik::control
