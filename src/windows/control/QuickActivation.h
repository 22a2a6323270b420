// IQuickActivate: a host's whole greeting in one call instead of a dozen.
#pragma once

#include <ocidl.h>

#include "windows/control/ConnectionPoints.h"
#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"

namespace dravik::control {

class QuickActivation : public Facet<IQuickActivate> {
  public:
    QuickActivation(IUnknown& control, ControlState& state, IOleObject& object, ConnectionPoints& points)
        : Facet(control), state_(state), object_(object), points_(points) {}

    HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* answer) override;
    HRESULT STDMETHODCALLTYPE SetContentExtent(LPSIZEL extent) override;
    HRESULT STDMETHODCALLTYPE GetContentExtent(LPSIZEL extent) override;

  private:
    ControlState& state_;
    IOleObject& object_;
    ConnectionPoints& points_;
};

}  // namespace dravik::control
