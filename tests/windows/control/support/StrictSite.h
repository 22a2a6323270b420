// A container's site that takes the rules at their word: it notes every call of the control, checks the order
// of activation and hands out just what a strict container has. Ambient properties can be set.
#pragma once

#include "windows/control/support/ContainerSite.h"
// Behind the Windows headers
#include <map>
#include <string>
#include <vector>

#include "windows/com/Variant.h"

namespace dravik {

using namespace com;
using namespace tool;

class StrictSite final : public ContainerSite {
  public:
    static ComPtr<StrictSite> make(HWND frame, RECT place) {
        return ComPtr<StrictSite>::attach(new StrictSite(frame, place));
    }

    std::map<DISPID, Variant> ambients;
    bool offersControlSite = true;
    bool offersInPlaceSite = true;
    bool refusesActivation = false;

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
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override;
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                               LPRECT position, LPRECT clip,
                                               LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL undoable) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return noted("OnControlInfoChanged"); }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
    using ContainerSite::TranslateAccelerator;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gained) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override;

  private:
    using ContainerSite::ContainerSite;
    HRESULT noted(const char* call);
    void expect(bool kept, const char* rule);

    bool inPlace_ = false;
    bool uiActive_ = false;
};

}  // namespace dravik
