#include "windows/control/WatchedScreen.h"

#include "windows/com/ComText.h"

namespace dravik::control {
namespace {

VARIANT_BOOL variantBool(bool truth) {
    return truth ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace

WatchedScreen::WatchedScreen(IUnknown& control, ControlState& state)
    : Facet(control), state_(state), renewed_(state.screen.renewed.connect([this] { look(); })) {
    look();
}

void WatchedScreen::look() {
    connections_.clear();
    sight_ = std::make_unique<trainer::ScreenSight>(state_.screen.dialog());
    connections_.push_back(sight_->typedChanged.connect([this] { tell(ScreenChange::Typed); }));
    connections_.push_back(sight_->fontChanged.connect([this] { tell(ScreenChange::Font); }));
    connections_.push_back(sight_->savedStateChanged.connect([this] { tell(ScreenChange::SavedState); }));
}

void WatchedScreen::tell(ScreenChange change) {
    if (const auto watcher = watcher_) watcher->ScreenChanged(static_cast<LONG>(change));
}

HRESULT WatchedScreen::TypedText(BSTR* text, VARIANT_BOOL* maintainsCase) {
    return entered([&]() -> HRESULT {
        if (!text || !maintainsCase) return E_POINTER;
        *maintainsCase = variantBool(sight_->maintainsCase());
        *text = com::Bstr(sight_->typedText()).detach();
        return S_OK;
    });
}

HRESULT WatchedScreen::FontState(BSTR* name, VARIANT_BOOL* changed, VARIANT_BOOL* training) {
    return entered([&]() -> HRESULT {
        if (!name || !changed || !training) return E_POINTER;
        *changed = variantBool(sight_->isFontChanged());
        *training = variantBool(sight_->isTraining());
        *name = com::Bstr(sight_->selectedFont()).detach();
        return S_OK;
    });
}

HRESULT WatchedScreen::Watch(IScreenWatcher* watcher) {
    return entered([&] {
        watcher_ = watcher;
        return S_OK;
    });
}

}  // namespace dravik::control
