// What the interfaces of one control share: the host's site, the screen, how far it is activated and its
// extent.
#pragma once

#include <memory>

#include "windows/com/ComPtr.h"
#include "windows/control/Activation.h"
#include "windows/control/ControlScreen.h"
#include "windows/control/HostSite.h"

namespace dravik::control {

// Bits that tell a host how to treat the control; registered and answered alike.
constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                              OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

// Extents are in hundredths of a millimetre.
constexpr int kExtentPerInch = 2540;
inline LONG pixelsOf(LONG extent, int dpi) {
    return MulDiv(extent, dpi, kExtentPerInch);
}
inline LONG extentOf(LONG pixels, int dpi) {
    return MulDiv(pixels, kExtentPerInch, dpi);
}

struct ControlState {
    explicit ControlState(HINSTANCE itsModule) : module(itsModule) {
        activation.appearanceChanged = [this] { viewChanged(); };
    }

    // Extent in hundredths of a millimetre: what the host set or the file held, else what the screen likes.
    SIZE extent();
    void setExtent(SIZE hundredths);
    bool hasExtent() const noexcept { return extent_.cx > 0 && extent_.cy > 0; }

    // Ends the screen and lets go of the host's steps.
    void end() {
        screen.end();
        givenStep = nullptr;
    }
    // Tells whoever keeps a picture of the control that it is old.
    void viewChanged();

    const HINSTANCE module;
    HostSite site;
    ControlScreen screen;
    Activation activation{module, site, screen};
    com::ComPtr<IDispatch> givenStep;  // the bound step as the host gave it
    com::ComPtr<IOleAdviseHolder> adviseHolder;
    com::ComPtr<IAdviseSink> viewSink;
    DWORD viewAspects = 0;
    DWORD viewFlags = 0;
    bool dirty = false;  // the extent differs from what was last loaded or saved

  private:
    SIZE extent_{0, 0};
};

// A window of no size with the page in it, for drawing the screen while it is shown nowhere. The system's
// controls draw themselves where they are visible, and so it is, though there is nothing to be seen of it.
class UnseenPage {
  public:
    explicit UnseenPage(ControlState& state);
    UnseenPage(const UnseenPage&) = delete;
    UnseenPage& operator=(const UnseenPage&) = delete;
    ~UnseenPage();

    win32::FormPage& page() noexcept { return *page_; }

  private:
    HWND parent_;
    std::unique_ptr<win32::FormPage> page_;
};

}  // namespace dravik::control
