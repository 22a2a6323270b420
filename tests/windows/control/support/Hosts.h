// Three containers that show the control: a strict one of our own, the system's host window for controls in a
// frame, and the same on a page of a property sheet. A test drives each in the same way.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "drivers/win32/DialogScript.h"
#include "windows/com/ComPtr.h"
#include "windows/control/support/StrictSite.h"

namespace dravik::test {

class Host {
  public:
    virtual ~Host() = default;

    IUnknown* control() const noexcept { return control_.get(); }
    HWND frame() const noexcept { return frame_; }
    // The control's own window, null when it has none.
    HWND window() const;
    virtual void resize(int width, int height) = 0;
    // Takes the control from the screen and lets it go, as the host's own closing does.
    virtual void close() = 0;
    // The host's own use of a message before it is dispatched.
    virtual bool translate(MSG& message) = 0;

    // Handles messages until the condition holds; false after ten seconds.
    bool pumpUntil(const std::function<bool()>& condition);
    // Handles what is waiting now.
    void pump();
    // A key for the window that has the focus, through the host's loop; `shift` is that of the models.
    void key(UINT virtualKey, int shift = 0);

  protected:
    ComPtr<IUnknown> control_;
    HWND frame_ = nullptr;

  private:
    bool dispatchOne();
};

class StrictHost : public Host {
  public:
    explicit StrictHost(ComPtr<IUnknown> control, bool show = true);
    ~StrictHost() override;

    StrictSite& site() noexcept { return *site_; }
    template <class Interface>
    ComPtr<Interface> as() const {
        return control_.as<Interface>();
    }
    // OLEIVERB_SHOW, ...
    HRESULT verb(LONG verb, MSG* message = nullptr) {
        return as<IOleObject>()->DoVerb(verb, message, site_.get(), 0, frame_, &site_->place);
    }
    CONTROLINFO controlInfo() const {
        CONTROLINFO info{};
        info.cb = sizeof info;
        return FAILED(as<IOleControl>()->GetControlInfo(&info)) ? CONTROLINFO{} : info;
    }
    void ambientChanged(DISPID property, Variant value) {
        site_->ambients.insert_or_assign(property, std::move(value));
        as<IOleControl>()->OnAmbientPropertyChange(property);
        pump();
    }
    void resize(int width, int height) override;
    void close() override;
    bool translate(MSG& message) override;

  private:
    ComPtr<StrictSite> site_;
};

// "atl" or "sheet"; the control must be registered.
std::unique_ptr<Host> makeSystemHost(const std::string& name);

// The windows inside of another one, at any depth, of that class, in tab order.
std::vector<HWND> children(HWND parent, const std::wstring& className);
// The child window of that class and text; null when there is none.
HWND child(HWND parent, const std::wstring& className, const std::wstring& text);
// The window that is shown with this in its title; null when there is none.
HWND shownForm(const std::wstring& part);

}  // namespace dravik::test
