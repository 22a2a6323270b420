#include "windows/control/Activation.h"

#include <utility>

#include "base/Failure.h"
#include "windows/win32/Entry.h"

namespace dravik::control {

Activation::Activation(HINSTANCE module, HostSite& site, ControlScreen& screen)
    : module_(module), site_(site), screen_(screen) {
    screen_.setModalHook([this](bool modal) { tellModal(modal); });
}

Activation::~Activation() {
    deactivate();
    screen_.setModalHook(nullptr);
}

win32::FormPage* Activation::page() noexcept {
    return window_ && window_->window() ? &window_->page() : nullptr;
}

HWND Activation::window() const noexcept {
    return window_ ? window_->window() : nullptr;
}

HRESULT Activation::activate(bool userInterface, HWND parent, const RECT* place, const MSG* key) {
    const HRESULT inPlace = goInPlace(parent, place);
    if (FAILED(inPlace)) return inPlace;
    if (window_) window_->show(true);
    return userInterface && site_.userMode() ? goUserInterface(key) : S_OK;
}

HRESULT Activation::goInPlace(HWND parent, const RECT* place) {
    if (window()) return S_OK;
    if (inPlace()) deactivate();  // the window was destroyed under the control
    const com::ComPtr<IOleInPlaceSite> site = site_.inPlace();
    if (!site) return E_FAIL;
    HRESULT result = site->CanInPlaceActivate();
    if (result != S_OK) return FAILED(result) ? result : E_FAIL;
    result = site->OnInPlaceActivate();
    if (FAILED(result)) return result;
    inPlaceSite_ = site;

    HWND siteWindow = nullptr;
    site->GetWindow(&siteWindow);
    if (!siteWindow) siteWindow = parent;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    result = site->GetWindowContext(frame_.put(), document_.put(), &position, &clip, &info);
    if (FAILED(result) || !IsWindow(siteWindow)) {
        deactivate();
        return FAILED(result) ? result : E_FAIL;
    }
    if (IsRectEmpty(&position) && place) position = clip = *place;

    screen_.begin();
    try {
        window_ = std::make_unique<ControlWindow>(module_, siteWindow, position, screen_.dialog().form(),
                                                  screen_.platform(), site_.ambient());
    } catch (...) {
        deactivate();
        return E_OUTOFMEMORY;
    }
    window_->focusChanged = [this](bool inside) { focusChanged(inside); };
    window_->lost = [this] { lost(); };
    window_->page().appearanceChanged = [this] { tellAppearance(); };
    window_->page().mnemonicsChanged = [this] { site_.controlInfoChanged(); };
    screen_.setOwner(window_->window());
    takeAmbients();
    window_->place(position, clip);
    site_.controlInfoChanged();
    tellAppearance();
    return S_OK;
}

HRESULT Activation::goUserInterface(const MSG* key) {
    if (!window_ || !inPlaceSite_) return E_FAIL;
    if (!std::exchange(uiActive_, true)) {
        const HRESULT result = inPlaceSite_->OnUIActivate();
        if (FAILED(result)) {
            uiActive_ = false;
            return result;
        }
        if (frame_ && activeObject_) {
            frame_->SetActiveObject(activeObject_, L"Dravik");
            frame_->SetBorderSpace(nullptr);
        }
        if (document_ && activeObject_) {
            document_->SetActiveObject(activeObject_, L"Dravik");
            document_->SetBorderSpace(nullptr);
        }
    }
    if (window_) window_->takeFocus(key);
    return S_OK;
}

HRESULT Activation::deactivateUserInterface() {
    endUserInterface();
    giveFocusAway();
    return S_OK;
}

void Activation::endUserInterface() {
    if (!std::exchange(uiActive_, false)) return;
    if (frame_) frame_->SetActiveObject(nullptr, nullptr);
    if (document_) document_->SetActiveObject(nullptr, nullptr);
    if (inPlaceSite_) inPlaceSite_->OnUIDeactivate(FALSE);
}

// To the host's window, which knows what else in it can have the focus.
void Activation::giveFocusAway() const {
    if (window_ && window_->page().hasFocusInside()) SetFocus(GetAncestor(window_->window(), GA_ROOT));
}

HRESULT Activation::deactivate() {
    endUserInterface();
    focusChanged(false);
    const bool shown = window_ != nullptr;
    if (window_) {
        // The page may be inside of one of its own events, further up the stack.
        std::shared_ptr<ControlWindow> window(std::move(window_));
        window->focusChanged = nullptr;
        window->lost = nullptr;
        if (HWND parent = GetParent(window->window())) screen_.setOwner(parent);
        window->page().detach();
        if (window->window()) DestroyWindow(window->window());
        win32::Entry::whenOutside([window] {});
    }
    frame_ = nullptr;
    document_ = nullptr;
    if (shown) site_.controlInfoChanged();
    if (const auto site = std::exchange(inPlaceSite_, {})) site->OnInPlaceDeactivate();
    if (shown) tellAppearance();
    return S_OK;
}

HRESULT Activation::hide() {
    deactivateUserInterface();
    if (window_) window_->show(false);
    return S_OK;
}

void Activation::frameActivated() {
    if (win32::FormPage* shown = page()) shown->giveFocusBackSoon();
}

HRESULT Activation::setRects(const RECT* place, const RECT* clip) {
    if (!place || place->right < place->left || place->bottom < place->top) return E_INVALIDARG;
    if (window_) window_->place(*place, clip ? *clip : *place);
    return S_OK;
}

void Activation::takeAmbients() {
    win32::FormPage* shown = page();
    if (!shown) return;
    shown->setAmbient(site_.ambient());
    shown->setDefaultShown(site_.displayAsDefault());
    shown->setInert(!site_.userMode() || site_.uiDead());
}

void Activation::enableModeless(bool enable) {
    screen_.platform().enableWindows(enable);
}

void Activation::focusChanged(bool inside) {
    if (inside && !uiActive_ && site_.userMode()) goUserInterface(nullptr);
    if (std::exchange(focused_, inside) != inside) site_.onFocus(inside);
}

void Activation::tellAppearance() const {
    if (const auto tell = appearanceChanged) tell();
}

void Activation::lost() {
    deactivate();
}

void Activation::tellModal(bool modal) {
    if (frame_) frame_->EnableModeless(modal ? FALSE : TRUE);
}

}  // namespace dravik::control
