#include "windows/control/OleFacets.h"

#include <cwchar>
#include <cwctype>
#include <vector>

#include "DravikDlgLib.h"

namespace dravik::control {
namespace {

constexpr wchar_t kUserType[] = L"Dravik training screen";

constexpr DWORD kShift = 1;
constexpr DWORD kControl = 2;
constexpr DWORD kAlt = 4;

// As a site's TranslateAccelerator takes them.
DWORD modifiers() {
    return (GetKeyState(VK_SHIFT) < 0 ? kShift : 0) | (GetKeyState(VK_CONTROL) < 0 ? kControl : 0) |
           (GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

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

HRESULT OleObject::Close(DWORD saveOption) {
    return entered([&] {
        if (saveOption != OLECLOSE_NOSAVE && state_.dirty && state_.site.client())
            state_.site.client()->SaveObject();
        // The question comes while the page still stands, so that it has something to lie above.
        state_.end();
        state_.activation.deactivate();
        if (const auto holder = state_.adviseHolder) holder->SendOnClose();
        return S_OK;
    });
}

HRESULT OleObject::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT OleObject::GetClipboardData(DWORD, IDataObject** data) {
    if (data) *data = nullptr;
    return E_NOTIMPL;
}

HRESULT OleObject::DoVerb(LONG verb, LPMSG message, IOleClientSite*, LONG, HWND parent, LPCRECT place) {
    return entered([&]() -> HRESULT {
        auto& activation = state_.activation;
        switch (verb) {
            case OLEIVERB_PRIMARY:
            case OLEIVERB_SHOW:
            case OLEIVERB_UIACTIVATE: {
                const HRESULT result = activation.activate(true, parent, place, message);
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
    return OLEOBJ_E_NOVERBS;
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

HRESULT OleControl::GetControlInfo(CONTROLINFO* info) {
    return entered([&]() -> HRESULT {
        if (!info) return E_POINTER;
        accelerators_ = {};
        std::vector<ACCEL> keys;
        if (win32::FormPage* page = state_.activation.page())
            for (const wchar_t key : page->mnemonics()) {
                const auto lower = static_cast<WORD>(std::towlower(static_cast<wint_t>(key)));
                const auto upper = static_cast<WORD>(std::towupper(static_cast<wint_t>(key)));
                keys.push_back({FALT, lower, 0});
                if (upper != lower) keys.push_back({FALT, upper, 0});
            }
        if (!keys.empty())
            *accelerators_.put() = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
        info->hAccel = accelerators_.get();
        info->cAccel = accelerators_ ? static_cast<USHORT>(keys.size()) : USHORT{0};
        const win32::FormPage* shown = state_.activation.page();
        info->dwFlags = shown && shown->answersEnter() ? CTRLINFO_EATS_RETURN : 0;
        return S_OK;
    });
}

HRESULT OleControl::OnMnemonic(MSG* message) {
    return entered([&]() -> HRESULT {
        if (!message) return E_POINTER;
        win32::FormPage* page = state_.activation.page();
        if (page && state_.site.userMode()) page->pressMnemonic(static_cast<wchar_t>(message->wParam));
        return S_OK;
    });
}

HRESULT OleControl::OnAmbientPropertyChange(DISPID) {
    return entered([&] {
        state_.activation.takeAmbients();
        return S_OK;
    });
}

// The control fires no events.
HRESULT InPlaceObject::InPlaceDeactivate() {
    return entered([&] { return state_.activation.deactivate(); });
}

HRESULT InPlaceObject::UIDeactivate() {
    return entered([&] { return state_.activation.deactivateUserInterface(); });
}

HRESULT InPlaceObject::SetObjectRects(LPCRECT place, LPCRECT clip) {
    return entered([&] { return state_.activation.setRects(place, clip); });
}

HRESULT InPlaceActiveObject::TranslateAccelerator(LPMSG message) {
    return entered([&]() -> HRESULT {
        if (!message) return E_POINTER;
        win32::FormPage* page = state_.activation.page();
        if (!page || !state_.site.userMode()) return S_FALSE;
        bool leftPage = false;
        if (page->translateKey(*message, leftPage)) return S_OK;
        const com::ComPtr<IOleControlSite> site(state_.site.control());
        return leftPage && site ? site->TranslateAccelerator(message, modifiers()) : S_FALSE;
    });
}

HRESULT InPlaceActiveObject::OnFrameWindowActivate(BOOL activate) {
    return entered([&] {
        if (activate) state_.activation.frameActivated();
        return S_OK;
    });
}

HRESULT InPlaceActiveObject::EnableModeless(BOOL enable) {
    return entered([&] {
        state_.activation.enableModeless(enable != FALSE);
        return S_OK;
    });
}

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
