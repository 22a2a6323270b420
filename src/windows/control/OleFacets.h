// The interfaces by which a host embeds the control, activates it in place and hands it keys.
#pragma once

#include "base/Handle.h"
#include "windows/control/ConnectionPoints.h"
#include "windows/control/Facet.h"

namespace dravik::control {

// IOleObject: the control as an embedded object, with its verbs, extent, site and end.
class OleObject : public StateFacet<IOleObject> {
  public:
    using StateFacet::StateFacet;

    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    // Takes the screen from the host and ends it, which may ask the operator whether to save the font.
    HRESULT STDMETHODCALLTYPE Close(DWORD saveOption) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD reserved, IDataObject** data) override;
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG message, IOleClientSite* activeSite, LONG index,
                                     HWND parent, LPCRECT place) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override;
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* identifier) override;
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* name) override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* connection) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD connection) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** connections) override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }
};

// IOleControl: access keys and ambient properties.
class OleControl : public StateFacet<IOleControl> {
  public:
    using StateFacet::StateFacet;

    // The table stays this control's and is good until the next call. While the control is not active in
    // place there are no keys.
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL) override { return S_OK; }

  private:
    struct Accelerators {
        using Value = HACCEL;
        static HACCEL none() noexcept { return nullptr; }
        static void close(HACCEL table) noexcept { DestroyAcceleratorTable(table); }
    };

    Handle<Accelerators> accelerators_;
};

// What both in-place interfaces have of IOleWindow.
template <class Interface>
class WindowFacet : public StateFacet<Interface> {
  public:
    using StateFacet<Interface>::StateFacet;

    // Fails while the control is not active in place.
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        if (!window) return E_POINTER;
        *window = this->state_.activation.window();
        return *window ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
};

// IOleInPlaceObject: the control's window as the host moves and deactivates it.
class InPlaceObject : public WindowFacet<IOleInPlaceObject> {
  public:
    using WindowFacet::WindowFacet;

    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
};

// IOleInPlaceActiveObject: keys, before the host's own use of them, and the modes of its frame.
class InPlaceActiveObject : public WindowFacet<IOleInPlaceActiveObject> {
  public:
    using WindowFacet::WindowFacet;

    // S_OK when the screen used the key; Tab at the end of the screen is offered to the site.
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL activate) override;
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
};

// IQuickActivate: a host's whole greeting in one call instead of a dozen.
class QuickActivation : public StateFacet<IQuickActivate> {
  public:
    QuickActivation(IUnknown& control, ControlState& state, IOleObject& object, ConnectionPoints& points)
        : StateFacet(control, state), object_(object), points_(points) {}

    HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* answer) override;
    HRESULT STDMETHODCALLTYPE SetContentExtent(LPSIZEL extent) override;
    HRESULT STDMETHODCALLTYPE GetContentExtent(LPSIZEL extent) override;

  private:
    IOleObject& object_;
    ConnectionPoints& points_;
};

}  // namespace dravik::control
