// How far the control is activated in its host: loaded, in place (its window is there), or with the user
// interface (it has the keyboard). Takes the steps between these states and keeps the host informed as a
// windowed control must.
#pragma once

#include <functional>
#include <memory>

#include "windows/com/ComPtr.h"
#include "windows/control/ControlScreen.h"
#include "windows/control/ControlWindow.h"
#include "windows/control/HostSite.h"

namespace dravik::control {

class Activation {
  public:
    Activation(HINSTANCE module, HostSite& site, ControlScreen& screen);
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;
    ~Activation();

    // What the host's frame is told to be active; set once, not held.
    void setActiveObject(IOleInPlaceActiveObject* object) noexcept { activeObject_ = object; }

    // Null while the control is not active in place.
    win32::FormPage* page() noexcept;
    HWND window() const noexcept;
    bool inPlace() const noexcept { return inPlaceSite_.get() != nullptr; }
    bool uiActive() const noexcept { return uiActive_; }

    // `parent` and `place` may be null; the site's own are taken then. With `userInterface` the keyboard
    // focus goes to the screen: where `key`, which may be null, leads to, else where it was.
    HRESULT activate(bool userInterface, HWND parent, const RECT* place, const MSG* key = nullptr);
    // The host's wish: the focus leaves the screen.
    HRESULT deactivateUserInterface();
    HRESULT deactivate();
    HRESULT hide();
    // The host's top-level window came to the front.
    void frameActivated();

    HRESULT setRects(const RECT* place, const RECT* clip);
    // Ambient properties changed, or the site did.
    void takeAmbients();
    // The host is modal itself: forms of the screen wait.
    void enableModeless(bool enable);

    // Called when the screen may look otherwise than before.
    std::function<void()> appearanceChanged;

  private:
    HRESULT goInPlace(HWND parent, const RECT* place);
    HRESULT goUserInterface(const MSG* key);
    void endUserInterface();
    void giveFocusAway() const;
    void tellAppearance() const;
    void focusChanged(bool inside);
    void lost();
    void tellModal(bool modal);

    HINSTANCE module_;
    HostSite& site_;
    ControlScreen& screen_;
    IOleInPlaceActiveObject* activeObject_ = nullptr;

    com::ComPtr<IOleInPlaceSite> inPlaceSite_;
    com::ComPtr<IOleInPlaceFrame> frame_;
    com::ComPtr<IOleInPlaceUIWindow> document_;
    std::unique_ptr<ControlWindow> window_;
    bool uiActive_ = false;
    bool focused_ = false;
};

}  // namespace dravik::control
