// A container's site that takes the rules at their word: site, frame and ambient properties in one object,
// which notes every call of the control, checks the order of activation and hands out just what a strict
// container has. It keeps no document, has no menus to share and offers no tools. Ambient properties can be
// set.
#pragma once

#include <atomic>
#include <map>
#include <string>
#include <vector>

#include "windows/com/ComPtr.h"
#include "windows/com/Variant.h"
#include "windows/headers/ComObject.h"

namespace dravik::test {

using namespace com;
using namespace tool;

class StrictSite final : public IOleClientSite,
                         public IOleInPlaceSite,
                         public IOleControlSite,
                         public IOleInPlaceFrame,
                         public NotCalledByNames<IDispatch> {
  public:
    // The control is to take `place` of the frame's client area.
    static ComPtr<StrictSite> make(HWND frame, RECT place) {
        return ComPtr<StrictSite>::attach(new StrictSite(frame, place));
    }

    RECT place;
    // The control's object that keys go to, as long as it is active.
    ComPtr<IOleInPlaceActiveObject> active;
    ULONG references() const noexcept { return references_; }
    std::map<DISPID, Variant> ambients;
    bool offersControlSite = true;
    bool offersInPlaceSite = true;

    // What the control told, in order.
    std::vector<std::string> calls;
    int count(const std::string& call) const;
    int modeless = 0;            // EnableModeless(FALSE) minus EnableModeless(TRUE)
    int focus = 0;               // the last OnFocus
    std::vector<UINT_PTR> keys;  // virtual keys that the control passed on
    // A rule that the control broke.
    std::vector<std::string> faults;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    HRESULT STDMETHODCALLTYPE SaveObject() override { return noted("SaveObject"); }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return noted("ShowObject"); }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return noted("CanInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override;
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                               LPRECT position, LPRECT clip,
                                               LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL undoable) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return noted("OnControlInfoChanged"); }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gained) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override;

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = window_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    // A key that the frame may use.
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  private:
    StrictSite(HWND window, const RECT& itsPlace) : place(itsPlace), window_(window) {}
    ~StrictSite() = default;
    HRESULT noted(const char* call);
    void expect(bool kept, const char* rule);

    HWND window_;
    std::atomic<ULONG> references_ = 1;
    bool inPlace_ = false;
    bool uiActive_ = false;
};

}  // namespace dravik::test
