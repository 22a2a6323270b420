// _DravikDlg: the three methods that a host or a script calls on the screen. They never fail but for missing
// arguments; the screen reports its own failures in its status bar.
#pragma once

#include "DravikDlgLib.h"

#include "windows/control/ControlState.h"
#include "windows/control/DispatchFacet.h"

namespace dravik::control {

class PublicInterface : public DispatchFacet<_DravikDlg> {
  public:
    PublicInterface(IUnknown& control, ControlState& state, com::Dispatch& dispatch)
        : DispatchFacet(control, dispatch), state_(state) {}

    HRESULT STDMETHODCALLTYPE DeleteSamplesByDistance(BSTR* Character, double* MinDistance,
                                                      double* MaxDistance, short* Count) override;
    HRESULT STDMETHODCALLTYPE HighlightIncluded(BSTR* IncludedChars) override;
    HRESULT STDMETHODCALLTYPE FontTrainDate(BSTR* Font, BSTR* Date) override;

  private:
    ControlState& state_;
};

}  // namespace dravik::control
