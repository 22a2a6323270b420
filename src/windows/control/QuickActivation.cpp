#include "windows/control/QuickActivation.h"

namespace dravik::control {

HRESULT QuickActivation::QuickActivate(QACONTAINER* container, QACONTROL* answer) {
    return entered([&]() -> HRESULT {
        if (!container || !answer || container->cbSize < sizeof(QACONTAINER) ||
            answer->cbSize < sizeof(QACONTROL))
            return E_INVALIDARG;
        HRESULT result = object_.SetClientSite(container->pClientSite);
        if (FAILED(result)) return result;
        if (container->pUnkEventSink)
            points_.events().Advise(container->pUnkEventSink, &answer->dwEventCookie);
        if (container->pPropertyNotifySink)
            points_.propertyChanges().Advise(container->pPropertyNotifySink, &answer->dwPropNotifyCookie);
        if (container->pAdviseSink) {
            state_.viewSink = static_cast<IAdviseSink*>(container->pAdviseSink);
            state_.viewAspects = DVASPECT_CONTENT;
            state_.viewFlags = 0;
        }
        answer->dwMiscStatus = kMiscStatus;
        answer->dwViewStatus = VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND;
        answer->dwPointerActivationPolicy = 0;
        return S_OK;
    });
}

HRESULT QuickActivation::SetContentExtent(LPSIZEL extent) {
    return object_.SetExtent(DVASPECT_CONTENT, extent);
}

HRESULT QuickActivation::GetContentExtent(LPSIZEL extent) {
    return object_.GetExtent(DVASPECT_CONTENT, extent);
}

}  // namespace dravik::control
