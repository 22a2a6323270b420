// A container's site that takes the rules at their word: it notes every call of the control, checks the order
// of activation and hands out just what a strict container has. Ambient properties can be set.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <map>
#include <string>
#include <vector>

#include "activex/com/ComPtr.h"
#include "activex/com/Variant.h"

namespace dravik {

class StrictSite final : public IOleClientSite,
                         public IOleInPlaceSite,
                         public IOleControlSite,
                         public IOleInPlaceFrame,
                         public IDispatch {
  public:
    // `frame` is a top-level window; the control is to take `place` of its client area. Lives by its
    // references.
    static ComPtr<StrictSite> make(HWND frame, RECT place);

    RECT place;
    std::map<DISPID, Variant> ambients;
    bool offersControlSite = true;
    bool offersInPlaceSite = true;
    bool offersAmbients = true;
    bool refusesActivation = false;

    // What the control told, in order.
    std::vector<std::string> calls;
    int count(const std::string& call) const;
    int modeless = 0;            // EnableModeless(FALSE) minus EnableModeless(TRUE)
    int lowestModeless = 0;      // whether the frame was ever told of something modal: above 0 then
    int focus = 0;               // the last OnFocus
    std::vector<UINT_PTR> keys;  // virtual keys that the control passed on
    ComPtr<IOleInPlaceActiveObject> active;
    // A rule that the control broke.
    std::vector<std::string> faults;
    ULONG references() const noexcept { return references_; }
    // The host is gone: calls are faults from now on.
    void forget() { frame_ = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override;
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override;
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override;
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;
    // IOleWindow of site and frame
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override;
    // IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override;
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                               LPRECT position, LPRECT clip,
                                               LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override;
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override;
    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override;
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override;
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gained) override;
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;
    // IOleInPlaceFrame
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override;
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override;
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override;
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override;
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override;
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override;
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override;
    // IDispatch: the ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override;

  private:
    StrictSite(HWND frame, RECT itsPlace) : place(itsPlace), frame_(frame) {}
    void note(const char* call);
    void expect(bool kept, const char* rule);

    HWND frame_;
    ULONG references_ = 1;
    bool inPlace_ = false;
    bool uiActive_ = false;
};

}  // namespace dravik
