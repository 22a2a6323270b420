// The interfaces that a script or the job editor calls, and what describes them.
#pragma once

#include "DravikDlgLib.h"
#include "TollanLib.h"
#include "windows/com/Dispatch.h"
#include "windows/control/Facet.h"

namespace dravik::control {

// A dual interface of the control: called by names it reaches the members of all its dual interfaces.
template <class Interface>
class DispatchFacet : public com::CalledByNames<StateFacet<Interface>> {
  public:
    DispatchFacet(IUnknown& control, ControlState& state, com::Dispatch& names)
        : com::CalledByNames<StateFacet<Interface>>(names, control, state) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        return this->entered([&] {
            return com::CalledByNames<StateFacet<Interface>>::Invoke(id, iid, locale, flags, parameters,
                                                                     result, exception, wrongArgument);
        });
    }

  protected:
    // A call may have changed what the screen shows while it is shown nowhere; the page tells of its own
    // changes.
    void changedUnseen() {
        if (!this->state_.activation.page()) this->state_.viewChanged();
    }
};

// _DravikDlg: the three methods that a host or a script calls on the screen. They never fail but for missing
// arguments; the screen reports its own failures in its status bar.
class PublicInterface : public DispatchFacet<_DravikDlg> {
  public:
    using DispatchFacet::DispatchFacet;

    HRESULT STDMETHODCALLTYPE DeleteSamplesByDistance(BSTR* Character, double* MinDistance,
                                                      double* MaxDistance, short* Count) override;
    HRESULT STDMETHODCALLTYPE HighlightIncluded(BSTR* IncludedChars) override;
    HRESULT STDMETHODCALLTYPE FontTrainDate(BSTR* Font, BSTR* Date) override;
};

// StepEditor: through this the job editor says what is edited. A step of another kind is the one thing that
// the control refuses aloud.
class StepEditorFacet : public DispatchFacet<::StepEditor> {
  public:
    using DispatchFacet::DispatchFacet;

    HRESULT STDMETHODCALLTYPE put_ReadOnly(VARIANT_BOOL Value) override;
    HRESULT STDMETHODCALLTYPE get_ReadOnly(VARIANT_BOOL* Value) override;
    HRESULT STDMETHODCALLTYPE putref_RootStep(IDispatch* Value) override;
    HRESULT STDMETHODCALLTYPE putref_Step(IDispatch* Value) override;
    HRESULT STDMETHODCALLTYPE get_Step(IDispatch** Value) override;
};

// IProvideClassInfo2: the control's class and its event interface in the type library.
class ClassInfo : public Facet<IProvideClassInfo2> {
  public:
    using Facet::Facet;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* identifier) override;
};

}  // namespace dravik::control
