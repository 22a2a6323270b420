// IOleControl: access keys and ambient properties.
#pragma once

#include <ocidl.h>

#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"

namespace dravik::control {

class OleControl : public Facet<IOleControl> {
  public:
    OleControl(IUnknown& control, ControlState& state) : Facet(control), state_(state) {}
    ~OleControl() override;

    // The table stays this control's and is good until the next call. While the control is not active in
    // place there are no keys.
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

  private:
    ControlState& state_;
    HACCEL accelerators_ = nullptr;
};

}  // namespace dravik::control
