// IProvideClassInfo2: the control's class and its event interface in the type library.
#pragma once

#include <ocidl.h>

#include "windows/control/Facet.h"

namespace dravik::control {

class ClassInfo : public Facet<IProvideClassInfo2> {
  public:
    using Facet::Facet;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* identifier) override;
};

}  // namespace dravik::control
