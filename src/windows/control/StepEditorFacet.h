// StepEditor: through this the job editor says what is edited. A step of another kind is the one thing that
// the control refuses aloud.
#pragma once

#include "TollanLib.h"

#include "windows/control/ControlState.h"
#include "windows/control/DispatchFacet.h"

namespace dravik::control {

class StepEditorFacet : public DispatchFacet<::StepEditor> {
  public:
    StepEditorFacet(IUnknown& control, ControlState& state, com::Dispatch& dispatch)
        : DispatchFacet(control, dispatch), state_(state) {}

    HRESULT STDMETHODCALLTYPE put_ReadOnly(VARIANT_BOOL Value) override;
    HRESULT STDMETHODCALLTYPE get_ReadOnly(VARIANT_BOOL* Value) override;
    HRESULT STDMETHODCALLTYPE putref_RootStep(IDispatch* Value) override;
    HRESULT STDMETHODCALLTYPE putref_Step(IDispatch* Value) override;
    HRESULT STDMETHODCALLTYPE get_Step(IDispatch** Value) override;

  private:
    ControlState& state_;
    com::ComPtr<IDispatch> given_;  // the bound step as the host gave it
};

}  // namespace dravik::control
