#include "control/support/StrictSite.h"

#include <algorithm>

namespace dravik {

ComPtr<StrictSite> StrictSite::make(HWND frame, RECT place) {
    return ComPtr<StrictSite>::attach(new StrictSite(frame, place));
}

int StrictSite::count(const std::string& call) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

void StrictSite::note(const char* call) {
    calls.emplace_back(call);
    if (!frame_) faults.push_back(std::string(call) + " after the host was gone");
}

void StrictSite::expect(bool kept, const char* rule) {
    if (!kept) faults.emplace_back(rule);
}

HRESULT StrictSite::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) return handOut<IOleClientSite>(this, object);
    if (offersInPlaceSite && (iid == IID_IOleInPlaceSite || iid == IID_IOleWindow))
        return handOut<IOleInPlaceSite>(this, object);
    if (offersControlSite && iid == IID_IOleControlSite) return handOut<IOleControlSite>(this, object);
    if (offersAmbients && iid == IID_IDispatch) return handOut<IDispatch>(this, object);
    return E_NOINTERFACE;
}

ULONG StrictSite::AddRef() {
    return ++references_;
}

ULONG StrictSite::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT StrictSite::SaveObject() {
    note("SaveObject");
    return S_OK;
}
HRESULT StrictSite::GetMoniker(DWORD, DWORD, IMoniker**) {
    return E_NOTIMPL;
}
HRESULT StrictSite::GetContainer(IOleContainer**) {
    return E_NOINTERFACE;
}
HRESULT StrictSite::ShowObject() {
    note("ShowObject");
    return S_OK;
}
HRESULT StrictSite::OnShowWindow(BOOL) {
    return S_OK;
}
HRESULT StrictSite::RequestNewObjectLayout() {
    return E_NOTIMPL;
}

HRESULT StrictSite::GetWindow(HWND* window) {
    *window = frame_;
    return S_OK;
}
HRESULT StrictSite::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

HRESULT StrictSite::CanInPlaceActivate() {
    note("CanInPlaceActivate");
    return refusesActivation ? S_FALSE : S_OK;
}
HRESULT StrictSite::OnInPlaceActivate() {
    note("OnInPlaceActivate");
    expect(!inPlace_, "OnInPlaceActivate twice");
    expect(!refusesActivation, "OnInPlaceActivate though it was refused");
    inPlace_ = true;
    return S_OK;
}
HRESULT StrictSite::OnUIActivate() {
    note("OnUIActivate");
    expect(inPlace_, "OnUIActivate before OnInPlaceActivate");
    expect(!uiActive_, "OnUIActivate twice");
    uiActive_ = true;
    return S_OK;
}
HRESULT StrictSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                     LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    expect(inPlace_, "GetWindowContext before OnInPlaceActivate");
    expect(info->cb == sizeof *info, "GetWindowContext without the size of its answer");
    *document = nullptr;
    *position = *clip = place;
    info->fMDIApp = FALSE;
    info->hwndFrame = frame_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    *frame = this;
    AddRef();
    return S_OK;
}
HRESULT StrictSite::Scroll(SIZE) {
    return E_NOTIMPL;
}
HRESULT StrictSite::OnUIDeactivate(BOOL) {
    note("OnUIDeactivate");
    expect(uiActive_, "OnUIDeactivate without OnUIActivate");
    uiActive_ = false;
    return S_OK;
}
HRESULT StrictSite::OnInPlaceDeactivate() {
    note("OnInPlaceDeactivate");
    expect(inPlace_, "OnInPlaceDeactivate without OnInPlaceActivate");
    expect(!uiActive_, "OnInPlaceDeactivate while the user interface is active");
    inPlace_ = false;
    return S_OK;
}
HRESULT StrictSite::DiscardUndoState() {
    return E_NOTIMPL;
}
HRESULT StrictSite::DeactivateAndUndo() {
    return E_NOTIMPL;
}
HRESULT StrictSite::OnPosRectChange(LPCRECT) {
    return S_OK;
}

HRESULT StrictSite::OnControlInfoChanged() {
    note("OnControlInfoChanged");
    return S_OK;
}
HRESULT StrictSite::LockInPlaceActive(BOOL) {
    return S_OK;
}
HRESULT StrictSite::GetExtendedControl(IDispatch**) {
    return E_NOTIMPL;
}
HRESULT StrictSite::TransformCoords(POINTL*, POINTF*, DWORD) {
    return E_NOTIMPL;
}
HRESULT StrictSite::TranslateAccelerator(MSG* message, DWORD) {
    note("TranslateAccelerator");
    keys.push_back(message->wParam);
    return S_OK;
}
HRESULT StrictSite::OnFocus(BOOL gained) {
    note(gained ? "OnFocus" : "OnFocus lost");
    focus = gained;
    return S_OK;
}
HRESULT StrictSite::ShowPropertyFrame() {
    return E_NOTIMPL;
}

HRESULT StrictSite::GetBorder(LPRECT) {
    return INPLACE_E_NOTOOLSPACE;
}
HRESULT StrictSite::RequestBorderSpace(LPCBORDERWIDTHS) {
    return INPLACE_E_NOTOOLSPACE;
}
HRESULT StrictSite::SetBorderSpace(LPCBORDERWIDTHS) {
    return S_OK;
}
HRESULT StrictSite::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    note(object ? "SetActiveObject" : "SetActiveObject none");
    active = object;
    return S_OK;
}
HRESULT StrictSite::InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) {
    return E_NOTIMPL;
}
HRESULT StrictSite::SetMenu(HMENU, HOLEMENU, HWND) {
    return E_NOTIMPL;
}
HRESULT StrictSite::RemoveMenus(HMENU) {
    return E_NOTIMPL;
}
HRESULT StrictSite::SetStatusText(LPCOLESTR) {
    return S_OK;
}
HRESULT StrictSite::EnableModeless(BOOL enable) {
    note(enable ? "EnableModeless on" : "EnableModeless off");
    modeless += enable ? -1 : 1;
    lowestModeless = std::max(lowestModeless, modeless);
    return S_OK;
}
HRESULT StrictSite::TranslateAccelerator(LPMSG, WORD) {
    return S_FALSE;
}

HRESULT StrictSite::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}
HRESULT StrictSite::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return E_NOTIMPL;
}
HRESULT StrictSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return DISP_E_UNKNOWNNAME;
}
HRESULT StrictSite::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                           UINT*) {
    expect((flags & DISPATCH_PROPERTYGET) != 0, "an ambient property was not read as a property");
    const auto found = ambients.find(id);
    if (found == ambients.end()) return DISP_E_MEMBERNOTFOUND;
    return VariantCopy(result, &found->second.get());
}

}  // namespace dravik
