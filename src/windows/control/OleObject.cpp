#include "windows/control/OleObject.h"

#include <cwchar>

#include "DravikDlgLib.h"

namespace dravik::control {
namespace {

constexpr wchar_t kUserType[] = L"Dravik training screen";

}  // namespace

HRESULT OleObject::SetClientSite(IOleClientSite* site) {
    return entered([&] {
        if (!site) state_.activation.deactivate();
        state_.site.set(site);
        state_.activation.takeAmbients();
        return S_OK;
    });
}

HRESULT OleObject::GetClientSite(IOleClientSite** site) {
    if (!site) return E_POINTER;
    *site = state_.site.client();
    if (*site) (*site)->AddRef();
    return S_OK;
}

HRESULT OleObject::SetHostNames(LPCOLESTR, LPCOLESTR) {
    return S_OK;
}

HRESULT OleObject::Close(DWORD saveOption) {
    return entered([&] {
        if (saveOption != OLECLOSE_NOSAVE && state_.dirty && state_.site.client())
            state_.site.client()->SaveObject();
        // The question comes while the page still stands, so that it has something to lie above.
        state_.screen.end();
        state_.activation.deactivate();
        if (const auto holder = state_.adviseHolder) holder->SendOnClose();
        return S_OK;
    });
}

HRESULT OleObject::SetMoniker(DWORD, IMoniker*) {
    return E_NOTIMPL;
}

HRESULT OleObject::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT OleObject::InitFromData(IDataObject*, BOOL, DWORD) {
    return E_NOTIMPL;
}

HRESULT OleObject::GetClipboardData(DWORD, IDataObject** data) {
    if (data) *data = nullptr;
    return E_NOTIMPL;
}

HRESULT OleObject::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT place) {
    return entered([&]() -> HRESULT {
        auto& activation = state_.activation;
        switch (verb) {
            case OLEIVERB_PRIMARY:
            case OLEIVERB_SHOW:
            case OLEIVERB_UIACTIVATE: {
                const HRESULT result = activation.activate(true, parent, place);
                if (SUCCEEDED(result) && verb == OLEIVERB_SHOW) state_.site.showObject();
                return result;
            }
            case OLEIVERB_INPLACEACTIVATE:
                return activation.activate(false, parent, place);
            case OLEIVERB_HIDE:
                return activation.hide();
            case OLEIVERB_DISCARDUNDOSTATE:
                return S_OK;
            default:
                // Unknown verbs above 0 stand for the first; those of the system that are not offered fail.
                if (verb < 0) return E_NOTIMPL;
                return SUCCEEDED(activation.activate(true, parent, place)) ? OLEOBJ_S_INVALIDVERB : E_FAIL;
        }
    });
}

HRESULT OleObject::EnumVerbs(IEnumOLEVERB** verbs) {
    if (!verbs) return E_POINTER;
    *verbs = nullptr;
    return OLE_S_USEREG;
}

HRESULT OleObject::Update() {
    return S_OK;
}

HRESULT OleObject::IsUpToDate() {
    return S_OK;
}

HRESULT OleObject::GetUserClassID(CLSID* identifier) {
    if (!identifier) return E_POINTER;
    *identifier = CLSID_DravikDlg;
    return S_OK;
}

HRESULT OleObject::GetUserType(DWORD, LPOLESTR* name) {
    if (!name) return E_POINTER;
    *name = static_cast<LPOLESTR>(CoTaskMemAlloc(sizeof kUserType));
    if (!*name) return E_OUTOFMEMORY;
    std::wmemcpy(*name, kUserType, std::size(kUserType));
    return S_OK;
}

HRESULT OleObject::SetExtent(DWORD aspect, SIZEL* extent) {
    return entered([&]() -> HRESULT {
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        if (!extent) return E_POINTER;
        if (extent->cx <= 0 || extent->cy <= 0) return E_INVALIDARG;
        state_.setExtent(*extent);
        return S_OK;
    });
}

HRESULT OleObject::GetExtent(DWORD aspect, SIZEL* extent) {
    return entered([&]() -> HRESULT {
        if (!extent) return E_POINTER;
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        *extent = state_.extent();
        return S_OK;
    });
}

HRESULT OleObject::Advise(IAdviseSink* sink, DWORD* connection) {
    return entered([&]() -> HRESULT {
        if (!connection) return E_POINTER;
        *connection = 0;
        if (!sink) return E_INVALIDARG;
        if (!state_.adviseHolder) {
            const HRESULT made = CreateOleAdviseHolder(state_.adviseHolder.put());
            if (FAILED(made)) return made;
        }
        return state_.adviseHolder->Advise(sink, connection);
    });
}

HRESULT OleObject::Unadvise(DWORD connection) {
    return entered([&]() -> HRESULT {
        return state_.adviseHolder ? state_.adviseHolder->Unadvise(connection) : OLE_E_NOCONNECTION;
    });
}

HRESULT OleObject::EnumAdvise(IEnumSTATDATA** connections) {
    return entered([&]() -> HRESULT {
        if (!connections) return E_POINTER;
        *connections = nullptr;
        return state_.adviseHolder ? state_.adviseHolder->EnumAdvise(connections) : S_OK;
    });
}

HRESULT OleObject::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (!status) return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
    return aspect == DVASPECT_CONTENT ? S_OK : DV_E_DVASPECT;
}

HRESULT OleObject::SetColorScheme(LOGPALETTE*) {
    return E_NOTIMPL;
}

}  // namespace dravik::control
