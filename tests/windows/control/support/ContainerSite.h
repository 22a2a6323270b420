// What any container answers to a control that it shows in a window: site, frame and ambient properties in
// one object, with the answers of a container that keeps no document, has no menus to share and offers no
// tools.
#pragma once

#include <windows.h>
// Behind windows.h
#include <ocidl.h>
#include <olectl.h>

#include <atomic>

#include "windows/com/ComPtr.h"

namespace dravik {

class ContainerSite : public IOleClientSite,
                      public IOleInPlaceSite,
                      public IOleControlSite,
                      public IOleInPlaceFrame,
                      public IDispatch {
  public:
    // The control is to take `place` of the window's client area. Lives by its references; starts with one,
    // which is the maker's.
    ContainerSite(HWND window, const RECT& itsPlace) : place(itsPlace), window_(window) {}

    RECT place;
    // The control's object that keys go to, as long as it is active.
    com::ComPtr<IOleInPlaceActiveObject> active;
    ULONG references() const noexcept { return references_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleClientSite)
            return com::handOut<IOleClientSite>(this, object);
        if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
            return com::handOut<IOleInPlaceSite>(this, object);
        if (iid == IID_IOleControlSite) return com::handOut<IOleControlSite>(this, object);
        if (iid == IID_IDispatch) return com::handOut<IDispatch>(this, object);
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
        if (moniker) *moniker = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        if (container) *container = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        if (!window) return E_POINTER;
        *window = window_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                               LPRECT position, LPRECT clip,
                                               LPOLEINPLACEFRAMEINFO info) override {
        if (!frame || !document || !position || !clip || !info) return E_POINTER;
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
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** object) override {
        if (object) *object = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    // A key that leaves the control.
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
        active = object;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
    // A key that the frame may use.
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    // The ambient properties: there are none.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }

  protected:
    virtual ~ContainerSite() = default;

    HWND window_;

  private:
    std::atomic<ULONG> references_ = 1;
};

// A key message for a control that is shown in a container: to its active object, if `toActive`; then to the
// control, if it may be an access key (`asAccessKey`). True when it was taken.
inline bool giveKey(MSG& message, IUnknown& control, ContainerSite& site, bool toActive, bool asAccessKey) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    if (toActive && site.active) {
        const com::ComPtr<IOleInPlaceActiveObject> active = site.active;
        if (active->TranslateAccelerator(&message) == S_OK) return true;
    }
    if (!asAccessKey || message.message != WM_SYSCHAR) return false;
    const auto keys = com::ComPtr<IUnknown>(&control).as<IOleControl>();
    CONTROLINFO info{};
    info.cb = sizeof info;
    WORD command = 0;
    if (!keys || FAILED(keys->GetControlInfo(&info)) || info.cAccel == 0 ||
        !IsAccelerator(info.hAccel, info.cAccel, &message, &command))
        return false;
    keys->OnMnemonic(&message);
    return true;
}

}  // namespace dravik
