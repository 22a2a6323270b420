// A dual interface of the control: called by names it reaches the members of all its dual interfaces.
#pragma once

#include "windows/com/Dispatch.h"
#include "windows/control/Facet.h"

namespace dravik::control {

template <class Interface>
class DispatchFacet : public Facet<Interface> {
  public:
    DispatchFacet(IUnknown& control, com::Dispatch& dispatch)
        : Facet<Interface>(control), dispatch_(dispatch) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return dispatch_.typeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        return dispatch_.typeInfo(index, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return dispatch_.idsOfNames(names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        return this->entered(
            [&] { return dispatch_.invoke(id, flags, parameters, result, exception, wrongArgument); });
    }

  private:
    com::Dispatch& dispatch_;
};

}  // namespace dravik::control
