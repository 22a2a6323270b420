#include "windows/control/support/StrictSite.h"

#include <algorithm>

namespace dravik::test {

int StrictSite::count(const std::string& call) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

HRESULT StrictSite::noted(const char* call) {
    calls.emplace_back(call);
    return S_OK;
}

void StrictSite::expect(bool kept, const char* rule) {
    if (!kept) faults.emplace_back(rule);
}

HRESULT StrictSite::QueryInterface(REFIID iid, void** object) {
    const bool hidden = (!offersInPlaceSite && (iid == IID_IOleInPlaceSite || iid == IID_IOleWindow)) ||
                        (!offersControlSite && iid == IID_IOleControlSite);
    *object = nullptr;
    if (hidden) return E_NOINTERFACE;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) return handOut<IOleClientSite>(this, object);
    if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite) return handOut<IOleInPlaceSite>(this, object);
    if (iid == IID_IOleControlSite) return handOut<IOleControlSite>(this, object);
    if (iid == IID_IDispatch) return handOut<IDispatch>(this, object);
    return E_NOINTERFACE;
}

HRESULT StrictSite::OnInPlaceActivate() {
    expect(!inPlace_, "OnInPlaceActivate twice");
    inPlace_ = true;
    return noted("OnInPlaceActivate");
}

HRESULT StrictSite::OnUIActivate() {
    expect(inPlace_, "OnUIActivate before OnInPlaceActivate");
    expect(!uiActive_, "OnUIActivate twice");
    uiActive_ = true;
    return noted("OnUIActivate");
}

HRESULT StrictSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                     LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    expect(inPlace_, "GetWindowContext before OnInPlaceActivate");
    expect(info->cb == sizeof *info, "GetWindowContext without the size of its answer");
    *frame = this;
    AddRef();
    *document = nullptr;
    *position = *clip = place;
    info->fMDIApp = FALSE;
    info->hwndFrame = GetAncestor(window_, GA_ROOT);
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

HRESULT StrictSite::OnUIDeactivate(BOOL) {
    expect(uiActive_, "OnUIDeactivate without OnUIActivate");
    uiActive_ = false;
    return noted("OnUIDeactivate");
}

HRESULT StrictSite::OnInPlaceDeactivate() {
    expect(inPlace_, "OnInPlaceDeactivate without OnInPlaceActivate");
    expect(!uiActive_, "OnInPlaceDeactivate while the user interface is active");
    expect(!focus, "OnInPlaceDeactivate without OnFocus(FALSE)");
    inPlace_ = false;
    return noted("OnInPlaceDeactivate");
}

HRESULT StrictSite::TranslateAccelerator(MSG* message, DWORD) {
    keys.push_back(message->wParam);
    return noted("TranslateAccelerator");
}

HRESULT StrictSite::OnFocus(BOOL gained) {
    expect((focus != 0) != (gained != FALSE), "OnFocus twice with the same");
    focus = gained;
    return noted(gained ? "OnFocus" : "OnFocus lost");
}

HRESULT StrictSite::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    active = object;
    return noted(object ? "SetActiveObject" : "SetActiveObject none");
}

HRESULT StrictSite::EnableModeless(BOOL enable) {
    modeless += enable ? -1 : 1;
    return noted(enable ? "EnableModeless on" : "EnableModeless off");
}

HRESULT StrictSite::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                           UINT*) {
    expect((flags & DISPATCH_PROPERTYGET) != 0, "an ambient property was not read as a property");
    const auto found = ambients.find(id);
    if (found == ambients.end()) return DISP_E_MEMBERNOTFOUND;
    return VariantCopy(result, &found->second.get());
}

}  // namespace dravik::test
